"""The schemas of what `vorn` prints as JSON take what is printed, and nothing that is broken."""

import copy
import json

import jsonschema

from documents import DocumentTest, read

OBJECTS = ["attribute definition", "node", "message", "signal", "value"]
DIFF = json.loads(read("vorn-diff.schema.json"))

# A database and what becomes of it: every kind of record added, removed and changed, and a message moved.
BEFORE = {
    "format": "Vorn", "version": 1, "database": "cabin", "attributes": {},
    "attribute_definitions": [
        {"object": "node", "name": "Slot", "type": "integer", "minimum": 0, "maximum": 255, "default": 0},
        {"object": "node", "name": "Rack", "type": "string", "default": ""}],
    "nodes": [{"name": "Amp", "attributes": {"Slot": 1}}, {"name": "Tuner", "attributes": {}}],
    "messages": [
        {"identifier": 16, "extended": True, "name": "Volume", "length": 2, "node": "Amp", "attributes": {}, "signals": [
            {"name": "Level", "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": False,
             "values": [[0, "Off"], [1, "On"]]},
            {"name": "Low", "start_bit": 8, "length": 1, "byte_order": "big_endian", "signed": False}]},
        {"identifier": 17, "extended": False, "name": "Ping", "length": 0, "node": None, "attributes": {}, "signals": []},
        {"identifier": 18, "extended": False, "name": "Gone", "length": 0, "node": None, "attributes": {}, "signals": []}],
}


def after():
    database = copy.deepcopy(BEFORE)
    database["attribute_definitions"] = [{**BEFORE["attribute_definitions"][0], "maximum": 7},
                                         {"object": "message", "name": "Rate", "type": "string", "default": ""}]
    database["nodes"] = [{"name": "Amp", "attributes": {"Slot": 2}}, {"name": "Phone", "attributes": {}}]
    volume, ping, gone = database["messages"]
    volume["length"] = 3
    level, low = volume["signals"]
    level.update(signed=True, values=[[0, "Mute"], [4294967295, "Max"]], factor=0.5, unit="dB")
    low.update(name="Top", start_bit=20)
    ping["identifier"] = 19
    gone.update(identifier=2147483647, name="New", extended=True)
    return database


def found(value, objects):
    """Every object of a JSON text that is a change of one of these."""
    if isinstance(value, dict):
        if value.get("object") in objects:
            yield value
        value = list(value.values())
    if isinstance(value, list):
        for part in value:
            yield from found(part, objects)


class DiffSchema(DocumentTest):
    def setUp(self):
        super().setUp()
        self.write("before.vorn", json.dumps(BEFORE))
        self.write("after.vorn", json.dumps(after()))
        self.validator = jsonschema.Draft202012Validator(DIFF)

    def difference(self, *arguments):
        return json.loads(self.vorn("diff", *arguments, "--format", "json").stdout)

    def test_the_schema_is_one(self):
        jsonschema.Draft202012Validator.check_schema(DIFF)

    def test_every_kind_of_change_is_valid(self):
        printed = self.difference("before.vorn", "after.vorn")
        kinds = {(change["object"], change["change"]) for change in found(printed, OBJECTS)}
        self.assertEqual(kinds, {(name, kind) for name in OBJECTS for kind in ["added", "removed", "changed"]}
                         | {("message", "moved")})
        self.validator.validate(printed)
        for name in OBJECTS:
            for kind in ["added", "removed", "changed"]:
                self.assertEqual(printed["summary"][f"{name}s".replace(" ", "_")][kind],
                                 sum(change["change"] == kind for change in found(printed, [name])))

    def test_nothing_is_valid(self):
        self.validator.validate(self.difference("before.vorn", "before.vorn"))

    def test_broken_texts_are_invalid(self):
        printed = self.difference("before.vorn", "after.vorn")
        for change in found(printed, OBJECTS):
            for key in list(change):
                for value in [None, {}, "0x10"]:
                    if key == "name" and value == "0x10":
                        continue
                    whole = change[key]
                    change[key] = value
                    self.assertFalse(self.validator.is_valid(printed), (change, key))
                    change[key] = whole
            change["more"] = 1
            self.assertFalse(self.validator.is_valid(printed), change)
            del change["more"]
        self.assertTrue(self.validator.is_valid(printed))


