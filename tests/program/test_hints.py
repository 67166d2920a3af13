import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from support import CATALOG, HINT, PROGRAM, SOURCE, ProgramTest, without_hints

NOBODY = 65534
SETTINGS = "[Conversion]\nWarnOnOverwrite=0\nMakeReadOnly=0\n"

CONVERTED = "Parsing XML 'cat.xml'\nConverting to Kestrel...\nOutput file 'out.vorn' written\n"
FAILED = "Failed to export to vorn!\n"
NOT_IMPORTED = "Failed to import function catalog!\n"


class HintTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.maxDiff = None
        self.write("cat.xml", CATALOG)
        self.write("TARVEX.ini", SETTINGS)

    def hints(self, end, catalog="cat.xml", output="out.vorn", run=None):
        """The hints of a run whose standard output ends like that. There is nothing else on standard error."""
        result = run or self.run_program(catalog, output)
        self.assertEqual(result.returncode, 0 if end.endswith("written\n") else 255)
        shown = result.stdout.decode()
        self.assertTrue(shown.endswith(end), shown)
        self.assertNotIn(HINT, shown)
        errors, hints = without_hints(result.stderr.decode())
        self.assertEqual(errors, "")
        return hints

    def hints_of_settings(self, text):
        """Those of settings of which none changes anything of the conversion."""
        self.write("TARVEX.ini", text)
        return self.hints(CONVERTED)


class Ordinary(HintTest):
    def test_a_catalog_without_faults_has_no_hint(self):
        examples = [(SOURCE / "examples" / name).read_bytes() for name in ["template.ini", "recommended.ini"]]
        for settings in [b"", SETTINGS.encode(), *examples]:
            with self.subTest(settings):
                self.write("TARVEX.ini", settings)
                self.assertEqual(self.hints(CONVERTED), [])
                (self.dir / "out.vorn").unlink()

    def test_a_run_that_is_refused_has_no_hint(self):
        self.write("TARVEX.ini", "[Imprt]\n")
        self.write("out.vorn", "old")
        self.assertEqual(self.hints("already exists. Overwrite (y/n)? "), [])

    def test_wrong_usage_has_no_hint(self):
        self.assertEqual(self.run_program("cat.xml").stderr, b"")


class Number(HintTest):
    def test_the_last_of_more_than_ten_says_how_many_there_are(self):
        for keys, last in [(9, "there is no key 'Key9'"), (10, "there is no key 'Key10'"), (11, "there are 2 more"),
                           (50_000, "there are 49991 more")]:
            with self.subTest(keys):
                lines = "".join(f"Key{number}=1\n" for number in range(1, keys + 1))
                hints = self.hints_of_settings(SETTINGS + lines)
                self.assertEqual(len(hints), min(keys, 10))
                self.assertTrue(hints[-1].endswith(last), hints)

    def test_they_come_behind_what_standard_output_says(self):
        self.write("TARVEX.ini", SETTINGS + "Key=1\n")
        result = subprocess.run([PROGRAM, "cat.xml", "out.vorn"], cwd=self.dir, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, timeout=60, check=False)
        self.assertTrue(result.stdout.decode().endswith(CONVERTED + f"{HINT}TARVEX.ini, line 4: there is no key 'Key'\n"))


class Faults(HintTest):
    """CATALOG with a type without a size: a warning; and with a block that has no name: an error for what is missing and
    one for the block."""

    WARNING = CATALOG.replace("<TDefSize>0</TDefSize>", "")
    BOTH = WARNING.replace("  <Definition>", "<FBlock><FBlockID>1</FBlockID></FBlock><Definition>")

    def test_they_are_counted_where_no_log_is_written(self):
        for catalog, counts in [(self.WARNING, "0 errors and 1 warning"), (self.BOTH, "2 errors and 1 warning")]:
            with self.subTest(counts):
                self.write("cat.xml", catalog)
                self.assertEqual(self.hints("written\n"), [
                    f"the catalog has {counts}; FCatImportLog=1 in [Import] writes each into a log beside it"])

    def test_the_log_takes_the_hint_away_and_nothing_else(self):
        self.write("cat.xml", self.BOTH)
        without = self.run_program("cat.xml", "out.vorn")
        database = (self.dir / "out.vorn").read_bytes()
        self.write("TARVEX.ini", SETTINGS + "[Import]\nFCatImportLog=1\n")
        self.assertEqual(self.hints("written\n"), [])
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual((result.stdout, result.returncode), (without.stdout, without.returncode))
        self.assertEqual((self.dir / "out.vorn").read_bytes(), database)


