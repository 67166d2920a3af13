"""tarvex-catalog from outside: check, diff and show."""

import json
import os
import random
import re
import shutil
import subprocess

from support import CATALOG, SOURCE, ProgramTest, on_terminal
from test_safe_layout import DEFINITION, ErrorParams, Function

PROGRAM = os.environ["TARVEX_CATALOG"]
FUNCTIONS = 60  # in a random catalog
CATALOGS = int(os.environ.get("TARVEX_CATALOGS", "2" if os.environ["TARVEX_SANITIZED"] == "ON" else "6"))
# So many numbers of each example are changed; 0 for all of them.
MUTATIONS = int(os.environ.get("TARVEX_MUTATIONS", "6"))

# One fault: the number of the function is none.
FAULTY = CATALOG.replace("</Function>", "</Function>\n<Function><FunctionID>x</FunctionID>"
                                        "<FunctionName>Odd</FunctionName></Function>")


class CatalogTest(ProgramTest):
    def run_catalog(self, *arguments, stdin=b"", **environment):
        return subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.dir, input=stdin, capture_output=True,
                              timeout=120, check=False, env={**os.environ, **environment})


class Check(CatalogTest):
    def test_exit_status(self):
        self.write("clean.xml", CATALOG)
        self.write("faulty.xml", FAULTY)
        self.write("newer.xml", CATALOG.replace("PNumber", "PContainer").replace("PNParam", "PCParam"))
        self.write("old.ini", "[Import]\nFCatImportValidate=0\n")
        self.write("excluding.ini", "[Import]\nFCatImportNewer=1\nFCatImportLogExclude=113,145\n")
        self.write("wrong.baseline", "something else\n")
        for arguments, status, error in [
            (["clean.xml"], 0, ""),
            (["faulty.xml"], 1, ""),
            (["clean.xml", "faulty.xml"], 1, ""),
            (["faulty.xml", "--fail-on", "never"], 0, ""),
            (["faulty.xml", "--ignore", "113,145"], 0, ""),
            (["newer.xml"], 0, ""),
            (["newer.xml", "--settings", "old.ini"], 1, ""),
            (["missing.xml"], 2, "tarvex-catalog: can't read 'missing.xml'\n"),
            (["."], 2, "tarvex-catalog: can't read '.'\n"),
            (["clean.xml", "--settings", "missing.ini"], 2, "tarvex-catalog: can't read 'missing.ini'\n"),
            (["clean.xml", "--baseline", "wrong.baseline"], 2,
             "tarvex-catalog: wrong.baseline:1: this is no baseline: its first line is not 'tarvex-catalog baseline 1'\n"),
            (["clean.xml", "--baseline", "missing/b", "--write-baseline"], 2,
             "tarvex-catalog: can't write 'missing/b'\n"),
            (["-", "clean.xml", "-"], 2, "tarvex-catalog: standard input can be one of the catalogs, not several\n"),
            (["faulty.xml", "--settings", "excluding.ini"], 0, ""),
            (["faulty.xml", "--baseline", "clean.xml", "--write-baseline"], 2,
             "tarvex-catalog: can't write 'clean.xml': it is no baseline, and is not replaced\n"),
            (["clean.xml", "--group", "--format", "json"], 2,
             "tarvex-catalog: --group tells faults as text; it can't be had with --format json\n"),
        ]:
            with self.subTest(arguments):
                result = self.run_catalog("check", *arguments)
                self.assertEqual((result.returncode, result.stderr.decode()), (status, error))

    def test_the_other_catalogs_are_told_when_one_cannot_be_read(self):
        self.write("faulty.xml", FAULTY)
        for form in ["json", "sarif"]:
            result = self.run_catalog("check", "missing.xml", "faulty.xml", ".", "--format", form)
            self.assertEqual((result.returncode, result.stderr.decode()),
                             (2, "tarvex-catalog: can't read 'missing.xml'\ntarvex-catalog: can't read '.'\n"))
            told = json.loads(result.stdout)
            self.assertEqual(len(told["catalogs"][0]["faults"] if form == "json" else told["runs"][0]["results"]), 2)

    def test_no_number_stands_for_what_has_none(self):
        self.write("broken.xml", "<FunctionCatalog>")
        self.assertEqual(self.run_catalog("check", "broken.xml", "--ignore", "0").returncode, 2)

    def test_pipes_are_read_like_files(self):
        self.write("faulty.xml", FAULTY)
        result = subprocess.run(["bash", "-c", '"$0" check <(cat faulty.xml)', PROGRAM], cwd=self.dir, capture_output=True,
                                timeout=120, check=False)
        self.assertEqual((result.returncode, result.stderr), (1, b""))
        self.assertIn(":9:11: error 113: Failed to analyze value 'x' (<FunctionID>) [/catalog/Audio_Amp/Odd]\n",
                      result.stdout.decode())

    def test_standard_input(self):
        result = self.run_catalog("check", "-", stdin=FAULTY.encode())
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.decode(), "\n".join([
            "-:9:11: error 113: Failed to analyze value 'x' (<FunctionID>) [/catalog/Audio_Amp/Odd]",
            "-:9:1: error 145: Failed to import element <Function> [/catalog/Audio_Amp]",
            "-: 2 errors",
            "-: 1 function lost; 0 of 1 message incomplete", ""]))

    def test_every_format_can_be_read_again(self):
        self.write("clean.xml", CATALOG)
        self.write("faulty.xml", FAULTY)
        for catalogs, count in [(["clean.xml"], 0), (["faulty.xml", "clean.xml", "faulty.xml"], 4)]:
            sarif = json.loads(self.run_catalog("check", *catalogs, "--format", "sarif").stdout)
            self.assertEqual(len(sarif["runs"][0]["results"]), count)
            self.assertEqual(sarif["runs"][0]["tool"]["driver"]["name"], "tarvex-catalog")
            checked = json.loads(self.run_catalog("check", *catalogs, "--format", "json").stdout)["catalogs"]
            self.assertEqual([catalog["file"] for catalog in checked], catalogs)
            self.assertEqual(sum(len(catalog["faults"]) for catalog in checked), count)

    def test_a_baseline_is_replaced_whole_or_not_at_all(self):
        self.write("faulty.xml", FAULTY)
        self.assertEqual(self.run_catalog("check", "faulty.xml", "--baseline", "known", "--write-baseline").returncode, 0)
        self.assertEqual((self.dir / "known").read_text(), "\n".join([
            "tarvex-catalog baseline 1",
            "1\t145\t/Audio_Amp\tFailed to import element <Function>",
            "1\t113\t/Audio_Amp/Odd\tFailed to analyze value 'x'", ""]))
        self.assertEqual(self.run_catalog("check", "faulty.xml", "--baseline", "known").returncode, 0)
        (self.dir / "known").chmod(0o444)
        self.assertEqual(self.run_catalog("check", "faulty.xml", "--baseline", "known", "--write-baseline").returncode, 2)

    def test_output_that_cannot_be_written(self):
        self.write("faulty.xml", FAULTY)
        with open("/dev/full", "wb") as full:
            result = subprocess.run([PROGRAM, "check", "faulty.xml"], cwd=self.dir, stdout=full,
                                    stderr=subprocess.PIPE, check=False)
        self.assertEqual((result.returncode, result.stderr),
                         (2, b"tarvex-catalog: can't write the output: No space left on device\n"))


