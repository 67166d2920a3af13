import os
import shutil
import subprocess

from support import CATALOG, PROGRAM, ProgramTest

USAGE = "Usage:\n  TARVEX <XMLfile> <VORNfile>\n"


class Usage(ProgramTest):
    def test_any_other_number_of_arguments_prints_the_usage(self):
        self.write_settings()
        for arguments in [(), ("a.xml",), ("a.xml", "b.vorn", "c")]:
            with self.subTest(arguments=arguments):
                self.assert_run(self.run_program(*arguments), USAGE, 255)

    def test_missing_settings_are_named_by_their_full_path(self):
        self.write("cat.xml", CATALOG)
        self.assert_run(self.run_program("cat.xml", "out.vorn"), f"Unable to open file '{self.dir}/TARVEX.ini'\n", 255,
                        hints=1)
        self.assertFalse((self.dir / "out.vorn").exists())

    def test_settings_beside_the_program_do_not_count(self):
        program = shutil.copy(PROGRAM, self.dir / "TARVEX")
        self.write_settings()
        work = self.dir / "work"
        work.mkdir()
        result = subprocess.run([program, "cat.xml", "out.vorn"], cwd=work, capture_output=True, check=False)
        self.assert_run(result, f"Unable to open file '{work}/TARVEX.ini'\n", 255, hints=1)

    def test_a_directory_in_place_of_the_settings_cannot_be_opened(self):
        (self.dir / "TARVEX.ini").mkdir()
        self.assert_run(self.run_program("cat.xml", "out.vorn"), f"Unable to open file '{self.dir}/TARVEX.ini'\n", 255)

    def test_a_path_that_is_too_long_falls_back_to_the_bare_name(self):
        # The full path has to fit 260 characters with its end, so one of 260 is too long and one of 259 is not.
        for length, console in [(259, ""), (260, "Cannot find file!\n")]:
            with self.subTest(length=length):
                deep = self.dir
                while len(f"{deep}/TARVEX.ini") < length:
                    rest = length - len(f"{deep}/TARVEX.ini")
                    deep = deep / ("d" * (rest - 1 if rest <= 100 else 80))
                self.assertEqual(len(f"{deep}/TARVEX.ini"), length)
                deep.mkdir(parents=True)
                shown = "TARVEX.ini" if console else f"{deep}/TARVEX.ini"
                result = self.run_program("cat.xml", "out.vorn", cwd=deep)
                self.assert_run(result, console + f"Unable to open file '{shown}'\n", 255, hints=1)
                self.write_settings()
                shutil.copy(self.dir / "TARVEX.ini", deep / "TARVEX.ini")
                self.write(deep / "cat.xml", CATALOG)
                result = self.run_program("cat.xml", "out.vorn", cwd=deep)
                self.assert_run(result, console + "Parsing XML 'cat.xml'\nConverting to Kestrel...\n"
                                "Output file 'out.vorn' written\n", 0)

    def test_a_run_without_settings_touches_no_file(self):
        before = sorted(os.listdir(self.dir))
        self.run_program("cat.xml", "out.vorn")
        self.assertEqual(sorted(os.listdir(self.dir)), before)