def parameter(letters, name, kind, *operations):
    places = "".join(f"<{operation}><ParamPos>{pos}</ParamPos></{operation}>" for operation, pos in operations)
    return (f"<{letters}Param><ParamName>{name}</ParamName><{letters}ParamOPType>{places}</{letters}ParamOPType>"
            f"<{letters}ParamType>{kind}</{letters}ParamType></{letters}Param>")


def function(number, name, functionclass, *parameters):
    return (f"<Function><FunctionID>{number}</FunctionID><FunctionName>{name}</FunctionName><FunctionClass ClassRef='c'>"
            f"<Property><{functionclass}>{''.join(parameters)}</{functionclass}></Property></FunctionClass></Function>")


class NewerForms(HintTest):
    VOID = "<TVoid TypeRef='type_void'/>"
    SHORT = "<TShortStream TypeRef='type_void'/>"
    UNKNOWN = "<TNothing/>"
    SET, GET, STATUS = "PCmdSet", "PCmdGet", "PReportStatus"

    def convert(self, *functions, settings=""):
        self.write("cat.xml", CATALOG.replace("  </FBlock>", "".join(functions) + "</FBlock>"))
        self.write("TARVEX.ini", SETTINGS + "[Import]\nFCatImportLog=1\n" + settings)
        return self.hints("written\n")

    def test_functions_and_operations_that_lost_something_are_counted_once(self):
        # Two parameters of Set, one of which is also in Status; and all of a function whose class is a newer one.
        stream = function(1, "A", "PUnclassified",
                          parameter("PU", "A", self.SHORT, (self.SET, 1), (self.STATUS, 1)),
                          parameter("PU", "B", self.SHORT, (self.SET, 2)), parameter("PU", "C", self.VOID, (self.GET, 1)))
        sequence = function(2, "B", "PSequence", parameter("PQ", "A", self.VOID, (self.STATUS, 1)),
                            parameter("PQ", "B", self.VOID, (self.STATUS, 2)))
        one = function(3, "C", "PUnclassified", parameter("PU", "A", self.SHORT, (self.SET, 1)))
        text = " lost parameters that have the form of newer catalogs; FCatImportNewer=1 in [Import] reads them"
        for functions, counts in [((stream,), "2 operations of 1 function"), ((one,), "1 operation of 1 function"),
                                  ((sequence,), "1 operation of 1 function"),
                                  ((stream, sequence, one), "4 operations of 3 functions")]:
            with self.subTest(counts):
                self.assertEqual(self.convert(*functions), [counts + text])
                self.assertEqual(self.convert(*functions, settings="FCatImportNewer=1\n"), [])

    def test_forms_that_cost_less_than_a_parameter_are_counted_by_themselves(self):
        case = "<TStream TypeRef='type_void' Length='4'><StreamCase>{}</StreamCase></TStream>"
        signals = case.format("<StreamSignal><SignalName SignalIdx='1'>A</SignalName><SignalBitLength>3</SignalBitLength>"
                              "</StreamSignal>")
        param = case.format(f"<StreamParam><ParamName ParamIdx='1'>A</ParamName>{self.SHORT}</StreamParam>")
        text = ("the catalog has forms of newer catalogs at {}, which are left out; FCatImportNewer=1 in [Import] reads "
                "them")
        for kinds, places in [([signals], "1 place"), ([param], "1 place"), ([param, signals], "2 places")]:
            parameters = [parameter("PU", f"P{pos}", kind, (self.SET, pos)) for pos, kind in enumerate(kinds, 1)]
            with self.subTest(places):
                functions = function(1, "A", "PUnclassified", *parameters)
                self.assertEqual(self.convert(functions), [text.format(places)])
                self.assertEqual(self.convert(functions, settings="FCatImportNewer=1\n"), [])

    def test_what_is_lost_for_another_reason_is_not_counted(self):
        lost = function(1, "A", "PUnclassified", parameter("PU", "A", self.UNKNOWN, (self.SET, 1)))
        unknown = function(2, "B", "PNothing", parameter("PN", "A", self.VOID, (self.SET, 1)))
        self.assertEqual(self.convert(lost, unknown), [])


