import fcntl
import os
import pty
import signal
import subprocess
import termios
import time

from support import BANNER, CATALOG, PROGRAM, ProgramTest, TerminalRun

OLD = "the old database\n"
QUESTION = "Output file 'out.vorn' already exists. Overwrite (y/n)? "

SIGNALS = [signal.SIGTERM, signal.SIGHUP, signal.SIGINT, signal.SIGQUIT]
# Whatever else ends a process and comes from outside; 32 and 33 are those that the C library keeps for itself.
OTHER_SIGNALS = [signal.SIGUSR1, signal.SIGUSR2, signal.SIGALRM, signal.SIGVTALRM, signal.SIGPROF, signal.SIGPWR,
                 signal.SIGIO, 16, signal.SIGXCPU, 32, 33, signal.SIGRTMIN, 50, signal.SIGRTMAX]


class QuestionRun(TerminalRun):
    """A run on a terminal, which may be the one that controls it. `ignored` are signals, as nohup ignores one."""

    def __init__(self, cwd, ignored=(), controls=False, stdout=None):
        self.master, self.slave = pty.openpty()
        self.before = termios.tcgetattr(self.slave)
        self.output = b""

        def prepare():
            for number in SIGNALS:
                signal.signal(number, signal.SIG_IGN if number in ignored else signal.SIG_DFL)
            if controls:
                fcntl.ioctl(0, termios.TIOCSCTTY, 0)

        self.process = subprocess.Popen([PROGRAM, "cat.xml", "out.vorn"], cwd=cwd, stdin=self.slave,
                                        stdout=stdout or self.slave, stderr=self.slave, start_new_session=True,
                                        preexec_fn=prepare)

    def echoes(self):
        return bool(termios.tcgetattr(self.slave)[3] & termios.ECHO)

    def hang_up(self):
        """The terminal goes away; returns the exit status."""
        os.close(self.master)
        status = self.process.wait(timeout=60)
        os.close(self.slave)
        return status


class SignalTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write_settings(WarnOnOverwrite=1)
        self.write("cat.xml", CATALOG)
        self.output = self.write("out.vorn", OLD)

    def ask(self, **options):
        run = QuestionRun(self.dir, **options)
        run.read_until(b"(y/n)? ")
        return run


class DuringTheQuestion(SignalTest):
    def test_a_signal_ends_the_run_and_the_terminal_is_as_before(self):
        for number in SIGNALS + OTHER_SIGNALS:
            with self.subTest(signal=number):
                run = self.ask()
                self.assertFalse(run.echoes())
                run.process.send_signal(number)
                status, shown = run.finish()
                self.assertEqual(status, -number)
                self.assertEqual(run.after, run.before)
                self.assertEqual(shown, BANNER + QUESTION)
                self.assertEqual(self.output.read_text(), OLD)

    def test_a_signal_that_is_ignored_ends_nothing(self):
        for number in SIGNALS:
            with self.subTest(signal=number.name):
                self.output.write_text(OLD)
                run = self.ask(ignored=[number])
                run.process.send_signal(number)
                run.press(b"y")
                status, _ = run.finish()
                self.assertEqual(status, 0)
                self.assertEqual(run.after, run.before)
                self.assertNotEqual(self.output.read_text(), OLD)

    def test_a_signal_ends_a_run_whose_question_nobody_reads(self):
        reader, writer = os.pipe()
        os.set_blocking(writer, False)
        try:
            while True:
                os.write(writer, b"x" * 4096)
        except BlockingIOError:
            os.set_blocking(writer, True)
        run = QuestionRun(self.dir, stdout=writer)
        deadline = time.monotonic() + 60
        while run.echoes() and time.monotonic() < deadline:
            time.sleep(0.01)
        self.assertFalse(run.echoes(), "the question has begun")
        run.process.send_signal(signal.SIGTERM)
        status, _ = run.finish()
        self.assertEqual(status, -signal.SIGTERM)
        self.assertEqual(run.after, run.before)
        os.close(reader)
        os.close(writer)


class HangUp(SignalTest):
    def test_a_terminal_that_goes_away_refuses(self):
        self.assertEqual(self.ask().hang_up(), 255)
        self.assertEqual(self.output.read_text(), OLD)

    def test_the_controlling_terminal_takes_the_run_with_it(self):
        self.assertEqual(self.ask(controls=True).hang_up(), -signal.SIGHUP)
        self.assertEqual(self.output.read_text(), OLD)

    def test_a_hang_up_that_is_ignored_refuses(self):
        self.assertEqual(self.ask(controls=True, ignored=[signal.SIGHUP]).hang_up(), 255)
        self.assertEqual(self.output.read_text(), OLD)


class WithoutATerminal(SignalTest):
    def test_an_input_that_gives_no_key_refuses(self):
        no_input = {"closed": "<&-", "at its end": "</dev/null", "a directory": "<.", "open for writing": "0>input"}
        for name, redirection in no_input.items():
            with self.subTest(name):
                result = subprocess.run(["/bin/sh", "-c", f'exec "$0" cat.xml out.vorn {redirection}', PROGRAM],
                                        cwd=self.dir, capture_output=True, timeout=60, check=False)
                self.assert_run(result, QUESTION, 255)
                self.assertEqual(self.output.read_text(), OLD)

    def test_a_signal_ends_a_run_that_waits_for_a_pipe(self):
        for number in SIGNALS:
            with self.subTest(signal=number.name):
                process = subprocess.Popen([PROGRAM, "cat.xml", "out.vorn"], cwd=self.dir, stdin=subprocess.PIPE,
                                           stdout=subprocess.PIPE,
                                           preexec_fn=lambda number=number: signal.signal(number, signal.SIG_DFL))
                shown = b""
                while not shown.endswith(b"(y/n)? "):
                    shown += os.read(process.stdout.fileno(), 4096)
                process.send_signal(number)
                self.assertEqual(process.wait(timeout=60), -number)
                process.stdin.close()
                process.stdout.close()
                self.assertEqual(self.output.read_text(), OLD)
