"""tarvex-asm from outside: usage, exit status, what goes where. What lines become is tested in tests/asm."""

import os
import subprocess

from support import SOURCE, ProgramTest

ASM = os.environ["TARVEX_ASM"]
DISASM = os.environ["TARVEX_DISASM"]
CATALOG = SOURCE / "examples" / "convertible.xml"


class Asm(ProgramTest):
    def run_asm(self, *arguments, stdin="", catalog=CATALOG):
        return subprocess.run([ASM, str(catalog), *map(str, arguments)], cwd=self.dir, input=stdin, capture_output=True,
                              text=True, timeout=120, check=False)

    def assert_result(self, result, output, status, errors=""):
        self.assertEqual((result.stdout, result.stderr, result.returncode), (output, errors, status))

    def test_lines_become_messages_in_either_format(self):
        line = "12.5 Rx Cabin.01.RoofState.Set RoofPosition=50\n"
        wrong = "Cabin.01.RoofState.Sett RoofPosition=50\n"
        self.write("one.txt", line + wrong + line)
        fault = ("tarvex-asm: one.txt:2:1: no valid OPType, expected FBlockID.InstID.FktID.OPType: unknown operation "
                 "'Sett' (Set?)\n")
        self.assert_result(self.run_asm("one.txt"), "12.5 Rx 71.01.200.0 (32)\n" * 2, 1, fault)
        self.assert_result(self.run_asm(stdin=line), "12.5 Rx 71.01.200.0 (32)\n", 0)
        self.assert_result(self.run_asm("--format", "json", "-", stdin=line),
                           '{"time":"12.5","direction":"Rx","message":"71.01.200.0","data":"32"}\n', 0)

    def test_trouble(self):
        for arguments, words in [(("none.txt",), "none.txt"), (("--format", "xml"), "--format"),
                                 (("--no-such",), "no-such"), (("--settings", "none.ini"), "none.ini")]:
            with self.subTest(arguments=arguments):
                result = self.run_asm(*arguments)
                self.assertEqual((result.stdout, result.returncode), ("", 2))
                self.assertIn(words, result.stderr)
        self.assertEqual(self.run_asm(catalog="none.xml").returncode, 2)
        full = subprocess.run(["/bin/sh", "-c", 'exec "$0" "$1" > /dev/full', ASM, CATALOG], input="71.01.200.1",
                              text=True, capture_output=True, timeout=120, check=False)
        self.assertEqual(full.returncode, 2)
        self.assertIn("can't write", full.stderr)

    def test_reports_of_the_example_become_its_capture_again(self):
        capture = (SOURCE / "examples" / "convertible.capture").read_text()
        messages = [line for line in capture.splitlines() if line and not line.startswith("#")]
        for form in ["text", "json"]:
            with self.subTest(format=form):
                report = subprocess.run([DISASM, CATALOG, "--format", form], input=capture, capture_output=True,
                                        text=True, timeout=120, check=False).stdout
                again = self.run_asm(stdin=report)
                self.assertEqual((again.returncode, again.stderr), (0, ""))
                self.assertEqual([line.translate({32: None, 40: None, 41: None}) for line in again.stdout.splitlines()],
                                 [line.translate({32: None, 40: None, 41: None}) for line in messages])

    def test_a_line_that_is_too_long_is_a_fault_and_the_rest_goes_on(self):
        result = self.run_asm(stdin="71.01.200.1".ljust(300_000) + "\n71.01.200.1\n")
        self.assert_result(result, "71.01.200.1 ()\n", 1, "tarvex-asm: 1:1: the line is too long\n")
