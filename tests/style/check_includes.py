"""Checks that the includes of the sources point one way: each folder only to those listed for it."""

import re
import sys
from pathlib import Path

# The import folder has two floors: the services that everybody uses, and the manager that uses everybody.
MANAGER = {"import_manager.h", "import_manager.cpp"}

ALLOWED = {
    "kestrel": set(),
    "import": set(),
    "catalog": {"import"},
    "params": {"catalog", "import"},
    "manager": {"params", "catalog", "import"},
    "export": {"catalog", "params", "import", "kestrel"},
    "disasm": {"catalog", "params", "import"},
    "vorn": {"kestrel"},
    "driver": {"export", "disasm", "manager", "import"},
}


def layer(path):
    """The layer that a path such as "import/texts.h" belongs to."""
    folder, name = path.split("/", 1)
    return "manager" if folder == "import" and name in MANAGER else folder


def faults(source):
    for file in sorted(source.rglob("*")):
        if file.suffix not in {".h", ".cpp"}:
            continue
        here = layer(file.relative_to(source).as_posix())
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            included = re.match(r'\s*#include "([^"]+)"', line)
            if not included:
                continue
            path = included.group(1)
            if not (source / path).is_file():
                yield f"{file}:{number}: {path} is not named from the source folder"
            elif layer(path) != here and layer(path) not in ALLOWED[here]:
                yield f"{file}:{number}: {here} must not include {path}"


found = list(faults(Path(sys.argv[1])))
print("\n".join(found))
sys.exit(1 if found else 0)