class Validity(HintTest):
    FIRST = ("the catalog is not valid: {} errors, the first in 'cat.xml', line 3, column 4: no declaration found for "
             "element 'No'")

    def convert(self, elements, settings="", end=True, root="FunctionCatalog", definition="<Definition/>"):
        self.write("cat.xml", f"<!DOCTYPE FunctionCatalog [<!ELEMENT {root.split()[0]} ANY><!ELEMENT Definition EMPTY>]>\n"
                   f"<{root}>\n" + "<No/>\n" * elements + definition + (f"</{root.split()[0]}>\n" if end else ""))
        self.write("TARVEX.ini", SETTINGS + settings)
        return self.hints(NOT_IMPORTED)

    def test_a_hundred_errors_name_the_first_one_and_the_setting(self):
        text = self.FIRST + "; FCatImportValidate=0 in [Import] reads it all the same"
        self.assertEqual(self.convert(100), [text.format(100)])
        self.assertEqual(self.convert(250), [text.format(250)])

    def test_fewer_errors_and_those_that_no_setting_heals_give_no_hint(self):
        self.assertEqual(self.convert(99), [])
        self.assertEqual(self.convert(100, end=False), [])
        self.assertEqual(self.convert(100, "[Import]\nFCatImportValidate=0\n"), [])

    def test_a_missing_dtd_names_the_setting_that_does_without(self):
        dtd = CATALOG.replace("<FunctionCatalog>", '<!DOCTYPE FunctionCatalog SYSTEM "{}"><FunctionCatalog>', 1)
        text = "the DTD '{}' of the catalog can't be opened; FCatImportValidate=0 in [Import] reads the catalog without it"
        for name in ["missing.dtd", "folder/missing.dtd", "http://localhost/fcat.dtd"]:
            with self.subTest(name):
                self.write("cat.xml", dtd.replace("{}", name))
                self.assertEqual(self.hints(NOT_IMPORTED), [text.format(name)])
        without = self.run_program("cat.xml", "out.vorn").stdout
        self.write("TARVEX.ini", SETTINGS + "[Import]\nFCatImportValidate=0\n")
        self.assertEqual(self.hints(CONVERTED.partition("\n")[2]), [])
        self.assertIn(b"unable to open DTD document", without)

    def test_a_dtd_that_is_there_is_not_missing(self):
        dtd = CATALOG.replace("<FunctionCatalog>", '<!DOCTYPE FunctionCatalog SYSTEM "broken.dtd"><FunctionCatalog>', 1)
        self.write("cat.xml", dtd)
        self.write("broken.dtd", '<!ENTITY % more SYSTEM "missing.ent"> %more; <!ELEMENT')
        self.assertEqual(self.hints(NOT_IMPORTED), [])

    def test_the_setting_is_not_promised_to_help_where_it_does_not(self):
        self.assertEqual(self.convert(100, definition=""), [self.FIRST.format(100)])
        named, schema = self.convert(100, root="FunctionCatalog xmlns='urn:a'", definition="")
        self.assertIn("the catalog is not valid: 10", named)  # one or two more for the attribute
        self.assertNotIn("FCatImportValidate", named)
        self.assertTrue(schema.startswith("the root element names a namespace or a schema: "), schema)
        other, root = self.convert(100, root="Other")
        self.assertNotIn("FCatImportValidate", other)
        self.assertTrue(root.startswith("the root element is not FunctionCatalog; "), root)


