"""Mistakes in command lines: each program names the word at fault, in one line that begins with its name, and ends
with 2."""

import os
import subprocess
import unittest

PROGRAMS = {name: os.environ[variable] for name, variable in
            [("tarvex-asm", "TARVEX_ASM"), ("tarvex-catalog", "TARVEX_CATALOG"), ("tarvex-disasm", "TARVEX_DISASM"),
             ("vorn", "TARVEX_VORN")]}

# The line, and what is said of it. No program comes so far as to look for the files.
MISTAKES = [
    # a command
    ("tarvex-catalog", "a command is missing; the commands are check, diff, explain, page, show"),
    ("vorn", "a command is missing; the commands are show, list, convert, diff, check, subset, merge"),
    ("tarvex-catalog shw x", "there is no command 'shw'; did you mean 'show'?"),
    ("tarvex-catalog x.xml", "there is no command 'x.xml'; the commands are check, diff, explain, page, show"),
    # an option
    ("tarvex-catalog --nosuch", "there is no option '--nosuch'; the options are --help, --version"),
    ("tarvex-catalog show --nosuch", "show: there is no option '--nosuch'; the options are --help, --format, --color, --settings"),
    ("tarvex-catalog check x --gruop", "check: there is no option '--gruop'; did you mean '--group'?"),
    ("tarvex-asm x --forc", "there is no option '--forc'; did you mean '--force'?"),
    ("tarvex-disasm x y --sttas", "there is no option '--sttas'; did you mean '--stats'?"),
    ("tarvex-disasm --stats=no --onyl=A x", "there is no option '--onyl'; did you mean '--only'?"),
    # what an option takes
    ("vorn list x --format bad", "list: --format: bad not in {text,json,csv}"),
    ("tarvex-disasm x --format", "--format: 1 required TEXT:{text,json,csv} missing"),
    ("tarvex-asm x --format bad", "--format: bad not in {capture,json}"),
    ("tarvex-catalog check x --ignore \x1bno", "check: "),
    # an argument
    ("vorn list", "list: DB is required"),
    ("tarvex-catalog show", "show: CATALOG is required"),
    ("tarvex-disasm", "CATALOG is required"),
    ("tarvex-asm --force", "CATALOG is required"),
    ("vorn convert a.vorn b.vorn c.vorn", "convert: The following argument was not expected: c.vorn"),
]


class Mistakes(unittest.TestCase):
    def test_each_is_named_in_one_line(self):
        for line, said in MISTAKES:
            with self.subTest(line):
                name, *arguments = line.split(" ")
                result = subprocess.run([PROGRAMS[name], *arguments], stdin=subprocess.DEVNULL, capture_output=True,
                                        text=True, timeout=60, check=False)
                self.assertEqual((result.returncode, result.stdout), (2, ""))
                self.assertRegex(result.stderr, r"\A[\x20-\x7e]+\n\Z")
                self.assertTrue(result.stderr.startswith(f"{name}: {said}"), result.stderr)
                if not said.endswith(" "):
                    self.assertEqual(result.stderr, f"{name}: {said}\n")


if __name__ == "__main__":
    unittest.main()
