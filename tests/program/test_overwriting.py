import os
import stat
import subprocess

from support import BANNER, CATALOG, PROGRAM, ProgramTest, TerminalRun

OLD = "the old database\n"
QUESTION = "Output file 'out.vorn' already exists. Overwrite (y/n)? "
CONVERSION = "Parsing XML 'cat.xml'\nConverting to Kestrel...\nOutput file 'out.vorn' written\n"


class OverwritingTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write("cat.xml", CATALOG)
        self.output = self.write("out.vorn", OLD)

    def mode(self):
        return stat.S_IMODE(self.output.stat().st_mode)


class OnATerminal(OverwritingTest):
    def setUp(self):
        super().setUp()
        self.write_settings(WarnOnOverwrite=1)

    def answer(self, key):
        run = TerminalRun(self.dir, "cat.xml", "out.vorn")
        run.read_until(b"(y/n)? ")
        run.press(key)
        status, shown = run.finish()
        self.assertEqual(run.after, run.before, "the terminal is left as it was found")
        return status, shown

    def test_any_other_key_refuses_without_a_line_end(self):
        for key in [b"n", b"N", b" ", b"\r", b"\x03", b"\x1b", b"\x04"]:
            with self.subTest(key=key):
                status, shown = self.answer(key)
                self.assertEqual(status, 255)
                self.assertEqual(shown, BANNER + QUESTION)
                self.assertEqual(self.output.read_text(), OLD)

    def test_yes_is_echoed_once_and_overwrites_also_a_read_only_file(self):
        for key in ["y", "Y"]:
            with self.subTest(key=key):
                self.output.write_text(OLD)
                self.output.chmod(0o444)
                status, shown = self.answer(key.encode())
                self.assertEqual(status, 0)
                self.assertEqual(shown, BANNER + QUESTION + key + "\n" + CONVERSION)
                self.assertTrue(self.output.read_text().startswith('{\n"format": "Vorn"'))
                self.assertEqual(self.mode(), 0o644)

    def test_a_missing_file_raises_no_question(self):
        self.output.unlink()
        run = TerminalRun(self.dir, "cat.xml", "out.vorn")
        self.assertEqual(run.finish(), (0, BANNER + CONVERSION))


class FromAPipe(OverwritingTest):
    def test_one_byte_is_the_answer(self):
        self.write_settings(WarnOnOverwrite=1)
        self.assert_run(self.run_program("cat.xml", "out.vorn", stdin=b"no"), QUESTION, 255)
        self.assertEqual(self.output.read_text(), OLD)
        self.assert_run(self.run_program("cat.xml", "out.vorn", stdin=b"yes"), QUESTION + "y\n" + CONVERSION, 0)

    def test_a_conversion_that_fails_leaves_the_old_file_write_protected(self):
        for name, catalog, settings in [("import", "<FunctionCatalog>", {}),
                                        ("export", CATALOG, {"AliasNames": "out.vorn"})]:
            with self.subTest(name):
                self.write("cat.xml", catalog)
                self.write_settings(WarnOnOverwrite=1, **settings)
                for mode in [0o444, 0o640]:
                    self.output.chmod(mode)
                    self.assertEqual(self.run_program("cat.xml", "out.vorn", stdin=b"y").returncode, 255)
                    self.assertEqual(self.mode(), mode)
                    self.assertEqual(self.output.read_text(), OLD)

    def test_only_one_byte_is_taken_from_the_input(self):
        self.write_settings(WarnOnOverwrite=1)
        reader, writer = os.pipe()
        os.write(writer, b"nrest")
        os.close(writer)
        subprocess.run([PROGRAM, "cat.xml", "out.vorn"], cwd=self.dir, stdin=reader, stdout=subprocess.DEVNULL,
                       check=False)
        self.assertEqual(os.read(reader, 10), b"rest")
        os.close(reader)

    def test_the_end_of_the_input_refuses(self):
        self.write_settings(WarnOnOverwrite=1)
        self.assert_run(self.run_program("cat.xml", "out.vorn", stdin=b""), QUESTION, 255)
        self.assertEqual(self.output.read_text(), OLD)

    def test_a_closed_input_refuses(self):
        self.write_settings(WarnOnOverwrite=1)
        result = subprocess.run(["/bin/sh", "-c", 'exec "$0" cat.xml out.vorn <&-', PROGRAM], cwd=self.dir,
                                capture_output=True, check=False)
        self.assert_run(result, QUESTION, 255)
        self.assertEqual(self.output.read_text(), OLD)


class OnADirectory(OverwritingTest):
    def test_a_directory_is_no_existing_output_file(self):
        self.write_settings(WarnOnOverwrite=1)
        self.output.unlink()
        self.output.mkdir(mode=0o555)
        self.assert_run(self.run_program("cat.xml", "out.vorn", stdin=b"y"),
                        "Parsing XML 'cat.xml'\nConverting to Kestrel...\nFailed to export to vorn!\n", 255, hints=1)
        self.assertEqual(self.mode(), 0o555)


class WithoutTheQuestion(OverwritingTest):
    def test_a_read_only_file_makes_the_export_fail(self):
        self.write_settings(WarnOnOverwrite=0)
        self.output.chmod(0o444)
        self.assert_run(self.run_program("cat.xml", "out.vorn"),
                        "Parsing XML 'cat.xml'\nConverting to Kestrel...\nFailed to export to vorn!\n", 255, hints=1)
        self.assertEqual(self.output.read_text(), OLD)
        self.assertEqual(self.mode(), 0o444)

    def test_a_writable_file_is_overwritten(self):
        self.write_settings(WarnOnOverwrite=0)
        self.assert_run(self.run_program("cat.xml", "out.vorn"), CONVERSION, 0)
        self.assertNotEqual(self.output.read_text(), OLD)

    def test_an_output_made_read_only_is_overwritten_after_a_yes_alone(self):
        self.write_settings(WarnOnOverwrite=0, MakeReadOnly=1)
        self.assert_run(self.run_program("cat.xml", "out.vorn"), CONVERSION, 0)
        self.assertEqual(self.mode(), 0o444)
        self.assertEqual(self.run_program("cat.xml", "out.vorn").returncode, 255)
        self.write_settings(WarnOnOverwrite=1, MakeReadOnly=1)
        self.assertEqual(self.run_program("cat.xml", "out.vorn", stdin=b"y").returncode, 0)
        self.assertEqual(self.mode(), 0o444)
