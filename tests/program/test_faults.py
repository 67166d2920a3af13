import os
import shutil
import signal
import stat
from collections import Counter

from support import SOURCE, without_hints
from tracing import OLD, TracedTest

ERRORS = ["ENOSPC", "EIO", "EACCES"]

# How the console ends then.
FAILURE = (r"(Unable to open file '.*/TARVEX.ini'|Failed to import function catalog!|Failed to export to vorn!)\n\Z")
CONSOLE_LOST = "TARVEX: can't write to the standard output\n"


def temporary_files(directory):
    return {name for name in os.listdir(directory) if name.startswith(".kestrel-")}


class Faults(TracedTest):
    """Every call of a conversion fails once."""

    def assert_outcome(self, call, result, output, new, directory, read_only):
        """A whole new file, or a failure and the old file; no temporary file."""
        content = (directory / output).read_bytes()
        is_console = call.name == "write" and call.line.split("(")[1].startswith("1<")
        if result.returncode == 0:
            self.assertEqual(content, new)
            mode = stat.S_IMODE((directory / output).stat().st_mode)
            self.assertEqual(mode, 0o444 if read_only else 0o644)
        else:
            self.assertEqual(result.returncode, 255)
            self.assertEqual(content, new if call.after_rename else OLD)
            if not is_console:
                self.assertRegex(result.stdout.decode(), FAILURE)
        errors, _ = without_hints(result.stderr.decode())
        self.assertEqual(errors, CONSOLE_LOST if is_console else "")
        self.assertEqual(result.returncode, 255 if is_console else result.returncode)
        known = {"TARVEX.ini", "fcat.dtd", "roadster.xml", "roadster.log", "roadster.tree", output}
        self.assertLessEqual(set(os.listdir(directory)), known)

    def assert_log_told(self, call, result):
        """What goes wrong with a log is told and ends nothing."""
        for log in ["roadster.log", "roadster.tree"]:
            if call.concerns(log):
                self.assertIn(f"Unable to create log file '{log}'\n", result.stdout.decode())
                self.assertEqual(result.returncode, 0)

    def assert_write_told(self, call, result, output):
        """What goes wrong with the temporary file makes the run fail. SQLite closes it too, before it is complete."""
        checked = {"openat", "write", "pwrite64", "fchmod", "fsync", "rename"}
        if not output.endswith(".sqlite"):
            checked.add("close")
        if "/.kestrel-" in call.line and not call.after_rename and call.name in checked:
            self.assertEqual(result.returncode, 255)
            return 1
        return 0

    def run_round(self, output, read_only):
        calls, new = self.calls_of_a_run(output, read_only)
        self.assertNotEqual(new, OLD)
        runs = Counter()
        statuses = Counter()
        refused = 0
        faults = [(call, f"error={error}") for call in calls for error in ERRORS]
        for call, injected, result, lines, directory in self.inject(output, read_only, faults):
            with self.subTest(call=str(call), injected=injected):
                self.assertTrue(any("(INJECTED)" in line for line in lines), lines)
                self.assert_outcome(call, result, output, new, directory, read_only)
                self.assert_log_told(call, result)
                refused += self.assert_write_told(call, result, output)
            runs[call.name] += 1
            statuses[result.returncode] += 1
        print(f"{output}, MakeReadOnly={read_only}: runs {dict(runs)}, exit statuses {dict(statuses)}", flush=True)
        for name in ["openat", "read", "write", "rename", "fchmod", "fchown", "close", "ftruncate", "fsync"]:
            self.assertGreater(runs[name], 0, name)
        self.assertEqual(runs["chmod"] > 0, read_only == 1)
        self.assertEqual(runs["pwrite64"] > 0, output.endswith(".sqlite"))
        # Opening, writing and closing the temporary file, its mode and the flush.
        self.assertGreaterEqual(refused, 4 * len(ERRORS))
        self.assertGreater(statuses[0], 0)
        self.assertGreater(statuses[255], 0)

    def test_an_output_that_is_made_read_only(self):
        self.run_round("out.vorn", 1)

    def test_an_output_that_stays_writable(self):
        self.run_round("out.vorn", 0)

    def test_a_sqlite_output(self):
        self.run_round("out.sqlite", 0)

    def test_the_file_is_flushed_before_it_takes_its_place(self):
        for output in ["out.vorn", "out.sqlite"]:
            with self.subTest(output=output):
                calls, _ = self.calls_of_a_run(output, 0)
                order = [(call.name, ".kestrel-" in call.line) for call in calls if call.name in ("fsync", "rename")]
                # The temporary file, its new name, the folder.
                self.assertEqual(order, [("fsync", True), ("rename", True), ("fsync", False)])

    def test_settings_aliases_and_network_that_cannot_be_read(self):
        directory = self.dir / "run"
        cases = [("TARVEX.ini", "Unable to open file '{}'\n", 255), ("aliases.txt", "Can not open file aliases.txt!\n", 0),
                 ("network.txt", "Can not open file network.txt!\n", 0)]
        for file, message, status in cases:
            with self.subTest(file=file):
                self.fill(directory, "out.vorn", 0)
                for name in ["aliases.txt", "network.txt"]:
                    shutil.copy(SOURCE / "examples" / name, directory)
                with open(directory / "TARVEX.ini", "a", encoding="utf-8") as settings:
                    settings.write("AliasNames=aliases.txt\nNetworkConfiguration=network.txt\n")
                path = directory.resolve() / file
                result, lines = self.trace(directory, "out.vorn", "-P", path, "-e", "inject=read:error=EIO:when=1+")
                self.assertTrue(any("(INJECTED)" in line for line in lines), lines)
                self.assertIn(message.format(path), result.stdout.decode())
                self.assertEqual(result.returncode, status)

    def test_a_temporary_file_stays_only_when_it_cannot_be_removed(self):
        directory = self.dir / "run"
        for fault, left_over in [("fsync:error=EIO", 0), ("rename:error=EIO", 0), ("rename,unlink:error=EIO", 1)]:
            with self.subTest(fault=fault):
                self.fill(directory, "out.vorn", 0)
                # Nothing else is removed: there is no tree log from before.
                result, _ = self.trace(directory, "out.vorn", "-e", f"inject={fault}")
                self.assertEqual(result.returncode, 255)
                self.assertEqual((directory / "out.vorn").read_bytes(), OLD)
                self.assertEqual(len(temporary_files(directory)), left_over)


