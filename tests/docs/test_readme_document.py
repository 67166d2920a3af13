"""README.md shows what the programs print, and leads to files that are there."""

import re
import shutil
import subprocess

from documents import ASM, CATALOG, DISASM, PROGRAM, SOURCE, VORN, DocumentTest, blocks

DOCUMENTS = ["README.md", "CONTRIBUTING.md", *sorted(f"docs/{path.name}" for path in (SOURCE / "docs").glob("*.md"))]


def read(name):
    return (SOURCE / name).read_text(encoding="utf-8")


def anchors(text):
    """What headings are called in links."""
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")
            for heading in re.findall(r"^#+ (.*)$", text, re.MULTILINE)}


class Readme(DocumentTest):
    def setUp(self):
        """A copy of the repository as far as the commands see it, with the example converted."""
        super().setUp()
        shutil.copytree(SOURCE / "examples", self.dir / "examples")
        shutil.copytree(SOURCE / "examples", self.dir / "build" / "example")
        (self.dir / "build" / "release").mkdir()
        for program in (PROGRAM, ASM, CATALOG, DISASM, VORN):
            (self.dir / "build" / "release" / program.rpartition("/")[2]).symlink_to(program)
        self.converted = subprocess.run([PROGRAM, "roadster.xml", "roadster.vorn"], cwd=self.dir / "build" / "example",
                                        capture_output=True, timeout=120, check=True).stdout.decode()

    def test_commands_print_what_is_shown(self):
        sessions = blocks(read("README.md"), "console")
        self.assertEqual(len(sessions), 4)
        for session in sessions:
            steps = re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", session + "\n", re.MULTILINE)
            script = "exec 2>&1\n" + "".join(f"printf '\\001'\n{command}\n" for command, _ in steps)
            result = subprocess.run(["sh", "-c", script], cwd=self.dir, capture_output=True, timeout=120, check=False)
            outputs = result.stdout.decode().split("\001")[1:]
            self.assertEqual(len(outputs), len(steps))
            for (command, shown), output in zip(steps, outputs):
                with self.subTest(command):
                    self.assertEqual(output, shown)

    def test_pieces_shown_of_the_example_are_those_of_its_files(self):
        example = self.dir / "build" / "example"
        files = [self.converted, *((example / f"roadster.{extension}").read_text(encoding="utf-8")
                                   for extension in ("log", "tree", "vorn"))]
        fenced = re.findall(r"^```(\w*)\n(.*?)^```$", read("README.md"), re.DOTALL | re.MULTILINE)
        shown = [text for language, text in fenced if not language and ("roadster" in text or "Gateway" in text)]
        self.assertEqual(len(shown), 4)
        for text in shown:
            piece = text.partition("\nImport log:")[0]
            with self.subTest(piece.splitlines()[0]):
                self.assertTrue(any(piece in file for file in files))


class Links(DocumentTest):
    def test_links_lead_to_files_and_headings(self):
        count = 0
        for name in DOCUMENTS:
            for target in re.findall(r"\]\(([^)\s]+)\)", re.sub(r"```.*?```", "", read(name), flags=re.DOTALL)):
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
