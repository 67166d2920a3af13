import json
import os
import unittest.mock

from support import SOURCE, ProgramTest

EXPECTED = SOURCE / "tests" / "data" / "example"


class Example(ProgramTest):
    def setUp(self):
        super().setUp()
        self.copy_examples()
        self.maxDiff = None

    def convert(self):
        result = self.run_program("roadster.xml", "roadster.vorn")
        self.assertEqual(result.returncode, 0)
        return result

    def assert_file(self, name, content=None):
        content = self.dir.joinpath(name).read_bytes() if content is None else content
        expected = EXPECTED.joinpath(name).read_bytes().replace(b"@DIR@", bytes(self.dir))
        if content != expected:  # a readable difference
            self.assertEqual(content.decode(), expected.decode())
        self.assertEqual(content, expected)

    def test_the_console_is_as_expected(self):
        self.assert_file("console.txt", self.convert().stdout)

    def test_the_import_log_is_as_expected_byte_for_byte(self):
        self.convert()
        self.assert_file("roadster.log")

    def test_the_tree_log_is_as_expected_byte_for_byte(self):
        self.convert()
        self.assert_file("roadster.tree")

    def test_the_database_is_as_expected_byte_for_byte(self):
        self.convert()
        self.assert_file("roadster.vorn")

    def test_the_database_is_json_and_holds_every_message_once(self):
        self.convert()
        database = json.loads((self.dir / "roadster.vorn").read_text(encoding="utf-8"))
        self.assertEqual(len(database["nodes"]), 7)
        self.assertEqual(len(database["messages"]), 144)
        self.assertEqual(len({message["identifier"] for message in database["messages"]}), 144)

    def test_two_runs_give_identical_bytes(self):
        self.convert()
        first = {name: (self.dir / name).read_bytes() for name in ["roadster.vorn", "roadster.log", "roadster.tree"]}
        self.convert()
        for name, content in first.items():
            self.assertEqual((self.dir / name).read_bytes(), content, name)

    def test_the_locale_changes_nothing(self):
        for locale in ["C", "C.UTF-8"]:
            with self.subTest(locale=locale), unittest.mock.patch.dict(os.environ, LC_ALL=locale):
                self.convert()
                self.assert_file("roadster.log")
                self.assert_file("roadster.tree")
                self.assert_file("roadster.vorn")
