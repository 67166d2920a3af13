"""Completions: those of bash for whole tables of lines, compared with what the programs say with --help, and a terminal with
bash and one with zsh."""

import os
import pty
import re
import select
import shlex
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = Path(os.environ["TARVEX_BUILD"])
SOURCE = Path(__file__).parents[2]
BASH_COMPLETION = os.environ.get("BASH_COMPLETION", "/usr/share/bash-completion/bash_completion")
PROGRAMS = ["tarvex-asm", "tarvex-catalog", "tarvex-disasm", "vorn"]
BLOCKS = ["AudioAmp", "Diagnosis", "Disc_Player", "Gateway", "Phone", "Tuner_SdWest"]

# Lines, each with what stands before and behind the cursor, and what is offered for the last word in front of it. A tuple has
# the pieces of a word, as bash hands them over.
LINES = [
    # commands
    (["vorn", "s"], [], ["show", "subset"]),
    (["vorn", "nothing"], [], []),
    (["tarvex-catalog", "ex"], [], ["explain"]),
    # options, of the command alone
    (["vorn", "merge", "--p"], [], ["--prefer"]),
    (["vorn", "convert", "--p"], [], []),
    (["tarvex-asm", "--fo"], [], ["--force", "--format"]),
    # values of options; the shell takes = for a word of its own, and others in names of files
    (["vorn", "merge", "--prefer", ""], [], ["first", "second"]),
    (["vorn", "diff", ("--format", "=", "ma")], [], ["markdown"]),
    (["vorn", "diff", ("--format", "=")], [], ["json", "markdown", "text"]),
    (["tarvex-catalog", "check", "c.xml", "--fail-on", "w"], [], ["warning"]),
    (["tarvex-disasm", "--segment-timeout", ""], [], []),
    # names in the database on the line, which may stand behind the cursor
    (["vorn", "show", "roadster.sqlite", "--fblock", ""], [], BLOCKS),
    (["vorn", "show", "--fblock", "D"], ["roadster.sqlite"], ["Diagnosis", "Disc_Player"]),
    (["vorn", "list", "--node", "Gat"], ["--format", "json", "roadster.sqlite"], ["Gateway"]),
    (["vorn", "list", "--format", "json", "roadster.sqlite", "--match", "Gateway_M"], [], ["Gateway_Motion_Status"]),
    (["vorn", "list", "roadster.sqlite", "--function", "Mot"], [], ["Motion"]),
    (["vorn", "subset", "my\\ database.vorn", "--fblock", "A"], [], ["AudioAmp"]),
    (["vorn", "subset", "'my database.vorn'", "--fblock", "'A"], [], ["AudioAmp"]),
    (["vorn", "show", "roadster.sqlite", "--fblock", "X"], [], []),
    (["vorn", "show", "missing.sqlite", "--fblock", ""], [], []),
    (["vorn", "show", "$(touch", "ran)", "--fblock", ""], [], []),
    (["vorn", "show", ("a", ":", "b@c", "=", "1.vorn"), ("--fblock", "=", "Ga")], [], ["Gateway"]),
    (["vorn", "show", "'o'\\''brien $x.vorn'", "--fblock", "Ga"], [], ["Gateway"]),
    (["vorn", "show", "\"o'brien \\$x\".vorn", "--fblock", "Ga"], [], ["Gateway"]),
    # behind -- there are no options
    (["tarvex-catalog", "show", "--", "roadster.xml", "Ga"], [], ["Gateway"]),
    (["vorn", "show", "--fblock", "Ga"], ["--", ("a", ":", "b@c", "=", "1.vorn")], ["Gateway"]),
    (["vorn", "show", "--", "--fb"], [], []),
    # names in the catalog on the line
    (["tarvex-catalog", "show", "roadster.xml", ""], [], BLOCKS),
    (["tarvex-catalog", "show", "--settings", "TARVEX.ini", "roadster.xml", "G"], [], ["Gateway"]),
    (["tarvex-catalog", "show", "roadster.xml", "AudioAmp.B"], [], ["AudioAmp.Balance", "AudioAmp.Bass__Treble"]),
    (["tarvex-disasm", "roadster.xml", "--only", "A"], [], ["AudioAmp"]),
    (["tarvex-disasm", "roadster.xml", "--only", "F"], [], ["FAULTY"]),
    # files, which are left to the shell
    (["vorn", "show", "road"], [], []),
    (["tarvex-catalog", "check", "--baseline", "b"], [], []),
]