class Diff(CatalogTest):
    def test_exit_status(self):
        self.write("old.xml", CATALOG)
        self.write("new.xml", CATALOG.replace(">Volume<", ">Loudness<"))
        self.write("broken.xml", "<FunctionCatalog>\n  <FBlock>\n")
        renamed = ("Audio_Amp (22) Loudness (400): function renamed Volume -> Loudness\n"
                   "1 change: 1 renamed; bytes on the bus: 0\n")
        for arguments, status, output, error in [
            (["old.xml", "old.xml"], 0, "no changes\n", ""),
            (["old.xml", "new.xml"], 1, renamed, ""),
            (["-", "new.xml"], 1, renamed, ""),
            (["old.xml", "new.xml", "--only-bytes"], 0, "no changes\n", ""),
            (["old.xml"], 2, "", "NEW is required"),
            (["-", "-"], 2, "", "standard input can be one of the catalogs, not both"),
            (["old.xml", "missing.xml"], 2, "", "can't read 'missing.xml'"),
            (["old.xml", "broken.xml"], 2, "", "tarvex-catalog: the catalog could not be imported: broken.xml:3:1: fatal error: "),
            (["broken.xml", "new.xml"], 2, "", "tarvex-catalog: the catalog could not be imported: broken.xml:3:1: fatal error: "),
            (["old.xml", "new.xml", "--format", "sarif"], 2, "", "sarif"),
        ]:
            with self.subTest(arguments):
                result = self.run_catalog("diff", *arguments, stdin=CATALOG.encode())
                self.assertEqual((result.returncode, result.stdout.decode()), (status, output))
                self.assertIn(error, result.stderr.decode())
                self.assertEqual(bool(error), bool(result.stderr))