class SchemaForm(HintTest):
    ROOT = "<FunctionCatalog{}><FBlock FBlockID='1' FBlockName='A'/></FunctionCatalog>"

    def convert(self, catalog, end=NOT_IMPORTED):
        self.write("cat.xml", catalog)
        return self.hints(end)

    def test_a_root_with_a_namespace_or_a_schema(self):
        text = ("the root element names a namespace or a schema: the XML-schema form of catalogs is another language and "
                "can't be read; export the catalog in the DTD form")
        for attributes in [" xmlns='urn:a'", " xmlns:xsi='urn:a'", " schemaLocation='a.xsd'",
                           " xmlns='urn:a' xmlns:xsi='urn:b' xsi:schemaLocation='a.xsd'",
                           " xsi:noNamespaceSchemaLocation='a.xsd'"]:
            with self.subTest(attributes):
                self.assertEqual(self.convert(self.ROOT.format(attributes)), [text])
        self.assertEqual(self.convert(self.ROOT.format("")), [])
        self.assertEqual(self.convert(self.ROOT.format(" version='1'")), [])

    def test_another_root(self):
        text = ("the root element is not FunctionCatalog; if this is a catalog in the XML-schema form, that is another "
                "language and can't be read: export the catalog in the DTD form")
        for catalog in ["<Catalog/>", "<f:FunctionCatalog xmlns:f='urn:a'><FBlock/></f:FunctionCatalog>"]:
            with self.subTest(catalog):
                self.assertEqual(self.convert(catalog), [text])

    def test_a_catalog_that_can_be_read_may_have_a_namespace(self):
        named = CATALOG.replace("<FunctionCatalog>", "<FunctionCatalog xmlns='urn:a'>")
        self.assertEqual(self.convert(named, CONVERTED), [])

    def test_faults_of_a_catalog_that_was_read_have_nothing_to_do_with_it(self):
        faulty = CATALOG.replace("<FunctionCatalog>", "<FunctionCatalog xsi:noNamespaceSchemaLocation='a.xsd'>").replace(
            "  <Definition>", "<FBlock><FBlockID>1</FBlockID></FBlock><Definition>")
        self.assertEqual(self.convert(faulty, "written\n"), [
            "the catalog has 2 errors and 0 warnings; FCatImportLog=1 in [Import] writes each into a log beside it"])


