"""Documents whose sessions begin in a copy of the examples: each command prints what is shown, and ends as it should."""

import re
import shutil
import subprocess

from documents import SOURCE, DocumentTest, steps

# How many commands each has.
COMMANDS = {"README.md": 8, "docs/first-steps.md": 17, "docs/troubleshooting.md": 23, "docs/converting.md": 4,
            "docs/traffic.md": 14, "docs/catalogs.md": 11, "docs/csv.md": 3}

# What does not end with 0, and how: it finds a difference or a fault, or can't do what it is asked for.
STATUS = {
    "tarvex-catalog diff roadster.xml next.xml": 1,
    "vorn diff roadster.vorn next.vorn": 1,
    "echo 'AudioAmp.Bass__Treble.Set Bas=1 Treble=0' | tarvex-asm roadster.xml": 1,
    "TARVEX newer.xml newer.vorn > console.txt": 255,
    "TARVEX mine.xml mine.vorn > console.txt": 255,
}

# What programs say of the catalog and of a run as a whole, which docs/traffic.md does not show.
QUIET = r"^tarvex-\w+: (roadster\.xml: Import result.*|\d+ messages?, .*)\n"


class Sessions(DocumentTest):
    def test_commands_print_what_is_shown(self):
        env = self.with_programs()
        for document, count in COMMANDS.items():
            shown_steps = steps((SOURCE / document).read_text(encoding="utf-8"))
            self.assertEqual(len(shown_steps), count, document)
            work = self.dir / document
            shutil.copytree(SOURCE / "examples", work)
            for command, shown in shown_steps:
                with self.subTest(command, document=document):
                    result = subprocess.run(["sh", "-c", f"exec 2>&1\n{command}"], cwd=work, env=env, capture_output=True,
                                            timeout=120, check=False)
                    printed = result.stdout.decode()
                    if document == "docs/traffic.md":
                        printed = re.sub(QUIET, "", printed, flags=re.MULTILINE)
                    if document == "docs/csv.md":
                        printed = printed.replace("\r\n", "\n")
                    self.assertEqual(printed, shown)
                    self.assertEqual(result.returncode, STATUS.get(command, 0))
