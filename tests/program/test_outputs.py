import os
import re
import shutil
import socket
import stat
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import CATALOG, PROGRAM, SOURCE, ProgramTest, without_hints

OLD = "the old database\n"
FAILED = "Parsing XML 'cat.xml'\nConverting to Kestrel...\nFailed to export to vorn!\n"
WRITTEN = "Parsing XML 'cat.xml'\nConverting to Kestrel...\nOutput file 'out.vorn' written\n"
CONSOLE_LOST = "TARVEX: can't write to the standard output\n"

NOBODY = 65534
ROUNDS = 20
SANITIZED = os.environ["TARVEX_SANITIZED"] == "ON"


class OutputTest(ProgramTest):
    def run_in_shell(self, script, *arguments):
        """Runs a shell script in which $0 is the program."""
        return subprocess.run(["/bin/sh", "-c", script, PROGRAM, *arguments], cwd=self.dir, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=120, check=False)

    def assert_no_temporary_file(self, directory=None):
        names = os.listdir(directory or self.dir)
        self.assertEqual([name for name in names if name.startswith(".kestrel-")], [])


class ConsoleLost(OutputTest):
    """Nobody can read what the program says."""

    def setUp(self):
        super().setUp()
        self.write_settings(FCatImportLog=1, FCatTreeLog="cat.tree")
        self.write("cat.xml", CATALOG)
        self.assertEqual(self.run_program("cat.xml", "out.vorn").returncode, 0)
        self.expected = self.contents()

    def contents(self):
        return {path.name: path.read_bytes() for path in self.dir.iterdir()}

    def assert_converts(self, redirection, status, errors):
        self.write("out.vorn", OLD)
        result = self.run_in_shell(f'exec "$0" cat.xml out.vorn {redirection}')
        self.assertEqual((result.stderr, result.returncode), (errors, status))
        self.assertEqual(self.contents(), self.expected)

    def test_the_conversion_is_done_and_the_loss_is_told(self):
        for redirection in [">&-", ">/dev/full", "1<TARVEX.ini", "<&- >&-"]:
            with self.subTest(redirection=redirection):
                self.assert_converts(redirection, 255, CONSOLE_LOST)

    def test_with_every_stream_closed_no_text_gets_into_a_file(self):
        self.assert_converts("<&- >&- 2>&-", 255, "")

    def test_with_the_output_closed_no_text_gets_into_a_log(self):
        # What the parser says is more than is kept back, and comes while the import log is open.
        self.write("cat.xml", "<!DOCTYPE FunctionCatalog [<!ELEMENT FunctionCatalog ANY>]>\n<FunctionCatalog>\n"
                   + "<NotDeclared/>\n" * 1000 + "</FunctionCatalog>\n")
        result = self.run_in_shell('exec "$0" cat.xml out.vorn')
        self.assertEqual((result.stdout.count("NotDeclared"), result.returncode), (1000, 255))
        log = (self.dir / "cat.log").read_text()
        self.assertEqual(log.count("NotDeclared"), 1000)
        for redirection in [">&-", "<&- >&-", "<&- >&- 2>&-"]:
            with self.subTest(redirection=redirection):
                self.assertEqual(self.run_in_shell(f'exec "$0" cat.xml out.vorn {redirection}').returncode, 255)
                self.assertEqual((self.dir / "cat.log").read_text(), log)

    def test_other_streams_that_are_closed_do_not_matter(self):
        for redirection in ["<&-", "2>&-", "<&- 2>&-"]:
            with self.subTest(redirection=redirection):
                self.assert_converts(redirection, 0, "")

    def test_a_pipe_that_nobody_reads(self):
        self.write("out.vorn", OLD)
        reader, writer = os.pipe()
        os.close(reader)
        result = subprocess.run([PROGRAM, "cat.xml", "out.vorn"], cwd=self.dir, stdout=writer, stderr=subprocess.PIPE,
                                text=True, timeout=60, check=False)
        os.close(writer)
        self.assertEqual((result.stderr, result.returncode), (CONSOLE_LOST, 255))
        self.assertEqual(self.contents(), self.expected)


