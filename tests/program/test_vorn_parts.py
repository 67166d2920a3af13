"""Parts of databases, and databases put together of parts."""

from vorn_support import DIFFERENCE, EXAMPLE, ONE, VornTest, database, message

CHOICES = [("--node", "AudioAmp"), ("--node", "*er*"), ("--fblock", "Gateway"), ("--fblock", "[G-P]*"),
           ("--function", "Volume"), ("--optype", "Get", "--optype", "Set"), ("--message", "*.20?.C"),
           ("--message", "*_Stat", "--node", "Phone"), ("--optype", "0xF"), ("--message", "*")]


class Parts(VornTest):
    def test_a_part_and_the_rest_make_the_whole(self):
        parts = ["part.db", "rest.vorn"]
        for choice in CHOICES:
            parts.reverse()
            with self.subTest(choice):
                self.assert_output(self.vorn("subset", "roadster.vorn", "part.db", *choice), "")
                self.assert_output(self.vorn("subset", "roadster.vorn", "rest.vorn", "--except", *choice), "")
                self.assert_output(self.vorn("merge", *parts, "whole.vorn"), "")
                self.assertEqual((self.dir / "whole.vorn").read_bytes(), EXAMPLE.read_bytes())

    def test_a_part_has_the_messages_that_are_listed(self):
        options = ("--function", "Volume", "--function", "Mute")
        self.vorn("subset", "roadster.vorn", "part.vorn", *options)
        self.assertEqual(self.vorn("list", "part.vorn").stdout, self.vorn("list", "roadster.vorn", *options).stdout)
        self.assertRegex(self.vorn("diff", "roadster.vorn", "part.vorn").stdout.decode().splitlines()[-1],
                         r"^messages: \d+ removed$")

    def test_a_part_without_messages_is_not_written(self):
        result = self.vorn("subset", "roadster.vorn", "part.vorn", "--node", "Pone")
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertIn(b"there is no node 'Pone'", result.stderr)
        self.assert_trouble(self.vorn("subset", "roadster.vorn", "part.vorn"), "vorn: subset: ")
        self.assertFalse((self.dir / "part.vorn").exists())

    def test_what_is_found_is_shown_beside_what_is_not(self):
        for command in ["list", "show"]:
            found = self.vorn(command, "roadster.vorn", "--fblock", "Phone")
            both = self.vorn(command, "roadster.vorn", "--fblock", "Phone", "--fblock", "Gatway", "--fblock", "Radoi")
            self.assertEqual((both.returncode, both.stdout), (1, found.stdout))
            first, second = both.stderr.decode().splitlines()
            self.assertIn("there is no function block 'Gatway'", first)
            self.assertIn("there is no function block 'Radoi'", second)

    def test_conflicts_are_listed_and_nothing_is_written_without_a_preference(self):
        result = self.vorn("merge", "one.vorn", "two.vorn", "both.vorn")
        self.assertEqual((result.returncode, result.stdout.decode()), (1, DIFFERENCE))
        self.assertEqual(result.stderr, b"vorn: these differ in both databases, or are definitions of one (+ and -) whose "
                                        b"default would hold for the other; --prefer first or --prefer second merges all "
                                        b"the same\n")
        self.assertFalse((self.dir / "both.vorn").exists())
        for preference, same in [("first", "one.vorn"), ("second", "two.vorn")]:
            self.assert_output(self.vorn("merge", "one.vorn", "two.vorn", "both.vorn", "--prefer", preference), "")
            self.assert_output(self.vorn("diff", same, "both.vorn"), "")

    def test_values_that_a_preferred_definition_does_not_allow_are_trouble(self):
        for name, values in [("a.vorn", '"Get"'), ("b.vorn", '"Set"')]:
            definition = (f'{{"object": "message", "name": "Op", "type": "enumeration", "values": [{values}], '
                          f'"default": {values}}}')
            text = message(16, "Ping" if name[0] == "a" else "Pong").replace(
                '"attributes": {}', f'"attributes": {{"Op": {values}}}').replace("16", str(ord(name[0])))
            self.write(name, database(messages=f"[{text}]").replace('"attribute_definitions": []',
                                                                    f'"attribute_definitions": [{definition}]'))
        self.assert_trouble(self.vorn("merge", "a.vorn", "b.vorn", "c.vorn", "--prefer", "first"),
                            "vorn: c.vorn: can't be made of both: ")
        self.assertFalse((self.dir / "c.vorn").exists())

    def test_files_that_are_no_databases_are_not_replaced(self):
        self.write("notes", "Buy milk.")
        for arguments in [("subset", "one.vorn", "notes", "--message", "Ping"), ("merge", "one.vorn", "one.vorn", "notes")]:
            self.assert_trouble(self.vorn(*arguments), "vorn: notes: this is no database; ")
            self.assert_output(self.vorn(*arguments, "--force"), "")
            self.write("notes", "Buy milk.")

    def test_files_that_can_not_be_read_are_named(self):
        self.write("bad.vorn", ONE[:-4])
        for arguments in [("subset", "bad.vorn", "out.vorn", "--message", "Ping"), ("merge", "one.vorn", "bad.vorn", "out.vorn"),
                          ("merge", "bad.vorn", "one.vorn", "out.vorn")]:
            self.assert_trouble(self.vorn(*arguments), "vorn: bad.vorn: line 8: ")
        self.assertFalse((self.dir / "out.vorn").exists())