class DiffOfDatabases(CatalogTest):
    """Where the databases of two catalogs differ, the catalogs do."""

    ATTRIBUTES = re.compile(r'(<ParamPos>)(\d+)(?=<)|( NElements=")(\d+)(?=")')

    def database_of(self, text):
        self.write("catalog.xml", text)
        (self.dir / "catalog.vorn").unlink(missing_ok=True)
        self.assertEqual(self.run_program("catalog.xml", "catalog.vorn").returncode, 0)
        return (self.dir / "catalog.vorn").read_bytes()

    def test_what_changes_the_database_is_told(self):
        self.write("TARVEX.ini", (SOURCE / "examples" / "recommended.ini").read_text(encoding="utf-8"))
        shutil.copy(SOURCE / "examples" / "fcat.dtd", self.dir)
        found = 0
        for name in ["roadster.xml", "convertible.xml"]:
            text = (SOURCE / "examples" / name).read_text(encoding="utf-8")
            self.write(name, text)
            database = self.database_of(text)
            places = list(self.ATTRIBUTES.finditer(text))
            for place in random.Random(name).sample(places, MUTATIONS or len(places)):
                with self.subTest(catalog=name, place=place):
                    number = place.group(place.lastindex)
                    end = place.end()
                    if self.database_of(f"{text[:end - len(number)]}{int(number) + 1}{text[end:]}") != database:
                        told = self.run_catalog("diff", "--only-bytes", name, "catalog.xml")
                        self.assertEqual(told.returncode, 1)
                        found += 1
        self.assertGreater(found, 0)


class Colour(CatalogTest):
    """What has which colour when it is asked for."""

    COMMANDS = [
        (["check", "faulty.xml"],
         "\x1b[1mfaulty.xml:9:11:\x1b[0m \x1b[1;31merror 113:\x1b[0m Failed to analyze value 'x' (<FunctionID>) "
         "\x1b[2m[/faulty/Audio_Amp/Odd]\x1b[0m\n"),
        (["check", "faulty.xml", "--group"], "\x1b[1;31merror 113\x1b[0m, 1 time:\n"),
        (["diff", "clean.xml", "renamed.xml"],
         "\x1b[1mAudio_Amp (22) Loudness (400):\x1b[0m \x1b[33mfunction renamed\x1b[0m Volume -> Loudness\n"),
        (["explain", "113"], "\x1b[1m113 error: Failed to analyze value '%s'\x1b[0m\n"),
        (["show", "clean.xml", "22.400"], "\x1b[1m22.400  Audio_Amp.Volume\x1b[0m\n"),
    ]

    def setUp(self):
        super().setUp()
        self.write("clean.xml", CATALOG)
        self.write("faulty.xml", FAULTY)
        self.write("renamed.xml", CATALOG.replace(">Volume<", ">Loudness<"))

    def test_follows_the_option(self):
        for command, coloured in self.COMMANDS:
            plain = self.run_catalog(*command)
            for words, environment in [(["--color", "always"], {}), (["--color=always"], {"NO_COLOR": "1"})]:
                with self.subTest(command=command, words=words):
                    result = self.run_catalog(*command, *words, **environment)
                    self.assertIn(coloured, result.stdout.decode())
                    self.assertEqual((re.sub(rb"\x1b\[[\d;]+m", b"", result.stdout), result.returncode),
                                     (plain.stdout, plain.returncode))
            for words in [[], ["--color", "auto"], ["--color", "never"]]:
                self.assertEqual(self.run_catalog(*command, *words).stdout, plain.stdout)
                self.assertNotIn(b"\x1b", plain.stdout)
        self.assertEqual(self.run_catalog("check", "clean.xml", "--color", "often").returncode, 2)

    def test_follows_the_terminal(self):
        for command, coloured in self.COMMANDS:
            plain = self.run_catalog(*command).stdout.decode()
            for words, environment, is_coloured in [([], {}, True), (["--color=auto"], {"NO_COLOR": ""}, True),
                                                    ([], {"NO_COLOR": "1"}, False), ([], {"TERM": "dumb"}, False),
                                                    (["--color=never"], {}, False)]:
                with self.subTest(command=command, words=words, environment=environment):
                    output = on_terminal(self.dir, PROGRAM, *command, *words, **environment)[1]
                    if is_coloured:
                        self.assertIn(coloured, output)
                    else:
                        self.assertEqual(output, plain)

    def test_is_for_text_alone(self):
        for command in (["check", "faulty.xml"], ["diff", "clean.xml", "renamed.xml"], ["explain", "113"],
                        ["show", "clean.xml"]):
            output = self.run_catalog(*command, "--format", "json", "--color", "always").stdout
            self.assertNotIn(b"\x1b", output)
            json.loads(output)


