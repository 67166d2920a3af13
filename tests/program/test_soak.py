"""Many conversions of damaged catalogs in a row. TARVEX_SOAK_RUNS says how many, if not the few of every test run."""

import copy
import os
import random
import resource
import subprocess
from xml.etree import ElementTree

from support import PROGRAM, SOURCE, ProgramTest

RUNS = int(os.environ.get("TARVEX_SOAK_RUNS", "60"))
SANITIZED = os.environ["TARVEX_SANITIZED"] == "ON"
VORN = os.environ["TARVEX_VORN"]
MAX_MEMORY = 512 << 20  # bytes of address space; the sanitizers reserve terabytes

ODD = ["", "0", "-1", "4294967295", "0x", "0x10..0xFFFFFFFF", "#NULL#", ">7", "%s%n", "a\u0301", "x" * 5000, " \t\n", "Pos",
       "Data", "type_record"]
BYTES = [b"<", b">", b"&", b"\xff", b"\x00", b"<![CDATA[x]]>", b"<!--x-->", b"&nothing;", b"&lt;", b"]]>"]


def change_elements(rng, root):
    parents = [element for element in root.iter() if len(element)]
    for _ in range(rng.randint(1, 8)):
        parent = rng.choice(parents)
        if not len(parent):
            continue
        child = rng.choice(list(parent))
        kind = rng.randrange(7)
        if kind == 0:
            parent.remove(child)
        elif kind == 1:
            for _ in range(rng.choice([1, 2, 20])):
                parent.insert(rng.randrange(len(parent) + 1), copy.deepcopy(child))
        elif kind == 2:
            rng.choice(parents).append(copy.deepcopy(child))
        elif kind == 3:
            child.tag = rng.choice(parents).tag
        elif kind == 4 and child.attrib:
            child.set(rng.choice(list(child.attrib)), rng.choice(ODD))
        elif kind == 5 and child.attrib:
            del child.attrib[rng.choice(list(child.attrib))]
        else:
            child.text = rng.choice(ODD)


def change_bytes(rng, catalog):
    for _ in range(rng.randint(1, 3)):
        at = rng.randrange(len(catalog))
        catalog = catalog[:at] + rng.choice(BYTES) + catalog[at + rng.choice([0, 1, 100]):]
    return catalog


def damage(rng, example):
    """Another catalog: mostly one that is still XML."""
    root = ElementTree.fromstring(example)
    change_elements(rng, root)
    doctype = b'<!DOCTYPE FunctionCatalog SYSTEM "fcat.dtd">\n' if rng.randrange(2) else b""
    catalog = doctype + ElementTree.tostring(root)
    return change_bytes(rng, catalog) if rng.randrange(5) == 0 else catalog


def bound_memory():
    if not SANITIZED:
        resource.setrlimit(resource.RLIMIT_AS, (MAX_MEMORY, MAX_MEMORY))


class Soak(ProgramTest):
    def test_damaged_catalogs_end_with_a_database_or_a_message(self):
        example = (SOURCE / "examples" / "roadster.xml").read_bytes()
        for name in ["fcat.dtd", "aliases.txt", "network.txt"]:
            self.write(name, (SOURCE / "examples" / name).read_bytes())
        rng = random.Random(20261121)
        ends = {0: 0, 255: 0}
        for run in range(RUNS):
            catalog = damage(rng, example)
            self.write("in.xml", catalog)
            self.write("out.vorn", "the old file")
            self.write_settings(FCatImportValidate=run % 2, FCatImportLog=1, FCatTreeLog="tree.log",
                                AliasNames="aliases.txt", NetworkConfiguration="network.txt",
                                StrictExport=run % 3 // 2, UniqueSignalNames=run % 5 % 2)
            result = subprocess.run([PROGRAM, "in.xml", "out.vorn"], cwd=self.dir, stdin=subprocess.DEVNULL,
                                    capture_output=True, timeout=60, check=False, preexec_fn=bound_memory)
            what = f"run {run}: {result.stdout[-500:]!r} {result.stderr[-2000:]!r}"
            self.assertIn(result.returncode, ends, what)
            ends[result.returncode] += 1
            if result.returncode == 255:
                self.assertEqual((self.dir / "out.vorn").read_text(), "the old file", what)
                self.assertIn(b"Failed to", result.stdout, what)
            elif run % 10 == 0:
                check = subprocess.run([VORN, "list", "out.vorn"], cwd=self.dir, capture_output=True, check=False)
                self.assertEqual(check.returncode, 0, what + repr(check.stderr))
            self.assertEqual(list(self.dir.glob(".kestrel-*")), [])
        print(f"{RUNS} conversions: {ends[0]} databases, {ends[255]} refused")
        self.assertGreater(ends[0], 0)
        self.assertGreater(ends[255], 0)
