"""What the tests of the program `vorn` share: small databases and runs of the program."""

import os
import shutil
import subprocess

from support import SOURCE, ProgramTest

VORN = os.environ["TARVEX_VORN"]
EXAMPLE = SOURCE / "tests" / "data" / "example" / "roadster.vorn"
COMMANDS = ["show", "list", "convert", "diff", "check", "subset", "merge"]
ESCAPE = "\x1b"


def database(nodes="[]", messages="[]", version=1):
    """A database whose nodes stand in line 7 and whose messages begin in line 8."""
    return (f'{{\n"format": "Vorn",\n"version": {version},\n"database": "cabin",\n"attributes": {{}},\n'
            f'"attribute_definitions": [],\n"nodes": {nodes},\n"messages": {messages}\n}}\n')


def message(identifier, name, signals=""):
    return (f'{{"identifier": {identifier}, "extended": false, "name": "{name}", "length": 1, "node": null, '
            f'"attributes": {{}}, "signals": [{signals}]}}')


def signal(name, start_bit, length):
    return (f'{{"name": "{name}", "start_bit": {start_bit}, "length": {length}, "byte_order": "big_endian", '
            '"signed": false}')


ONE = database(messages=f'[{message(16, "Ping", signal("Level", 7, 4))}]')
TWO = database(messages=f'[{message(16, "Ping", signal("Level", 3, 4))}]')
# The two signals share bit 4.
FAULTY = database(messages=f'[{message(16, "Ping", signal("A", 7, 4) + ", " + signal("B", 4, 1))}]')
DIFFERENCE = ('~ message 0x10 Ping\n  ~ signal Level\n      start_bit: "7" -> "3"\n'
              'messages: 1 changed; signals: 1 changed\n')


class VornTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.maxDiff = None
        shutil.copy(EXAMPLE, self.dir)
        self.write("one.vorn", ONE)
        self.write("two.vorn", TWO)
        self.write("faulty.vorn", FAULTY)

    def vorn(self, *arguments, **environment):
        return subprocess.run([VORN, *map(str, arguments)], cwd=self.dir, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=120, check=False, env={**os.environ, **environment})

    def assert_output(self, result, output, status=0):
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.stdout.decode(), output)
        self.assertEqual(result.returncode, status)

    def assert_trouble(self, result, beginning=""):
        """Exit status 2, nothing on standard output, and an explanation that begins like this."""
        errors = result.stderr.decode()
        self.assertEqual(errors[:len(beginning)], beginning)
        self.assertRegex(errors, r"[^:\s]\n\Z")
        self.assertEqual(result.stdout, b"")
        self.assertEqual(result.returncode, 2)
