"""Memory ends at any point of a run: the exit status is one that the manual page tells, and files stay whole."""

import os
import resource
import subprocess
import unittest
from collections import Counter

from support import PROGRAM, SOURCE, ProgramTest

DISASM = os.environ["TARVEX_DISASM"]
VORN = os.environ["TARVEX_VORN"]
NOT_LOADED = 127  # the system's loader finds no room for the libraries
OLD = b"the old file"


@unittest.skipIf(os.environ["TARVEX_SANITIZED"] == "ON", "the sanitizers reserve more than any limit")
class LittleMemory(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write_settings(FCatImportValidate=0, FCatImportLog=1, FCatTreeLog="in.tree")
        self.write("in.xml", (SOURCE / "examples" / "roadster.xml").read_text(encoding="utf-8"))
        self.write("capture.txt", "22.01.401.C 1 05\n")

    def run_limited(self, megabytes, *command):
        limit = megabytes << 20
        return subprocess.run(command, cwd=self.dir, stdin=subprocess.DEVNULL, capture_output=True, timeout=120, check=False,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))

    def statuses(self, command, allowed, failed):
        """How often each exit status came, over all limits from none of the libraries to all of the run."""
        found = Counter()
        for megabytes in range(20, 90):
            self.write("out.vorn", OLD.decode())
            result = self.run_limited(megabytes, *command)
            with self.subTest(megabytes=megabytes, stderr=result.stderr[-200:]):
                self.assertIn(result.returncode, {*allowed, failed, NOT_LOADED})
                if result.returncode in (failed, NOT_LOADED):
                    self.assertEqual((self.dir / "out.vorn").read_bytes(), OLD)
                    self.assertNotEqual(result.stdout + result.stderr, b"")
                self.assertEqual(list(self.dir.glob(".kestrel-*")), [])
            found[result.returncode] += 1
        print(f"{command[0].rpartition('/')[2]}: exit statuses {dict(found)}", flush=True)
        self.assertGreater(found[NOT_LOADED], 0)
        self.assertGreater(sum(found[status] for status in allowed), 0)
        return found

    def test_conversions(self):
        self.assertGreater(self.statuses([PROGRAM, "in.xml", "out.vorn"], [0], 255)[255], 0)

    def test_disassembly(self):
        self.statuses([DISASM, "in.xml", "capture.txt"], [0, 1], 2)

    def test_looks_into_databases(self):
        self.assertEqual(self.run_limited(1000, PROGRAM, "in.xml", "show.sqlite").returncode, 0)
        self.statuses([VORN, "show", "show.sqlite"], [0], 2)
