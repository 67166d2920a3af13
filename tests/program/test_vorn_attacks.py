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

    @unittest.skipIf(SANITIZED, "the sanitizers reserve addresses")
    def test_the_end_of_memory_is_trouble(self):
        self.write("e.vorn", enumeration(1_000_000, 0))

        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (60 << 20, 60 << 20))

        result = subprocess.run([VORN, "show", "e.vorn"], cwd=self.dir, capture_output=True, timeout=120, check=False,
                                preexec_fn=limit)
        self.assertEqual((result.returncode, result.stdout, result.stderr.decode()),
                         (2, b"", "vorn: there is not enough memory for this\n"))
