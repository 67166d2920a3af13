"""Checks that docs/messages.md lists exactly the messages that the sources declare: number, kind and text."""

import re
import sys
from pathlib import Path

root = Path(sys.argv[1])

texts_header = (root / "src/import/texts.h").read_text(encoding="utf-8")
texts = dict(re.findall(r'\{Text::(\w+),\s*"([^"]*)"\}', texts_header))

declared = {
    (int(number), kind.lower(), texts[text])
    for number, kind, text in re.findall(r"inline constexpr Message \w+\{(\d+), Kind::(\w+), Text::(\w+)\}",
                                         (root / "src/import/messages.h").read_text(encoding="utf-8"))
}

documented = set()
for line in (root / "docs/messages.md").read_text(encoding="utf-8").splitlines():
    cells = [cell.strip() for cell in line.strip("|").split("|")]
    if len(cells) == 4 and cells[0].isdigit():
        documented.add((int(cells[0]), cells[1], cells[2]))

for row in sorted(declared - documented):
    print("not documented:", *row)
for row in sorted(documented - declared):
    print("not declared:", *row)
if not declared:
    print("no declarations found")
sys.exit(0 if declared and declared == documented else 1)
