"""troubleshooting.md has every text that TARVEX prints on the console for people, and no other."""

import re
import unittest

from documents import SOURCE, read, section

# Where texts of the console stand beside those of the importer.
SOURCES = ["driver/driver.cpp", "driver/overwrite_prompt.cpp", "export/exporter.cpp"]

# What nobody has to be told: progress and the usage.
PLAIN = ["TARVEX V%s", "Usage:", "  TARVEX <XMLfile>", "Converting to Kestrel...", "Output file '%s' written", "%c", "%s"]
# The same of the importer's; ImportResult is followed by the numbers, and stands in the table with them.
PLAIN_OF_IMPORT = {"ParsingXml", "Parser", "WritingDataStructure"}


def as_pattern(text):
    """A text of the sources, with anything for what is filled in, or goes on behind a blank."""
    pattern = re.sub(r"%[sdc]", ".*", re.escape(text.replace("\\n", "").strip()).replace("\\%", "%"))
    return pattern + ".*" if text.endswith(" ") else pattern


def source_of(name):
    return (SOURCE / "src" / name).read_text(encoding="utf-8")


class ConsoleTexts(unittest.TestCase):
    def setUp(self):
        table = section(read("troubleshooting.md"), "What the console says")
        self.documented = re.findall(r"^\| `([^`]*)` \|", table, re.MULTILINE)
        self.printed = []
        for name in SOURCES:
            self.printed += re.findall(r'(?:std::printf|Tell)\(\s*"([^"]*)"', source_of(name))
        self.imported = self.texts_of_import()

    def texts_of_import(self):
        """Those that the importer sends to the console, its own by what it calls, and the parser's complaints."""
        texts = dict(re.findall(r'\{Text::(\w+),\s*"([^"]*)"', source_of("import/log/texts.h")))
        manager = source_of("import/import_manager.cpp")
        names = set(re.findall(r"(?:Send|Fail)\([^;]*?Text::(\w+)", manager))
        names |= set(re.findall(r"std::string text = Load\(Text::(\w+)", manager))
        names |= set(re.findall(r"Collect\(Text::(\w+)", source_of("import/xml/dom_error_handler.cpp")))
        self.assertLessEqual(PLAIN_OF_IMPORT, names)
        self.assertEqual(len(names), 12)
        spent = re.search(r'what\(\) .*"([^"]*)"', source_of("import/text/run_allowance.h")).group(1)
        texts["ErrorDuringParsing"] += " "  # the file
        return [texts[name].partition("\\n")[0] for name in sorted(names - PLAIN_OF_IMPORT)] + [spent]

    def test_every_text_is_there(self):
        told = [text for text in self.printed if not text.startswith(tuple(PLAIN))]
        self.assertEqual(len(told), 10)
        for text in told + self.imported:
            with self.subTest(text):
                pattern = as_pattern(text)
                self.assertTrue(any(re.fullmatch(pattern, documented) for documented in self.documented))

    def test_no_text_is_another_one(self):
        self.assertEqual(len(self.documented), 20)
        for documented in self.documented:
            with self.subTest(documented):
                self.assertTrue(any(len(text) > 8 and re.fullmatch(as_pattern(text), documented)
                                    for text in self.printed + self.imported))
