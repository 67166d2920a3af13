"""The example of newer catalogs against files that were made by hand, and against its functions in the older forms."""

import json
import os
import shutil
import subprocess
import xml.etree.ElementTree

from support import SOURCE, ProgramTest

DISASM = os.environ["TARVEX_DISASM"]
EXPECTED = SOURCE / "tests" / "data" / "convertible"

CONVERSION = """[Conversion]
WarnOnOverwrite=0
MakeReadOnly=0
UniqueSignalNames=0
SafeLayout=1
WriteScaling=1
"""

# The older forms have to be read without the key.
IMPORT = """[Import]
FCatImportValidate=0
FCatImportLog=1
FCatTreeLog={name}.tree
"""
NEWER = "FCatImportNewer=1\n"

# What an older catalog can't leave out, and so says otherwise.
SCALING = {"factor", "minimum", "maximum", "step", "unit"}


def op_types():
    """The OPType of each operation element, as the example defines it."""
    root = xml.etree.ElementTree.parse(SOURCE / "examples" / "convertible.xml").getroot()
    return {definition.get(f"{kind}ID"): int(definition.findtext(f"{kind}OPType"), 16)
            for kind in ["PCmd", "MCmd", "PReport", "MReport"] for definition in root.iter(f"{kind}Def")}


def operations(catalog):
    """Block, function and OPType of every operation that a parameter of the catalog belongs to."""
    types = op_types()
    root = xml.etree.ElementTree.parse(catalog).getroot()
    return {(int(block.findtext("FBlockID"), 16), int(function.findtext("FunctionID"), 16), types[element.tag])
            for block in root.iter("FBlock") for function in block.iter("Function")
            for element in function.iter() if element.tag in types}


def identifier(operation):
    block, function, op_type = operation
    return block << 16 | function << 4 | op_type


def operation_of(line):
    """What the address of a line of a capture stands for."""
    block, _, function, op_type = line.split()[0].split(".")
    return int(block, 16), int(function, 16), int(op_type, 16)


class Convertible(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ["convertible.xml", "convertible.capture"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        shutil.copy(EXPECTED / "older.xml", self.dir)
        self.maxDiff = None

    def convert(self, name="convertible", newer=NEWER):
        """Converts and returns the database; the console must not tell a fault."""
        self.write("TARVEX.ini", IMPORT.format(name=name) + newer + CONVERSION)
        self.assert_run(self.run_program(f"{name}.xml", f"{name}.vorn"),
                        f"Parsing XML '{name}.xml'\n"
                        "Writing internal data structure...\n"
                        "Converting to Kestrel...\n"
                        f"Output file '{name}.vorn' written\n", 0)
        return json.loads((self.dir / f"{name}.vorn").read_text(encoding="utf-8"))

    def disasm(self, *arguments, stdin=""):
        return subprocess.run([DISASM, *arguments], cwd=self.dir, input=stdin.encode(), capture_output=True,
                              timeout=120, check=False)

    def assert_file(self, name, content):
        expected = EXPECTED.joinpath(name).read_bytes().replace(b"@DIR@", bytes(self.dir))
        if content != expected:  # a readable difference
            self.assertEqual(content.decode(), expected.decode())
        self.assertEqual(content, expected)

    def test_log_is_as_expected_byte_for_byte(self):
        self.convert()
        self.assert_file("convertible.log", (self.dir / "convertible.log").read_bytes())

    def test_tree_log_is_as_expected_byte_for_byte(self):
        self.convert()
        self.assert_file("convertible.tree", (self.dir / "convertible.tree").read_bytes())

    def test_database_is_as_expected_byte_for_byte(self):
        self.convert()
        self.assert_file("convertible.vorn", (self.dir / "convertible.vorn").read_bytes())

    def test_text_report_is_as_expected_byte_for_byte(self):
        result = self.disasm("convertible.xml", "convertible.capture")
        self.assert_file("convertible.capture.txt", result.stdout)
        self.assertEqual(result.stderr, b"tarvex-disasm: 113 messages, 31 faulty; 0 unreadable\n")
        self.assertEqual(result.returncode, 1)

    def test_every_operation_has_a_message_and_a_line_in_the_capture(self):
        wanted = operations(self.dir / "convertible.xml")
        self.assertEqual(len(wanted), 43)
        messages = self.convert()["messages"]
        self.assertEqual(sorted(message["identifier"] for message in messages), sorted(map(identifier, wanted)))
        lines = (self.dir / "convertible.capture").read_text().splitlines()
        self.assertLessEqual(wanted, {operation_of(line) for line in lines if line and not line.startswith("#")})

    def test_signals_are_those_of_the_older_forms(self):
        newer = {message["identifier"]: message for message in self.convert()["messages"]}
        older = {message["identifier"]: message for message in self.convert("older", newer="")["messages"]}
        self.assertEqual(len(older), 21)
        for message in [*newer.values(), *older.values()]:
            for signal in message["signals"]:
                for key in SCALING & set(signal):
                    del signal[key]
        for number, message in older.items():
            with self.subTest(message=message["name"]):
                self.assertEqual(newer[number], message)

    def test_messages_say_the_same_in_the_older_forms(self):
        self.write("older.ini", IMPORT.format(name="older"))
        self.write("newer.ini", IMPORT.format(name="convertible") + NEWER)
        wanted = operations(self.dir / "older.xml")
        lines = [line for line in (self.dir / "convertible.capture").read_text().splitlines()
                 if line and not line.startswith("#") and operation_of(line) in wanted]
        self.assertEqual({operation_of(line) for line in lines}, wanted)
        older = self.disasm("--settings", "older.ini", "older.xml", stdin="\n".join(lines))
        newer = self.disasm("--settings", "newer.ini", "convertible.xml", stdin="\n".join(lines))
        self.assertEqual(older.stderr.decode(), "tarvex-disasm: 30 messages, 2 faulty; 0 unreadable\n")
        self.assertEqual(newer.stdout.decode(), older.stdout.decode())
        self.assertEqual(newer.returncode, older.returncode)
