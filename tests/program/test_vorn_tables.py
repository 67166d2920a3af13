"""The table of signals, as a CSV file, as a view in SQLite and from `vorn list`: each row is what `vorn show` says."""

import csv
import io
import json
import os
import random
import re
import sqlite3
import subprocess

from vorn_support import EXAMPLE, VornTest

SIGNALS = int(os.environ.get("TARVEX_TABLE_SIGNALS", "1000"))
ATTRIBUTES = ["FBlock", "Function", "OpType", "Layout"]
HEAD = re.compile(r"(.*?)(?:  (\w\w\.\w{3}\.\w))?  (0x[0-9A-F]+)(?: extended)?, (\d+) bytes?(?:, from (.*))?")
SIGNAL = re.compile(r"[A-Z]+ +(\S.*?)  start bit (\d+), (\d+) bits?, (big|little)-endian(, signed)?(, multiplexor)?"
                    r"(?:, for multiplexor (\d+))?")
SCALING = re.compile(r"     factor (\S+?)(?:, range (\S+) to (\S+?))?(?:, minimum (\S+?))?(?:, maximum (\S+?))?"
                     r"(?:, step (\S+?))?(?:, unit (.*))?")


def rows_shown(text):
    """The rows of the table, made of what `vorn show` says of messages."""
    rows = []
    for line in text.splitlines():
        if found := HEAD.fullmatch(line):
            name, address, identifier, length, node = found.groups()
            message = {"address": address or "", "message": name, "identifier": identifier, "length": length,
                       "node": node or "", "attributes": {}}
            rows.append({"of": message})
        elif found := re.fullmatch(r"  (\w+) = (.*)", line):
            message["attributes"][found.group(1)] = found.group(2)
        elif found := SIGNAL.fullmatch(line):
            name, start, bits, order, signed, multiplexor, value = found.groups()
            row = {"of": message, "signal": name, "start_bit": start, "bits": bits, "byte_order": f"{order}_endian",
                   "signed": "1" if signed else "0",
                   "multiplexing": (f"m{value}" if value else "") + ("M" if multiplexor else ""), "values": []}
            if "signal" not in rows[-1] and rows[-1]["of"] is message:
                rows.pop()
            rows.append(row)
        elif found := SCALING.fullmatch(line):
            factor, low, high, minimum, maximum, step, unit = found.groups()
            row.update(factor=factor, minimum=low or minimum, maximum=high or maximum, step=step, unit=unit)
        elif found := re.fullmatch(r"     (\d+) +(.*)", line):
            row["values"].append("=".join(found.groups()))
    return [{**{key: value for key, value in row["of"].items() if key != "attributes"},
             **{name.lower(): row["of"]["attributes"].get(name, "") for name in ATTRIBUTES},
             **{key: value or "" for key, value in row.items() if key != "of"},
             "values": "; ".join(row.get("values", []))} for row in rows]


def random_database(draw):
    """As many signals as are asked for, in messages of up to 9, with everything that a table has to keep apart."""
    def text():
        return "".join(draw.choice("ab,;\"'= Ü€ß.") for _ in range(draw.randrange(1, 9))).strip() or "x"

    def signal(number):
        signal = {"name": f"S{number}{text()}", "start_bit": draw.randrange(65536), "length": draw.randrange(65536),
                  "byte_order": draw.choice(["big_endian", "little_endian"]), "signed": draw.random() < 0.5}
        if draw.random() < 0.3:
            signal["values"] = [[draw.randrange(1 << 32), text()] for _ in range(draw.randrange(1, 5))]
        if draw.random() < 0.2:
            signal["multiplexor"] = True
        if draw.random() < 0.2:
            signal["multiplexer_value"] = draw.randrange(1 << 32)
        if draw.random() < 0.4:
            signal["factor"] = draw.choice([1, 0.1, 1e-307, 25.5, 1e22])
            for key in ["minimum", "maximum", "step"]:
                if draw.random() < 0.5:
                    signal[key] = draw.choice([0, -1, 12.5, 1e300, draw.random()])
            if draw.random() < 0.5:
                signal["unit"] = text()
        return signal

    messages = []
    left = SIGNALS
    while left > 0:
        count = min(left, draw.randrange(10))
        left -= count
        messages.append({"identifier": draw.randrange(0x2000000), "extended": draw.random() < 0.5, "name": f"M_{text()}",
                         "length": draw.randrange(65536), "node": draw.choice([None, "Amp", "Rear \" seat, left"]),
                         "attributes": {"FBlock": text(), "Function": text(), "OpType": draw.choice(["Set", "Get"]),
                                        "Layout": draw.choice(["Complete", "Open"])},
                         "signals": [signal(number) for number in range(count)]})
    definitions = [{"object": "message", "name": name, "type": "string", "default": ""} for name in ATTRIBUTES[:2]]
    definitions += [{"object": "message", "name": "OpType", "type": "enumeration", "values": ["Set", "Get"],
                     "default": "Set"},
                    {"object": "message", "name": "Layout", "type": "enumeration", "values": ["Complete", "Open"],
                     "default": "Complete"}]
    return json.dumps({"format": "Vorn", "version": 1, "database": "random", "attributes": {},
                       "attribute_definitions": definitions,
                       "nodes": [{"name": name, "attributes": {}} for name in ["Amp", "Rear \" seat, left"]],
                       "messages": messages})