def help_of(*command):
    """Commands and options, with the values of those that have a list, as a program tells them."""
    text = subprocess.run([BUILD / command[0], *command[1:], "--help"], capture_output=True, text=True, timeout=60,
                          check=True).stdout
    commands = re.findall(r"^  (\w+)", text.partition("\nSubcommands:\n")[2].partition("\n\n")[0], re.MULTILINE)
    options = {}
    for names, kind in re.findall(r"^  (-\S+)(?: (\S+))?", text.partition("\nOptions:\n")[2].partition("\n\n")[0],
                                  re.MULTILINE):
        values = re.search(r"\{(.*)\}", kind)
        options.update({name: sorted(values.group(1).split(",")) if values else None for name in names.split(",")})
    return sorted(commands), options


class CompletionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.dir = Path(tempfile.mkdtemp(prefix="tarvex-completions-")).resolve()
        cls.addClassCleanup(shutil.rmtree, cls.dir, ignore_errors=True)
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.dir / "prefix", "--component", "tools"],
                       capture_output=True, timeout=60, check=True)
        cls.share = cls.dir / "prefix/share"
        cls.work = cls.dir / "work"
        shutil.copytree(SOURCE / "examples", cls.work)
        shutil.copy(cls.work / "recommended.ini", cls.work / "TARVEX.ini")
        cls.env = {**os.environ, "PATH": f"{cls.dir / 'prefix/bin'}:{os.environ['PATH']}", "TERM": "dumb"}
        for output in ["roadster.sqlite", "my database.vorn"]:
            subprocess.run(["TARVEX", "roadster.xml", output], cwd=cls.work, env=cls.env, capture_output=True, timeout=60,
                           check=True)
        for name in ["a:b@c=1.vorn", "o'brien $x.vorn"]:
            shutil.copy(cls.work / "my database.vorn", cls.work / name)


class Bash(CompletionTest):
    def complete(self, lines):
        """What is offered for each line, a list of words before and one behind the cursor, sorted."""
        script = [f". '{self.share}/bash-completion/completions/vorn'"]
        for before, behind in lines:
            pieces = [[piece for word in words for piece in ([word] if isinstance(word, str) else word)]
                      for words in (before, behind)]
            line = " ".join("".join(word) for word in [*before, *behind])
            script.append(f"COMP_LINE={shlex.quote(line)} COMP_CWORD={len(pieces[0]) - 1}")
            script.append(f"COMP_WORDS=({shlex.join(sum(pieces, []))}); _tarvex {before[0]}")
            script.append("printf '%s\\n' \"${COMPREPLY[@]}\" end")
        result = subprocess.run(["bash", "--norc", "-c", "\n".join(script)], cwd=self.work, env=self.env, text=True,
                                capture_output=True, timeout=120, check=True)
        self.assertEqual(result.stderr, "")
        offers = [sorted(filter(None, text.split("\n"))) for text in result.stdout.split("end\n")]
        self.assertEqual(offers.pop(), [])
        self.assertEqual(len(offers), len(lines))
        return offers

    def test_lines(self):
        for (before, behind, wanted), offered in zip(LINES, self.complete([line[:2] for line in LINES])):
            with self.subTest(before, behind=behind):
                self.assertEqual(offered, wanted)
        self.assertFalse((self.work / "ran)").exists() or (self.work / "ran").exists(), "nothing on the line is run")

    def test_everything_that_help_tells_is_offered(self):
        lines, wanted = [], []
        for program in PROGRAMS:
            commands, _ = help_of(program)
            if commands:
                lines.append(([program, ""], []))
                wanted.append(commands)
            for command in [[], *([each] for each in commands)]:
                _, options = help_of(program, *command)
                self.assertIn("--help", options)
                lines.append(([program, *command, "-"], []))
                wanted.append(sorted(options))
                for option, values in options.items():
                    if values:
                        lines.append(([program, *command, option, ""], []))
                        wanted.append(values)
        self.assertGreater(len(lines), 25)
        for (before, _), offered, all_of in zip(lines, self.complete(lines), wanted):
            with self.subTest(" ".join(before)):
                self.assertEqual(offered, all_of)

    def test_every_program_with_options_has_its_file(self):
        folder = self.share / "bash-completion/completions"
        self.assertEqual(sorted(path.name for path in folder.iterdir()), PROGRAMS)
        for program in PROGRAMS:
            shown = subprocess.run(["bash", "--norc", "-c", f". '{folder / program}'; complete -p {program}"],
                                   capture_output=True, text=True, timeout=60, check=True).stdout
            self.assertEqual(shown, f"complete -o default -F _tarvex {program}\n")


