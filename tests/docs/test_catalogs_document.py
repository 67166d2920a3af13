"""The schemas of what tarvex-catalog writes, for what catalogs.md does among others."""

import copy
import json
import shutil
import subprocess

import jsonschema

from documents import CATALOG, DocumentTest, read, steps
from support import SOURCE

SCHEMA = json.loads(read("tarvex-catalog-check.schema.json"))
SHOW_SCHEMA = json.loads(read("tarvex-catalog-show.schema.json"))
DIFF_SCHEMA = json.loads(read("tarvex-catalog-diff.schema.json"))
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
# The same of differences.
BROKEN_DIFF = [
    (["before"], GONE), (["after"], None), (["changes"], {}), (["more"], 1), (["summary"], GONE),
    (["summary", "moved"], "1"), (["summary", "bytes"], GONE), (["summary", "more"], 1),
    *[(["changes", 0, key], GONE) for key in ["change", "function", "operations", "item", "lost_by", "also_in"]],
    (["changes", 0, "change"], "replaced"), (["changes", 0, "object"], "signal"), (["changes", 0, "aspect"], "colour"),
    (["changes", 0, "effect"], True), (["changes", 0, "block"], None), (["changes", 0, "block", "number"], 4096),
    (["changes", 0, "function", "name"], GONE), (["changes", 0, "operations"], "Set"), (["changes", 0, "before"], ""),
    (["changes", 0, "lost_by"], 0), (["changes", 0, "also_in"], -1), (["changes", 0, "more"], 1),
]

# The same for what is shown of a function.
FUNCTION = ["answers", 0, "functions", 0]
BROKEN_FUNCTION = [
    (["answers"], GONE), (["blocks"], []), (["version", "date"], GONE), (["answers", 0, "what"], None),
    ([*FUNCTION, "fblock_id"], 256), ([*FUNCTION, "function_id"], "402"), ([*FUNCTION, "kind"], "event"),
    ([*FUNCTION, "more"], 1), ([*FUNCTION, "operations", 0, "op_type"], 16),
    ([*FUNCTION, "operations", 0, "address"], "22.402"), ([*FUNCTION, "operations", 0, "layout"], "complete"),
    ([*FUNCTION, "operations", 0, "end"], {}), ([*FUNCTION, "operations", 0, "message", "signals", 0, "length"], -1),
    ([*FUNCTION, "parameters", 0, "unit"], GONE), ([*FUNCTION, "parameters", 0, "range"], [1]),
    ([*FUNCTION, "parameters", 0, "values"], []), ([*FUNCTION, "parameters", 0, "kind"], "string"),
    ([*FUNCTION, "faults", 0, "line"], 0), ([*FUNCTION, "faults", 0, "more"], 1),
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

    def run_catalog(self, *arguments):
        return subprocess.run([CATALOG, *arguments], cwd=self.dir, capture_output=True, check=False)

    def check(self, *arguments):
        return self.run_catalog("check", *arguments)

    def show(self, *arguments):
        return json.loads(self.run_catalog("show", "--format", "json", *arguments).stdout)

    def change(self):
        """The new catalog, as the document makes it."""
        command = next(command for command, _ in steps(read("catalogs.md")) if command.startswith("sed "))
        subprocess.run(["sh", "-c", command], cwd=self.dir, check=True)

    def diff(self, *arguments):
        return subprocess.run([CATALOG, "diff", *arguments], cwd=self.dir, capture_output=True, check=False)

    def test_the_schema_of_differences_takes_what_is_written_and_nothing_else(self):
        validator = jsonschema.Draft202012Validator(DIFF_SCHEMA)
        self.change()
        whole = json.loads(self.diff("roadster.xml", "next.xml", "--format", "json").stdout)
        validator.validate(whole)
        for path, value in BROKEN_DIFF:
            with self.subTest((path, value)):
                self.assertFalse(validator.is_valid(changed(whole, path, value)))
        shutil.copy(SOURCE / "examples" / "convertible.xml", self.dir)
        other = json.loads(self.diff("roadster.xml", "convertible.xml", "--format", "json").stdout)
        validator.validate(other)
        self.assertTrue(all(change["function"] is None for change in other["changes"]))

    def test_the_schema_takes_what_is_written_and_nothing_else(self):
        validator = jsonschema.Draft202012Validator(SCHEMA)
        self.write("broken.xml", "<a>")
        whole = json.loads(self.check("roadster.xml", "broken.xml", "--format", "json").stdout)
        validator.validate(whole)
        self.assertTrue(whole["catalogs"][0]["verdicts"]["incomplete"])
        for path, value in BROKEN:
            with self.subTest((path, value)):
                self.assertFalse(validator.is_valid(changed(whole, path, value)))

    def test_the_schema_of_show_takes_what_is_written_and_nothing_else(self):
        validator = jsonschema.Draft202012Validator(SHOW_SCHEMA)
        validator.validate(self.show("roadster.xml"))
        shutil.copy(SOURCE / "examples" / "convertible.xml", self.dir)
        for catalog in ["roadster.xml", "convertible.xml"]:
            blocks_shown = self.show(catalog)["blocks"]
            answers = self.show(catalog, *[f"{block['fblock_id']:02X}" for block in blocks_shown])["answers"]
            words = [f"{function['fblock_id']:02X}.{function['function_id']:03X}"
                     for answer in answers for function in answer["blocks"][0]["functions"]]
            whole = self.show(catalog, "*.*", "dB", "nowhere.*", "50.306.2", *words)
            validator.validate({**whole, "answers": answers})
            validator.validate(whole)
            self.assertEqual(sum(len(answer["functions"]) for answer in whole["answers"][4:]), len(words))
        whole = self.show("roadster.xml", "22.402")
        for path, value in BROKEN_FUNCTION:
            with self.subTest((path, value)):
                self.assertFalse(validator.is_valid(changed(whole, path, value)))
