"""Tells which messages carry a function, and where their signals lie: python3 read-from-python.py roadster.sqlite Volume

It needs Python alone, and a database that TARVEX or vorn has written as SQLite."""

import pathlib
import sqlite3
import sys

if len(sys.argv) != 3:
    sys.exit(f"Usage: {sys.argv[0]} DATABASE FUNCTION")
_, path, function = sys.argv

try:
    database = sqlite3.connect(pathlib.Path(path).resolve().as_uri() + "?mode=ro", uri=True)
    database.row_factory = sqlite3.Row
    rows = database.execute("SELECT * FROM signals WHERE function = ?", [function]).fetchall()
except sqlite3.Error as error:
    sys.exit(f"{path}: {error}")
for row in rows:
    if row["signal"] is None:
        print(f"{row['identifier']} {row['message']}: no signals")
        continue
    unit = f" {row['unit']}" if row["unit"] else ""
    bounds = "" if None in (row["minimum"], row["maximum"]) else f", {row['minimum']:g} to {row['maximum']:g}"
    print(f"{row['identifier']} {row['message']}.{row['signal']}: bit {row['start_bit']}, {row['bits']} bits{bounds}{unit}")
if not rows:
    sys.exit(f"{path}: no message of a function '{function}'")
