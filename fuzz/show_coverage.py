"""Prints the line coverage of each file in a summary that llvm-cov exports, and of all of them."""

import json
import os
import sys

data = json.load(sys.stdin)["data"][0]
rows = [(os.path.relpath(file["filename"]), file["summary"]["lines"]) for file in data["files"]]
for name, lines in sorted(rows) + [("all", data["totals"]["lines"])]:
    print(f"  {name:<40} {lines['covered']:>5} of {lines['count']:>5}  {lines['percent']:5.1f} %")
