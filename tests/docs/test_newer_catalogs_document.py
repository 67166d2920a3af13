"""The example of docs/newer-catalogs.md is decoded as it says, and every form of its table is in the example catalog."""

import re
import subprocess

from documents import DISASM, PROGRAM, SOURCE, DocumentTest, blocks, read

CATALOG = """<FunctionCatalog><FBlock><FBlockID>0x30</FBlockID><FBlockName>Display</FBlockName>
{0}
</FBlock><Definition/></FunctionCatalog>
"""


class NewerCatalogs(DocumentTest):
    def setUp(self):
        super().setUp()
        text = read("newer-catalogs.md")
        self.settings, = blocks(text, "ini")
        self.function, = blocks(text, "xml")
        self.messages, self.decoded = re.findall(r"^```\n(\d.*?)\n```$", text.split("## An example")[1],
                                                 re.DOTALL | re.MULTILINE)
        self.write("cat.xml", CATALOG.format(self.function))

    def test_the_messages_say_what_is_shown(self):
        result = subprocess.run([DISASM, "cat.xml"], cwd=self.dir, input=self.messages, capture_output=True, text=True,
                                timeout=60, check=False)
        self.assertEqual((result.stdout, result.stderr),
                         (self.decoded + "\n", "tarvex-disasm: 2 messages, 0 faulty; 0 unreadable\n"))

    def test_the_key_makes_the_difference(self):
        for settings, result in [(self.settings, ""), ("", "errors: ")]:
            with self.subTest(settings):
                self.write("TARVEX.ini", settings + "\n[Conversion]\nWarnOnOverwrite=0\nMakeReadOnly=0\n")
                run = subprocess.run([PROGRAM, "cat.xml", "out.vorn"], cwd=self.dir, capture_output=True, text=True,
                                     timeout=60, check=False)
                self.assertEqual(run.returncode, 0)
                self.assertEqual("errors: " in run.stdout, result != "")

    def test_the_example_has_the_elements_of_the_table(self):
        catalog = (SOURCE / "examples" / "convertible.xml").read_text(encoding="utf-8")
        for element in ["PContainer", "PSequence", "MSequence", "TShortStream", "TCStream", "StreamSignal",
                        "SymbolicName", "1seq1"]:
            with self.subTest(element):
                self.assertIn(element, catalog)