class Signals(TracedTest):
    """A signal comes at every call of a conversion."""

    def end_at_every_call(self, output, number):
        calls, new = self.calls_of_a_run(output, read_only=0)
        files = Counter()
        faults = [(call, f"signal={number.name}") for call in calls]
        for call, _, result, _, directory in self.inject(output, 0, faults):
            with self.subTest(call=str(call), signal=number.name):
                self.assertEqual(result.returncode, -number)
                content = (directory / output).read_bytes()
                # A kill comes before the call has done its work, another signal behind that.
                is_new = call.after_rename or (call.name == "rename" and number != signal.SIGKILL)
                self.assertEqual(content, new if is_new else OLD)
                self.assertLessEqual(len(temporary_files(directory)), 1 if number == signal.SIGKILL else 0)
            files["new" if is_new else "old"] += 1
            files["temporary"] += len(temporary_files(directory))
        print(f"{output}, {number.name} at {len(faults)} calls: {files['old']} old, {files['new']} new, "
              f"{files['temporary']} temporary files", flush=True)
        self.assertGreater(files["old"], 0)
        self.assertGreater(files["new"], 0)
        self.assertEqual(files["temporary"] > 0, number == signal.SIGKILL)

    def test_killed(self):
        self.end_at_every_call("out.vorn", signal.SIGKILL)

    def test_ended_by_a_signal_that_can_wait(self):
        self.end_at_every_call("out.vorn", signal.SIGTERM)
        self.end_at_every_call("out.sqlite", signal.SIGHUP)
