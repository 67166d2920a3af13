import json
import os
import subprocess

from support import CATALOG, GENERATOR, PROGRAM, SOURCE, ProgramTest

CONVERTED = "Converting to Kestrel...\nOutput file '{}' written\n"


class Conversions(ProgramTest):
    def database(self, name="out.vorn"):
        return json.loads((self.dir / name).read_text(encoding="utf-8"))

    def test_a_missing_catalog_is_named(self):
        self.write_settings()
        self.assert_run(self.run_program("no.xml", "out.vorn"),
                        "The file 'no.xml' does not exist\nError(s) occured, XML database not available\n"
                        "Failed to import function catalog!\n", 255)

    def test_a_catalog_that_is_cut_off_is_refused_and_the_old_database_stays(self):
        self.write_settings(FCatImportLog=1)
        self.write("cat.xml", CATALOG[:200])
        self.write("out.vorn", "old")
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual(result.returncode, 255)
        lines = result.stdout.decode().splitlines()
        self.assertEqual(lines[1:3], ["Parsing XML 'cat.xml'", "Parser:"])
        self.assertTrue(lines[3].startswith("Fatal error at file 'cat.xml': Line: "))
        self.assertEqual(lines[-2:], ["Error(s) occured, XML database not available",
                                      "Failed to import function catalog!"])
        self.assertEqual((self.dir / "out.vorn").read_text(), "old")
        self.assertTrue((self.dir / "cat.log").read_text().endswith(
            "\nfatal errors: 0  errors: 0  warnings: 0\n\n\nImport of file cat.xml failed\n\n\n"))

    def test_a_catalog_name_full_of_conversions_does_no_harm(self):
        self.write_settings(FCatImportLog=1, FCatTreeLog="cat.tree")
        self.write("%n%s%d.xml", CATALOG.replace("<TDefSize>0</TDefSize>", ""))
        # The import's own texts are formats: %n and %s vanish, %d prints a zero. The driver's are not.
        self.assert_run(self.run_program("%n%s%d.xml", "out.vorn"),
                        "Parsing XML '0.xml'\nImport result: warnings: 1\nWriting internal data structure...\n"
                        + CONVERTED.format("out.vorn"), 0)
        log = (self.dir / "%n%s%d.log").read_text()
        self.assertIn("Warning #0003 in '/%n%s%d///Void':\n", log)
        self.assertTrue((self.dir / "cat.tree").read_text().startswith("CATALOG: 0\n"))
        self.assertEqual(self.database()["attributes"]["MostXMLFile"], "%n%s%d.xml")

    def test_the_logs_lie_where_the_settings_say(self):
        self.write_settings(FCatImportLog=1, FCatTreeLog="logs.d/cat.tree")
        self.write("a.b/c.d.xml", CATALOG)
        (self.dir / "logs.d").mkdir()
        self.assertEqual(self.run_program("a.b/c.d.xml", "out.vorn").returncode, 0)
        self.assertTrue((self.dir / "a.b/c.d.log").exists())
        self.assertTrue((self.dir / "logs.d/cat.tree").exists())

    def test_without_the_setting_there_is_no_log(self):
        for value in [0, 2, 65535]:
            with self.subTest(value=value):
                self.write_settings(FCatImportLog=value)
                self.write("cat.xml", CATALOG)
                self.assertEqual(self.run_program("cat.xml", "out.vorn").returncode, 0)
                self.assertFalse((self.dir / "cat.log").exists())

    def test_no_log_is_written_over_a_file_of_the_run(self):
        self.write("cat.xml", CATALOG)
        self.write("names.txt", "a,b\n")
        for path in ["cat.xml", "out.vorn", "./cat.xml", "cat.log", "TARVEX.ini", "names.txt", "net.txt"]:
            with self.subTest(path=path):
                self.write("net.txt", "Amp,1\n")
                self.write_settings(FCatImportLog=1, FCatTreeLog=path, AliasNames="names.txt",
                                    NetworkConfiguration="net.txt")
                self.run_program("cat.xml", "out.vorn")
                before = {name: (self.dir / name).read_bytes() for name in os.listdir(self.dir)}
                result = self.run_program("cat.xml", "out.vorn")
                self.assertIn(f"Unable to create log file '{path}'\n", result.stdout.decode())
                self.assertEqual(result.returncode, 0)
                after = {name: (self.dir / name).read_bytes() for name in os.listdir(self.dir)}
                self.assertEqual(after, before)

    def test_a_catalog_called_like_its_log_is_not_overwritten(self):
        self.write_settings(FCatImportLog=1)
        self.write("cat.log", CATALOG)
        result = self.run_program("cat.log", "out.vorn")
        self.assert_run(result, "Unable to create log file 'cat.log'\nParsing XML 'cat.log'\n"
                        + CONVERTED.format("out.vorn"), 0)
        self.assertEqual((self.dir / "cat.log").read_text(), CATALOG)

    def test_the_catalog_itself_is_no_output(self):
        self.write_settings()
        self.write("cat.xml", CATALOG)
        os.link(self.dir / "cat.xml", self.dir / "hard.vorn")
        os.symlink("cat.xml", self.dir / "soft.vorn")
        for output in ["cat.xml", "./cat.xml", "hard.vorn", "soft.vorn"]:
            with self.subTest(output=output):
                self.assert_run(self.run_program("cat.xml", output),
                                "Parsing XML 'cat.xml'\nConverting to Kestrel...\nFailed to export to vorn!\n", 255,
                                hints=1)
                self.assertEqual((self.dir / "cat.xml").read_text(), CATALOG)

    def test_no_file_that_the_run_reads_is_an_output(self):
        self.write("cat.xml", CATALOG)
        contents = {"names.txt": "a,b\n", "net.txt": "Amp,1\n"}
        for name, content in contents.items():
            self.write(name, content)
        self.write_settings(AliasNames="names.txt", NetworkConfiguration="net.txt")
        contents["TARVEX.ini"] = (self.dir / "TARVEX.ini").read_text()
        for output, content in contents.items():
            with self.subTest(output=output):
                result = self.run_program("cat.xml", output)
                self.assertTrue(result.stdout.decode().endswith("Failed to export to vorn!\n"))
                self.assertEqual(result.returncode, 255)
                self.assertEqual((self.dir / output).read_text(), content)

    def test_a_path_through_a_link_still_leads_to_the_catalog(self):
        # Behind the link, ".." is the directory above its target, not the one that the link is in.
        self.write("b/cat.xml", CATALOG)
        (self.dir / "b/sub").mkdir()
        (self.dir / "a").mkdir()
        os.symlink("../b/sub", self.dir / "a/link")
        for setting in [{}, {"FCatTreeLog": "../b/cat.xml"}]:
            with self.subTest(setting=setting):
                self.write_settings(FCatImportLog=1, **setting)
                os.replace(self.dir / "TARVEX.ini", self.dir / "a/TARVEX.ini")
                output = "out.vorn" if setting else "../b/cat.xml"
                result = self.run_program("link/../cat.xml", output, cwd=self.dir / "a")
                expected = "Unable to create log file '../b/cat.xml'\n" if setting else "Failed to export to vorn!\n"
                self.assertIn(expected, result.stdout.decode())
                self.assertEqual((self.dir / "b/cat.xml").read_text(), CATALOG)

    def test_running_out_of_memory_ends_with_a_message(self):
        self.write_settings(AliasNames="big.txt")
        self.write("cat.xml", CATALOG)
        with open(self.dir / "big.txt", "wb") as aliases:
            for number in range(300000):
                aliases.write(b"%d," % number + b"x" * 90 + b"\n")
        # A limit that the aliases exceed and everything else does not; sanitizers need more than any limit.
        if os.environ.get("TARVEX_SANITIZED") == "ON":
            self.skipTest("the sanitizers reserve terabytes of addresses")
        result = subprocess.run(["/bin/sh", "-c", 'ulimit -d 30000; exec "$0" cat.xml out.vorn', PROGRAM],
                                cwd=self.dir, capture_output=True, check=False)
        self.assertTrue(result.stdout.decode().endswith("Failed to export to vorn!\n"), result.stdout.decode())
        self.assertEqual(result.returncode, 255)

    def test_names_of_database_and_catalog_come_from_the_paths(self):
        self.write_settings()
        self.write("a/b/c.xml", CATALOG)
        (self.dir / "out").mkdir()
        self.assertEqual(self.run_program("a/b/c.xml", "out/my.db.x").returncode, 0)
        database = self.database("out/my.db.x")
        self.assertEqual(database["database"], "my.db")
        self.assertEqual(database["attributes"], {"BusType": "MOST", "MostXMLFile": "c.xml"})

    def test_files_of_the_settings_that_are_missing_are_reported(self):
        self.write_settings(AliasNames="no%d.txt", NetworkConfiguration="none.txt")
        self.write("cat.xml", CATALOG)
        self.assert_run(self.run_program("cat.xml", "out.vorn"),
                        "Parsing XML 'cat.xml'\nConverting to Kestrel...\nCan not open file no%d.txt!\n"
                        "Can not open file none.txt!\nOutput file 'out.vorn' written\n", 0)

    def test_a_valid_catalog_of_two_hundred_blocks_converts(self):
        self.write_settings(FCatImportValidate=1)
        self.write("fcat.dtd", (SOURCE / "examples" / "fcat.dtd").read_bytes())
        with open(self.dir / "cat.xml", "wb") as catalog:
            subprocess.run([GENERATOR, "--megabytes", "4", "--blocks", "200", "--doctype"], stdout=catalog, check=True)
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual(result.returncode, 0)
        self.assertNotIn("Parser:", result.stdout.decode())
        database = self.database()
        self.assertEqual(len(database["nodes"]), 200)
        # Every block has 9 operations in its two common functions alone.
        self.assertGreater(len(database["messages"]), 9 * 200)
        identifiers = [message["identifier"] for message in database["messages"]]
        self.assertEqual(identifiers, sorted(set(identifiers)))

    def test_the_same_settings_generate_the_same_catalog(self):
        arguments = [GENERATOR, "--megabytes", "0.5", "--blocks", "3", "--seed"]
        catalogs = [subprocess.run([*arguments, seed], capture_output=True, check=True).stdout
                    for seed in ["7", "7", "8"]]
        self.assertEqual(catalogs[0], catalogs[1])
        self.assertNotEqual(catalogs[0], catalogs[2])
