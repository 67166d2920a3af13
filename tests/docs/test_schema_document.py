"""vorn.schema.json takes what is written and nothing else."""

import copy
import json
import unittest

import jsonschema

from documents import DocumentTest, blocks, read
from support import GENERATOR

SCHEMA = json.loads(read("vorn.schema.json"))
SHOWN = json.loads(blocks(read("vorn.md"), "json")[0])

INTEGER, ENUMERATION = ["attribute_definitions", 1], ["attribute_definitions", 2]
STRING = ["attribute_definitions", 0]
MESSAGE = ["messages", 0]
VOLUME, MUTE = [*MESSAGE, "signals", 0], [*MESSAGE, "signals", 1]
SWITCH, SIZE = ["messages", 1, "signals", 0], ["messages", 1, "signals", 2]
GONE = object()

# What is changed, the new value, and the place of the only fault.
BROKEN = [
    ("another format", ["format"], "Vor", ["format"]),
    ("another version", ["version"], 2, ["version"]),
    ("the version as a text", ["version"], "1", ["version"]),
    ("a flag as the version", ["version"], True, ["version"]),
    ("an unknown key at the top", ["comment"], "", []),
    *[(f"no {key}", [key], GONE, []) for key in SHOWN],
    ("the name of the database is no text", ["database"], None, ["database"]),
    ("a zero character in the name of the database", ["database"], "a\0", ["database"]),
    ("attributes as a list", ["attributes"], [], ["attributes"]),
    ("a flag as an attribute", ["attributes", "BusType"], True, ["attributes", "BusType"]),
    ("null as an attribute", ["attributes", "BusType"], None, ["attributes", "BusType"]),
    ("a list as an attribute", ["attributes", "BusType"], ["MOST"], ["attributes", "BusType"]),
    ("a long name of an attribute", ["attributes", 33 * "a"], "", ["attributes"]),
    ("definitions as an object", ["attribute_definitions"], {}, ["attribute_definitions"]),
    ("a definition of signals", [*INTEGER, "object"], "signal", [*INTEGER, "object"]),
    ("an unknown type", [*INTEGER, "type"], "float", [*INTEGER, "type"]),
    ("no type", [*INTEGER, "type"], GONE, INTEGER),
    ("no object", [*INTEGER, "object"], GONE, INTEGER),
    ("no name of a definition", [*INTEGER, "name"], GONE, INTEGER),
    ("no default", [*INTEGER, "default"], GONE, INTEGER),
    ("an integer without minimum", [*INTEGER, "minimum"], GONE, INTEGER),
    ("an integer without maximum", [*INTEGER, "maximum"], GONE, INTEGER),
    ("an integer with values", [*INTEGER, "values"], ["A"], INTEGER),
    ("a text as the default of an integer", [*INTEGER, "default"], "0", [*INTEGER, "default"]),
    ("null as the minimum", [*INTEGER, "minimum"], None, [*INTEGER, "minimum"]),
    ("a string with a minimum", [*STRING, "minimum"], 0, STRING),
    ("a string with values", [*STRING, "values"], ["A"], STRING),
    ("a number as the default of a string", [*STRING, "default"], 0, [*STRING, "default"]),
    ("an enumeration without values", [*ENUMERATION, "values"], GONE, ENUMERATION),
    ("an enumeration with a maximum", [*ENUMERATION, "maximum"], 1, ENUMERATION),
    ("an empty value as the only one of an enumeration", [*ENUMERATION, "values"], [""], [*ENUMERATION, "values"]),
    ("a value of an enumeration that ends with a line feed", [*ENUMERATION, "values", 0], "A\n",
     [*ENUMERATION, "values", 0]),
    ("a number as a value of an enumeration", [*ENUMERATION, "values", 0], 0, [*ENUMERATION, "values", 0]),
    ("a number as the default of an enumeration", [*ENUMERATION, "default"], 0, [*ENUMERATION, "default"]),
    ("a node without a name", ["nodes", 0, "name"], GONE, ["nodes", 0]),
    ("a node without attributes", ["nodes", 0, "attributes"], GONE, ["nodes", 0]),
    ("a node with an address", ["nodes", 0, "address"], 1, ["nodes", 0]),
    ("a long name of a node", ["nodes", 0, "name"], 33 * "a", ["nodes", 0, "name"]),
    ("a zero character in the name of a node", ["nodes", 0, "name"], "a\0b", ["nodes", 0, "name"]),
    *[(f"a message without {key}", [*MESSAGE, key], GONE, MESSAGE) for key in SHOWN["messages"][0]],
    ("an unknown key in a message", [*MESSAGE, "cycle"], 100, MESSAGE),
    ("an identifier with bit 31", [*MESSAGE, "identifier"], 0x80000000, [*MESSAGE, "identifier"]),
    ("a negative identifier", [*MESSAGE, "identifier"], -1, [*MESSAGE, "identifier"]),
    ("half an identifier", [*MESSAGE, "identifier"], 0.5, [*MESSAGE, "identifier"]),
    ("an identifier as a text", [*MESSAGE, "identifier"], "0x400", [*MESSAGE, "identifier"]),
    ("a number as extended", [*MESSAGE, "extended"], 1, [*MESSAGE, "extended"]),
    ("a long message", [*MESSAGE, "length"], 65536, [*MESSAGE, "length"]),
    ("a number as a node", [*MESSAGE, "node"], 0, [*MESSAGE, "node"]),
    ("signals as an object", [*MESSAGE, "signals"], {}, [*MESSAGE, "signals"]),
    *[(f"a signal without {key}", [*VOLUME, key], GONE, VOLUME) for key in SHOWN["messages"][0]["signals"][0]],
    ("an unknown key in a signal", [*VOLUME, "offset"], 1, VOLUME),
    ("a start bit too high", [*VOLUME, "start_bit"], 65536, [*VOLUME, "start_bit"]),
    ("a negative start bit", [*VOLUME, "start_bit"], -1, [*VOLUME, "start_bit"]),
    ("a signal too long", [*VOLUME, "length"], 65536, [*VOLUME, "length"]),
    ("an unknown byte order", [*VOLUME, "byte_order"], "big", [*VOLUME, "byte_order"]),
    ("a number as signed", [*VOLUME, "signed"], 0, [*VOLUME, "signed"]),
    ("values as an object", [*MUTE, "values"], {"1": "on"}, [*MUTE, "values"]),
    ("a value without a text", [*MUTE, "values", 0], [1], [*MUTE, "values", 0]),
    ("a value with two texts", [*MUTE, "values", 0], [1, "a", "b"], [*MUTE, "values", 0]),
    ("a value the wrong way round", [*MUTE, "values", 0, 0], "1", [*MUTE, "values", 0, 0]),
    ("a negative value", [*MUTE, "values", 0, 0], -1, [*MUTE, "values", 0, 0]),
    ("a value beyond 32 bits", [*MUTE, "values", 0, 0], 1 << 32, [*MUTE, "values", 0, 0]),
    ("a long text of a value", [*MUTE, "values", 0, 1], 33 * "a", [*MUTE, "values", 0, 1]),
    ("a number as a multiplexor", [*SWITCH, "multiplexor"], 1, [*SWITCH, "multiplexor"]),
    ("a negative multiplexer value", [*VOLUME, "multiplexer_value"], -1, [*VOLUME, "multiplexer_value"]),
    ("a multiplexer value beyond 32 bits", [*VOLUME, "multiplexer_value"], 1 << 32, [*VOLUME, "multiplexer_value"]),
    ("null as a multiplexer value", [*VOLUME, "multiplexer_value"], None, [*VOLUME, "multiplexer_value"]),
    *[(f"{key} without a factor", [*VOLUME, key], value, VOLUME)
      for key, value in [("minimum", 0), ("maximum", 0), ("step", 1), ("unit", "dB")]],
    ("a range without its factor", [*SIZE, "factor"], GONE, SIZE),
    *[(f"a text as {key}", [*SIZE, key], "1", [*SIZE, key]) for key in ["factor", "minimum", "maximum", "step"]],
    *[(f"null as {key}", [*SIZE, key], None, [*SIZE, key]) for key in ["factor", "minimum", "maximum", "step", "unit"]],
    ("a factor of zero", [*SIZE, "factor"], 0, [*SIZE, "factor"]),
    ("a negative factor", [*SIZE, "factor"], -0.1, [*SIZE, "factor"]),
    ("a number as a unit", [*SIZE, "unit"], 1, [*SIZE, "unit"]),
    ("a long unit", [*SIZE, "unit"], 201 * "a", [*SIZE, "unit"]),
    ("a zero character in a unit", [*SIZE, "unit"], "a\0", [*SIZE, "unit"]),
]