class Verdicts(CatalogTest):
    def assert_equal_verdicts(self, path):
        """What check says of the messages is what the database says."""
        self.assertEqual(self.run_program(path, "out.vorn").returncode, 0)
        layouts = {}
        for message in json.loads((self.dir / "out.vorn").read_text())["messages"]:
            layout = message["attributes"].get("Layout", "Complete")
            layouts.setdefault(layout, set()).add(message["identifier"] & 0x1FFFFFF)
        checked = json.loads(self.run_catalog("check", path, "--format", "json").stdout)["catalogs"][0]["verdicts"]
        incomplete = {int(address.replace(".", ""), 16) for address in checked["incomplete"]}
        self.assertEqual(incomplete, layouts.get("Incomplete", set()))
        self.assertEqual((checked["complete"], checked["open"]),
                         (len(layouts.get("Complete", ())), len(layouts.get("Open", ()))))
        return len(incomplete)

    def setUp(self):
        super().setUp()
        self.write("TARVEX.ini", "[Import]\nFCatImportNewer=1\nFCatImportValidate=0\n[Conversion]\nSafeLayout=1\n"
                                 "WarnOnOverwrite=0\nMakeReadOnly=0\n")

    def test_are_those_of_the_database(self):
        incomplete = 0
        for seed in range(CATALOGS):
            rng = random.Random(1000 + seed)
            all_errors = [ErrorParams(rng, name) for name in ("Er", "Fault")]
            functions = [Function(rng, fkt_id, all_errors) for fkt_id in range(FUNCTIONS)]
            for function in functions:
                if rng.random() < 0.5:
                    function.harm(rng)
            blocks = "".join(function.xml(True) for function in functions)
            errors = "".join(errors.xml(True) for errors in all_errors)
            self.write("cat.xml", f"<FunctionCatalog>{errors}<FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>{blocks}"
                                  f"</FBlock>{DEFINITION}</FunctionCatalog>")
            incomplete += self.assert_equal_verdicts("cat.xml")
        self.assertGreater(incomplete, CATALOGS)  # there was something to compare

    def test_of_the_examples(self):
        for example in ["roadster.xml", "convertible.xml"]:
            with self.subTest(example):
                self.assert_equal_verdicts(SOURCE / "examples" / example)


class Show(CatalogTest):
    def test_exit_status(self):
        self.write("amp.xml", CATALOG)
        self.write("broken.xml", "<a>")
        for arguments, status, error in [
            (["amp.xml"], 0, ""),
            (["amp.xml", "Audio_Amp"], 0, ""),
            (["amp.xml", "Audio Amp", "nowhere.at.all"], 1,
             "tarvex-catalog: nothing in amp.xml is 'nowhere.at.all'; the nearest names: "),
            (["amp.xml", "--format", "json", "nowhere.at.all"], 1, "tarvex-catalog: nothing in amp.xml is "),
            (["amp.xml", "--format", "sarif"], 2, "tarvex-catalog: show: --format: "),
            (["missing.xml"], 2, "tarvex-catalog: can't read 'missing.xml'\n"),
            (["broken.xml"], 2, "tarvex-catalog: the catalog could not be imported: broken.xml:1:4: "),
            ([], 2, "tarvex-catalog: show: CATALOG is required"),
        ]:
            with self.subTest(arguments):
                result = self.run_catalog("show", *arguments)
                self.assertEqual(result.returncode, status)
                self.assertTrue(result.stderr.decode().startswith(error), result.stderr)
                self.assertEqual(result.stderr == b"", error == "")

    def test_standard_input(self):
        result = self.run_catalog("show", "-", "audio*", stdin=CATALOG.encode())
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertIn("  Audio_Amp\n", result.stdout.decode())
        self.assertNotIn("\x1b", result.stdout.decode())

    def test_messages_are_those_of_a_database(self):
        """Names, identifiers, lengths and signals of all messages of the examples."""
        for name in ["roadster", "convertible"]:
            source = self.write("example.xml", (SOURCE / "examples" / f"{name}.xml").read_bytes())
            self.write("TARVEX.ini", (SOURCE / "examples" / "recommended.ini").read_text(encoding="utf-8"))
            self.assertEqual(self.run_program(source, f"{name}.vorn").returncode, 0)
            database = json.loads((self.dir / f"{name}.vorn").read_text(encoding="utf-8"))
            words = {f"{message['identifier'] >> 16:02X}.{message['identifier'] >> 4 & 0xFFF:03X}": 0
                     for message in database["messages"]}
            shown = json.loads(self.run_catalog("show", source, "--format", "json", *words).stdout)
            messages = {}
            for answer in shown["answers"]:
                for operation in answer["functions"][0]["operations"]:
                    message = operation["message"]
                    messages[message["identifier"]] = (
                        message["name"], operation["known_bytes"], operation["layout"],
                        [(signal["name"], signal["start_bit"], signal["length"], signal["byte_order"])
                         for signal in message["signals"]])
            self.assertEqual(messages, {
                message["identifier"]: (
                    message["name"], message["length"], message["attributes"].get("Layout", "Complete"),
                    [(signal["name"], signal["start_bit"], signal["length"], signal["byte_order"])
                     for signal in message["signals"]])
                for message in database["messages"]})
