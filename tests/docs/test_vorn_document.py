"""vorn.md shows a file as it is written, and names all its keys and limits."""

import json
import unittest

from documents import SOURCE, DocumentTest, blocks, first_cells, read, section

SCHEMA = json.loads(read("vorn.schema.json"))


def names_of(database):
    """Every text that is limited to 32 bytes."""
    for record in database["attribute_definitions"] + database["nodes"] + database["messages"]:
        yield record["name"]
    for message in database["messages"]:
        for signal in message["signals"]:
            yield signal["name"]
            for _, text in signal.get("values", []):
                yield text


class WholeFile(DocumentTest):
    def test_the_file_shown_is_what_is_written_byte_for_byte(self):
        shown = self.write_shown_database()
        self.succeed_converting("cabin.vorn", "again.vorn")
        self.assertEqual((self.dir / "again.vorn").read_text(encoding="utf-8"), shown.read_text(encoding="utf-8"))

    def test_the_file_shown_survives_sqlite(self):
        shown = self.write_shown_database()
        self.succeed_converting("cabin.vorn", "cabin.sqlite")
        self.succeed_converting("cabin.sqlite", "again.vorn")
        self.assertEqual((self.dir / "again.vorn").read_text(encoding="utf-8"), shown.read_text(encoding="utf-8"))

    def test_the_file_shown_has_no_faults(self):
        self.write_shown_database()
        result = self.vorn("check", "cabin.vorn")
        self.assertEqual((result.stdout, result.returncode), (b"", 0))

    def test_the_file_shown_uses_every_key_of_the_schema(self):
        database = json.loads(blocks(read("vorn.md"), "json")[0])
        shown = {"top": set(database), "definition": set(), "node": set(), "message": set(), "signal": set()}
        for key, list_name in [("definition", "attribute_definitions"), ("node", "nodes"), ("message", "messages")]:
            for record in database[list_name]:
                shown[key] |= set(record)
        for message in database["messages"]:
            for signal in message["signals"]:
                shown["signal"] |= set(signal)
        definitions = SCHEMA["$defs"]
        known = {
            "top": set(SCHEMA["properties"]),
            "definition": {key for kind in ("integer", "string", "enumeration")
                           for key in definitions[f"{kind}_definition"]["properties"]},
        }
        known |= {key: set(definitions[key]["properties"]) for key in ("node", "message", "signal")}
        self.assertEqual(shown, known)

    def succeed_converting(self, before, after):
        result = self.vorn("convert", before, after)
        self.assertEqual((result.returncode, result.stderr), (0, b""))


class Tables(unittest.TestCase):
    KEYS = {
        "Top level": ["format", "version", "database", "attributes", "attribute_definitions", "nodes", "messages"],
        "Nodes": ["name", "attributes"],
        "Messages": ["identifier", "extended", "name", "length", "node", "attributes", "signals"],
        "Signals": ["name", "start_bit", "length", "byte_order", "signed", "values", "multiplexor",
                    "multiplexer_value", "factor", "minimum", "maximum", "step", "unit"],
        "Attribute definitions": ["object", "name", "type", "minimum", "maximum", "values", "default"],
    }

    def test_tables_have_the_keys_in_the_order_of_the_file(self):
        text = read("vorn.md")
        for heading, keys in self.KEYS.items():
            with self.subTest(heading):
                self.assertEqual(first_cells(section(text, heading)), keys)

    def test_the_schema_has_the_same_keys(self):
        definitions = SCHEMA["$defs"]
        for heading, properties in [("Top level", SCHEMA["properties"]), ("Nodes", definitions["node"]["properties"]),
                                    ("Messages", definitions["message"]["properties"]),
                                    ("Signals", definitions["signal"]["properties"])]:
            with self.subTest(heading):
                self.assertEqual(list(properties), self.KEYS[heading])


class TextsAndNumbers(DocumentTest):
    def converted(self, database):
        """A file as it is after a conversion into its own format."""
        self.write("in.vorn", json.dumps(database))
        result = self.vorn("convert", "in.vorn", "out.vorn")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return (self.dir / "out.vorn").read_text(encoding="utf-8")

    def database(self, **changes):
        database = {"format": "Vorn", "version": 1, "database": "d", "attributes": {}, "attribute_definitions": [],
                    "nodes": [], "messages": []}
        return database | changes

    def test_only_quotes_backslashes_and_control_characters_are_escaped(self):
        written = self.converted(self.database(database='a"b\\c\b\t\n\f\r\x01\x1f/\x7fé€𝄞'))
        self.assertIn('"database": "a\\"b\\\\c\\b\\t\\n\\f\\r\\u0001\\u001f/\x7fé€𝄞",\n', written)

    def test_whole_numbers_have_no_point_and_others_are_short(self):
        definition = {"object": "node", "name": "A", "type": "integer", "minimum": -1.5, "maximum": 1e15,
                      "default": 0.1}
        written = self.converted(self.database(attribute_definitions=[definition]))
        self.assertIn('"minimum": -1.5, "maximum": 1000000000000000, "default": 0.1}', written)

    def test_empty_lists_and_objects_stand_on_the_line_of_their_key(self):
        self.assertEqual(self.converted(self.database()),
                         '{\n"format": "Vorn",\n"version": 1,\n"database": "d",\n"attributes": {},\n'
                         '"attribute_definitions": [],\n"nodes": [],\n"messages": []\n}\n')

    def test_keys_of_a_record_may_come_in_any_order(self):
        written = self.converted(self.database(nodes=[{"attributes": {}, "name": "N"}]))
        self.assertIn('  {"name": "N", "attributes": {}}\n', written)

    def test_a_value_keeps_its_name_where_another_name_stands_twice(self):
        definition = {"object": "database", "name": "K", "type": "enumeration", "values": ["A", "A", "B"],
                      "default": "A"}
        written = self.converted(self.database(attributes={"K": "B"}, attribute_definitions=[definition]))
        self.assertEqual(json.loads(written)["attributes"], {"K": "B"})

    def test_names_with_bytes_that_are_no_utf_8_stay_within_32_bytes(self):
        self.convert_example("before.vorn")
        aliases = self.dir / "aliases.txt"
        # More than 32 bytes, the fifth of which is an a with two dots in Latin-1.
        aliases.write_bytes(aliases.read_bytes() + b"Search forward,Vorw\xE4rts suchen und noch mehr ...\n")
        path = self.convert("roadster.xml", "after.vorn")
        database = json.loads(path.read_text(encoding="utf-8"))
        self.assertTrue(any(name.startswith("Vorw\uFFFDrts") for name in names_of(database)))
        self.assertEqual([name for name in names_of(database) if len(name.encode()) > 32], [])
        self.assertEqual(self.vorn("show", path).returncode, 0)


class Example(DocumentTest):
    def test_the_readme_names_the_document(self):
        self.assertIn("(docs/vorn.md)", (SOURCE / "README.md").read_text(encoding="utf-8"))

    def test_the_database_is_named_after_the_file(self):
        database = json.loads(self.convert_example("my.net.vorn").read_text(encoding="utf-8"))
        self.assertEqual(database["database"], "my.net")
