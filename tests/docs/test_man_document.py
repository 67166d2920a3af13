"""The man pages have no faults, name every option and setting, and show what the programs print."""

import os
import re
import shutil
import subprocess

from documents import ASM, CATALOG, DISASM, DOCS, PROGRAM, SOURCE, VORN, DocumentTest, first_cells, read, section

# Pages of programs, which stand in section 1, and those of section 5.
PAGES = {"TARVEX": PROGRAM, "tarvex-asm": ASM, "tarvex-catalog": CATALOG, "tarvex-disasm": DISASM, "vorn": VORN}
FILE_PAGES = ["tarvex.ini", "vorn"]


def page(name, section=1):
    return read(f"man/{name}.{section}")


def items(text, heading, macro):
    """The tags of a section's list that begin with the macro."""
    found = re.search(rf'^\.Sh "?{heading}"?\n(.*?)(?=^\.Sh )', text, re.DOTALL | re.MULTILINE)
    return re.findall(rf"^\.It {macro} (.*)$", found.group(1), re.MULTILINE)


def items_of_line(text, heading):
    """The words of a section that stand on lines of their own."""
    found = re.search(rf"^\.Sh {heading}\n(.*?)(?=^\.Sh )", text, re.DOTALL | re.MULTILINE)
    return re.findall(r"^\.Li (\w+)(?: [,.])?$", found.group(1), re.MULTILINE)


def examples(text):
    """Commands and what they print."""
    block = re.compile(r"^\.Bd -literal.*?\n(.*?)\n\.Ed$", re.DOTALL | re.MULTILINE)
    shown = "".join(f"{content}\n" for content in block.findall(text[text.index(".Sh EXAMPLES"):]))
    return re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", shown, re.MULTILINE)


