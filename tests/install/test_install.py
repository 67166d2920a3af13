"""An installation into an empty directory: what is there, that the programs run from there, that programs can be built
against the library, and that all of it can be removed."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["TARVEX_BUILD"])
CONFIG = os.environ["TARVEX_CONFIG"]
VERSION = os.environ["TARVEX_VERSION"]
SOURCE = Path(__file__).parents[2]
EXAMPLE = SOURCE / "examples" / "use-kestrel"
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Werror"]

PROGRAMS = ["TARVEX", "tarvex-asm", "tarvex-catalog", "tarvex-disasm", "vorn"]
HEADERS = ["database.h", "errors.h", "format.h", "kestrel.h", "keyed_hash.h", "model_text.h", "reader.h", "records.h",
           "write_manager.h", "writer.h"]
# LIB is the directory of libraries, whose name depends on the system.
FILES = [
    *(f"bin/{name}" for name in PROGRAMS),
    *(f"include/kestrel/{name}" for name in HEADERS),
    *(f"LIB/cmake/kestrel/{name}" for name in ["Findsodium.cmake", "kestrel-config-version.cmake", "kestrel-config.cmake",
                                               f"kestrel-targets-{CONFIG}.cmake", "kestrel-targets.cmake"]),
    "LIB/libkestrel.a",
    "LIB/pkgconfig/kestrel.pc",
    *(f"share/bash-completion/completions/{name}" for name in PROGRAMS[1:]), "share/zsh/site-functions/_tarvex",
    *(f"share/man/man1/{name}.1" for name in PROGRAMS),
    "share/man/man5/tarvex.ini.5", "share/man/man5/vorn.5",
    *(f"share/doc/tarvex/{name}" for name in ["README.md", "CHANGELOG.md", "CONTRIBUTING.md", "RELEASING.md", "LICENSE"]),
]
# Directories that others put something into, too, and that stay.
SHARED = ["bin", "include", "share", "share/bash-completion", "share/bash-completion/completions", "share/doc", "share/man",
          "share/man/man1", "share/man/man5", "share/zsh", "share/zsh/site-functions"]


def run(*command, **options):
    result = subprocess.run([*map(str, command)], capture_output=True, text=True, check=False, timeout=600, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command}: {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout


def sources_of(*folders):
    """The files that the project has in them, whatever else lies there; outside of a clone all that do."""
    if (SOURCE / ".git").exists():
        return run("git", "-c", "safe.directory=*", "ls-files", "--", *folders, cwd=SOURCE).splitlines()
    return [f"{folder}/{name}" for folder in folders for name in files_below(SOURCE / folder)]


def files_below(directory):
    return sorted(str(path.relative_to(directory)) for path in directory.rglob("*") if not path.is_dir())


class InstallTest(unittest.TestCase):
    """Has a prefix, once something is installed into it."""

    @classmethod
    def setUpClass(cls):
        cls.dir = Path(tempfile.mkdtemp(prefix="tarvex-install-")).resolve()
        cls.addClassCleanup(shutil.rmtree, cls.dir, ignore_errors=True)
        cls.prefix = cls.dir / "prefix"

    @classmethod
    def install(cls, build):
        run("cmake", "--install", build, "--prefix", cls.prefix)
        cls.libraries = next(cls.prefix.rglob("kestrel.pc")).parents[1]
        cls.pkg_config = {**os.environ, "PKG_CONFIG_PATH": str(cls.libraries / "pkgconfig")}

    def build_with_cmake(self):
        """The example, built against the prefix."""
        build = self.dir / "build"
        run("cmake", "-G", "Ninja", "-S", EXAMPLE, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
            f"-DCMAKE_CXX_FLAGS={' '.join(WARNINGS)}")
        run("cmake", "--build", build)
        found = re.search(r"kestrel_DIR:PATH=(.*)", (build / "CMakeCache.txt").read_text())
        self.assertTrue(found.group(1).startswith(str(self.prefix)))
        return build / "use-kestrel"

    def build_with_pkg_config(self, source=EXAMPLE / "use_kestrel.cpp"):
        """The same, or another source, and the libraries that were linked for it."""
        flags = run("pkg-config", "--cflags", "--libs", "kestrel", env=self.pkg_config).split()
        self.assertIn(str(self.libraries), [str(Path(flag[2:]).resolve()) for flag in flags if flag.startswith("-L")])
        program = self.dir / source.stem
        run("g++", "-std=c++20", *WARNINGS, source, "-o", program, *flags)
        return program, {flag[2:] for flag in flags if flag.startswith("-l")}


class Installation(InstallTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.install(BUILD)
        cls.manifest = (BUILD / "install_manifest.txt").read_text().splitlines()
        # Somebody works with a copy of the examples, in a database of which the tests read.
        cls.work = cls.dir / "work"
        shutil.copytree(cls.prefix / "share/doc/tarvex/examples", cls.work)
        shutil.copy(cls.work / "recommended.ini", cls.work / "TARVEX.ini")
        cls.console = run(cls.prefix / "bin/TARVEX", "roadster.xml", "roadster.sqlite", cwd=cls.work,
                          stdin=subprocess.DEVNULL)

    def test_exactly_what_is_meant_is_there(self):
        self.maxDiff = None
        wanted = [name.replace("LIB", str(self.libraries.relative_to(self.prefix))) for name in FILES]
        wanted += [f"share/doc/tarvex/{name}" for name in sources_of("docs", "examples")
                   if not name.startswith("docs/man/")]
        self.assertEqual(files_below(self.prefix), sorted(wanted))

    def test_nothing_is_outside_of_the_prefix(self):
        self.assertEqual(sorted(self.manifest), [f"{self.prefix}/{name}" for name in files_below(self.prefix)])

    def test_links_of_the_documents_lead_to_what_is_there(self):
        documents = sorted((self.prefix / "share/doc/tarvex").rglob("*.md"))
        self.assertGreater(len(documents), 15)
        for document in documents:
            text = re.sub(r"```.*?```", "", document.read_text(encoding="utf-8"), flags=re.DOTALL)
            for target in re.findall(r"\]\(([^)\s#]+)[^)\s]*\)", text):
                if "://" not in target:
                    self.assertTrue((document.parent / target).exists(), (document.name, target))

    def test_files_that_man_pages_and_documents_name_are_there(self):
        named = set()
        for page in (self.prefix / "share/man").rglob("*.?"):
            named |= set(re.findall(r"^\.(?:It )?Pa (share/\S+)", page.read_text(encoding="utf-8"), re.MULTILINE))
        self.assertGreater(len(named), 12)
        for document in ["README.md", "docs/first-steps.md"]:
            named |= set(re.findall(r" /usr/(share/\S+)", (SOURCE / document).read_text(encoding="utf-8")))
        self.assertIn("share/doc/tarvex/examples", named)
        self.assertEqual([name for name in sorted(named) if not (self.prefix / name).exists()], [])

    def test_nothing_names_the_directories_of_the_build(self):
        texts = [path for pattern in ["*.cmake", "*.h", "*.pc"] for path in self.prefix.rglob(pattern)]
        self.assertGreater(len(texts), len(HEADERS))
        for path in texts:
            for directory in [BUILD, SOURCE, self.prefix]:
                self.assertNotIn(str(directory), path.read_text(), path)

    def test_programs_run_from_there(self):
        self.assertIn("Output file 'roadster.sqlite' written", self.console)
        bin_directory = self.prefix / "bin"
        self.assertIn("AudioAmp_Volume_Status", run(bin_directory / "vorn", "list", self.work / "roadster.sqlite"))
        catalog = self.work / "roadster.xml"
        decoded = run(bin_directory / "tarvex-disasm", "--format", "json", catalog, input="22.01.400.1")
        self.assertIn('"message":"22.01.400.1"', decoded)
        self.assertEqual(run(bin_directory / "tarvex-asm", catalog, input="AudioAmp.01.Volume.Set Volume=50\n"),
                         "22.01.400.0 (32)\n")
        self.assertIn("AudioAmp", run(bin_directory / "tarvex-catalog", "show", catalog))

    def test_every_program_tells_the_version_of_the_project(self):
        self.assertIn(f"TARVEX V{VERSION} ", self.console)
        for name in PROGRAMS[1:]:
            self.assertEqual(run(self.prefix / "bin" / name, "--version"), f"{name} {VERSION}\n")
        self.assertEqual(run("pkg-config", "--modversion", "kestrel", env=self.pkg_config), f"{VERSION}\n")

    def test_the_headers_stand_alone(self):
        # Each is all that a file of its own has; the compiler takes several in one run.
        sources = []
        for header in HEADERS:
            sources.append(self.dir / f"{header}.cpp")
            sources[-1].write_text(f"#include <kestrel/{header}>\n")
        run("g++", "-std=c++20", "-fsyntax-only", *WARNINGS, f"-I{self.prefix / 'include'}", *sources)

    def assert_prints_signals(self, program):
        """In the order of the catalog: bits and factors are those that roadster.xml gives the parameters."""
        printed = run(program, self.work / "roadster.sqlite").splitlines()
        self.assertIn("AudioAmp_Volume_Set.Volume: bit 7, length 8, times 1 %", printed)
        self.assertIn("Gateway_Motion_Status.Speed: bit 7, length 16, times 0.01 km/h", printed)
        self.assertIn("Gateway_Motion_Status.Gear: bit 23, length 8, times 1 ", printed)
        self.assert_refused([program, "missing"], 2, "use-kestrel: missing: No such file or directory")
        self.assert_refused([program, "roadster.xml"], 2,
                            "use-kestrel: roadster.xml: this is XML; vorn reads Vorn and SQLite")

    def test_the_example_is_built_with_cmake(self):
        self.assert_prints_signals(self.build_with_cmake())

    def test_the_example_is_built_with_pkg_config(self):
        program, linked = self.build_with_pkg_config()
        self.assertLessEqual({"kestrel", "xml2", "sqlite3", "sodium"}, linked)
        self.assert_prints_signals(program)

    def test_the_program_of_the_document_writes_a_database(self):
        source = self.dir / "write_database.cpp"
        document = (SOURCE / "docs" / "building.md").read_text()
        source.write_text(re.search(r"^```cpp\n(.*?)^```$", document, re.DOTALL | re.MULTILINE).group(1))
        program, _ = self.build_with_pkg_config(source)
        run(program, cwd=self.dir)
        signals = run(self.prefix / "bin/vorn", "list", "--format", "csv", self.dir / "cabin.vorn").splitlines()
        self.assertEqual([line.split(",")[4:12] for line in signals[1:]],
                         [["Lamp", "0x100", "1", "", "", "Brightness", "0", "8"]])

    def test_the_database_is_read_by_python_alone(self):
        command = [sys.executable, self.work / "read-from-python.py", self.work / "roadster.sqlite"]
        self.assertEqual(run(*command, "Motion"),
                         "0x60200C Gateway_Motion_Status.Speed: bit 7, 16 bits, -30 to 250 km/h\n"
                         "0x60200C Gateway_Motion_Status.Gear: bit 23, 8 bits, -1 to 6\n")
        self.assertEqual(run(*command, "TrackTitle"), "0x312041 DiscPlayer_TrackTitle_Get: no signals\n"
                                                      "0x31204C DiscPlayer_TrackTitle_Status: no signals\n")

    def test_python_names_the_file_that_it_cannot_read(self):
        for name, content in [("empty", ""), ("cabin.vorn", "{}\n")]:
            (self.work / name).write_text(content)
        python = [sys.executable, self.work / "read-from-python.py"]
        for command, said in [
                ([*python, "roadster.sqlite", "Motions"], "roadster.sqlite: no message of a function 'Motions'"),
                ([*python, "missing", "Motion"], "missing: unable to open database file"),
                ([*python, "empty", "Motion"], "empty: no such table: signals"),
                ([*python, "cabin.vorn", "Motion"], "cabin.vorn: file is not a database"),
                ([*python, "."], f"Usage: {python[1]} DATABASE FUNCTION")]:
            with self.subTest(said):
                self.assert_refused(command, 1, said)

    def assert_refused(self, command, status, said):
        result = subprocess.run([*map(str, command)], cwd=self.work, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (status, "", f"{said}\n"))


class SharedLibrary(InstallTest):
    """The library built alone, as a shared one."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        build = cls.dir / "kestrel"
        run("cmake", "-G", "Ninja", "-S", SOURCE / "src" / "kestrel", "-B", build, "-DBUILD_SHARED_LIBS=ON",
            "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_COMPILE_WARNING_AS_ERROR=ON")
        run("cmake", "--build", build)
        cls.install(build)
        cls.database = cls.dir / "cabin.vorn"
        shown = (SOURCE / "docs" / "vorn.md").read_text()
        cls.database.write_text(re.search(r"^```json\n(.*?)^```$", shown, re.DOTALL | re.MULTILINE).group(1))

    def assert_prints_signals(self, program):
        """Those of the database that the document shows."""
        printed = run(program, self.database, env={**os.environ, "LD_LIBRARY_PATH": str(self.libraries)})
        self.assertEqual(printed, "AudioAmp_Volume_Status.Volume: bit 7, length 8\n"
                                  "AudioAmp_Volume_Status.Mute: bit 8, length 1\n"
                                  "Menu.PosX: bit 0, length 16\n"
                                  "Menu.Entry_M1: bit 23, length 16\n"
                                  "Menu.Size_M2: bit 23, length 8, times 0.1 MB\n")

    def test_there_is_no_other_library(self):
        self.assertEqual([name for name in files_below(self.libraries) if "libkestrel" in name],
                         ["libkestrel.so", f"libkestrel.so.{VERSION.rpartition('.')[0]}", f"libkestrel.so.{VERSION}"])

    def test_the_example_is_built_with_cmake(self):
        self.assert_prints_signals(self.build_with_cmake())

    def test_the_example_is_built_with_pkg_config(self):
        program, linked = self.build_with_pkg_config()
        self.assertEqual(linked, {"kestrel"})
        self.assert_prints_signals(program)