# What is never written, although it means something: `vorn` takes it.
NEVER_WRITTEN = [
    ("a multiplexor that is none", [*VOLUME, "multiplexor"], False, [*VOLUME, "multiplexor"]),
    ("an empty list of values", [*VOLUME, "values"], [], [*VOLUME, "values"]),
    ("an empty unit", [*SIZE, "unit"], "", [*SIZE, "unit"]),
]

# What the schema cannot tell, in the order of vorn.md: texts of the file shown, and what takes their place.
BEYOND_THE_SCHEMA = [
    ("order at the top", '"format": "Vorn",\n"version": 1,', '"version": 1,\n"format": "Vorn",'),
    ("a key twice", '"name": "Antenna", ', '"name": "Antenna", "name": "Antenna", '),
    ("an attribute that is not defined", '{"MostNodeAdr": 257}', '{"MostInstId": 1}'),
    ("an attribute of another type", '{"MostNodeAdr": 257}', '{"MostNodeAdr": "257"}'),
    ("an unknown value of an enumeration", '"FunctionClass": "Property"}', '"FunctionClass": "Event"}'),
    ("an attribute that is defined twice", '"name": "FunctionClass"', '"name": "MostInstId"'),
    ("a node that does not exist", '"node": "Antenna"', '"node": "Roof"'),
    ("a name of 32 characters and 33 bytes", '"name": "Menu"', '"name": "' + 31 * "a" + 'é"'),
    ("a unit of 200 characters and 201 bytes", '"unit": "MB"', '"unit": "' + 199 * "a" + 'é"'),
    ("a whole number with a point", '"start_bit": 8', '"start_bit": 8.0'),
]


