"""kcd.md shows what becomes of the database in vorn.md, and what KCD cannot hold."""

import json
import xml.etree.ElementTree

from documents import DocumentTest, blocks, read

NAMESPACE = "{http://kayak.2codeornot2code.org/1.0}"


class Kcd(DocumentTest):
    def written(self, database):
        self.write("in.vorn", json.dumps(database))
        result = self.vorn("convert", "in.vorn", "out.kcd")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return (self.dir / "out.kcd").read_text(encoding="utf-8")

    def message(self, *signals, **changes):
        message = {"identifier": 1, "extended": False, "name": "M", "length": 8, "node": None, "attributes": {},
                   "signals": list(signals)}
        return {"format": "Vorn", "version": 1, "database": "d", "attributes": {}, "attribute_definitions": [],
                "nodes": [], "messages": [message | changes]}

    def signal(self, name, **changes):
        return {"name": name, "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": False} | changes

    def bus(self, database):
        return xml.etree.ElementTree.fromstring(self.written(database)).find(f"{NAMESPACE}Bus")

    def test_the_database_of_vorn_md_becomes_what_is_shown(self):
        self.write_shown_database()
        result = self.vorn("convert", "cabin.vorn", "cabin.kcd")
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        shown, = blocks(read("kcd.md"), "xml")
        self.assertEqual((self.dir / "cabin.kcd").read_text(encoding="utf-8"), shown + "\n")

    def test_kcd_is_refused_as_input(self):
        self.write_shown_database()
        self.assertEqual(self.vorn("convert", "cabin.vorn", "cabin.kcd").returncode, 0)
        self.assertEqual(self.vorn("show", "cabin.kcd").returncode, 2)

    def test_identifiers_above_0x7ff_are_always_extended(self):
        for identifier, extended, expected in [(0x7FF, False, "standard"), (0x7FF, True, "extended"),
                                               (0x800, False, "extended"), (0x800, True, "extended")]:
            with self.subTest(identifier=identifier, extended=extended):
                message, = self.bus(self.message(identifier=identifier, extended=extended))
                self.assertEqual(message.get("format"), expected)

    def test_offsets_are_those_of_the_document(self):
        for start_bit, offset in [(7, "0"), (0, "7"), (15, "8")]:
            with self.subTest(start_bit):
                message, = self.bus(self.message(self.signal("S", start_bit=start_bit)))
                self.assertEqual(message[0].get("offset"), offset)

    def test_multiplexed_signals_without_a_multiplexor_become_plain(self):
        message, = self.bus(self.message(self.signal("A", multiplexer_value=1), self.signal("B", multiplexer_value=2)))
        self.assertEqual([(part.tag, part.get("name")) for part in message],
                         [(f"{NAMESPACE}Signal", "A"), (f"{NAMESPACE}Signal", "B")])

    def test_the_first_multiplexor_comes_first_and_others_are_plain(self):
        message, = self.bus(self.message(self.signal("A"), self.signal("B", multiplexor=True),
                                         self.signal("C", multiplexor=True), self.signal("D", multiplexer_value=9),
                                         self.signal("E", multiplexer_value=3)))
        self.assertEqual([(part.tag, part.get("name")) for part in message],
                         [(f"{NAMESPACE}Multiplex", "B"), (f"{NAMESPACE}Signal", "A"), (f"{NAMESPACE}Signal", "C")])
        self.assertEqual([(group.get("count"), group[0].get("name")) for group in message[0]], [("3", "E"), ("9", "D")])

    def test_characters_that_xml_cannot_hold_become_question_marks(self):
        for character in ["\x01", "\r", "\x1f", "\ufffe", "\uffff"]:
            with self.subTest(hex(ord(character))):
                message, = self.bus(self.message(name=f"a{character}b"))
                self.assertEqual(message.get("name"), "a?b")

    def test_line_feeds_tabs_and_letters_beyond_ascii_stay(self):
        for name in ["a\nb", "a\tb", "é€𝄞", "<&>\"'", "\x7f"]:
            with self.subTest(name):
                message, = self.bus(self.message(name=name))
                self.assertEqual(message.get("name"), name)