class Removal(unittest.TestCase):
    def test_what_was_installed_is_removed_as_described(self):
        described = (SOURCE / "docs" / "building.md").read_text()
        command = re.search(r"^(cmake --build build --target uninstall)$", described, re.MULTILINE).group(1)
        with tempfile.TemporaryDirectory(prefix="tarvex-install-") as directory:
            prefix = Path(directory) / "with blank"
            run("cmake", "--install", BUILD, "--prefix", prefix)
            self.assertTrue((prefix / "bin/TARVEX").is_file())
            libraries = next(prefix.rglob("kestrel.pc")).parents[1].relative_to(prefix)
            stays = [libraries, libraries / "cmake", libraries / "pkgconfig", *libraries.parents[:-1]]
            own = prefix / "share/doc/tarvex/docs/note"
            own.write_text("somebody's own")
            run(*(str(BUILD) if word == "build" else word for word in command.split()))
            self.assertEqual(files_below(prefix), ["share/doc/tarvex/docs/note"])
            own.unlink()
            shutil.rmtree(prefix / "share/doc/tarvex")
            self.assertEqual(sorted(str(path.relative_to(prefix)) for path in prefix.rglob("*")),
                             sorted({*SHARED, *map(str, stays)}))


if __name__ == "__main__":
    unittest.main()