def changed(path, value):
    database = copy.deepcopy(SHOWN)
    *place, key = path
    record = database
    for step in place:
        record = record[step]
    if value is GONE:
        del record[key]
    else:
        record[key] = value
    return database


class Schema(DocumentTest):
    def setUp(self):
        super().setUp()
        self.validator = jsonschema.Draft202012Validator(SCHEMA)

    def fault_places(self, database):
        places = []
        for error in self.validator.iter_errors(database):
            # A value may break several rules at once.
            if list(error.absolute_path) not in places:
                places.append(list(error.absolute_path))
        return places

    def vorn_takes(self, content):
        self.write("d.vorn", content)
        result = self.vorn("convert", "d.vorn", "out.vorn")
        self.assertIn(result.returncode, (0, 2))
        if result.returncode == 2:
            self.assertTrue(result.stderr.startswith(b"vorn: d.vorn: "), result.stderr)
        return result.returncode == 0

    def test_the_schema_is_one(self):
        self.assertEqual(SCHEMA["$schema"], jsonschema.Draft202012Validator.META_SCHEMA["$id"])
        jsonschema.Draft202012Validator.check_schema(SCHEMA)

    def test_the_file_shown_is_valid(self):
        self.assertEqual(self.fault_places(SHOWN), [])

    def test_the_converted_example_is_valid(self):
        database = json.loads(self.convert_example("roadster.vorn").read_text(encoding="utf-8"))
        self.assertEqual(len(database["messages"]), 144)
        self.assertEqual(self.fault_places(database), [])

    def test_a_large_catalog_is_valid(self):
        self.write("large.xml", self.succeed(GENERATOR, "--megabytes", "4", "--blocks", "200"))
        self.write_settings(FCatImportValidate=0)
        database = json.loads(self.convert("large.xml", "large.vorn").read_text(encoding="utf-8"))
        self.assertEqual(len(database["nodes"]), 200)
        self.assertGreater(sum(len(message["signals"]) for message in database["messages"]), 1000)
        self.assertEqual(self.fault_places(database), [])

    def test_the_limits_themselves_are_valid(self):
        for path, value in [
            ([*MESSAGE, "identifier"], 0), ([*MESSAGE, "identifier"], 0x7FFFFFFF), ([*MESSAGE, "length"], 65535),
            ([*MESSAGE, "name"], ""), ([*MESSAGE, "name"], 32 * "a"), ([*VOLUME, "start_bit"], 65535),
            ([*VOLUME, "length"], 65535), ([*MUTE, "values", 0, 0], 0xFFFFFFFF),
            ([*VOLUME, "multiplexer_value"], 0), ([*VOLUME, "multiplexer_value"], 0xFFFFFFFF),
            ([*INTEGER, "default"], 0.5), ([*ENUMERATION, "values"], []), ([*ENUMERATION, "default"], "Event"),
            (["database"], 1000 * "a"), (["messages"], []),
            ([*VOLUME, "factor"], 1e-307), ([*VOLUME, "factor"], 1e308), ([*SIZE, "unit"], 200 * "a"),
            ([*SIZE, "minimum"], -1e308), ([*SIZE, "maximum"], GONE), ([*SIZE, "step"], GONE), ([*SIZE, "unit"], GONE),
        ]:
            with self.subTest(path=path, value=value):
                database = changed(path, value)
                self.assertEqual(self.fault_places(database), [])

    def test_broken_documents_are_invalid_where_they_are_broken(self):
        for what, path, value, place in BROKEN + NEVER_WRITTEN:
            with self.subTest(what):
                self.assertEqual(self.fault_places(changed(path, value)), [place])

    def test_vorn_refuses_what_the_schema_refuses(self):
        for what, path, value, _ in BROKEN:
            with self.subTest(what):
                self.assertFalse(self.vorn_takes(json.dumps(changed(path, value))))

    def test_vorn_takes_a_few_things_that_are_never_written(self):
        for what, path, value, _ in NEVER_WRITTEN:
            with self.subTest(what):
                self.assertTrue(self.vorn_takes(json.dumps(changed(path, value))))

    def test_vorn_refuses_more_than_the_schema_can(self):
        text = blocks(read("vorn.md"), "json")[0] + "\n"
        self.assertTrue(self.vorn_takes(text))
        for what, before, after in BEYOND_THE_SCHEMA:
            with self.subTest(what):
                self.assertEqual(text.count(before), 1)
                self.assertEqual(self.fault_places(json.loads(text.replace(before, after))), [])
                self.assertFalse(self.vorn_takes(text.replace(before, after)))


class SchemaText(unittest.TestCase):
    def test_every_object_of_the_file_has_its_keys_listed(self):
        open_objects = [name for name, part in SCHEMA["$defs"].items()
                        if "properties" in part and part.get("additionalProperties") is not False]
        # Definitions are closed for each of their types.
        self.assertEqual(open_objects, ["definition"])