class Ini(HintTest):
    """The lines of the file are counted from its first one; SETTINGS has three."""

    def test_what_does_not_count_is_told(self):
        cases = [
            ("[Imprt]\nFCatImportLog=1\nWhat=1\n",
             ["line 4: there is no section 'Imprt', so that nothing in it counts; 'Import' is one"]),
            ("[Unheard Of]\n", ["line 4: there is no section 'Unheard Of', so that nothing in it counts"]),
            ("WriteSignal=1\n", ["line 4: there is no key 'WriteSignal'; 'WriteSignals' is one"]),
            ("inclde=\n", ["line 4: there is no key 'inclde'; 'Include' is one"]),
            ("Inxxxxe=\n", ["line 4: there is no key 'Inxxxxe'"]),  # four letters differ
            ("[Import]\nMakeExtended=1\n", ["line 5: MakeExtended counts in [Conversion] alone, and not here"]),
            ("StrictExport=yes\n", ["line 4: StrictExport is 1 or 0; 'yes' counts as 0"]),
            ("StrictExport=\n", ["line 4: StrictExport is 1 or 0; '' counts as 0"]),
            ("WriteSignals=01\n", ["line 4: WriteSignals is 1 or 0; '01' counts as 1"]),
            ("WriteSignals=1 ; signals\n", ["line 4: WriteSignals is 1 or 0; '1 ; signals' counts as 1"]),
            ("WriteSignals=1\nwritesignals=0\n[CONVERSION]\nWriteSignals=0\n",
             ["line 5: WriteSignals stands in line 4 already, which alone counts",
              "line 7: WriteSignals stands in line 4 already, which alone counts"]),
            ("[Import]\nFCatImportLogExclude=68, x9;0x45\n",
             ["line 5: in FCatImportLogExclude 'x9' is no number, and is left out"]),
            ("[Import]\nFCatImportLogExclude=120-130 -5 1- 0x 0b12,99999999999 8\n",
             ["line 5: in FCatImportLogExclude '120-130' is not one number, and counts as 120",
              "line 5: in FCatImportLogExclude '-5' is not one number, and counts as -5",
              "line 5: in FCatImportLogExclude '1-' is not one number, and counts as 1",
              "line 5: in FCatImportLogExclude '0x' is not one number, and counts as 0",
              "line 5: in FCatImportLogExclude '0b12' is no number, and is left out",
              "line 5: in FCatImportLogExclude '99999999999' is not one number, and counts as 2147483647"]),
            ("[Import]\nFCatImportLogExclude=" + "7," * 1500 + "\n",
             ["line 5: of FCatImportLogExclude only the first 2999 characters are read"]),
            ("Exclude=audio_amp\n",
             ["line 4: no function block is called 'audio_amp', which Exclude names; 'Audio_Amp' is one"]),
            ("Exclude=Phone\n", ["line 4: no function block is called 'Phone', which Exclude names"]),
        ]
        for lines, hints in cases:
            with self.subTest(lines[:40]):
                self.assertEqual(self.hints_of_settings(SETTINGS + lines), ["TARVEX.ini, " + hint for hint in hints])

    def test_keys_above_all_sections_do_not_count(self):
        self.assertEqual(self.hints_of_settings("WriteSignals=0\n" + SETTINGS),
                         ["TARVEX.ini, line 1: WriteSignals counts in [Conversion] alone, and not above all sections"])

    def test_what_is_right_gives_no_hint(self):
        for lines in ["; [Imprt]\n;What=1\n", "[IMPORT]\nfcatimportlog = '0'\n", "[Import]\n[Conversion]\n", "text\n",
                      "[Import]\nFCatImportLogExclude=-1\n", "[Import]\nFCatImportLogExclude=68, 0x45;0b1\n",
                      "[Import]\nFCatImportNewer=0\n", "SafeLayout=0\nWriteScaling=0\n", "Include=Audio_Amp\n", "Include=-1\n",
                      "Exclude=\n"]:
            with self.subTest(lines):
                self.assertEqual(self.hints_of_settings(SETTINGS + lines), [])

    def test_no_setting_of_a_file_in_another_encoding_is_told(self):
        self.write("TARVEX.ini", "[Imprt]\nWhat=1\n".encode("utf-16"))
        errors, hints = without_hints(self.run_program("cat.xml", "out.vorn").stderr.decode())
        self.assertEqual(hints, [])
        self.assertIn("is no text in ASCII or UTF-8", errors)

    def test_aliases_are_names_of_blocks(self):
        self.write("aliases.txt", "Audio_Amp,Loud\nTuner,Soft\n")
        settings = SETTINGS + "AliasNames=aliases.txt\nInclude={}\n"
        for name, hints in [("Loud", 0), ("Audio_Amp", 0), ("Audio_Amp,Loud", 0), ("Loud,Soft", 1), ("Loud,Tuner", 1)]:
            with self.subTest(name):
                self.assertEqual(len(self.hints_of_settings(settings.format(name))), hints)

    def test_texts_of_the_file_are_shown_cut_and_clean(self):
        self.assertEqual(self.hints_of_settings(SETTINGS + "\x1b[31m\u202eb\u00e4=1\n"),
                         ["TARVEX.ini, line 4: there is no key '.[31m.b\u00e4'"])
        self.assertEqual(self.hints_of_settings(SETTINGS + "x" * 199 + "\u00e4y=1\n"),
                         ["TARVEX.ini, line 4: there is no key '" + "x" * 199 + "...'"])

    def test_standard_output_and_database_are_those_of_the_settings_that_count(self):
        before = self.run_program("cat.xml", "out.vorn")
        database = (self.dir / "out.vorn").read_bytes()
        self.write("TARVEX.ini", "Key=1\n" + SETTINGS + "[Imprt]\nA=1\n[Import]\nStrictExport=1\nFCatImportLog=x\n")
        self.assertEqual(len(self.hints(CONVERTED)), 4)
        self.assertEqual(self.run_program("cat.xml", "out.vorn").stdout, before.stdout)
        self.assertEqual((self.dir / "out.vorn").read_bytes(), database)


