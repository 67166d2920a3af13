"""What the tests of the documents share: parts of documents, and the converted example."""

import os
import re
import subprocess

from support import PROGRAM, SOURCE, ProgramTest

DOCS = SOURCE / "docs"
VORN = os.environ["TARVEX_VORN"]
DISASM = os.environ["TARVEX_DISASM"]
CATALOG = os.environ["TARVEX_CATALOG"]
ASM = os.environ["TARVEX_ASM"]


def read(name):
    return (DOCS / name).read_text(encoding="utf-8")


def blocks(text, language):
    """The contents of all code blocks in that language, without the last line feed."""
    return re.findall(rf"^```{language}\n(.*?)\n```$", text, re.DOTALL | re.MULTILINE)


def steps(text):
    """The commands of all sessions in a document, each with what it prints."""
    return [step for session in blocks(text, "console")
            for step in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", session + "\n", re.MULTILINE)]


def section(text, heading):
    """The text from a heading to the next one."""
    found = re.search(rf"^## {re.escape(heading)}\n(.*?)(?=^## |\Z)", text, re.DOTALL | re.MULTILINE)
    return found.group(1)


def first_cells(text):
    """The names in backquotes in the first cells of the tables' rows."""
    names = []
    for line in text.splitlines():
        if line.startswith("| `"):
            names += re.findall(r"`([^`]+)`", line.split("|")[1])
    return names


class DocumentTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.maxDiff = None

    def convert_example(self, output):
        """Converts the example in the test's own directory; the path of what came out."""
        self.copy_examples()
        return self.convert("roadster.xml", output)

    def convert(self, catalog, output):
        self.succeed(PROGRAM, catalog, output)
        return self.dir / output

    def vorn(self, *arguments):
        return subprocess.run([VORN, *map(str, arguments)], cwd=self.dir, capture_output=True, timeout=120, check=False)

    def succeed(self, *command):
        """Runs a program that has to succeed; its standard output."""
        result = subprocess.run([*map(str, command)], cwd=self.dir, capture_output=True, timeout=300, check=False)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

    def with_programs(self):
        """An environment in which the programs are found by their names."""
        programs = self.dir / "programs"
        programs.mkdir(exist_ok=True)
        for program in (PROGRAM, ASM, CATALOG, DISASM, VORN):
            (programs / program.rpartition("/")[2]).symlink_to(program)
        return {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}

    def write_shown_database(self):
        """The database that vorn.md shows, as a file."""
        return self.write("cabin.vorn", blocks(read("vorn.md"), "json")[0] + "\n")
