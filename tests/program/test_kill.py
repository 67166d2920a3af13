import os
import signal
import subprocess
import time
from collections import Counter

from support import GENERATOR, PROGRAM, ProgramTest

OLD = b"the old database\n"

SANITIZED = os.environ.get("TARVEX_SANITIZED") == "ON"

# Sanitizers make everything much slower.
MEGABYTES = 0.2 if SANITIZED else 3
KILLS = 40 if SANITIZED else 200
MOMENTS = 10 if SANITIZED else 40
SIGNALS = [signal.SIGTERM, signal.SIGINT]


def default_signals():
    """In a child before it starts the program: whoever runs the tests may ignore signals."""
    for number in SIGNALS:
        signal.signal(number, signal.SIG_DFL)


def timed(action):
    started = time.monotonic()
    action()
    return time.monotonic() - started


class AtAnyMoment(ProgramTest):
    """A conversion of a large catalog onto a database from before, ended at moments spread over its time."""

    def setUp(self):
        super().setUp()
        self.write_settings()
        with open(self.dir / "cat.xml", "wb") as catalog:
            subprocess.run([GENERATOR, "--megabytes", str(MEGABYTES), "--blocks", "20"], stdout=catalog, check=True)
        self.seconds = min(timed(self.convert) for _ in range(3))
        self.new = (self.dir / "out.vorn").read_bytes()
        self.assertNotEqual(self.new, OLD)

    def convert(self):
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual((result.returncode, result.stderr), (0, b""))

    def temporary_files(self):
        return {name for name in os.listdir(self.dir) if name.startswith(".kestrel-")}

    def end_at(self, moment, number):
        """Sends a signal after so many seconds; returns the exit status and which of the two files is there."""
        self.write("out.vorn", OLD)
        process = subprocess.Popen([PROGRAM, "cat.xml", "out.vorn"], cwd=self.dir, stdout=subprocess.DEVNULL,
                                   preexec_fn=default_signals)
        time.sleep(moment)
        process.send_signal(number)
        status = process.wait(timeout=120)
        content = (self.dir / "out.vorn").read_bytes()
        self.assertIn(content, [OLD, self.new], "the file is the old one or the new one")
        return status, "new" if content == self.new else "old"

    def moments(self, count):
        """Over the time of a conversion and a little beyond, since that varies."""
        return [1.1 * self.seconds * index / count for index in range(count)]

    def test_a_killed_run_leaves_a_whole_file_and_the_next_one_works(self):
        files = Counter()
        for moment in self.moments(KILLS):
            before = self.temporary_files()
            status, file = self.end_at(moment, signal.SIGKILL)
            self.assertIn(status, [-signal.SIGKILL, 0])
            self.assertLessEqual(len(self.temporary_files() - before), 1)
            files[file] += 1
        left_over = self.temporary_files()
        print(f"{KILLS} kills: {files['old']} old, {files['new']} new, {len(left_over)} temporary files", flush=True)
        self.write("out.vorn", OLD)
        self.convert()
        self.assertEqual((self.dir / "out.vorn").read_bytes(), self.new)
        self.assertEqual(self.temporary_files(), left_over)

    def test_a_signal_that_can_wait_leaves_no_temporary_file(self):
        for number in SIGNALS:
            results = Counter()
            for moment in self.moments(MOMENTS):
                status, file = self.end_at(moment, number)
                self.assertIn(status, [-number, 0])
                self.assertEqual(self.temporary_files(), set())
                if status == 0:
                    self.assertEqual(file, "new")
                results["ended normally" if status == 0 else f"ended by the signal, {file}"] += 1
            print(f"{MOMENTS} times {number.name}: {dict(results)}", flush=True)

