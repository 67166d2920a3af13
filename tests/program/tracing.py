"""Runs of the program under strace: which calls it makes, and runs in which one of them fails or meets a signal."""

import os
import re
import shutil
import subprocess
import unittest
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass

from support import PROGRAM, SOURCE, ProgramTest, without_hints

# The calls by which a run changes anything, and the opening, reading and closing of all files.
CALLS = ["open", "openat", "creat", "read", "write", "pwrite64", "rename", "chmod", "fchmod", "fchown", "close", "ftruncate",
         "fsync", "fdatasync"]

OLD = b"the old database\n"

SETTINGS = """[Import]
FCatImportLog=1
FCatTreeLog=roadster.tree
[Conversion]
WarnOnOverwrite=0
MakeReadOnly={}
"""


@dataclass
class Call:
    name: str
    number: int  # among the calls of that name, from 1
    line: str
    after_rename: bool

    def concerns(self, file):
        """The call opens the file or has it open."""
        return f'"{file}"' in self.line or f"/{file}>" in self.line.split(",")[0]

    def __str__(self):
        return f"{self.name} {self.number}: {self.line}"


class TracedTest(ProgramTest):
    @classmethod
    def setUpClass(cls):
        if os.environ.get("TARVEX_SANITIZED") == "ON":
            raise unittest.SkipTest("the sanitizers make calls of their own, and find no leaks under strace")
        if shutil.which("strace") is None:
            raise unittest.SkipTest("strace is not installed")
        probe = subprocess.run(["strace", "-f", "-o", "/dev/null", "-e", "inject=fsync:error=EIO", "true"],
                               capture_output=True, text=True, check=False)
        if probe.returncode != 0:
            raise unittest.SkipTest(f"strace may not trace here: {probe.stderr.strip()}")

    def fill(self, directory, output, read_only):
        """A directory with a catalog, settings with both logs, and a database from before."""
        shutil.rmtree(directory, ignore_errors=True)
        directory.mkdir()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, directory)
        (directory / "TARVEX.ini").write_text(SETTINGS.format(read_only))
        (directory / output).write_bytes(OLD)

    def trace(self, directory, output, *options):
        """The result of a run under strace, which ends as the program does, with its lines."""
        lines = directory.with_suffix(".calls")
        # Whoever runs the tests may ignore signals; the program does not.
        command = ["env", "--default-signal", "strace", "-f", "-y", "-qq", "-o", lines, *options,
                   PROGRAM, "roadster.xml", output]
        result = subprocess.run(command, cwd=directory, stdin=subprocess.DEVNULL, capture_output=True, timeout=60,
                                check=False)
        return result, lines.read_text(errors="replace").splitlines()

    def calls_of_a_run(self, output, read_only):
        """Every call of interest in a run that succeeds, and the database that it writes. What comes before the
        settings are first opened is left out: it is the loader's and the C library's."""
        directory = self.dir / "whole"
        self.fill(directory, output, read_only)
        # The question marks are for calls that this machine does not have.
        result, lines = self.trace(directory, output, "-e", "trace=" + ",".join("?" + name for name in CALLS))
        self.assertEqual((result.returncode, without_hints(result.stderr.decode())[0]), (0, ""))
        calls = []
        numbers = dict.fromkeys(CALLS, 0)
        has_started = after_rename = False
        for line in lines:
            found = re.match(r"\d+ +(\w+)\(", line)
            if found is None:
                continue
            name = found.group(1)
            numbers[name] += 1
            has_started = has_started or "TARVEX.ini" in line
            if has_started:
                calls.append(Call(name, numbers[name], line, after_rename))
            after_rename = after_rename or name == "rename"
        self.assertTrue(after_rename, "the output is renamed into its place")
        return calls, (directory / output).read_bytes()

    def inject(self, output, read_only, faults):
        """Runs once for each (call, what is injected into it); yields both with the result and the directory."""
        def run(job):
            index, (call, injected) = job
            directory = self.dir / f"run-{index}"
            self.fill(directory, output, read_only)
            result, lines = self.trace(directory, output, "-e", f"trace={call.name}", "-e",
                                       f"inject={call.name}:{injected}:when={call.number}")
            return call, injected, result, lines, directory

        with ThreadPoolExecutor(2) as pool:
            for call, injected, result, lines, directory in pool.map(run, enumerate(faults)):
                yield call, injected, result, lines, directory
                shutil.rmtree(directory)
