"""convert.sh takes the settings that it says, and no settings of the sources' own lie where it would take them for the
user's. The scripts that set up and build are stood in for by others that do nothing."""

import shutil
import subprocess

from documents import PROGRAM, SOURCE, DocumentTest

ABSENT = "There is no TARVEX.ini here: converting with examples/recommended.ini\n"


class Convert(DocumentTest):
    def setUp(self):
        super().setUp()
        self.sources = self.dir / "sources"
        shutil.copytree(SOURCE / "examples", self.sources / "examples")
        shutil.copy(SOURCE / "convert.sh", self.sources)
        for script in ["scripts/setup.sh", "scripts/build.sh"]:
            path = self.sources / script
            path.parent.mkdir(exist_ok=True)
            path.write_text("#!/bin/sh\n", encoding="utf-8")
            path.chmod(0o755)
        programs = self.sources / "build" / "release"
        programs.mkdir(parents=True)
        (programs / "TARVEX").symlink_to(PROGRAM)
        self.work = self.dir / "work"
        self.work.mkdir()
        self.copy_catalog(self.work)

    def copy_catalog(self, folder):
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, folder)

    def convert(self, *arguments):
        return subprocess.run([self.sources / "convert.sh", *arguments], cwd=self.work, capture_output=True, text=True,
                              timeout=120, check=False)

    def database_by(self, settings):
        """What TARVEX itself makes with them, and nothing with their defaults."""
        folder = self.dir / settings
        folder.mkdir()
        shutil.copy(SOURCE / "examples" / settings, folder / "TARVEX.ini")
        self.copy_catalog(folder)
        subprocess.run([PROGRAM, "roadster.xml", "out.vorn"], cwd=folder, capture_output=True, timeout=120, check=True)
        return (folder / "out.vorn").read_bytes()

    def test_two_arguments_without_settings_take_the_recommended_ones(self):
        result = self.convert("roadster.xml", "out.vorn")
        self.assertEqual((result.returncode, result.stderr), (0, ABSENT))
        self.assertEqual((self.work / "out.vorn").read_bytes(), self.database_by("recommended.ini"))
        self.assertEqual(sorted(path.name for path in self.work.iterdir()), ["fcat.dtd", "out.vorn", "roadster.log", "roadster.xml"])

    def test_two_arguments_take_the_settings_of_the_working_directory(self):
        shutil.copy(SOURCE / "examples" / "template.ini", self.work / "TARVEX.ini")
        result = self.convert("roadster.xml", "out.vorn")
        self.assertEqual((result.returncode, ABSENT in result.stderr), (0, False))
        database = (self.work / "out.vorn").read_bytes()
        self.assertEqual(database, self.database_by("template.ini"))
        self.assertNotEqual(database, self.database_by("recommended.ini"))

    def test_any_other_number_of_arguments_is_refused(self):
        for arguments in [("roadster.xml",), ("a", "b", "c")]:
            result = self.convert(*arguments)
            self.assertEqual((result.returncode, result.stdout), (2, ""))
            self.assertTrue(result.stderr.startswith("Usage: "))

    def test_the_sources_have_no_settings_of_their_own_at_the_root(self):
        if (SOURCE / ".git").exists():
            tracked = subprocess.run(["git", "-c", "safe.directory=*", "ls-files", "--", "TARVEX.ini"], cwd=SOURCE,
                                     capture_output=True, text=True, timeout=60, check=True).stdout
            self.assertEqual(tracked, "")
        else:
            self.assertFalse((SOURCE / "TARVEX.ini").exists())