class Logs(OutputTest):
    """Logs that grow beyond what a file may have here: no block of 512 bytes more than the limit."""

    def convert(self, limit, **settings):
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        self.write_settings(**settings)
        return self.run_in_shell(f'ulimit -f {limit}; exec "$0" roadster.xml out.vorn')

    def assert_told(self, result, *logs):
        self.assertEqual((result.returncode, without_hints(result.stderr)[0]), (0, ""))
        self.assertEqual(re.findall(r"Unable to create log file '(.*)'\n", result.stdout), list(logs))
        self.assertTrue(result.stdout.endswith("Output file 'out.vorn' written\n"))

    def test_a_log_that_cannot_be_written_is_told_and_the_conversion_goes_on(self):
        # With no message in it the database needs less than the logs of 34 errors and of the whole tree.
        settings = {"FCatImportLog": 1, "FCatTreeLog": "roadster.tree"}
        self.assert_told(self.convert("unlimited", Include="Nothing", **settings))
        sizes = {name: (self.dir / name).stat().st_size for name in ["out.vorn", "roadster.log", "roadster.tree"]}
        self.assertLess(sizes["out.vorn"] + 512, sizes["roadster.log"])
        self.assertLess(sizes["roadster.log"] + 512, sizes["roadster.tree"])
        database = (self.dir / "out.vorn").read_bytes()
        blocks = sizes["out.vorn"] // 512 + 1
        self.assert_told(self.convert(blocks, Include="Nothing", **settings), "roadster.log", "roadster.tree")
        self.assertEqual((self.dir / "out.vorn").read_bytes(), database)
        blocks = sizes["roadster.log"] // 512 + 1
        self.assert_told(self.convert(blocks, Include="Nothing", **settings), "roadster.tree")
        self.assertEqual((self.dir / "out.vorn").read_bytes(), database)

    def test_the_import_log_is_told_before_the_conversion(self):
        result = self.convert(1, FCatImportLog=1)
        lines = result.stdout.splitlines()
        self.assertEqual(lines[1:], ["Parsing XML 'roadster.xml'", "Import result: errors: 34  warnings: 26",
                                     "Unable to create log file 'roadster.log'", "Converting to Kestrel...",
                                     "Failed to export to vorn!"])
        self.assertEqual(result.returncode, 255)


