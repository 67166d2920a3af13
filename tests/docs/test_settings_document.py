"""examples/template.ini has every setting at its default, as tarvex.ini.5 tells it, and so changes nothing."""

import re
import shutil
import stat
import unittest

from documents import SOURCE, DocumentTest, read

TEMPLATE = SOURCE / "examples" / "template.ini"

# What the man page says of a default, and how the template writes it.
VALUES = {"1": {"1"}, "0": {"0"}, "off": {"0"}, "none": {"", "-1"}, "all": {""}}


def settings(text):
    """Sections with their keys and values, in order."""
    sections = {}
    for line in text.splitlines():
        if line.startswith("["):
            keys = sections.setdefault(line.strip("[]"), {})
        elif line and not line.startswith(";"):
            key, _, value = line.partition("=")
            keys[key] = value
    return sections


def described_settings(page):
    """The same as the man page has it, with its words for the defaults."""
    sections = {}
    for heading, content in re.findall(r"^\.Ss \[(\w+)\]\n(.*?)^\.El$", page, re.DOTALL | re.MULTILINE):
        items = re.findall(r"^\.It Cm (\w+)\n(.*?)(?=^\.It |\Z)", content, re.DOTALL | re.MULTILINE)
        sections[heading] = {key: re.search(r"^Default: (\w+)\.$", text, re.MULTILINE).group(1) for key, text in items}
    return sections


class TemplateText(unittest.TestCase):
    def test_keys_and_defaults_are_those_of_the_man_page(self):
        template = settings(TEMPLATE.read_text(encoding="utf-8"))
        described = described_settings(read("man/tarvex.ini.5"))
        self.assertEqual({section: list(keys) for section, keys in template.items()},
                         {section: list(keys) for section, keys in described.items()})
        self.assertEqual(sum(map(len, template.values())), 20)
        for section, keys in described.items():
            for key, default in keys.items():
                with self.subTest(key):
                    self.assertIn(template[section][key], VALUES[default])

    def test_every_key_has_a_comment_above_it(self):
        lines = TEMPLATE.read_text(encoding="utf-8").splitlines()
        for above, line in zip(lines, lines[1:]):
            if "=" in line and not line.startswith(";"):
                self.assertTrue(above.startswith("; "), line)


class TemplateConversion(DocumentTest):
    def run_with(self, name, content):
        """Two runs in a directory of its own, the second with the output there: what each says, and all files."""
        directory = self.dir / name / "run"
        directory.mkdir(parents=True)
        for file in ("roadster.xml", "fcat.dtd"):
            shutil.copy(SOURCE / "examples" / file, directory)
        (directory / "TARVEX.ini").write_bytes(content)
        results = [self.run_program("roadster.xml", "roadster.vorn", stdin=b"n", cwd=directory) for _ in range(2)]
        files = {path.name: (path.read_bytes(), stat.filemode(path.stat().st_mode))
                 for path in directory.iterdir() if path.name != "TARVEX.ini"}
        return [(result.returncode, result.stdout, result.stderr) for result in results], files

    def test_the_template_gives_the_same_as_an_empty_file(self):
        empty = self.run_with("empty", b"")
        self.assertEqual([status for status, _, _ in empty[0]], [0, 255])
        self.assertEqual(sorted(empty[1]), ["fcat.dtd", "roadster.vorn", "roadster.xml"])
        self.assertEqual(self.run_with("template", TEMPLATE.read_bytes()), empty)
