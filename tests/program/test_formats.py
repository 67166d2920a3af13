"""The formats of the output: what each extension gives, conversions there and back, and KCD as another program
reads it."""

import json
import os
import re
import sqlite3
import stat
import subprocess

from support import CATALOG, GENERATOR, SOURCE, ProgramTest

VORN = os.environ["TARVEX_VORN"]

# The sanitizers take many times the time.
LARGE = ["0.1", "20"] if os.environ["TARVEX_SANITIZED"] == "ON" else ["4", "200"]

# The interpreter of the distribution: only there the package with canmatrix is found.
KCD_PYTHON = "/usr/bin/python3"

# Prints what canmatrix makes of a KCD file. A big-endian start bit counts from the highest bit of byte 0.
KCD_READER = """
import json, sys
import canmatrix.formats
buses = canmatrix.formats.loadp(sys.argv[1])
print(json.dumps([{
    "bus": name,
    "nodes": [node.name for node in bus.ecus],
    "frames": [{
        "name": frame.name,
        "identifier": frame.arbitration_id.id,
        "extended": frame.arbitration_id.extended,
        "length": frame.size,
        "senders": frame.transmitters,
        "notes": frame.comment,
        "signals": [{
            "name": signal.name,
            "start": signal.start_bit,
            "length": signal.size,
            "little_endian": signal.is_little_endian,
            "signed": signal.is_signed,
            "multiplexor": signal.is_multiplexer,
            "group": signal.mux_val,
            "labels": sorted([int(value), text] for value, text in signal.values.items()),
        } for signal in frame.signals],
    } for frame in bus.frames],
} for name, bus in buses.items()]))
"""

# Prints the values of all signals with their place: physical ones, as canmatrix has them. It fills in what is missing.
KCD_SCALINGS = """
import json, sys
import canmatrix.formats
bus, = canmatrix.formats.loadp(sys.argv[1]).values()
print(json.dumps([[frame.name, signal.name, signal.is_multiplexer, signal.is_signed, float(signal.factor),
                   float(signal.offset), float(signal.min), float(signal.max), signal.unit]
                  for frame in bus.frames for signal in frame.signals]))
"""


def expected_signal(signal, has_multiplexor):
    """A signal of a Vorn file as a reader of KCD has to see it."""
    little_endian = signal["byte_order"] == "little_endian"
    start = signal["start_bit"]
    return {
        "name": signal["name"],
        "start": start if little_endian else start - start % 8 + 7 - start % 8,
        "length": signal["length"],
        "little_endian": little_endian,
        "signed": signal["signed"],
        "multiplexor": signal.get("multiplexor", False),
        "group": signal.get("multiplexer_value") if has_multiplexor else None,
        # Of several texts for one value the reader keeps the last.
        "labels": sorted([value, text] for value, text in dict(signal.get("values", [])).items()),
    }


def expected_frame(message):
    """A message of a Vorn file as a reader of KCD has to see it."""
    has_multiplexor = any("multiplexor" in signal for signal in message["signals"])
    signals = [expected_signal(signal, has_multiplexor) for signal in message["signals"]]
    # The file has the multiplexor in front, then its groups by their values, then all the others.
    signals.sort(key=lambda signal: (not signal["multiplexor"], signal["group"] is None, signal["group"] or 0))
    return {
        "name": message["name"],
        "identifier": message["identifier"],
        "extended": message["extended"] or message["identifier"] > 0x7FF,
        "length": message["length"],
        "senders": [message["node"]] if message["node"] is not None else [],
        "notes": "\n".join(f"{name} = {value}" for name, value in message["attributes"].items()),
        "signals": signals,
    }


# What is taken for a database that may be replaced.
OLD = '{"format": "Vorn"} old'


