import os
import subprocess

from support import CATALOG, PROGRAM, ProgramTest

DISASM = os.environ["TARVEX_DISASM"]

CONVERTED = "Writing internal data structure...\nConverting to Kestrel...\nOutput file 'out.vorn' written\n"
GET = b"22.01.400.1"
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
        self.assertEqual(decoded, (0, SHOWN, ""))
