"""messages.md is what tarvex-catalog prints."""

from documents import CATALOG, DocumentTest, read


class Messages(DocumentTest):
    def test_the_document_is_what_the_program_prints(self):
        printed = self.succeed(CATALOG, "explain", "--all", "--format", "markdown").decode()
        self.assertEqual(read("messages.md"), printed)