class FormatTest(ProgramTest):
    """What both catalogs have in common."""

    def convert(self, *names):
        """Converts the catalog into each of the files."""
        for name in names:
            result = self.run_program(self.catalog, name)
            self.assertEqual(result.returncode, 0, result.stdout.decode())
            self.assertTrue(result.stdout.decode().endswith(f"Output file '{name}' written\n"))

    def run_vorn(self, *arguments):
        return subprocess.run([VORN, *arguments], cwd=self.dir, capture_output=True, timeout=120, check=False)

    def convert_database(self, source, target):
        result = self.run_vorn("convert", source, target)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"", b""))

    def content(self, name):
        return (self.dir / name).read_bytes()

    def assert_same_files(self, first, second):
        self.assertTrue(self.content(first) == self.content(second), f"{first} and {second} differ")

    def assert_conversion_is_repeatable(self, *extensions):
        for extension in extensions:
            with self.subTest(extension=extension):
                self.convert(f"out.{extension}")
                first = self.content(f"out.{extension}")
                os.remove(self.dir / f"out.{extension}")
                self.convert(f"out.{extension}")
                self.assertTrue(self.content(f"out.{extension}") == first, f"out.{extension} differs")

    def database(self):
        return json.loads(self.content("out.vorn"))

    def load_kcd(self, name, reader=KCD_READER):
        result = subprocess.run([KCD_PYTHON, "-c", reader, name], cwd=self.dir, capture_output=True, timeout=300,
                                check=False)
        self.assertEqual(result.returncode, 0, f"canmatrix cannot load {name}:\n{result.stderr.decode()}")
        # Before its own output the library may say which formats it lacks.
        return json.loads(result.stdout.splitlines()[-1])

    def assert_kcd_is_complete(self):
        """Converts to KCD and compares everything that another program reads with the Vorn file."""
        self.convert("out.vorn", "out.kcd")
        database = self.database()
        buses = self.load_kcd("out.kcd")
        self.assertEqual([bus["bus"] for bus in buses], [database["database"]])
        self.assertEqual(buses[0]["nodes"], [node["name"] for node in database["nodes"]])
        frames = buses[0]["frames"]
        expected = [expected_frame(message) for message in database["messages"]]
        for count in [len, self.count_signals, self.count_labels]:
            self.assertGreater(count(expected), 0)
            self.assertEqual(count(frames), count(expected))
        for frame, message in zip(frames, expected):
            self.assertEqual(frame, message)

    @staticmethod
    def count_signals(frames):
        return sum(len(frame["signals"]) for frame in frames)

    @staticmethod
    def count_labels(frames):
        return sum(len(signal["labels"]) for frame in frames for signal in frame["signals"])

    def assert_round_trips(self):
        """Every way through the formats that can be read ends with the bytes of the direct conversion."""
        self.convert("out.vorn", "out.sqlite", "out.kcd")
        for way in [["vorn"], ["sqlite"], ["sqlite", "vorn"], ["vorn", "sqlite"], ["db", "sqlite3", "vorn", "sqlite"]]:
            for first in ["out.vorn", "out.sqlite"]:
                with self.subTest(first=first, way=way):
                    source = first
                    for step, extension in enumerate(way):
                        target = f"step{step}.{extension}"
                        self.convert_database(source, target)
                        source = target
                    self.assert_same_files(source, f"out.{way[-1]}")
        for first in ["out.vorn", "out.sqlite"]:
            self.convert_database(first, "again.kcd")
            self.assert_same_files("again.kcd", "out.kcd")


