"""Documents lead to files that are there, and converting.md shows pieces of what a conversion writes."""

import re
import shutil
import subprocess

from documents import PROGRAM, SOURCE, DocumentTest, read

DOCUMENTS = ["README.md", "CHANGELOG.md", "CONTRIBUTING.md", "RELEASING.md",
             *sorted(f"docs/{path.name}" for path in (SOURCE / "docs").glob("*.md"))]


def anchors(text):
    """What headings are called in links."""
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")
            for heading in re.findall(r"^#+ (.*)$", text, re.MULTILINE)}


class Pieces(DocumentTest):
    def test_pieces_shown_of_the_example_are_those_of_its_files(self):
        """The example with its own settings, as convert.sh makes it."""
        example = self.dir / "example"
        shutil.copytree(SOURCE / "examples", example)
        converted = subprocess.run([PROGRAM, "roadster.xml", "roadster.vorn"], cwd=example, capture_output=True, timeout=120,
                                   check=True).stdout.decode()
        files = [converted, *((example / f"roadster.{extension}").read_text(encoding="utf-8")
                              for extension in ("log", "tree", "vorn"))]
        fenced = re.findall(r"^```(\w*)\n(.*?)^```$", read("converting.md"), re.DOTALL | re.MULTILINE)
        shown = [text for language, text in fenced if not language and ("roadster" in text or "Gateway" in text)]
        self.assertEqual(len(shown), 4)
        for text in shown:
            piece = text.partition("\nImport log:")[0]
            with self.subTest(piece.splitlines()[0]):
                self.assertTrue(any(piece in file for file in files))


class Readme(DocumentTest):
    def test_an_output_is_seen_early(self):
        """The first one begins within two screens of 50 lines."""
        lines = (SOURCE / "README.md").read_text(encoding="utf-8").splitlines()
        self.assertLess(lines.index("```console"), 100)


class Links(DocumentTest):
    def test_links_lead_to_files_and_headings(self):
        count = 0
        for name in DOCUMENTS:
            text = (SOURCE / name).read_text(encoding="utf-8")
            for target in re.findall(r"\]\(([^)\s]+)\)", re.sub(r"```.*?```", "", text, flags=re.DOTALL)):
                if "://" in target:
                    continue
                count += 1
                with self.subTest(document=name, target=target):
                    path, _, anchor = target.partition("#")
                    file = (SOURCE / name).parent / path if path else SOURCE / name
                    self.assertTrue(file.exists())
                    if anchor:
                        self.assertIn(anchor, anchors(file.read_text(encoding="utf-8")))
        self.assertGreater(count, 20)
