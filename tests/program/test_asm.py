"""tarvex-asm from outside: usage, exit status, what goes where. What lines become is tested in tests/asm."""

import os
import resource
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

    def test_json_longer_than_a_line_is_read_back(self):
        message = '{"message":"71.01.200.1","data":"","note":"%s"}' % ("x" * 300_000)
        self.assert_result(self.run_asm(stdin=f"[{message},{message}]\n71.01.200.1\n"), "71.01.200.1 ()\n" * 3, 0)
        result = self.run_asm(stdin='{"note":"%s"}\n71.01.200.1\n' % ("x" * 1_100_000))
        self.assert_result(result, "71.01.200.1 ()\n", 1, "tarvex-asm: 1:1: the object is too long\n")

    def test_time_grows_with_the_length_of_a_line_alone(self):
        """It takes ten times the limit for the blanks, and twice for the repetitions, to look through all of them for
        each."""
        limit = 20 if os.environ["TARVEX_SANITIZED"] == "ON" else 2
        entries = "".join(f",[{i}]SegmentLength=1" for i in range(1, 11_001))
        lines = ["Cabin.RoofState.Set RoofPosition=5" + " " * 250_000 + "# note"]
        lines += ["52.01.201.C Waypoints={} Segments={RoadClass=Lane" + entries + "}"] * 5
        result = subprocess.run([ASM, str(CATALOG)], input="\n".join(lines), capture_output=True, text=True,
                                check=False,
                                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CPU, (limit, limit)))
        self.assertEqual((result.stderr, result.returncode), ("", 0))
        self.assertEqual(result.stdout, "71.01.200.0 (05)\n" + ("52.01.201.C (00 01" + " 00 01" * 11_000 + ")\n") * 5)
