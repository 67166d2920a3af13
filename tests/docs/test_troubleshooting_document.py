"""troubleshooting.md has every text that TARVEX prints on the console for people, and no other."""

import re
import unittest

from documents import SOURCE, read, section

# Where texts of the console stand: whole sources, and a part of the importer's texts.
SOURCES = ["driver/driver.cpp", "driver/overwrite_prompt.cpp", "export/exporter.cpp"]

# What nobody has to be told: progress and the usage.
PLAIN = ["TARVEX V%s", "Usage:", "  TARVEX <XMLfile>", "Converting to Kestrel...", "Output file '%s' written", "%c", "%s"]


def as_pattern(text):
    """A text of the sources, with anything for what is filled in, or goes on behind a blank."""
    pattern = re.sub(r"%[sdc]", ".*", re.escape(text.replace("\\n", "").strip()).replace("\\%", "%"))
    return pattern + ".*" if text.endswith(" ") else pattern


class ConsoleTexts(unittest.TestCase):
    def setUp(self):
        table = section(read("troubleshooting.md"), "What the console says")
        self.documented = re.findall(r"^\| `([^`]*)` \|", table, re.MULTILINE)
        self.printed = []
        for name in SOURCES:
            source = (SOURCE / "src" / name).read_text(encoding="utf-8")
            self.printed += re.findall(r'(?:std::printf|Tell)\(\s*"([^"]*)"', source)

    def test_every_text_is_there(self):
        told = [text for text in self.printed if not text.startswith(tuple(PLAIN))]
        self.assertEqual(len(told), 10)
        for text in told:
            with self.subTest(text):
                pattern = as_pattern(text)
                self.assertTrue(any(re.fullmatch(pattern, documented) for documented in self.documented))

    def test_no_text_is_another_one(self):
        texts = self.printed + re.findall(r'"([^"]*)"', (SOURCE / "src/import/log/texts.h").read_text(encoding="utf-8"))
        self.assertEqual(len(self.documented), 13)
        for documented in self.documented:
            with self.subTest(documented):
                self.assertTrue(any(len(text) > 8 and re.match(as_pattern(text), documented) for text in texts))