class FullDisk(OutputTest):
    def setUp(self):
        super().setUp()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        self.write_settings()

    @unittest.skipIf(SANITIZED, "each size is a conversion more of the same catalog")
    def test_no_size_of_a_file_leaves_half_a_database(self):
        for output in ["out.vorn", "out.sqlite", "out.kcd"]:
            self.assertEqual(self.run_program("roadster.xml", output).returncode, 0)
            new = (self.dir / output).read_bytes()
            blocks = -(-len(new) // 512)
            for limit in [0, 1, 2, 8, 9, blocks // 2, blocks - 8, blocks - 1, blocks, blocks + 1]:
                with self.subTest(output=output, limit=limit):
                    self.write(output, OLD)
                    result = self.run_in_shell(f'ulimit -f {limit}; exec "$0" roadster.xml "$1"', output)
                    self.assertEqual(result.returncode, 0 if limit >= blocks else 255)
                    self.assertEqual((self.dir / output).read_bytes(), new if limit >= blocks else OLD.encode())
                    self.assertEqual(result.stdout.endswith("Failed to export to vorn!\n"), limit < blocks)
                    self.assert_no_temporary_file()

    def mount(self, options):
        disk = self.dir / "disk"
        disk.mkdir(exist_ok=True)
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", disk], capture_output=True, text=True,
                                 check=False) if shutil.which("mount") else None
        if mounted is None or mounted.returncode != 0:
            self.skipTest(f"no small disk can be mounted here: {mounted.stderr.strip() if mounted else 'no mount'}")
        return disk

    def convert_on_disk(self, options, fill):
        """Converts onto a file of a disk; returns what the disk then has."""
        disk = self.mount(options)
        try:
            for output in ["out.vorn", "out.sqlite", "out.kcd"]:
                (disk / output).write_text(OLD)
            fill(disk)
            before = sorted(os.listdir(disk))
            for output in ["out.vorn", "out.sqlite", "out.kcd"]:
                with self.subTest(output=output):
                    result = self.run_program("roadster.xml", f"disk/{output}")
                    self.assertEqual(result.returncode, 255)
                    self.assertTrue(result.stdout.endswith(b"Failed to export to vorn!\n"))
                    self.assertEqual((disk / output).read_text(), OLD)
                    self.assertEqual(sorted(os.listdir(disk)), before)
        finally:
            subprocess.run(["umount", disk], check=True)

    def test_a_disk_that_gets_full(self):
        # Each of the files needs more than the 32 KB that are left behind three small ones.
        self.convert_on_disk("size=44k", lambda disk: None)

    def test_a_disk_that_is_full(self):
        self.convert_on_disk("size=16k", lambda disk: (disk / "rest").write_bytes(b"x" * 4096))

    def test_a_disk_with_no_room_for_another_file(self):
        # The root directory counts as one.
        self.convert_on_disk("size=1m,nr_inodes=4", lambda disk: None)

    def test_a_disk_that_is_read_only(self):
        self.convert_on_disk("size=1m", lambda disk: subprocess.run(["mount", "-o", "remount,ro", disk], check=True))


class InTheWay(OutputTest):
    """What cannot become a database."""

    def setUp(self):
        super().setUp()
        self.write("cat.xml", CATALOG)
        self.write_settings()

    def assert_refused(self, output, console=FAILED):
        """Twice, so that what the first run leaves is not in the way of the second."""
        for _ in range(2):
            self.assert_run(self.run_program("cat.xml", output), console, 255, hints=1)
            self.assert_no_temporary_file()

    def test_a_directory(self):
        (self.dir / "out.vorn").mkdir()
        for output in ["out.vorn", "out.vorn/", ".", "..", "/", ""]:
            with self.subTest(output=output):
                self.assert_refused(output)
        self.assertEqual(os.listdir(self.dir / "out.vorn"), [])

    def test_a_path_or_a_name_that_is_too_long(self):
        for output in ["n" * 5000, "n" * 256, "d/" * 2500 + "out.vorn", "./" * 2500 + "out.vorn"]:
            with self.subTest(length=len(output)):
                self.assert_refused(output)
        self.assertEqual(sorted(os.listdir(self.dir)), ["TARVEX.ini", "cat.xml"])

    def test_a_link_that_leads_to_no_possible_file(self):
        os.symlink("missing/out.vorn", self.dir / "nowhere.vorn")
        os.symlink("b.vorn", self.dir / "a.vorn")
        os.symlink("a.vorn", self.dir / "b.vorn")
        os.symlink(".", self.dir / "directory.vorn")
        for output in ["nowhere.vorn", "a.vorn", "directory.vorn"]:
            with self.subTest(output=output):
                target = os.readlink(self.dir / output)
                self.assert_refused(output)
                self.assertEqual(os.readlink(self.dir / output), target)

    def test_a_link_to_a_file_stays_and_the_file_is_replaced(self):
        self.write("real/out.vorn", OLD)
        os.symlink("real/out.vorn", self.dir / "link.vorn")
        os.symlink("real/new.vorn", self.dir / "dangling.vorn")
        for link, target in [("link.vorn", "real/out.vorn"), ("dangling.vorn", "real/new.vorn")]:
            with self.subTest(link=link):
                self.assertEqual(self.run_program("cat.xml", link).returncode, 0)
                self.assertEqual(os.readlink(self.dir / link), target)
                self.assertTrue((self.dir / target).read_text().startswith('{\n"format": "Vorn"'))
                self.assert_no_temporary_file(self.dir / "real")

    def test_a_device_a_pipe_and_a_socket(self):
        os.mkfifo(self.dir / "fifo")
        with socket.socket(socket.AF_UNIX) as server:
            home = os.getcwd()
            os.chdir(self.dir)  # the name of a socket is short
            server.bind("socket")
            os.chdir(home)
        os.symlink("/dev/null", self.dir / "link")
        for output in ["/dev/null", "/dev/full", "/dev/stdout", "/dev/fd/1", "fifo", "socket", "link"]:
            with self.subTest(output=output):
                self.assert_refused(output)
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))
        self.assertTrue((self.dir / "fifo").is_fifo())
        self.assertTrue((self.dir / "socket").is_socket())

    def test_a_device_that_the_user_agrees_to_overwrite(self):
        self.write_settings(WarnOnOverwrite=1)
        question = "Output file '/dev/null' already exists. Overwrite (y/n)? y\n"
        self.assert_run(self.run_program("cat.xml", "/dev/null", stdin=b"y"), question + FAILED, 255,
                        hints=1)

    def closed_directory(self, *files):
        """Another directory with the test's files, and with "closed", where files of everybody's may be written and
        nothing created or deleted; and who runs the program there."""
        place = Path(tempfile.mkdtemp(prefix="tarvex-test-"))
        self.addCleanup(shutil.rmtree, place)
        for name in ["TARVEX.ini", "cat.xml"]:
            shutil.copy(self.dir / name, place)
        (place / "closed").mkdir()
        for name in files:
            (place / "closed" / name).write_text(OLD)
            (place / "closed" / name).chmod(0o666)
        (place / "closed").chmod(0o555)
        place.chmod(0o755)
        self.addCleanup((place / "closed").chmod, 0o755)
        # Root may write anywhere, so another user runs the program.
        user = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}
        try:
            subprocess.run([PROGRAM], cwd=place, capture_output=True, check=False, **user)
        except PermissionError:
            self.skipTest("the program lies where another user cannot start it")
        return place, user

    def test_a_directory_that_nothing_may_be_created_in(self):
        place, user = self.closed_directory("out.vorn")
        for output in ["closed/out.vorn", "closed/new.vorn"]:
            with self.subTest(output=output):
                result = subprocess.run([PROGRAM, "cat.xml", output], cwd=place, capture_output=True, check=False,
                                        **user)
                self.assert_run(result, FAILED, 255, hints=1)
        self.assertEqual(os.listdir(place / "closed"), ["out.vorn"])
        self.assertEqual((place / "closed/out.vorn").read_text(), OLD)

    def test_a_tree_log_that_may_not_be_deleted_is_emptied(self):
        self.write_settings(FCatTreeLog="closed/tree")
        place, user = self.closed_directory("tree")
        subprocess.run([PROGRAM, "cat.xml", "closed/out.vorn"], cwd=place, capture_output=True, check=False, **user)
        tree = (place / "closed/tree").read_text()
        self.assertNotIn(OLD, tree)
        self.assertTrue(tree.startswith("CATALOG: cat\n"), tree)


