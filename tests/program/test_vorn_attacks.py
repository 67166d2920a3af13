"""Small databases that ask `vorn` for much: each command ends by itself, in time and memory that are bounded. Without
bounds each would take minutes or gigabytes."""

import os
import resource
import sqlite3
import subprocess
import unittest

from support import ProgramTest

VORN = os.environ["TARVEX_VORN"]
SANITIZED = os.environ["TARVEX_SANITIZED"] == "ON"
MAX_SECONDS = 100  # of the processor
MAX_MEGABYTES = 500
SCALE = 10 if SANITIZED else 1
RECORDS = 10_000 // SCALE


def database(definitions=(), nodes=(), messages=()):
    return ('{"format": "Vorn", "version": 1, "database": "d", "attributes": {}, "attribute_definitions": ['
            + ",\n".join(definitions) + '], "nodes": [' + ",\n".join(nodes) + '], "messages": ['
            + ",\n".join(messages) + "]}\n")


def enumeration(values, nodes):
    names = ",".join(f'"{i}"' for i in range(values))
    return database([f'{{"object": "node", "name": "E", "type": "enumeration", "values": [{names}], "default": "0"}}'],
                    (f'{{"name": "n{i}", "attributes": {{"E": "5"}}}}' for i in range(nodes)))


def long_signals(plain, multiplexed):
    def signal(name, more=""):
        return (f'{{"name": "{name}", "start_bit": 7, "length": 65535, "byte_order": "big_endian", "signed": false{more}}}')

    signals = [signal(f"p{i}") for i in range(plain)]
    signals += [signal(f"m{i}", f', "multiplexer_value": {i}') for i in range(multiplexed)]
    return database(messages=['{"identifier": 1, "extended": false, "name": "m", "length": 8, "node": null, "attributes": {},'
                              f' "signals": [{",".join(signals)}]}}'])


def message(number, name, signals="", attributes=""):
    return (f'{{"identifier": {number}, "extended": true, "name": "{name}", "length": 8, "node": null, '
            f'"attributes": {{{attributes}}}, "signals": [{signals}]}}')


def plain_signal(name, start):
    return f'{{"name": "{name}", "start_bit": {start}, "length": 8, "byte_order": "big_endian", "signed": false}}'


def many_messages(count, first, name):
    """All of one block, function and operation."""
    names = [f'{{"object": "message", "name": "{text}", "type": "string", "default": ""}}' for text in ("FBlock", "Function")]
    return database(names, (), (message(first + i, name(i), plain_signal("s", 7), '"FBlock": "B", "Function": "F"')
                                for i in range(count)))


def many_signals(count, name, place):
    return database(messages=[message(1, "m", ", ".join(plain_signal(name(i), place(i)) for i in range(count)))])


def many_values(count, first, text):
    values = ", ".join(f'[{first + i}, "{text(i)}"]' for i in range(count))
    signal = plain_signal("s", 7)[:-1] + f', "values": [{values}]}}'
    return database(messages=[message(1, "m", signal)])


def many_nodes(count, name):
    return database((), (f'{{"name": "{name(i)}", "attributes": {{}}}}' for i in range(count)))


