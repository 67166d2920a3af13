"""The commands of docs/traffic.md print what is shown."""

import os
import re
import shutil
import subprocess

from documents import ASM, DISASM, SOURCE, DocumentTest, blocks, read


class Traffic(DocumentTest):
    def test_commands_print_what_is_shown(self):
        work = self.dir / "examples"
        shutil.copytree(SOURCE / "examples", work)
        programs = self.dir / "programs"
        programs.mkdir()
        for program in (ASM, DISASM):
            (programs / program.rpartition("/")[2]).symlink_to(program)
        sessions = blocks(read("traffic.md"), "console")
        self.assertEqual(len(sessions), 5)
        # What the programs say of the catalog and of a run as a whole is not shown.
        quiet = r"^tarvex-\w+: (roadster\.xml: Import result.*|\d+ messages?, .*)\n"
        for session in sessions:
            for command, shown in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", session + "\n", re.MULTILINE):
                with self.subTest(command):
                    result = subprocess.run(["sh", "-c", f"exec 2>&1\n{command}"], cwd=work, capture_output=True,
                                            timeout=120, check=False,
                                            env={**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"})
                    self.assertEqual(re.sub(quiet, "", result.stdout.decode(), flags=re.MULTILINE), shown)