class FilesThatWereRead(OutputTest):
    """The DTD is no place for an output."""

    def setUp(self):
        super().setUp()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        self.dtd = (self.dir / "fcat.dtd").read_bytes()

    def test_no_database_is_written_over_the_dtd(self):
        self.write_settings()
        os.symlink("fcat.dtd", self.dir / "link")
        for output in ["fcat.dtd", "./fcat.dtd", "link"]:
            with self.subTest(output=output):
                result = self.run_program("roadster.xml", output)
                self.assertTrue(result.stdout.endswith(b"Failed to export to vorn!\n"), result.stdout)
                self.assertEqual(result.returncode, 255)
                self.assertEqual((self.dir / "fcat.dtd").read_bytes(), self.dtd)

    def test_no_tree_log_is_written_over_the_dtd(self):
        self.write_settings(FCatTreeLog="fcat.dtd")
        result = self.run_program("roadster.xml", "out.vorn")
        self.assertIn(b"Unable to create log file 'fcat.dtd'\n", result.stdout)
        self.assertEqual(result.returncode, 0)
        self.assertEqual((self.dir / "fcat.dtd").read_bytes(), self.dtd)


@unittest.skipIf(SANITIZED, "the log takes as long as many tests")
class LogsThatGrow(OutputTest):
    def test_an_import_log_ends_where_it_becomes_too_large(self):
        # Each of 40,000 messages of 50 bytes of the catalog tells a path of 12 names of 4,000 characters: 2 GB.
        inside = "<TEnum TypeRef='type_byte' TEnumMax='9'>" + "<TEnumValue Code='x'>v</TEnumValue>" * 40_000 + "</TEnum>"
        for _ in range(11):
            inside = (f"<TRecord TypeRef='type_byte' NElements='1'><TRecordField FieldIdx='1'><TRecordFieldName>"
                      f"{'n' * 4_000}</TRecordFieldName>{inside}</TRecordField></TRecord>")
        self.write("cat.xml", "<FunctionCatalog><FBlock><FBlockID>1</FBlockID><FBlockName>B</FBlockName><Function>"
                   "<FunctionID>1</FunctionID><FunctionName>F</FunctionName><FunctionClass ClassRef='c'><Property>"
                   "<PUnclassified><PUParam><ParamName>P</ParamName><PUParamOPType><PReportStatus><ParamPos>1</ParamPos>"
                   f"</PReportStatus></PUParamOPType><PUParamType>{inside}</PUParamType></PUParam></PUnclassified>"
                   "</Property></FunctionClass></Function></FBlock><Definition>"
                   "<TypeDef TypeID='type_byte'><TDefName>Byte</TDefName><TDefSize>1</TDefSize></TypeDef>"
                   "</Definition></FunctionCatalog>")
        self.write_settings(FCatImportLog=1, FCatImportValidate=0)
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual(result.returncode, 0, result.stdout)
        log = (self.dir / "cat.log").read_bytes()
        most = (64 << 20) + 64 * (self.dir / "cat.xml").stat().st_size
        self.assertGreater(len(log), most // 2)
        self.assertLess(len(log), most + most // 8)
        end = re.search(rb"\nThe log would become too large, further messages are left out!\n.*?  errors: (\d+)", log[-500:],
                        re.DOTALL)
        self.assertIsNotNone(end, log[-500:])
        self.assertGreaterEqual(int(end.group(1)), 40_000)


@unittest.skipIf(SANITIZED, "each round is two conversions more of the same catalog")
class AtTheSameTime(OutputTest):
    def test_two_runs_onto_one_output_leave_one_whole_database(self):
        self.write_settings()
        for name in ["roadster.xml", "fcat.dtd"]:
            shutil.copy(SOURCE / "examples" / name, self.dir)
        for output in ["out.vorn", "out.sqlite", "out.kcd"]:
            self.assertEqual(self.run_program("roadster.xml", output).returncode, 0)
            new = (self.dir / output).read_bytes()
            for _ in range(ROUNDS):
                self.write(output, OLD)
                pair = [subprocess.Popen([PROGRAM, "roadster.xml", output], cwd=self.dir, stdout=subprocess.DEVNULL)
                        for _ in range(2)]
                self.assertEqual([process.wait(timeout=120) for process in pair], [0, 0])
                self.assertEqual((self.dir / output).read_bytes(), new)
                self.assert_no_temporary_file()