class ManPages(DocumentTest):
    def help(self, *command):
        return self.succeed(*command, "--help").decode()

    def options(self, *command):
        """The options that a help text lists."""
        listed = self.help(*command).partition("\nOptions:\n")[2].partition("\n\n")[0]
        return set(re.findall(r"(?<![\w-])(--?[a-z][a-z-]*)", re.sub(r"^(\s{2}\S+).*$", r"\1", listed, flags=re.M)))

    def documented_options(self, name):
        options = set()
        for tag in items(page(name), "OPTIONS", "Fl"):
            options |= {"-" + option for option in re.findall(r"(?:^|Fl )(-?[a-z-]+)", tag)}
        return options

    def test_there_is_a_page_for_every_program_and_format(self):
        self.assertEqual(sorted(path.name for path in (DOCS / "man").iterdir()),
                         sorted([f"{name}.1" for name in PAGES] + [f"{name}.5" for name in FILE_PAGES]))

    def test_pages_have_no_faults(self):
        for path in (DOCS / "man").iterdir():
            with self.subTest(path.name):
                result = subprocess.run(["mandoc", "-Tlint", "-Wwarning", str(path)], capture_output=True, timeout=60,
                                        check=False)
                self.assertEqual((result.stdout + result.stderr, result.returncode), (b"", 0))

    def test_every_format_is_documented(self):
        shown = " ".join(self.help(VORN, "convert").split())
        extensions = re.search(r"chooses the format: (.*?); Vorn without one", shown).group(1).split(", ")
        self.assertIn(".kcd", extensions)
        for extension in extensions:
            word = re.compile(re.escape(extension) + r"(?![a-z0-9])")
            for name, text in [("TARVEX.1", page("TARVEX")), ("vorn.1", page("vorn")), ("vorn.5", page("vorn", 5)),
                               ("README.md", (SOURCE / "README.md").read_text())]:
                self.assertRegex(text, word, name)

    def test_pages_have_all_sections(self):
        wanted = {"NAME", "SYNOPSIS", "DESCRIPTION", "EXIT STATUS", "FILES", "EXAMPLES", "SEE ALSO"}
        for name in PAGES:
            with self.subTest(name):
                sections = set(re.findall(r"^\.Sh (.*)$", page(name), re.MULTILINE))
                self.assertEqual(wanted - sections, set())
                self.assertEqual(len(sections & {"OPTIONS", "SETTINGS"}), 1)

    def test_the_page_of_tarvex_disasm_has_its_options(self):
        options = self.options(DISASM)
        self.assertLessEqual({"-h", "--help", "--format", "--version"}, options)
        self.assertEqual(self.documented_options("tarvex-disasm"), options)

    def test_the_page_of_tarvex_asm_has_its_options(self):
        options = self.options(ASM)
        self.assertLessEqual({"-h", "--format", "--force"}, options)
        self.assertEqual(self.documented_options("tarvex-asm"), options)

    def assert_commands_and_options(self, name, least_commands, least_options):
        """The page has the commands and options that the program's help has, among them some that it must have."""
        listed = self.help(PAGES[name]).partition("\nSubcommands:\n")[2].partition("\n\n")[0]
        commands = re.findall(r"^  (\w+)", listed, re.MULTILINE)
        self.assertLessEqual(least_commands, set(commands))
        self.assertEqual(items(page(name), "DESCRIPTION", "Cm"), commands)
        options = self.options(PAGES[name])
        for command in commands:
            of_command = self.options(PAGES[name], command)
            self.assertIn("--help", of_command)
            options |= of_command
        self.assertLessEqual({"-h", "--version", *least_options}, options)
        self.assertEqual(self.documented_options(name), options)

    def test_the_page_of_vorn_has_its_commands_and_options(self):
        self.assert_commands_and_options("vorn", {"show", "list", "convert", "diff", "check"},
                                         {"--message", "--node", "--match", "--format"})

    def test_the_page_of_tarvex_catalog_has_its_commands_and_options(self):
        self.assert_commands_and_options("tarvex-catalog", {"check", "diff", "explain", "page", "show"}, {"--all", "--baseline", "--format"})

    def test_the_page_of_the_settings_has_every_one_in_order(self):
        settings = (SOURCE / "examples" / "TARVEX.ini").read_text(encoding="utf-8")
        keys = re.findall(r"^(\w+)=", settings, re.MULTILINE)
        self.assertEqual(len(keys), 20)
        self.assertEqual(items(page("tarvex.ini", 5), "SETTINGS", "Cm"), keys)

    def test_the_page_of_the_formats_has_every_key_and_column(self):
        """Those of the tables in the documents, which the tests of the formats compare with files."""
        text = page("vorn", 5)
        vorn = text[text.index(".Sh VORN"):text.index(".Sh SQLITE")]
        keys = [key for heading in ["Top level", "Attribute definitions", "Nodes", "Messages", "Signals"]
                for key in first_cells(section(read("vorn.md"), heading))]
        self.assertEqual(len(keys), 36)
        tagged = re.findall(r"^\.(?:It )?Li (.*)$", vorn, re.MULTILINE)
        self.assertEqual([key for key in keys if key not in re.split(r"[ ,]+", " ".join(tagged))], [])
        columns = first_cells(read("csv.md"))
        self.assertEqual(len(columns), 21)
        self.assertEqual(sorted(items_of_line(text, "TABLE OF SIGNALS")), sorted(columns))
        tables = re.findall(r"^CREATE TABLE (\w+)", read("sqlite.md"), re.MULTILINE)
        self.assertEqual(len(tables), 11)
        self.assertLessEqual(set(tables), set(items_of_line(text, "SQLITE")))

    def test_the_message_of_the_page_of_the_formats_is_that_of_the_example(self):
        shown = re.search(r"^\.Bd -literal\n(.*?)^\.Ed$", page("vorn", 5), re.DOTALL | re.MULTILINE).group(1)
        self.assertIn(shown, self.convert_example("roadster.vorn").read_text(encoding="utf-8"))

    def test_examples_print_what_is_shown(self):
        programs = self.dir / "programs"
        programs.mkdir()
        for name, program in PAGES.items():
            (programs / name).symlink_to(program)
        for name in PAGES:
            directory = self.dir / name
            directory.mkdir()
            if name == "vorn":
                self.prepare_databases(directory)
            else:
                for file in ("roadster.xml", "fcat.dtd"):
                    shutil.copy(SOURCE / "examples" / file, directory)
            commands = examples(page(name))
            self.assertGreater(len(commands), 0)
            for command, output in commands:
                with self.subTest(command):
                    result = subprocess.run(["sh", "-c", command], cwd=directory, capture_output=True, timeout=120,
                                            env={**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}, check=False)
                    self.assertEqual(result.stdout.decode(), output)
                    self.assertEqual(result.returncode, 1 if "diff" in command else 0, result.stderr)

    def prepare_databases(self, directory):
        """The example, and as "old" and "new" the example before and after two changes."""
        text = self.convert_example("roadster.vorn").read_text(encoding="utf-8")
        for before, after in [('"name": "Gear", "start_bit": 23', '"name": "Gear", "start_bit": 31'),
                              ('"Search forward"', '"Seek forward"')]:
            self.assertIn(before, text)
            text = text.replace(before, after)
        (directory / "new.vorn").write_text(text, encoding="utf-8")
        for name in ("old.vorn", "roadster.vorn"):
            shutil.copy(self.dir / "roadster.vorn", directory / name)
