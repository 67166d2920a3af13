import hashlib
import shutil
import subprocess

from support import GENERATOR, SOURCE, ProgramTest

SHAPES = ["realistic", "plain", "one-name", "enumerations", "small-functions", "long-descriptions"]
# Ten blocks leave room in 1 MB for functions of every kind.
SIZE = ["--megabytes", "1", "--blocks", "10", "--seed", "1"]
# What the program wrote before anything was done for its speed.
SUMS = SOURCE / "tests" / "data" / "generated.sha256"


def read_sums():
    return {name: number for number, name in (line.split() for line in SUMS.read_text().splitlines())}


class GeneratedCatalogs(ProgramTest):
    maxDiff = None

    def convert(self, shape, doctype):
        """The sums of a catalog and of all that its conversion writes, by file name."""
        stem = shape + ("-doctype" if doctype else "")
        self.write_settings(FCatImportValidate=int(doctype), FCatImportLog=1, FCatTreeLog=f"{stem}.tree")
        with open(self.dir / f"{stem}.xml", "wb") as catalog:
            subprocess.run([GENERATOR, *SIZE, "--shape", shape, *(["--doctype"] if doctype else [])],
                           stdout=catalog, check=True)
        result = self.run_program(f"{stem}.xml", f"{stem}.vorn")
        self.assertEqual(result.returncode, 0)
        self.assertNotIn(b"Parser:", result.stdout)
        self.write(f"{stem}.console", result.stdout)
        # The tree log has the directory of the catalog, which is another one every time.
        tree = (self.dir / f"{stem}.tree").read_bytes()
        self.assertIn(bytes(self.dir), tree)
        self.write(f"{stem}.tree", tree.replace(bytes(self.dir), b"DIRECTORY"))
        names = [f"{stem}.{kind}" for kind in ["xml", "console", "log", "tree", "vorn"]]
        return {name: hashlib.sha256((self.dir / name).read_bytes()).hexdigest() for name in names}

    def test_every_shape_still_gives_the_same_bytes(self):
        shutil.copy(SOURCE / "examples" / "fcat.dtd", self.dir)
        expected = read_sums()
        actual = {}
        for shape in SHAPES:
            for doctype in [False, True]:
                actual.update(self.convert(shape, doctype))
        self.assertEqual(actual, expected)
