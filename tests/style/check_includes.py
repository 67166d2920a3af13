"""Checks that the includes of the sources point one way: each room only to those listed for it, which all stand below
it. Prints how many includes lead from room to room."""

import re
import sys
from collections import Counter
from pathlib import Path

# From the bottom up.
ROOMS = {
    "kestrel": set(),
    "import/text": set(),
    "import/log": {"import/text"},
    "review/explanations": {"import/log", "import/text"},
    "import/xml": {"import/log", "import/text"},
    "catalog": {"import/xml", "import/log", "import/text"},
    "params": {"catalog", "import/xml", "import/log", "import/text"},
    "import": {"params", "catalog", "import/xml", "import/log", "import/text"},
    "export": {"params", "catalog", "import/text", "kestrel"},
    "capture": {"catalog", "import/text"},
    "disasm": {"capture", "params", "catalog", "import/text"},
    "asm": {"disasm", "capture", "params", "catalog", "import/text"},
    "drawing": {"kestrel"},
    "command_line": {"import/text"},
    "vorn": {"command_line", "drawing", "kestrel", "import/text"},
    "driver": {"command_line", "export", "asm", "disasm", "capture", "import", "catalog", "import/log", "import/text", "kestrel"},
    "review": {"review/explanations", "drawing", "driver", "export", "import", "params", "catalog", "import/xml",
               "import/log", "import/text", "kestrel"},
    "page": {"review", "drawing", "export", "params", "catalog", "import/text", "kestrel"},
    "review/program": {"page", "review", "command_line", "drawing", "driver", "import/text"},
}
GENERATED = {"versions.h"}  # by the build


def room_of(path):
    """The room that a path such as "import/log/texts.h" belongs to."""
    return path.rpartition("/")[0]


def check(source, arrows):
    for file in sorted(source.rglob("*")):
        if file.suffix not in {".h", ".cpp", ".def"}:
            continue
        here = room_of(file.relative_to(source).as_posix())
        if here not in ROOMS:
            yield f"{file}: {here} is no room"
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            included = re.match(r'\s*#include "([^"]+)"', line)
            if not included or included.group(1) in GENERATED:
                continue
            path = included.group(1)
            there = room_of(path)
            if not (source / path).is_file():
                yield f"{file}:{number}: {path} is not named from the source folder"
            elif there != here:
                arrows[here, there] += 1
                if there not in ROOMS[here]:
                    yield f"{file}:{number}: {here} must not include {path}"


counts = Counter()
floors = list(ROOMS)
faults = [f"{upper} must stand above {lower}" for upper, below in ROOMS.items() for lower in below
          if floors.index(upper) < floors.index(lower)]
faults += check(Path(sys.argv[1]), counts)
for (upper, lower), count in sorted(counts.items(), key=lambda row: tuple(map(floors.index, row[0]))):
    print(f"{upper} -> {lower}: {count}")
print("\n".join(faults))
sys.exit(1 if faults else 0)