class Terminal(CompletionTest):
    """A shell on a terminal of its own: what a line becomes when the tabulator is pressed behind it."""

    TYPED = [("vorn lis", "vorn list "),
             ("vorn list --format=j", "vorn list --format=json "),
             ("vorn list netw", "vorn list network.txt "),
             ("vorn show roadster.sqlite --fblock Tun", "vorn show roadster.sqlite --fblock Tuner_SdWest "),
             ("tarvex-catalog show roadster.xml Audio", "tarvex-catalog show roadster.xml AudioAmp "),
             ("tarvex-disasm roadster.xml --only FA", "tarvex-disasm roadster.xml --only FAULTY "),
             ("tarvex-catalog show -- roadster.xml Ga", "tarvex-catalog show -- roadster.xml Gateway "),
             ("vorn show a:b@c=1.vorn --fblock=Ga", "vorn show a:b@c=1.vorn --fblock=Gateway "),
             ("vorn show 'o'\\''brien $x.vorn' --fblock Ga", "vorn show 'o'\\''brien $x.vorn' --fblock Gateway ")]

    def assert_completes(self, shell, settings, **environment):
        pid, terminal = pty.fork()
        if pid == 0:
            os.chdir(self.work)
            os.execvpe(shell[0], shell, {**self.env, "INPUTRC": "/dev/null", "COLUMNS": "200", **environment})
        self.addCleanup(os.waitpid, pid, 0)
        self.addCleanup(os.close, terminal)
        shown = ""

        def expect(text):
            nonlocal shown
            while text not in shown:
                if not select.select([terminal], [], [], 30)[0]:
                    raise AssertionError(f"{text!r} did not come: {shown!r}")
                shown += os.read(terminal, 65536).decode()
            shown = shown[shown.index(text) + len(text):]

        os.write(terminal, settings.encode() + b"\necho rea''dy\n")
        expect("ready\r\n")
        for typed, line in self.TYPED:
            os.write(terminal, typed.encode() + b"\t")
            expect(line)
            os.write(terminal, b"\x15echo nex''t\n")  # the line is emptied first
            expect("next\r\n")

    def test_bash(self):
        self.assert_completes(["bash", "--norc", "--noprofile", "-i"],
                              f". '{self.share}/bash-completion/completions/vorn'; set +o history")

    def test_bash_finds_them_by_itself(self):
        """What bash-completion loads for a program when it is completed for the first time."""
        if not Path(BASH_COMPLETION).exists():
            self.skipTest("there is no package bash-completion")
        self.assert_completes(["bash", "--norc", "--noprofile", "-i"], f". {BASH_COMPLETION}; set +o history",
                              XDG_DATA_DIRS=str(self.share), HOME=str(self.dir))

    def test_zsh(self):
        self.assert_completes(["zsh", "-f", "-i"], f"fpath=('{self.share}/zsh/site-functions' $fpath); "
                              f"autoload -Uz compinit; compinit -u -D; bindkey -e; unsetopt auto_list")


if __name__ == "__main__":
    unittest.main()
