"""The Debian packages, made of this build and unpacked: what is in them, what they depend on, that the programs run from
there, and that nothing happens when they are installed or removed but that files come and go."""

import gzip
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["TARVEX_BUILD"])
VERSION = os.environ["TARVEX_VERSION"]
SOURCE = Path(__file__).parents[2]


def run(*command, **options):
    result = subprocess.run([*map(str, command)], capture_output=True, text=True, check=False, timeout=600, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command}: {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout


class Packages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dir = Path(tempfile.mkdtemp(prefix="tarvex-package-")).resolve()
        cls.addClassCleanup(shutil.rmtree, cls.dir, ignore_errors=True)
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.dir)
        cls.packages = {path.name.partition("_")[0]: path for path in cls.dir.glob("*.deb")}
        for name, path in cls.packages.items():
            run("dpkg-deb", "--extract", path, cls.dir / name)
        cls.tools = cls.dir / "tarvex" / "usr"

    def field(self, package, name):
        return run("dpkg-deb", "--field", self.packages[package], name).strip()

    def test_there_are_two(self):
        self.assertEqual(sorted(self.packages), ["libkestrel-dev", "tarvex"])
        for package in self.packages:
            self.assertEqual(self.field(package, "Version"), VERSION)

    def test_everything_lies_below_usr(self):
        for package in self.packages:
            self.assertEqual([path.name for path in (self.dir / package).iterdir()], ["usr"])
        both = set.intersection(*({path.relative_to(self.dir / package) for path in (self.dir / package).rglob("*")
                                   if not path.is_dir()} for package in self.packages))
        self.assertEqual(both, set(), "a file belongs to one package")

    def test_nothing_runs_when_they_are_installed_or_removed(self):
        for package, path in self.packages.items():
            control = self.dir / f"{package}.control"
            run("dpkg-deb", "--control", path, control)
            self.assertEqual(sorted(file.name for file in control.iterdir()), ["control", "md5sums"])

    def test_dependencies_are_those_of_the_programs(self):
        depends = set(re.findall(r"[a-z][^ ,]*(?= \()", self.field("tarvex", "Depends")))
        needed = set()
        for program in (self.tools / "bin").iterdir():
            for library in re.findall(r"NEEDED +(\S+)", run("objdump", "-p", program)):
                needed.add(re.sub(r"\.so.*", "", library).replace("_", "-"))
        # Each library that a program asks for comes from a package whose name begins like it.
        self.assertLessEqual({"libc", "libstdc++", "libsqlite3"}, needed)
        for library in needed - {"libm", "libicuuc"}:
            self.assertTrue(any(name.startswith(library) for name in depends), (library, depends))
        self.assertTrue(any(name.startswith("libicu") for name in depends))
        self.assertEqual(self.field("libkestrel-dev", "Depends"), "libxml2-dev, libsqlite3-dev, libsodium-dev")

    def test_what_the_documents_use_is_suggested(self):
        self.assertEqual(self.field("tarvex", "Suggests"), "bash-completion, jq, libkestrel-dev, man-db, python3, sqlite3")

    def test_lintian_finds_nothing(self):
        if not shutil.which("lintian"):
            self.skipTest("there is no lintian")
        # These are of the build under test, whose libraries stand where its own prefix wants them; package.sh builds
        # for Debian's directories, and has all tags.
        run("lintian", "--allow-root", "--fail-on", "error,warning",
            "--suppress-tags", "pkg-config-unavailable-for-cross-compilation", *self.packages.values())

    def test_documents_are_as_debian_wants_them(self):
        for package in self.packages:
            documents = self.dir / package / "usr/share/doc" / package
            changelog = gzip.decompress((documents / "changelog.gz").read_bytes()).decode()
            self.assertRegex(changelog, rf"\Atarvex \({re.escape(VERSION)}\) unstable; urgency=medium\n\n  \* .*\n\n"
                                        r" -- .* <.*>  \w+, \d+ \w+ \d+ 00:00:00 \+0000\n\Z")
            copyright_text = (documents / "copyright").read_text(encoding="utf-8")
            self.assertTrue(copyright_text.startswith((SOURCE / "LICENSE").read_text()))
            self.assertIn("code of nlohmann-json3-dev", copyright_text)
        self.assertEqual("code of libxerces-c-dev" in (self.tools / "share/doc/tarvex/copyright").read_text(encoding="utf-8"),
                         bool(re.search(r"^TARVEX_STATIC_XERCES:BOOL=ON$", (BUILD / "CMakeCache.txt").read_text(), re.MULTILINE)))
        self.assertEqual([path.name for path in (self.tools / "share/zsh").iterdir()], ["vendor-completions"])
        pages = [path for path in (self.tools / "share/man").rglob("*") if path.is_file()]
        self.assertEqual(sorted(path.name for path in pages),
                         sorted(f"{path.name}.gz" for path in (SOURCE / "docs/man").iterdir()))
        for page in pages:
            self.assertEqual(gzip.decompress(page.read_bytes()),
                             (SOURCE / "docs/man" / page.name.removesuffix(".gz")).read_bytes())

    def test_programs_run_from_there(self):
        work = self.dir / "work"
        shutil.copytree(self.tools / "share/doc/tarvex/examples", work)
        shutil.copy(work / "recommended.ini", work / "TARVEX.ini")
        env = {**os.environ, "PATH": f"{self.tools / 'bin'}:{os.environ['PATH']}"}
        session = ("TARVEX roadster.xml roadster.sqlite && vorn list roadster.sqlite --match Gateway_Motion_Status && "
                   "tarvex-catalog explain 87 && echo 'AudioAmp.01.Volume.Set Volume=50' | tarvex-asm roadster.xml | "
                   "tarvex-disasm roadster.xml && python3 read-from-python.py roadster.sqlite Volume")
        shown = run("sh", "-c", session, cwd=work, env=env)
        for line in ["Output file 'roadster.sqlite' written",
                     "0x60200C extended   Gateway_Motion_Status             3 bytes      2 signals     Gateway",
                     "87 error: Missing required attribute %s", "22.01.400.0 (32) AudioAmp.Volume.Set", "  Volume = 50 %",
                     "0x224000 AudioAmp_Volume_Set.Volume: bit 7, 8 bits, 0 to 100 %"]:
            self.assertIn(line, shown.splitlines())


class Versions(unittest.TestCase):
    def test_the_newest_changes_are_those_of_this_version(self):
        newest = re.search(r"^## (\S+)", (SOURCE / "CHANGELOG.md").read_text(), re.MULTILINE).group(1)
        self.assertEqual(newest, VERSION)


if __name__ == "__main__":
    unittest.main()
