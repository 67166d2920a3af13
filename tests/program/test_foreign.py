import os
import subprocess

from support import CATALOG, PROGRAM, ProgramTest

DISASM = os.environ["TARVEX_DISASM"]

CONVERTED = "Writing internal data structure...\nConverting to Kestrel...\nOutput file 'out.vorn' written\n"
SECRET = "/etc/passwd"
GET = b"22.01.400.1"
CLOSING = "tarvex-disasm: 1 message, 0 faulty; 0 unreadable\n"
SHOWN = "22.01.400.1 () Audio_Amp.Volume.Get\n  {Void}\n"


class ForeignTest(ProgramTest):
    """Catalogs from elsewhere, and what they meet."""

    def setUp(self):
        super().setUp()
        self.write_settings(FCatImportValidate=0, FCatImportLog=1, FCatTreeLog="cat.tree")

    def write_catalog(self, doctype, name="Audio Amp"):
        start = CATALOG.index("<FunctionCatalog>")
        text = CATALOG[:start] + f"<!DOCTYPE FunctionCatalog {doctype}>\n" + CATALOG[start:]
        self.write("cat.xml", text.replace("Audio Amp", name))

    def runs(self, **environment):
        """A conversion and a decoded message: exit status, output and errors of both."""
        for command, stdin in [([PROGRAM, "cat.xml", "out.vorn"], b""), ([DISASM, "cat.xml"], GET)]:
            result = subprocess.run(command, cwd=self.dir, input=stdin, capture_output=True, timeout=120, check=False,
                                    env={**os.environ, **environment})
            yield result.returncode, result.stdout.decode(), result.stderr.decode()


class Environment(ForeignTest):
    def test_nothing_in_it_makes_the_parser_refuse_a_document_type(self):
        self.write_catalog('[<!ENTITY amp "x">]')
        conversion, decoded = self.runs(XERCES_DISABLE_DTD="1")
        self.assertEqual(conversion[::2], (0, ""))
        self.assertTrue(conversion[1].endswith(CONVERTED))
        self.assertEqual(decoded, (0, SHOWN, CLOSING))


class OtherFolders(ForeignTest):
    """A file from elsewhere is read, and named once on standard error."""

    def setUp(self):
        super().setUp()
        self.outside = self.dir / "else where"
        self.inside = self.dir / "inside"
        self.write("else where/name.txt", "Amp")
        self.write("else where/amp.dtd", '<!ENTITY amplifier "Amp">')
        self.write("inside/deeper/name.txt", "Amp")

    def convert(self, doctype, folder, path="cat.xml", name="Audio &amplifier;"):
        """The errors of a conversion and of a disassembly, each less the program's name, which have to be the same."""
        self.write_catalog(doctype, name)
        (self.dir / "cat.xml").rename(self.inside / "cat.xml")
        self.write_settings(FCatImportValidate=0)
        (self.dir / "TARVEX.ini").replace(folder / "TARVEX.ini")
        conversion = subprocess.run([PROGRAM, path, self.dir / "out.vorn"], cwd=folder, stdin=subprocess.DEVNULL,
                                    capture_output=True, timeout=120, check=False)
        decoded = subprocess.run([DISASM, path], cwd=folder, input=GET, capture_output=True, timeout=120, check=False)
        self.assertEqual((conversion.returncode, decoded.returncode), (0, 0), conversion.stdout)
        self.assertEqual(decoded.stdout.decode(), SHOWN)
        errors = conversion.stderr.decode().replace("TARVEX: ", "")
        self.assertEqual(decoded.stderr.decode().removesuffix(CLOSING).replace("tarvex-disasm: ", ""), errors)
        return errors

    def told(self, *files):
        return "".join(f"the catalog reads '{file}', which is outside its folder\n" for file in files)

    def test_a_file_outside_is_named_however_it_is_reached(self):
        (self.inside / "link.txt").symlink_to(self.outside / "name.txt")
        (self.inside / "elsewhere").symlink_to(self.outside)
        for path in ["../else where/name.txt", f"{self.outside}/name.txt", f"file://{self.outside}/name.txt",
                     "../else%20where/name.txt", "deeper/../../else where/name.txt", "link.txt", "elsewhere/name.txt"]:
            with self.subTest(path):
                errors = self.convert(f'[<!ENTITY amplifier SYSTEM "{path}">]', self.inside)
                self.assertEqual(errors, self.told(self.outside / "name.txt"))

    def test_a_document_type_outside_is_named(self):
        self.assertEqual(self.convert('SYSTEM "../else where/amp.dtd"', self.inside),
                         self.told(self.outside / "amp.dtd"))

    def test_a_file_that_an_outside_file_brings_in_is_named_and_each_once(self):
        self.write("else where/amp.dtd", '<!ENTITY amplifier SYSTEM "name.txt"><!ENTITY x SYSTEM "./name.txt">')
        self.write("else where/name.txt", "")
        errors = self.convert('SYSTEM "../else where/amp.dtd"', self.inside, name="Audio &amplifier;&x;Amp&amplifier;")
        self.assertEqual(errors, self.told(self.outside / "amp.dtd", self.outside / "name.txt"))

    def test_a_file_in_the_folder_or_below_is_not_named(self):
        self.write("inside/name.txt", "Amp")
        for path in ["name.txt", "./name.txt", "deeper/name.txt", "../inside/deeper/name.txt", f"{self.inside}/name.txt"]:
            with self.subTest(path):
                self.assertEqual(self.convert(f'[<!ENTITY amplifier SYSTEM "{path}">]', self.inside), "")

    def test_the_folder_is_that_of_the_catalog_wherever_it_is_converted(self):
        self.write("inside/name.txt", "Amp")
        (self.dir / "link.xml").symlink_to("inside/cat.xml")
        self.write("name.txt", "Amp")
        for folder, path in [(self.dir, "inside/cat.xml"), (self.outside, "../inside/cat.xml"), (self.dir, "link.xml"),
                             (self.outside, f"{self.inside}/cat.xml"), (self.inside / "deeper", "../cat.xml")]:
            with self.subTest(path):
                self.assertEqual(self.convert('[<!ENTITY amplifier SYSTEM "name.txt">]', folder, path), "")

    def test_a_folder_whose_name_only_begins_alike_is_another_one(self):
        self.write("insides/name.txt", "Amp")
        self.assertEqual(self.convert('[<!ENTITY amplifier SYSTEM "../insides/name.txt">]', self.inside),
                         self.told(self.dir / "insides/name.txt"))

    def test_a_file_that_is_declared_and_not_read_is_not_named(self):
        self.assertEqual(self.convert('[<!ENTITY amplifier "Amp"><!ENTITY x SYSTEM "../else where/name.txt">]',
                                      self.inside), "")
        self.assertEqual(self.convert('SYSTEM "../missing.dtd" [<!ENTITY amplifier "Amp">]', self.inside), "")

    def test_a_file_of_a_catalog_that_fails_is_named(self):
        self.write_catalog(f'[<!ENTITY x SYSTEM "file://{SECRET}">]', "&x;</FBlockName></x>")
        conversion, decoded = self.runs()
        self.assertEqual((conversion[0], decoded[0]), (255, 2))
        for _, _, errors in [conversion, decoded]:
            self.assertIn(f"the catalog reads '{SECRET}', which is outside its folder\n", errors)

    def test_the_name_of_a_file_is_no_command_for_the_terminal(self):
        name = "a\x1b[31m\u202eb.txt"
        self.write("else where/" + name, "Amp")
        (self.inside / "link.txt").symlink_to(self.outside / name)
        self.assertEqual(self.convert('[<!ENTITY amplifier SYSTEM "link.txt">]', self.inside),
                         self.told(self.outside / "a.[31m.b.txt"))