class ExampleFormats(FormatTest):
    catalog = "roadster.xml"

    def setUp(self):
        super().setUp()
        self.copy_examples()

    def test_the_extension_chooses_the_format(self):
        beginnings = {"vorn": b'{\n"format": "Vorn",\n', "txt": b'{\n"format": "Vorn",\n',
                      "sqlite": b"SQLite format 3\0", "sqlite3": b"SQLite format 3\0", "db": b"SQLite format 3\0",
                      "DB": b"SQLite format 3\0", "kcd": b"<?xml ", "KCD": b"<?xml "}
        for extension, beginning in beginnings.items():
            with self.subTest(extension=extension):
                self.convert(f"out.{extension}")
                self.assertTrue(self.content(f"out.{extension}").startswith(beginning))

    def test_all_extensions_of_sqlite_give_the_same_bytes(self):
        self.convert("out.sqlite", "out.sqlite3", "out.db")
        self.assert_same_files("out.sqlite", "out.sqlite3")
        self.assert_same_files("out.sqlite", "out.db")

    def test_the_database_comes_back_byte_for_byte(self):
        self.assert_round_trips()

    def test_two_conversions_give_identical_bytes(self):
        self.assert_conversion_is_repeatable("vorn", "sqlite", "kcd")

    def test_sqlite_has_everything_that_vorn_has(self):
        self.convert("out.vorn", "out.sqlite")
        database = self.database()
        connection = sqlite3.connect(self.dir / "out.sqlite")
        self.addCleanup(connection.close)
        self.assertEqual(connection.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
        self.assertEqual(connection.execute("PRAGMA foreign_key_check").fetchall(), [])
        self.assertEqual(connection.execute("SELECT name FROM database").fetchall(), [(database["database"],)])
        self.assertEqual(connection.execute("SELECT name FROM node ORDER BY id").fetchall(),
                         [(node["name"],) for node in database["nodes"]])
        self.assertEqual(
            connection.execute("SELECT identifier, extended, message.name, length, node.name FROM message "
                               "LEFT JOIN node ON node.id = node_id ORDER BY message.id").fetchall(),
            [(message["identifier"], int(message["extended"]), message["name"], message["length"], message["node"])
             for message in database["messages"]])
        self.assertEqual(
            connection.execute("SELECT message_id, name, start_bit, length, byte_order, signed, multiplexor, "
                               "multiplexer_value FROM signal ORDER BY id").fetchall(),
            [(number, signal["name"], signal["start_bit"], signal["length"], signal["byte_order"],
              int(signal["signed"]), int(signal.get("multiplexor", False)), signal.get("multiplexer_value"))
             for number, message in enumerate(database["messages"], 1) for signal in message["signals"]])
        self.assertEqual(
            connection.execute("SELECT value, text FROM value_description ORDER BY signal_id, position").fetchall(),
            [tuple(pair) for message in database["messages"] for signal in message["signals"]
             for pair in signal.get("values", [])])
        for table, objects in [("node", database["nodes"]), ("message", database["messages"])]:
            self.assertEqual(
                connection.execute(f"SELECT {table}_id, name, value FROM {table}_attribute JOIN attribute_definition "
                                   f"ON id = definition_id ORDER BY {table}_attribute.rowid").fetchall(),
                [(number, name, value) for number, each in enumerate(objects, 1)
                 for name, value in each["attributes"].items()])
        self.assertEqual(
            connection.execute("SELECT name, value FROM database_attribute JOIN attribute_definition "
                               "ON id = definition_id ORDER BY database_attribute.rowid").fetchall(),
            list(database["attributes"].items()))

    def test_canmatrix_reads_the_whole_database(self):
        self.assert_kcd_is_complete()

    def test_what_canmatrix_reads_has_every_kind_of_signal(self):
        # Otherwise the comparison above would say little.
        self.convert("out.kcd")
        signals = [signal for frame in self.load_kcd("out.kcd")[0]["frames"] for signal in frame["signals"]]
        for what, found in {
                "big-endian": [signal for signal in signals if not signal["little_endian"]],
                "little-endian": [signal for signal in signals if signal["little_endian"]],
                "signed": [signal for signal in signals if signal["signed"]],
                "multiplexor": [signal for signal in signals if signal["multiplexor"]],
                "multiplexed": [signal for signal in signals if signal["group"] is not None],
                "with labels": [signal for signal in signals if signal["labels"]]}.items():
            self.assertTrue(found, what)


# Name, exponent, bounds, step, unit, and whether the type is signed: every exponent that the disassembler has in its
# table, and some more.
UNITS = ["dB", "km/h", "°C", "%", "1/min", "not_defined", "none"]
NUMBERS = [(f"N{index}", exponent, (-2.5 * index, 7.25 * index) if index % 3 else None, index % 4 / 8,
            UNITS[index % len(UNITS)], index % 2 == 0)
           for index, exponent in enumerate([*range(-5, 6), -12, -9, 9, 17, -400, 400], 1)]


def number_function(index, number):
    name, exponent, bounds, step, unit, signed = number
    ranges = "" if bounds is None else f"<RangeMin>{bounds[0]}</RangeMin><RangeMax>{bounds[1]}</RangeMax>"
    basis = '<TSWord TypeRef="type_signed_word"/>' if signed else '<TUWord TypeRef="type_unsigned_word"/>'
    return f"""<Function><FunctionID>0x{0x200 + index:X}</FunctionID><FunctionName>{name}</FunctionName>
      <FunctionClass><Property><PUnclassified><PUParam><ParamName>{name}</ParamName>
      <PUParamOPType><PReportStatus><ParamPos>1</ParamPos></PReportStatus></PUParamOPType>
      <PUParamType><TNumber><BasisDataType>{basis}</BasisDataType><Exponent>{exponent}</Exponent>{ranges}
      <Step>{step}</Step><Unit UnitRef="unit_{UNITS.index(unit)}"/></TNumber></PUParamType></PUParam>
      </PUnclassified></Property></FunctionClass></Function>"""


def number_catalog():
    functions = "".join(number_function(index, number) for index, number in enumerate(NUMBERS))
    units = "".join(f'<UnitDef UnitID="unit_{index}"><UnitDefName>{name}</UnitDefName><UnitDefCode>1</UnitDefCode>'
                    "</UnitDef>" for index, name in enumerate(UNITS))
    types = "".join(f'<TypeDef TypeID="type_{name}"><TDefName>T</TDefName><TDefSize>2</TDefSize></TypeDef>'
                    for name in ["unsigned_word", "signed_word"])
    return f"""<FunctionCatalog><FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>{functions}</FBlock>
      <Definition>{types}{units}</Definition></FunctionCatalog>"""


class NumberScalings(FormatTest):
    """What other programs read of the scalings is what the catalog says."""

    catalog = "cat.xml"

    def setUp(self):
        super().setUp()
        self.write_settings(WriteScaling=1)
        self.write("cat.xml", number_catalog())

    @staticmethod
    def expected(number):
        _, exponent, bounds, step, unit, _ = number
        minimum, maximum = bounds or (None, None)
        factor = float(f"1e{max(-307, min(308, exponent))}")
        return (factor, minimum, maximum, step or None, None if unit in ("none", "not_defined") else unit)

    def test_vorn_has_them(self):
        self.convert("out.vorn")
        signals = {signal["name"]: signal for message in self.database()["messages"] for signal in message["signals"]}
        self.assertEqual(len(signals), len(NUMBERS))
        for number in NUMBERS:
            with self.subTest(number=number):
                signal = signals[number[0]]
                self.assertEqual(tuple(signal.get(key) for key in ["factor", "minimum", "maximum", "step", "unit"]),
                                 self.expected(number))

    def test_sqlite_has_them(self):
        self.convert("out.sqlite")
        connection = sqlite3.connect(self.dir / "out.sqlite")
        self.addCleanup(connection.close)
        rows = connection.execute("SELECT name, factor, minimum, maximum, step, unit FROM signal_scaling "
                                  "JOIN signal ON signal.id = signal_id ORDER BY signal_id").fetchall()
        self.assertEqual(rows, [(number[0], *self.expected(number)) for number in NUMBERS])

    def test_canmatrix_reads_them(self):
        self.convert("out.kcd")
        signals = self.load_kcd("out.kcd", KCD_SCALINGS)
        self.assertEqual([signal[1] for signal in signals], [number[0] for number in NUMBERS])
        for signal, number in zip(signals, NUMBERS):
            with self.subTest(number=number):
                factor, minimum, maximum, _, unit = self.expected(number)
                self.assertEqual(signal[3:6], [number[5], factor, 0])
                self.assertEqual(signal[8], unit or "")
                if minimum is not None:
                    self.assertEqual(signal[6:8], [minimum, maximum])

    def test_the_database_comes_back_byte_for_byte(self):
        self.assert_round_trips()


class ScaledExample(FormatTest):
    catalog = "roadster.xml"

    def setUp(self):
        super().setUp()
        self.copy_examples()
        settings = (self.dir / "TARVEX.ini").read_text(encoding="utf-8")
        self.write("TARVEX.ini", settings.replace("[Conversion]", "[Conversion]\nWriteScaling=1"))

    def test_the_database_comes_back_byte_for_byte(self):
        self.assert_round_trips()

    def test_canmatrix_reads_the_whole_database(self):
        self.assert_kcd_is_complete()

    def test_without_its_scalings_the_database_is_the_ordinary_one(self):
        self.convert("out.vorn")
        scaling = r', "factor": [^{}]*(?=})'
        rest, count = re.subn(scaling, "", self.content("out.vorn").decode())
        ordinary = (SOURCE / "tests" / "data" / "example" / "roadster.vorn").read_text(encoding="utf-8")
        self.assertEqual(rest.replace('"database": "out"', '"database": "roadster"'), ordinary)
        self.assertGreater(count, 50)

    def test_canmatrix_reads_what_vorn_has(self):
        self.convert("out.vorn", "out.kcd")
        found = {(signal[0], signal[1]): signal[2:] for signal in self.load_kcd("out.kcd", KCD_SCALINGS)}
        scaled = [(message["name"], signal) for message in self.database()["messages"]
                  for signal in message["signals"] if "factor" in signal]
        self.assertGreater(len({signal["unit"] for _, signal in scaled if "unit" in signal}), 5)
        for message, signal in scaled:
            with self.subTest(message=message, signal=signal["name"]):
                is_multiplexor, signed, factor, offset, minimum, maximum, unit = found[message, signal["name"]]
                self.assertEqual((factor, offset, unit), (signal["factor"], 0, signal.get("unit", "")))
                self.assertEqual((is_multiplexor, signed), (signal.get("multiplexor", False), signal["signed"]))
                if "minimum" in signal:
                    self.assertEqual((minimum, maximum), (signal["minimum"], signal["maximum"]))


class LargeCatalogFormats(FormatTest):
    catalog = "cat.xml"

    def setUp(self):
        super().setUp()
        self.write_settings()
        with open(self.dir / "cat.xml", "wb") as catalog:
            subprocess.run([GENERATOR, "--megabytes", LARGE[0], "--blocks", LARGE[1]], stdout=catalog, check=True)

    def test_the_database_comes_back_byte_for_byte(self):
        self.assert_round_trips()

    def test_canmatrix_reads_the_whole_database(self):
        self.assert_kcd_is_complete()

    def test_two_conversions_give_identical_bytes(self):
        self.assert_conversion_is_repeatable("sqlite", "kcd")


class Outputs(FormatTest):
    catalog = "cat.xml"

    def setUp(self):
        super().setUp()
        self.write_settings()
        self.write("cat.xml", CATALOG)

    def test_a_read_only_output_is_refused(self):
        self.convert("in.vorn")
        for name in ["out.vorn", "out.sqlite", "out.sqlite3", "out.db", "out.kcd"]:
            with self.subTest(name=name):
                os.chmod(self.write(name, OLD), 0o444)
                result = self.run_program("cat.xml", name)
                self.assertEqual(result.returncode, 255)
                self.assertTrue(result.stdout.decode().endswith("Failed to export to vorn!\n"))
                result = self.run_vorn("convert", "in.vorn", name)
                self.assertEqual((result.returncode, result.stdout), (2, b""))
                self.assertTrue(result.stderr.decode().startswith(f"vorn: {name}: "))
                self.assertEqual(self.content(name), OLD.encode())
                self.assertEqual(stat.S_IMODE(os.stat(self.dir / name).st_mode), 0o444)

    def test_a_setting_makes_every_output_read_only(self):
        self.write_settings(MakeReadOnly=1)
        for name in ["out.vorn", "out.sqlite", "out.kcd"]:
            with self.subTest(name=name):
                self.convert(name)
                self.assertEqual(os.stat(self.dir / name).st_mode & 0o222, 0)

    def test_failure_leaves_the_old_file_and_nothing_else(self):
        self.convert("in.vorn")
        for name in ["out.vorn", "out.sqlite", "out.kcd"]:
            self.write(name, OLD)
        before = sorted(os.listdir(self.dir))
        # No file may grow beyond one block of 512 bytes, as on a full disk; the signal of that is ignored.
        script = 'trap "" XFSZ; ulimit -f 1; exec "$0" convert in.vorn "$1"'
        for name in ["out.vorn", "out.sqlite", "out.kcd"]:
            with self.subTest(name=name):
                result = subprocess.run(["/bin/sh", "-c", script, VORN, name], cwd=self.dir, capture_output=True,
                                        check=False)
                self.assertEqual((result.returncode, result.stdout), (2, b""))
                self.assertTrue(result.stderr.decode().startswith(f"vorn: {name}: "), result.stderr)
                self.assertEqual(self.content(name), OLD.encode())
                self.assertEqual(sorted(os.listdir(self.dir)), before)

    def test_a_database_that_cannot_be_read_leaves_the_old_file(self):
        self.convert("in.vorn", "in.sqlite")
        whole = {name: self.content(name) for name in ["in.vorn", "in.sqlite"]}
        for name, content in whole.items():
            self.write(name, content[:len(content) // 2])
        self.write("in.kcd", "<NetworkDefinition/>")
        for source in ["in.vorn", "in.sqlite", "in.kcd", "none.vorn", "none.db"]:
            for target in ["out.vorn", "out.sqlite", "out.kcd"]:
                with self.subTest(source=source, target=target):
                    self.write(target, OLD)
                    result = self.run_vorn("convert", source, target)
                    self.assertEqual((result.returncode, result.stdout), (2, b""))
                    self.assertTrue(result.stderr.decode().startswith(f"vorn: {source}: "), result.stderr)
                    self.assertEqual(self.content(target), OLD.encode())

    def test_a_database_is_converted_onto_itself(self):
        self.convert("out.vorn", "out.sqlite")
        for name in ["out.vorn", "out.sqlite"]:
            with self.subTest(name=name):
                before = self.content(name)
                self.convert_database(name, name)
                self.assertEqual(self.content(name), before)