# A name twice, an identifier twice, and in the last message everything that signals can get wrong.
FAULTY = copy.deepcopy(BEFORE)
FAULTY["nodes"].append({"name": "Amp", "attributes": {}})
FAULTY["messages"][2].update(identifier=17, length=1, signals=[
    {"name": "A", "start_bit": 7, "length": 16, "byte_order": "big_endian", "signed": False, "multiplexer_value": 1},
    {"name": "A", "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": False, "factor": 1, "minimum": 1,
     "maximum": 0}])
CAUSES = ["name_twice", "identifier_twice", "signal_name_twice", "beyond_the_message", "minimum_above_maximum",
          "no_multiplexor", "overlap"]


def assert_nothing_may_be_broken(test, validator, printed):
    """A list of objects is no longer valid when a key has another type or is gone."""
    for each in printed:
        for key in list(each):
            whole = each[key]
            each[key] = {}
            test.assertFalse(validator.is_valid(printed), (each, key))
            del each[key]
            test.assertFalse(validator.is_valid(printed), (each, key))
            each[key] = whole
    test.assertTrue(printed and validator.is_valid(printed))


class CheckSchema(DocumentTest):
    def setUp(self):
        super().setUp()
        self.write("faulty.vorn", json.dumps(FAULTY))
        self.write("before.vorn", json.dumps(BEFORE))
        self.schema = json.loads(read("vorn-check.schema.json"))
        self.validator = jsonschema.Draft202012Validator(self.schema)

    def faults(self, name):
        return json.loads(self.vorn("check", name, "--format", "json").stdout)

    def test_every_cause_is_valid(self):
        jsonschema.Draft202012Validator.check_schema(self.schema)
        printed = self.faults("faulty.vorn")
        self.assertEqual([fault["cause"] for fault in printed], CAUSES)
        self.validator.validate(printed)
        self.assertEqual(self.faults("before.vorn"), [])
        self.validator.validate([])

    def test_broken_texts_are_invalid(self):
        assert_nothing_may_be_broken(self, self.validator, self.faults("faulty.vorn"))


class ListSchema(DocumentTest):
    def setUp(self):
        super().setUp()
        database = copy.deepcopy(BEFORE)
        database["messages"][2]["identifier"] = 0x1000000  # more than an address has
        self.write("before.vorn", json.dumps(database))
        self.schema = json.loads(read("vorn-list.schema.json"))
        self.validator = jsonschema.Draft202012Validator(self.schema)

    def test_messages_are_valid(self):
        jsonschema.Draft202012Validator.check_schema(self.schema)
        printed = json.loads(self.vorn("list", "before.vorn", "--format", "json").stdout)
        self.assertEqual([(message["address"], message["node"], message["signals"]) for message in printed],
                         [("00.001.0", "Amp", 2), ("00.001.1", None, 0), ("", None, 0)])
        self.validator.validate(printed)
        nothing = self.vorn("list", "before.vorn", "--format", "json", "--message", "Nothing")
        self.assertEqual((nothing.returncode, nothing.stdout), (1, b"[]\n"))
        self.validator.validate([])

    def test_the_example_is_valid(self):
        database = self.convert_example("roadster.vorn")
        printed = json.loads(self.vorn("list", database, "--format", "json").stdout)
        self.assertEqual([message["name"] for message in printed],
                         [message["name"] for message in json.loads(database.read_text(encoding="utf-8"))["messages"]])
        self.validator.validate(printed)

    def test_broken_texts_are_invalid(self):
        printed = json.loads(self.vorn("list", "before.vorn", "--format", "json").stdout)
        assert_nothing_may_be_broken(self, self.validator, printed)