def as_numbers(rows):
    """Rows whose scalings are numbers, which SQLite and a person write in several ways."""
    return [[float(cell) if name in ("factor", "minimum", "maximum", "step") and cell not in ("", None) else
             "" if cell is None else str(cell) for name, cell in row.items()] for row in rows]


class Tables(VornTest):
    def convert_table(self, source):
        for name in ["t.csv", "t.db"]:
            self.assert_output(self.vorn("convert", source, name), "")
        content = (self.dir / "t.csv").read_bytes().decode()
        self.assertEqual(re.sub(r"\r\n", "", content).count("\r"), 0)
        rows = list(csv.DictReader(io.StringIO(content, newline=""), strict=True))
        self.assertTrue(all(None not in row and None not in row.values() for row in rows))
        return rows

    def assert_table(self, source):
        rows = self.convert_table(source)
        shown = rows_shown(self.vorn("show", source, "--message", "*").stdout.decode())
        self.assertEqual(len(rows), len(shown))
        for row, expected in zip(rows, shown):
            self.assertEqual(row, {name: expected.get(name, "") for name in row})
        connection = sqlite3.connect(self.dir / "t.db")
        connection.row_factory = sqlite3.Row
        viewed = [dict(row) for row in connection.execute("SELECT * FROM signals")]
        connection.close()
        self.assertEqual(list(viewed[0]), list(rows[0]))
        self.assertEqual(as_numbers(viewed), as_numbers(rows))
        imported = subprocess.run(["sqlite3", "-json", ":memory:", ".import --csv t.csv t", "SELECT * FROM t"],
                                  cwd=self.dir, capture_output=True, check=True, timeout=60).stdout
        self.assertEqual(json.loads(imported), rows)
        return rows

    def test_the_example(self):
        rows = self.assert_table("roadster.vorn")
        database = json.loads(EXAMPLE.read_text(encoding="utf-8"))
        self.assertEqual(len(rows), sum(max(1, len(message["signals"])) for message in database["messages"]))

    def test_random_signals(self):
        self.write("random.vorn", random_database(random.Random(16)))
        rows = self.assert_table("random.vorn")
        self.assertEqual(sum(row["signal"] != "" for row in rows), SIGNALS)

    def test_some_messages(self):
        rows = [row for row in self.convert_table("roadster.vorn") if row["function"] == "Volume"]
        result = self.vorn("list", "roadster.vorn", "--function", "volume", "--format", "csv")
        self.assertEqual(list(csv.DictReader(io.StringIO(result.stdout.decode(), newline=""))), rows)
        self.assertEqual(len(rows), 6)

    def test_tarvex_writes_the_same(self):
        for name in ["roadster.xml", "fcat.dtd", "TARVEX.ini"]:
            self.write(name, (EXAMPLE.parents[3] / "examples" / name).read_bytes())
        self.write_settings(MakeReadOnly=0)
        for name in ["out.vorn", "out.csv"]:
            self.assertEqual(self.run_program("roadster.xml", name).returncode, 0)
        self.convert_table("out.vorn")
        self.assertEqual((self.dir / "out.csv").read_bytes(), (self.dir / "t.csv").read_bytes())
