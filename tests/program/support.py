"""What the tests of the whole program share: a directory per test, runs of the program, small catalogs."""

import os
import pty
import select
import shutil
import subprocess
import tempfile
import termios
import unittest
from pathlib import Path

PROGRAM = os.environ["TARVEX_PROGRAM"]
GENERATOR = os.environ["TARVEX_GENERATOR"]
SOURCE = Path(os.environ["TARVEX_SOURCE"])

BANNER = "TARVEX V1.0.4 (Importer V1.0.11)\n"

CATALOG = """<?xml version="1.0" encoding="UTF-8"?>
<FunctionCatalog>
  <FBlock><FBlockID>0x22</FBlockID><FBlockName>Audio Amp</FBlockName>
    <Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName>
      <FunctionClass ClassRef="class_number"><Property><PNumber>
        <PNParam><ParamName/><PNParamOPType><PCmdGet/></PNParamOPType>
          <PNParamType><TVoid TypeRef="type_void"/></PNParamType></PNParam>
      </PNumber></Property></FunctionClass></Function>
  </FBlock>
  <Definition><TypeDef TypeID="type_void"><TDefName>Void</TDefName><TDefSize>0</TDefSize></TypeDef></Definition>
</FunctionCatalog>
"""


HINT = "TARVEX: hint: "


def without_hints(errors):
    """What the program says on standard error but for its hints, and these, each less its beginning."""
    lines = errors.splitlines(keepends=True)
    hints = [line.removeprefix(HINT).removesuffix("\n") for line in lines if line.startswith(HINT)]
    return "".join(line for line in lines if not line.startswith(HINT)), hints


class ProgramTest(unittest.TestCase):
    """Each test has a directory of its own, which is also the working directory of the program."""

    def setUp(self):
        self.dir = Path(tempfile.mkdtemp(prefix="tarvex-test-")).resolve()
        self.addCleanup(shutil.rmtree, self.dir, ignore_errors=True)

    def write(self, name, content):
        path = self.dir / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content.encode() if isinstance(content, str) else content)
        return path

    def copy_examples(self):
        shutil.copytree(SOURCE / "examples", self.dir, dirs_exist_ok=True)

    def write_settings(self, **settings):
        """TARVEX.ini with no question and no read-only output, unless a test asks for them."""
        sections = {"Import": ["FCatImportValidate", "FCatImportLog", "FCatTreeLog", "FCatImportLogExclude"]}
        values = {"WarnOnOverwrite": 0, "MakeReadOnly": 0, **settings}
        lines = ["[Import]"] + [f"{k}={v}" for k, v in values.items() if k in sections["Import"]]
        lines += ["[Conversion]"] + [f"{k}={v}" for k, v in values.items() if k not in sections["Import"]]
        self.write("TARVEX.ini", "\n".join(lines) + "\n")

    def run_program(self, *arguments, stdin=b"", cwd=None):
        return subprocess.run([PROGRAM, *map(str, arguments)], cwd=cwd or self.dir, input=stdin,
                              capture_output=True, timeout=120, check=False)

    def assert_run(self, result, console, status, hints=0):
        """The whole console output after the banner, and the exit status. Nothing on standard error but so many
        hints."""
        self.assertEqual(result.stdout.decode(), BANNER + console)
        errors, given = without_hints(result.stderr.decode())
        self.assertEqual((errors, len(given)), ("", hints), given)
        self.assertEqual(result.returncode, status)


def on_terminal(cwd, *arguments, **environment):
    """The exit status of a program and what its terminal showed."""
    master, slave = pty.openpty()
    settings = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
    with subprocess.Popen(list(map(str, arguments)), cwd=cwd, stdin=slave, stdout=slave, stderr=slave,
                          env={**settings, "TERM": "xterm", **environment}) as process:
        os.close(slave)
        output = b""
        while True:
            try:
                block = os.read(master, 4096)
            except OSError:  # nobody has the terminal open any more
                break
            if not block:
                break
            output += block
        os.close(master)
        status = process.wait(timeout=120)
    return status, output.decode().replace("\r\n", "\n")


class TerminalRun:
    """A run of the program on a terminal of its own."""

    def __init__(self, cwd, *arguments):
        master, slave = pty.openpty()
        self.master = master
        self.slave = slave
        self.before = termios.tcgetattr(slave)
        self.process = subprocess.Popen([PROGRAM, *map(str, arguments)], cwd=cwd, stdin=slave, stdout=slave,
                                        stderr=slave, start_new_session=True)
        self.output = b""

    def read_until(self, end, seconds=60):
        """Reads the terminal until the text has come."""
        while end not in self.output:
            ready, _, _ = select.select([self.master], [], [], seconds)
            if not ready:
                raise AssertionError(f"{end!r} did not come; so far: {self.output!r}")
            self.output += os.read(self.master, 4096)

    def press(self, key):
        os.write(self.master, key)

    def finish(self):
        """Waits for the end; returns the exit status and everything that the terminal showed."""
        status = self.process.wait(timeout=120)
        self.after = termios.tcgetattr(self.slave)
        while select.select([self.master], [], [], 0.1)[0]:
            self.output += os.read(self.master, 4096)
        os.close(self.slave)
        os.close(self.master)
        # A terminal shows a line end as CR LF.
        return status, self.output.decode().replace("\r\n", "\n")
