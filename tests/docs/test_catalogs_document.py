"""catalogs.md and the schema of what tarvex-catalog check writes."""

import copy
import json
import shutil
import subprocess

import jsonschema

from documents import CATALOG, DocumentTest, blocks, read
from support import SOURCE

SCHEMA = json.loads(read("tarvex-catalog-check.schema.json"))
GONE = object()

# What is changed in the output for a catalog with faults; the schema refuses each.
BROKEN = [
    (["catalogs"], GONE), (["catalogs"], {}), (["more"], 1),
    (["catalogs", 0, "file"], None), (["catalogs", 0, "is_imported"], "yes"), (["catalogs", 0, "known"], -1),
    (["catalogs", 0, "verdicts"], GONE), (["catalogs", 0, "verdicts", "incomplete"], 3),
    (["catalogs", 0, "verdicts", "incomplete", 0], "22.402"), (["catalogs", 0, "verdicts", "lost_blocks"], []),
    (["catalogs", 0, "faults", 0, "line"], 0), (["catalogs", 0, "faults", 0, "column"], "9"),
    (["catalogs", 0, "faults", 0, "kind"], "hint"), (["catalogs", 0, "faults", 0, "number"], "93"),
    (["catalogs", 0, "faults", 0, "source"], "user"), (["catalogs", 0, "faults", 0, "text"], None),
    (["catalogs", 0, "faults", 0, "path"], GONE), (["catalogs", 0, "faults", 0, "more"], 1),
]


def changed(document, path, value):
    result = copy.deepcopy(document)
    place = result
    for key in path[:-1]:
        place = place[key]
    if value is GONE:
        del place[path[-1]]
    else:
        place[path[-1]] = value
    return result


class CatalogsDocument(DocumentTest):
    def setUp(self):
        super().setUp()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        self.write("TARVEX.ini", "[Import]\nFCatImportValidate=0\n")

    def check(self, *arguments):
        return subprocess.run([CATALOG, "check", *arguments], cwd=self.dir, capture_output=True, check=False)

    def test_what_it_shows(self):
        shown = blocks(read("catalogs.md"), "text")
        self.assertEqual(len(shown), 2)
        result = self.check("roadster.xml", "--settings", "TARVEX.ini")
        lines = result.stdout.decode().splitlines()
        self.assertEqual(result.returncode, 1)
        for line in shown[0].splitlines():
            self.assertIn(line, lines)
        self.assertEqual(lines[-2:], shown[1].splitlines())

    def test_the_schema_takes_what_is_written_and_nothing_else(self):
        validator = jsonschema.Draft202012Validator(SCHEMA)
        self.write("broken.xml", "<a>")
        whole = json.loads(self.check("roadster.xml", "broken.xml", "--format", "json").stdout)
        validator.validate(whole)
        self.assertTrue(whole["catalogs"][0]["verdicts"]["incomplete"])
        for path, value in BROKEN:
            with self.subTest((path, value)):
                self.assertFalse(validator.is_valid(changed(whole, path, value)))