# Two databases of so many records, whose records look alike in all that they are found by.
ALIKE = [
    ("messages of other identifiers", lambda n: many_messages(n, 0, "a{}".format), lambda n: many_messages(n, n, "b{}".format)),
    ("messages of equal names", lambda n: many_messages(n, 0, lambda i: "a"), lambda n: many_messages(n, n, lambda i: "a")),
    ("messages of unique names", lambda n: many_messages(n, 0, "a{}".format), lambda n: many_messages(n, n // 2, "a_{}".format)),
    ("signals of equal names", lambda n: many_signals(n, lambda i: "s", lambda i: i), lambda n: many_signals(n, lambda i: "s", lambda i: i + n)),
    ("signals at one place", lambda n: many_signals(n, "s{}".format, lambda i: 7), lambda n: many_signals(n, "t{}".format, lambda i: 7)),
    ("signals alike", lambda n: many_signals(n, lambda i: "s", lambda i: 7), lambda n: many_signals(n // 2, lambda i: "s", lambda i: 7)),
    ("values", lambda n: many_values(n, 0, "v{}".format), lambda n: many_values(n, n // 2, lambda i: "v")),
    ("nodes", lambda n: many_nodes(n, "n{}".format), lambda n: many_nodes(n, "m{}".format)),
]


class VornAttacks(ProgramTest):
    def vorn(self, *arguments):
        def limit():
            resource.setrlimit(resource.RLIMIT_CPU, (MAX_SECONDS, MAX_SECONDS))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        with open(self.dir / "output", "wb") as output, subprocess.Popen(
                [VORN, *arguments], cwd=self.dir, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.PIPE,
                preexec_fn=limit) as process:
            errors = process.stderr.read().decode()
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        if not SANITIZED:
            self.assertLess(usage.ru_maxrss / 1024, MAX_MEGABYTES)
        return process.returncode, errors

    def test_values_of_a_large_enumeration(self):
        self.write("e.vorn", enumeration(100_000 // SCALE, 100_000 // SCALE))
        for command in [("show", "e.vorn"), ("diff", "e.vorn", "e.vorn"), ("check", "e.vorn")]:
            with self.subTest(command=command):
                self.assertEqual(self.vorn(*command), (0, ""))

    def test_many_signals_of_all_bits(self):
        self.write("m.vorn", long_signals(30_000 // SCALE, 40))
        self.assertEqual(self.vorn("show", "m.vorn", "--message", "m"), (0, ""))
        self.assertIn(b"8 more values of the multiplexor", (self.dir / "output").read_bytes())

    def test_texts_that_a_table_gives_to_all_rows(self):
        self.write("d.vorn", database(['{"object": "node", "name": "S", "type": "string", "default": ""}']))
        self.assertEqual(self.vorn("convert", "d.vorn", "d.db"), (0, ""))
        connection = sqlite3.connect(self.dir / "d.db")
        connection.execute("DROP TABLE node_attribute")
        connection.execute("CREATE TABLE node_attribute (node_id, definition_id)")
        connection.executemany("INSERT INTO node VALUES (?, 'n')", ((i + 1,) for i in range(50_000)))
        connection.execute("INSERT INTO node_attribute SELECT id, 1 FROM node")
        connection.execute(f"ALTER TABLE node_attribute ADD COLUMN value DEFAULT '{'x' * 16_000}'")
        connection.commit()
        connection.close()
        for command in [("show", "d.db"), ("convert", "d.db", "out.vorn")]:
            with self.subTest(command=command):
                status, errors = self.vorn(*command)
                self.assertRegex(errors, r"\Avorn: d.db: table node_attribute, row \d+: the texts of the file take "
                                         r"more than 2 times its size\n\Z")
                self.assertEqual(status, 2)

    def test_a_long_key_is_cut_in_the_message(self):
        self.write("k.vorn", '{"' + "k" * (5_000_000 // SCALE) + '": 1}')
        self.assertEqual(self.vorn("show", "k.vorn"),
                         (2, f'vorn: k.vorn: line 1: the key "{"k" * 200}..." is not expected here\n'))

    def test_records_that_look_alike(self):
        for name, before, after in ALIKE:
            self.write("a.vorn", before(RECORDS))
            self.write("b.vorn", after(RECORDS))
            for command, status in [(("diff", "a.vorn", "b.vorn"), 1), (("diff", "b.vorn", "a.vorn", "--names"), 1),
                                    (("merge", "a.vorn", "b.vorn", "ab.vorn", "--prefer", "first"), 0),
                                    (("merge", "b.vorn", "a.vorn", "ba.vorn", "--prefer", "second"), 0)]:
                with self.subTest(name, command=command):
                    self.assertEqual(self.vorn(*command), (status, ""))

    def test_patterns_with_many_stars(self):
        self.write("a.vorn", many_messages(RECORDS, 0, lambda i: "a" * 32))
        pattern = "*a" * 1000 + "*b"
        for command in [("list", "a.vorn"), ("show", "a.vorn"), ("subset", "a.vorn", "out.vorn")]:
            with self.subTest(command=command):
                status, errors = self.vorn(*command, "--message", pattern)
                self.assertEqual(status, 1)
                self.assertTrue(errors.startswith("vorn: a.vorn: there is no message '*a"), errors[:99])

    @unittest.skipIf(SANITIZED, "the sanitizers reserve addresses")
    def test_the_end_of_memory_is_trouble(self):
        self.write("e.vorn", enumeration(1_000_000, 0))

        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (60 << 20, 60 << 20))

        result = subprocess.run([VORN, "show", "e.vorn"], cwd=self.dir, capture_output=True, timeout=120, check=False,
                                preexec_fn=limit)
        self.assertEqual((result.returncode, result.stdout, result.stderr.decode()),
                         (2, b"", "vorn: there is not enough memory for this\n"))