# A command of a terminal, and marks that turn the rest of a line around. Behind each stands what is shown of it.
CONTROLS = [("\u009b31m", ".31m"), ("\u202e", "."), ("\u2066", "."), ("\u200f", "."), ("\u061c", "."), ("\x7f", ".")]
LETTERS = "\u00e4\u20ac\u0416\u05d0\U0001f3b5"


class Controls(ForeignTest):
    """Nothing that a terminal obeys gets out of a catalog into what people read."""

    def logs(self):
        return [(self.dir / name).read_text(encoding="utf-8") for name in ["cat.log", "cat.tree"]
                if (self.dir / name).exists()]

    def assert_harmless(self, text):
        for controls, _ in CONTROLS:
            self.assertNotIn(controls[0], text)
        self.assertNotIn("\x1b", text)

    def test_they_are_shown_as_dots_in_messages_of_the_parser(self):
        for controls, shown in CONTROLS:
            with self.subTest(repr(controls)):
                self.write(f"{LETTERS}{controls}.txt", "<a b=1/>")
                self.write_catalog(f'[<!ENTITY x SYSTEM "{LETTERS}{controls}.txt">]', "&x;")
                conversion, decoded = self.runs()
                self.assertEqual((conversion[0], decoded[0]), (255, 2))
                for text in [conversion[1], decoded[2], *self.logs()]:
                    self.assertIn(f"Fatal error at file '{LETTERS}{shown}.txt': Line: 1", text)
                    self.assert_harmless(text)

    def test_they_are_shown_as_dots_in_warnings_of_a_missing_document_type(self):
        self.write_catalog(f'SYSTEM "{LETTERS}\u009b31m\u202e.dtd"')
        conversion, _ = self.runs()
        self.assertEqual(conversion[0], 0)
        for text in [conversion[1], self.logs()[0]]:
            self.assertIn(f"cannot open the DTD '{LETTERS}.31m..dtd'; it counts as empty", text)

    def test_they_are_shown_as_dots_in_both_logs(self):
        for reference, shown in [("&#27;[31m", ".[31m"), ("&#x9b;31m", ".31m"), ("&#x202e;", "."), ("&#8;", "."),
                                 ("&#13;", ".")]:
            with self.subTest(reference):
                text = CATALOG.replace('version="1.0"', 'version="1.1"')
                text = text.replace('"type_void"', f'"type_void {LETTERS}{reference}"')
                text = text.replace("<FBlock><FBlockID>0x22</FBlockID>",
                                    f"<FBlock><FBlockID>{LETTERS}\t{reference}</FBlockID><FBlockName>A</FBlockName></FBlock>"
                                    "<FBlock><FBlockID>0x22</FBlockID>")
                self.write("cat.xml", text)
                conversion, _ = self.runs()
                self.assertEqual(conversion[0], 0, conversion[1])
                log, tree = self.logs()
                self.assertIn(f"'{LETTERS}\t{shown}'", log)
                self.assertIn(f".IDName: type_void {LETTERS}{shown}\n", tree)
                for shown_text in [conversion[1], log, tree]:
                    self.assert_harmless(shown_text)
                    self.assertNotIn("\b", shown_text)
                    self.assertNotIn("\r", shown_text)