class MissingIni(HintTest):
    def test_the_recommended_one_or_an_empty_one_does(self):
        (self.dir / "TARVEX.ini").unlink()
        self.assertEqual(self.hints("TARVEX.ini'\n"),
                         ["copy recommended.ini, one of the examples of TARVEX (man TARVEX says where), to the working "
                          "directory as TARVEX.ini; an empty TARVEX.ini does, too: every setting has a default"])
        (self.dir / "TARVEX.ini").touch()
        self.assertEqual(self.hints(CONVERTED), [])

    def test_one_that_cannot_be_read_is_not_missing(self):
        (self.dir / "TARVEX.ini").unlink()
        (self.dir / "TARVEX.ini").mkdir()
        self.assertEqual(self.hints("TARVEX.ini'\n"), [])


class Paths(HintTest):
    def test_a_catalog_that_is_no_file(self):
        (self.dir / "folder").mkdir()
        os.mkfifo(self.dir / "pipe")
        for catalog, hints in [
                ("folder", ["'folder' is a directory; the catalog has to be a file"]),
                ("pipe", ["'pipe' is a device, a pipe or a socket; the catalog has to be a file"]), ("no.xml", [])]:
            with self.subTest(catalog):
                self.assertEqual(self.hints(NOT_IMPORTED, catalog=catalog), hints)

    def test_outputs_that_cannot_be_written(self):
        for name in ["aliases.txt", "nodes.txt", "file"]:
            self.write(name, "")
        self.write("fcat.dtd", (SOURCE / "examples" / "fcat.dtd").read_bytes())
        self.write("cat.xml", (SOURCE / "examples" / "smallest.xml").read_bytes())
        self.write("TARVEX.ini", SETTINGS + "AliasNames=aliases.txt\nNetworkConfiguration=nodes.txt\n")
        self.write("closed.vorn", "old").chmod(0o444)
        (self.dir / "folder").mkdir()
        self.write("left.db-journal", "changes")
        self.write("empty.db-wal", "")
        os.symlink("nowhere/out.vorn", self.dir / "link.vorn")
        os.symlink("b", self.dir / "a")
        os.symlink("a", self.dir / "b")
        cases = [
            ("cat.xml", "'cat.xml' is the catalog itself, which is not written over"),
            ("./TARVEX.ini", "'./TARVEX.ini' is the file of the settings, which is not written over"),
            ("aliases.txt", "'aliases.txt' is the file of AliasNames, which is not written over"),
            ("nodes.txt", "'nodes.txt' is the file of NetworkConfiguration, which is not written over"),
            ("folder", "'folder' is a directory; the output has to be a file"),
            ("new/", "'new/' is the name of a folder; the output has to be a file"),
            ("", "the path of the output is empty"),
            ("/dev/null", "'/dev/null' is a device, a pipe or a socket; the output has to be a file"),
            ("closed.vorn", "'closed.vorn' is write-protected; WarnOnOverwrite=1 in [Conversion] asks and replaces it"),
            ("no/out.vorn", f"there is no folder '{self.dir}/no/'"),
            ("link.vorn", f"there is no folder '{self.dir}/nowhere/'"),
            ("file/out.vorn", f"'{self.dir}/file/': Not a directory"),
            ("left.db", f"'{self.dir}/left.db-journal' holds changes of another program to 'left.db', which would get into "
             "the new file"),
            ("a", "'a': Too many levels of symbolic links"),
            ("n" * 300, f"'{'n' * 200}...': File name too long"),
        ]
        for output, hint in cases:
            with self.subTest(output):
                self.assertEqual(self.hints(FAILED, output=output), [hint])
        self.assertEqual(self.hints("written\n", output="empty.db"), [])

    def test_the_dtd_is_no_output(self):
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        self.assertIn("'fcat.dtd' is the DTD of the catalog, or another file that it reads, which is not written over",
                      self.hints(FAILED, catalog="roadster.xml", output="fcat.dtd"))

    def test_a_file_that_may_not_grow(self):
        for output in ["out.vorn", "out.kcd"]:
            with self.subTest(output):
                run = subprocess.run(["/bin/sh", "-c", 'ulimit -f 0; exec "$0" cat.xml "$1"', PROGRAM, output],
                                     cwd=self.dir, stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=False)
                self.assertEqual(self.hints(FAILED, run=run), [f"'{output}' would become larger than a file may be here"])

    def test_a_file_system_that_is_full_or_read_only(self):
        disk = self.dir / "disk"
        disk.mkdir()
        for options, hint in [
                ("size=4k", "there is no room for 'disk/out.vorn' on its file system: No space left on device"),
                ("ro", f"the file system of '{disk}/' is read-only")]:
            mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", disk], capture_output=True,
                                     check=False) if shutil.which("mount") else None
            if mounted is None or mounted.returncode != 0:
                self.skipTest("no small disk can be mounted here")
            try:
                if options != "ro":
                    (disk / "rest").write_bytes(b"x" * 4096)
                self.assertEqual(self.hints(FAILED, output="disk/out.vorn"), [hint])
            finally:
                subprocess.run(["umount", disk], check=True)

    def test_places_without_permission(self):
        place = Path(tempfile.mkdtemp(prefix="tarvex-test-")).resolve()
        self.addCleanup(shutil.rmtree, place)
        for name in ["TARVEX.ini", "cat.xml"]:
            shutil.copy(self.dir / name, place)
        (place / "closed").mkdir(mode=0o555)
        self.addCleanup((place / "closed").chmod, 0o755)
        shutil.copy(place / "cat.xml", place / "secret.xml")
        (place / "secret.xml").chmod(0)
        (place / "theirs.vorn").write_text("old")
        (place / "theirs.vorn").chmod(0o200 if os.geteuid() == 0 else 0o040)
        place.chmod(0o755)
        # Root may write anywhere, so another user runs the program.
        user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        try:
            subprocess.run([PROGRAM], cwd=place, capture_output=True, check=False, **user)
        except PermissionError:
            self.skipTest("the program lies where another user cannot start it")
        for catalog, output, end, hint in [
                ("cat.xml", "closed/out.vorn", FAILED,
                 f"you have no permission to make files in the folder '{place}/closed/'"),
                ("cat.xml", "theirs.vorn", FAILED, "you have no permission to write to 'theirs.vorn'"),
                ("secret.xml", "out.vorn", NOT_IMPORTED, "'secret.xml' is there, but you have no permission to read it")]:
            with self.subTest(hint):
                run = subprocess.run([PROGRAM, catalog, output], cwd=place, stdin=subprocess.DEVNULL, capture_output=True,
                                     timeout=60, check=False, **user)
                self.assertEqual(self.hints(end, run=run), [hint])


class Extensions(HintTest):
    def test_another_format_is_told_to_be_vorn(self):
        for output in ["out.json", "out.XML", "out.xlsx", "a.db/out.dbc", "out.kcd.txt"]:
            with self.subTest(output):
                (self.dir / "a.db").mkdir(exist_ok=True)
                self.assertEqual(self.hints("written\n", output=output), [
                    f"'{output}' has the format Vorn, as every output but those that end in .sqlite, .sqlite3, .db, .kcd, .csv"])

    def test_an_output_that_is_what_its_name_says(self):
        for output in ["out.vorn", "out", "out.x", "json", "out.sqlite", "out.db", "out.KCD"]:
            with self.subTest(output):
                self.assertEqual(self.hints("written\n", output=output), [])

    def test_the_name_changes_nothing_in_the_file(self):
        for output in ["out.vorn", "out.json"]:
            self.hints("written\n", output=output)
        self.assertEqual((self.dir / "out.json").read_bytes(), (self.dir / "out.vorn").read_bytes())
