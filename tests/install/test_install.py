"""An installation into an empty directory: what is there, that the programs run from there, and that a program can be
built against the library."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = os.environ["TARVEX_BUILD"]
VERSION = os.environ["TARVEX_VERSION"]
HERE = Path(__file__).parent

# Without the directory of libraries, whose name depends on the system.
FILES = [
    "bin/TARVEX", "bin/tarvex-asm", "bin/tarvex-catalog", "bin/tarvex-disasm", "bin/vorn",
    "include/kestrel/errors.h", "include/kestrel/kestrel.h", "include/kestrel/reader.h", "include/kestrel/records.h",
    "include/kestrel/write_manager.h",
    "share/man/man1/TARVEX.1", "share/man/man1/tarvex-asm.1", "share/man/man1/tarvex-catalog.1", "share/man/man1/tarvex-disasm.1",
    "share/man/man1/vorn.1",
    "share/doc/TARVEX/examples/TARVEX.ini", "share/doc/TARVEX/examples/roadster.xml",
    "share/doc/TARVEX/examples/fcat.dtd",
]
LIBRARY_FILES = ["libkestrel.a", "cmake/kestrel/kestrel-config.cmake", "cmake/kestrel/kestrel-config-version.cmake",
                 "cmake/kestrel/kestrel-targets.cmake"]


def run(*command, **options):
    result = subprocess.run([*map(str, command)], capture_output=True, text=True, check=False, timeout=600, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command}: {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dir = Path(tempfile.mkdtemp(prefix="tarvex-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.dir, ignore_errors=True)
        cls.prefix = cls.dir / "prefix"
        run("cmake", "--install", BUILD, "--prefix", cls.prefix)

    def test_everything_is_there(self):
        for name in FILES:
            self.assertTrue((self.prefix / name).is_file(), name)
        libraries = next(self.prefix.rglob("libkestrel.a")).parent
        for name in LIBRARY_FILES:
            self.assertTrue((libraries / name).is_file(), name)

    def test_nothing_names_the_directories_of_the_build(self):
        for path in [*self.prefix.rglob("*.cmake"), *self.prefix.rglob("*.h")]:
            self.assertNotIn(BUILD, path.read_text(), path)
            self.assertNotIn(str(HERE.parent.parent), path.read_text(), path)

    def test_programs_run_from_there(self):
        work = self.dir / "work"
        shutil.copytree(self.prefix / "share/doc/TARVEX/examples", work)
        console = run(self.prefix / "bin/TARVEX", "roadster.xml", "roadster.vorn", cwd=work, stdin=subprocess.DEVNULL)
        self.assertIn("Output file 'roadster.vorn' written", console)
        self.assertIn("Amp_Volume_Stat", run(self.prefix / "bin/vorn", "list", work / "roadster.vorn"))
        decoded = run(self.prefix / "bin/tarvex-disasm", "--format", "json", work / "roadster.xml", input="22.01.400.1")
        self.assertIn('"message":"22.01.400.1"', decoded)

    def test_every_program_tells_the_version_of_the_project(self):
        self.assertIn(f"TARVEX V{VERSION} ", subprocess.run([self.prefix / "bin/TARVEX"], capture_output=True, text=True,
                                                           check=False).stdout)
        for name in ["tarvex-catalog", "tarvex-disasm", "vorn"]:
            self.assertEqual(run(self.prefix / "bin" / name, "--version"), f"{name} {VERSION}\n")

    def test_a_program_is_built_against_the_library(self):
        build = self.dir / "build"
        run("cmake", "-G", "Ninja", "-S", HERE / "use_kestrel", "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}")
        run("cmake", "--build", build)
        self.assertEqual(run(build / "use-kestrel", self.dir / "cabin.vorn"), "Lamp\n")
        found = re.search(r"kestrel_DIR:PATH=(.*)", (build / "CMakeCache.txt").read_text())
        self.assertTrue(found.group(1).startswith(str(self.prefix)))


if __name__ == "__main__":
    unittest.main()
