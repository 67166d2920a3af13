import json
import os
import re
import select
import subprocess
import time
import unittest
import unittest.mock

from support import CATALOG, SOURCE, ProgramTest

DISASM = os.environ["TARVEX_DISASM"]
EXPECTED = SOURCE / "tests" / "data" / "example"

# The message of CATALOG, and how it is shown.
GET = "22.01.400.1"
SHOWN = "22.01.400.1 () Audio_Amp.Volume.Get\n  {Void}\n"
BAD = "hello"


NO_BLOCK = "no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'hello'"

# How a run ends that could read its captures.
CLOSING = re.compile(r"tarvex-disasm: \d+ messages?, \d+ faulty; \d+ unreadable\n\Z")


def shown_bad(place):
    return f"hello\n  error: {place}: {NO_BLOCK}\n"


class DisasmTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.maxDiff = None
        self.write("cat.xml", CATALOG)

    def disasm(self, *arguments, stdin=b"", **options):
        return subprocess.run([DISASM, *map(str, arguments)], cwd=self.dir,
                              input=stdin.encode() if isinstance(stdin, str) else stdin,
                              capture_output=True, timeout=300, check=False, **options)

    def assert_result(self, result, output, status, errors=""):
        self.assertEqual(result.stdout.decode(), output)
        told = result.stderr.decode()
        self.assertEqual(CLOSING.sub("", told), errors)
        if "cat.xml" in result.args or "roadster.xml" in result.args:
            self.assertRegex(told, CLOSING)
        self.assertEqual(result.returncode, status)

    def assert_trouble(self, result, *words):
        """Exit status 2, nothing on standard output, and an explanation with these words."""
        self.assertEqual(result.stdout, b"")
        for word in words:
            self.assertIn(word, result.stderr.decode())
        self.assertNotEqual(CLOSING.sub("", result.stderr.decode()), "")
        self.assertEqual(result.returncode, 2)


class Usage(DisasmTest):
    def test_wrong_usage_is_trouble(self):
        for arguments in [(), ("--format",), ("cat.xml", "--format"), ("cat.xml", "--format", "xml"),
                          ("cat.xml", "--format="), ("cat.xml", "--no-such-option"), ("-x", "cat.xml"),
                          ("--format", "json")]:
            with self.subTest(arguments=arguments):
                self.assert_trouble(self.disasm(*arguments))

    def test_help_names_everything_and_needs_no_catalog(self):
        for arguments in [("--help",), ("-h",), ("cat.xml", "--help")]:
            with self.subTest(arguments=arguments):
                result = self.disasm(*arguments)
                self.assertEqual(result.returncode, 0)
                self.assertEqual(result.stderr, b"")
                for word in ["CATALOG", "FILE", "--format", "text", "json", "--version", "Exit status"]:
                    self.assertIn(word, result.stdout.decode())

    def test_version_is_one_line(self):
        self.assert_result(self.disasm("--version"), "tarvex-disasm 1.0.4\n", 0)

    def test_format_may_stand_anywhere(self):
        expected = self.disasm("cat.xml", "--format", "json", stdin=GET).stdout
        self.assertIn(b'"message":"22.01.400.1"', expected)
        for arguments in [("--format", "json", "cat.xml"), ("--format=json", "cat.xml"), ("cat.xml", "--format=json")]:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.disasm(*arguments, stdin=GET).stdout, expected)

    def test_text_is_the_usual_format(self):
        self.assert_result(self.disasm("cat.xml", "--format", "text", stdin=GET), SHOWN, 0)
        self.assert_result(self.disasm("cat.xml", stdin=GET), SHOWN, 0)

    def test_needs_no_settings_and_leaves_no_files(self):
        self.assertEqual(self.disasm("cat.xml", stdin=GET).returncode, 0)
        self.assertEqual(os.listdir(self.dir), ["cat.xml"])


class Captures(DisasmTest):
    def test_standard_input_is_read_without_a_file_or_as_a_dash(self):
        self.assert_result(self.disasm("cat.xml", stdin=f"{GET}\n{BAD}\n"), SHOWN + shown_bad("line 2"), 1)
        self.assertEqual(self.disasm("cat.xml", "-", stdin=f"{GET}\n").stdout.decode(), SHOWN)
        self.assertEqual(self.disasm("cat.xml", "-", stdin=f"{GET}\n").returncode, 0)

    def test_files_are_read_in_turn_and_named_in_faults(self):
        self.write("one.txt", f"{GET}\n")
        self.write("two.txt", f"\n{BAD}\n{GET}\n")
        self.assert_result(self.disasm("cat.xml", "one.txt", "two.txt", "one.txt"),
                           SHOWN + shown_bad("line 2 of two.txt") + SHOWN + SHOWN, 1)

    def test_standard_input_may_stand_between_files(self):
        self.write("one.txt", f"{GET}\n")
        self.assert_result(self.disasm("cat.xml", "one.txt", "-", "one.txt", stdin=f"{GET} ()\n"), SHOWN * 3, 0)

    def test_a_missing_file_is_trouble_and_the_rest_goes_on(self):
        self.write("one.txt", f"{GET}\n")
        for files in [("none.txt", "one.txt"), ("one.txt", "none.txt")]:
            with self.subTest(files=files):
                result = self.disasm("cat.xml", *files)
                self.assertEqual(result.stdout.decode(), SHOWN)
                self.assertIn("none.txt", result.stderr.decode())
                self.assertEqual(result.returncode, 2)

    def test_trouble_outweighs_faults(self):
        self.write("bad.txt", f"{BAD}\n")
        result = self.disasm("cat.xml", "bad.txt", "none.txt")
        self.assertEqual(result.stdout.decode(), shown_bad("line 1 of bad.txt"))
        self.assertEqual(result.returncode, 2)

    def test_a_directory_is_no_capture(self):
        (self.dir / "folder").mkdir()
        self.assert_trouble(self.disasm("cat.xml", "folder"), "folder")

    def test_blank_lines_and_notes_are_skipped_but_counted(self):
        self.assert_result(self.disasm("cat.xml", stdin=f"# note\n\n  \n{GET}\n#{BAD}\n{BAD}"),
                           SHOWN + shown_bad("line 6"), 1)

    def test_nothing_to_read_is_no_fault(self):
        for stdin in ["", "\n\n", "# note"]:
            with self.subTest(stdin=stdin):
                self.assert_result(self.disasm("cat.xml", stdin=stdin), "", 0)

    def test_last_line_needs_no_line_feed(self):
        self.assert_result(self.disasm("cat.xml", stdin=GET), SHOWN, 0)

    def test_any_fault_gives_status_one(self):
        for line in [BAD, "23.01.400.1", "22.01.401.1", "22.01.400.2", f"{GET} 05", f"{GET} 0", f"{GET} 1"]:
            with self.subTest(line=line):
                status = 0 if line == f"{GET} 0" else 1
                self.assertEqual(self.disasm("cat.xml", stdin=f"{GET}\n{line}\n{GET}\n").returncode, status)

    def test_a_line_that_is_too_long_is_a_fault_and_the_rest_goes_on(self):
        for length in [262145, 1000000]:
            with self.subTest(length=length):
                result = self.disasm("cat.xml", stdin=GET.ljust(length) + f"\n{GET}\n")
                lines = result.stdout.decode().split("\n")
                self.assertTrue(lines[1].startswith("  error: line 1: the line is too long"), lines[1])
                self.assertEqual("\n".join(lines[2:]), SHOWN)
                self.assertEqual(result.returncode, 1)

    def test_bytes_that_are_no_text_do_no_harm(self):
        noise = bytes(range(256)) * 20
        for form in ["text", "json"]:
            with self.subTest(format=form):
                result = self.disasm("cat.xml", "--format", form, stdin=noise + b"\n" + GET.encode() + b"\n")
                self.assertEqual(result.returncode, 1)
                self.assertIn(b"Audio_Amp", result.stdout)
                self.assertNotIn(b"\0", result.stdout)
                self.assertNotIn(b"\x1b", result.stdout)

    def test_a_message_is_told_before_the_next_one_comes(self):
        with subprocess.Popen([DISASM, "cat.xml"], cwd=self.dir, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, bufsize=0) as process:
            for _ in range(3):
                process.stdin.write(f"{GET}\n".encode())
                output = b""
                while len(output) < len(SHOWN):
                    self.assertTrue(select.select([process.stdout], [], [], 60)[0], "nothing came")
                    piece = process.stdout.read(4096)
                    self.assertNotEqual(piece, b"", "the program has ended")
                    output += piece
                self.assertEqual(output.decode(), SHOWN)
            process.stdin.close()
            self.assertEqual(process.wait(timeout=60), 0)


class Output(DisasmTest):
    def run_in_shell(self, redirection, stdin=GET):
        return subprocess.run(["/bin/sh", "-c", f'exec "$0" cat.xml {redirection}', DISASM], cwd=self.dir,
                              input=f"{stdin}\n".encode(), capture_output=True, timeout=120, check=False)

    def test_closed_output_is_trouble(self):
        result = self.run_in_shell(">&-")
        self.assertEqual(result.returncode, 2)
        self.assertNotEqual(result.stderr, b"")

    def test_full_output_is_trouble(self):
        for lines in [1, 100000]:
            with self.subTest(lines=lines):
                result = self.run_in_shell("> /dev/full", "\n".join([GET] * lines))
                self.assertEqual(result.returncode, 2)
                self.assertNotEqual(result.stderr, b"")

    def test_full_output_is_trouble_in_faulty_captures_too(self):
        self.assertEqual(self.run_in_shell("> /dev/full", BAD).returncode, 2)


class Options(DisasmTest):
    """Which messages are told, and how."""

    CAPTURE = f"1.5 {GET}\n2.5 {GET} 05\n{BAD}\n2024-06-03T12:00:00Z 22.02.400.C 07\n"

    def run_capture(self, *arguments, capture=CAPTURE):
        self.write("drive.txt", capture)
        return self.disasm("cat.xml", "drive.txt", *arguments)

    def told(self, *arguments):
        """The lines of the report that begin a message or an unreadable line."""
        output = self.run_capture(*arguments).stdout.decode()
        return [line for line in output.splitlines() if not line.startswith("  ")]

    def test_the_end_tells_how_many_there_were(self):
        for capture, closing in [("", "0 messages, 0 faulty; 0 unreadable"), (GET, "1 message, 0 faulty; 0 unreadable"),
                                 (self.CAPTURE, "3 messages, 2 faulty; 1 unreadable")]:
            for arguments in [(), ("--format", "json"), ("--format", "csv"), ("--stats",), ("--only", "22.09")]:
                with self.subTest(capture=capture, arguments=arguments):
                    result = self.run_capture(*arguments, capture=capture)
                    self.assertEqual(result.stderr.decode(), f"tarvex-disasm: {closing}\n")

    def test_only_tells_some(self):
        first = "1.5 22.01.400.1 () Audio_Amp.Volume.Get"
        second = "2.5 22.01.400.1 (05) Audio_Amp.Volume.Get"
        third = "2024-06-03T12:00:00Z 22.02.400.C (07) Audio_Amp.Volume"
        for wanted, lines in [(("FAULTY",), [second, BAD, third]), (("faulty", "22.01"), [second]),
                              (("22",), [first, second, third]), (("0x22.*.400.C",), [third]), (("23",), []),
                              (("Audio_Amp",), [first, second, third]), (("volume",), [first, second, third]),
                              (("Audio_Amp.Volume.Get",), [first, second]), (("Audio_Amp.02",), [third]),
                              (("22.02", "Audio_Amp.01.Volume.1"), [first, second, third])]:
            with self.subTest(wanted=wanted):
                self.assertEqual(self.told(*(word for one in wanted for word in ("--only", one))), lines)

    def test_only_of_an_unknown_name_is_trouble(self):
        for wanted, words in [("Audio_Amq", "(Audio_Amp?)"), ("Audio_Amp.Volme", "(Volume?)"), ("22.400.1.1", "InstID"),
                              ("Volme", "unknown function block or function 'Volme' (Volume?)"),
                              ("Xyz", "unknown function block or function 'Xyz'\n"),
                              ("1.2.3.4.5", "neither"), ("", "neither")]:
            with self.subTest(wanted=wanted):
                result = self.run_capture("--only", wanted)
                self.assert_trouble(result, words)

    def test_stats_count_by_address(self):
        text = ("address      messages    faulty  first         last          name\n"
                "22.01.400.1         2         1  1.5           2.5           Audio_Amp.Volume.Get\n"
                "22.02.400.C         1         1  2024-06-03T12:00:00Z 2024-06-03T12:00:00Z Audio_Amp.Volume\n")
        rows = ("address,function_block,function,operation,messages,faulty,first,last\n"
                "22.01.400.1,Audio_Amp,Volume,Get,2,1,1.5,2.5\n"
                "22.02.400.C,Audio_Amp,Volume,,1,1,2024-06-03T12:00:00Z,2024-06-03T12:00:00Z\n")
        self.assertEqual(self.run_capture("--stats").stdout.decode(), text)
        self.assertEqual(self.run_capture("--stats", "--format", "csv").stdout.decode(), rows)
        self.assertEqual(self.run_capture("--stats", "--format", "json", "--only", "22.02").stdout.decode(),
                         '{"message":"22.02.400.C","function_block":"Audio_Amp","function":"Volume","operation":null,'
                         '"messages":1,"faulty":1,"first":"2024-06-03T12:00:00Z","last":"2024-06-03T12:00:00Z"}\n')
        self.assertEqual(self.run_capture("--stats").returncode, 1)

    def test_columns_are_those_of_a_table_without_header(self):
        result = self.run_capture("--columns", "time,message,data", capture="1.5;22.01.400.1;\n")
        self.assertEqual(result.stdout.decode(), f"1.5 {SHOWN}")
        self.assert_trouble(self.run_capture("--columns", "time,data"), "--columns", "fblock")

    def test_segments_wait_as_long_as_they_may(self):
        capture = "time,message,telid,data\n1.0,22.01.400.1,1,00\n3.5,22.01.400.1,3,01\n"
        self.assertEqual(self.run_capture(capture=capture).stdout.decode(), f"1.0 {SHOWN}")
        self.assertEqual(self.run_capture("--segment-timeout", "2.5", capture=capture).returncode, 0)
        late = self.run_capture("--segment-timeout", "2", capture=capture)
        self.assertIn("  error: line 2 of drive.txt: the message has no last segment within", late.stdout.decode())
        self.assertEqual(late.returncode, 1)
        for wrong in ["-1", "abc", "nan", "inf", "5x", ""]:
            with self.subTest(wrong):
                result = self.run_capture("--segment-timeout", wrong)
                self.assert_trouble(result, f"--segment-timeout: '{wrong}', expected a number of seconds\n")

    def test_files_of_utf_16_are_read(self):
        for encoding in ["utf-16", "utf-16-le", "utf-16-be"]:
            mark = b"" if encoding == "utf-16" else "\ufeff".encode(encoding)
            for text in [f"{GET}\n", f"# \U0001F3B5\n{GET}", "\n" * 20000 + GET]:
                with self.subTest(encoding=encoding, size=len(text)):
                    result = self.disasm("cat.xml", stdin=mark + text.encode(encoding))
                    self.assert_result(result, SHOWN, 0)
        self.assertEqual(self.disasm("cat.xml", stdin=b"\xff").returncode, 1)
        self.assertEqual(self.disasm("cat.xml", stdin=b"\xff\xfe\x32").returncode, 1)

    def test_csv_has_a_row_for_each_value(self):
        self.assertEqual(self.run_capture("--format", "csv").stdout.decode(), (
            "file,line,time,address,function_block,function,operation,item,raw,physical,unit,text,error\n"
            "drive.txt,1,1.5,22.01.400.1,Audio_Amp,Volume,Get,{Void},,,,,\n"
            "drive.txt,2,2.5,22.01.400.1,Audio_Amp,Volume,Get,{Void},,,,,\n"
            "drive.txt,2,2.5,22.01.400.1,Audio_Amp,Volume,Get,,,,,,byte 0: 1 byte left over\n"
            f'drive.txt,3,,,,,,,,,,hello,"{NO_BLOCK}"\n'
            "drive.txt,4,2024-06-03T12:00:00Z,22.02.400.C,Audio_Amp,Volume,,,,,,,unknown operation 0xC\n"
        ))


class Catalogs(DisasmTest):
    def test_a_missing_catalog_is_trouble(self):
        self.assert_trouble(self.disasm("none.xml", stdin=GET), "none.xml")

    def test_a_broken_catalog_is_trouble(self):
        for name, content in [("empty.xml", ""), ("text.xml", "hello"), ("cut.xml", CATALOG[:-30])]:
            with self.subTest(name=name):
                self.write(name, content)
                self.assert_trouble(self.disasm(name, stdin=GET), name)

    def test_a_directory_is_no_catalog(self):
        (self.dir / "folder").mkdir()
        self.assert_trouble(self.disasm("folder", stdin=GET))

    def test_a_catalog_without_problems_says_nothing(self):
        self.assert_result(self.disasm("cat.xml", stdin=GET), SHOWN, 0)

    def test_problems_of_the_catalog_are_told_in_one_line(self):
        nameless = '<TypeDef TypeID="type_own"><TDefSize>1</TDefSize></TypeDef>'  # one warning
        unusable = "<TypeDef><TDefName>Own</TDefName><TDefSize>1</TDefSize></TypeDef>"  # two errors
        for definitions, counts in [(nameless, "warnings: 1"), (unusable, "errors: 2  warnings: 0"),
                                    (nameless + unusable, "errors: 2  warnings: 1")]:
            with self.subTest(counts=counts):
                self.write("odd.xml", CATALOG.replace("<Definition>", f"<Definition>{definitions}"))
                self.assert_result(self.disasm("odd.xml", stdin=GET), SHOWN, 0,
                                   f"tarvex-disasm: odd.xml: Import result: {counts}\n")
                self.write("sub/odd.xml", (self.dir / "odd.xml").read_bytes())
                self.assert_result(self.disasm("sub/odd.xml", stdin=GET), SHOWN, 0,
                                   f"tarvex-disasm: sub/odd.xml: Import result: {counts}\n")


class Json(DisasmTest):
    KEYS = ["line", "message", "data", "function_block", "function", "operation", "items", "errors"]

    def objects(self, *arguments, stdin=""):
        result = self.disasm("cat.xml", "--format", "json", *arguments, stdin=stdin)
        return [json.loads(line) for line in result.stdout.decode().splitlines()]

    def test_every_line_is_an_object(self):
        objects = self.objects(stdin=f"# note\n{GET}\n{BAD}\n\n{GET} 0506\n23.01.400.1\n")
        self.assertEqual([list(entry) for entry in objects],
                         [self.KEYS, ["line", "text", "errors"], self.KEYS, self.KEYS])
        self.assertEqual([entry["line"] for entry in objects], [2, 3, 5, 6])
        self.assertEqual([entry["errors"] for entry in objects],
                         [[], [NO_BLOCK], ["byte 0: 2 bytes left over"], ["unknown function block 0x23"]])
        self.assertEqual(objects[2]["data"], "0506")
        self.assertIsNone(objects[3]["function_block"])

    def test_files_are_named_when_they_were_given(self):
        self.write("one.txt", f"{GET}\n{BAD}\n")
        objects = self.objects("one.txt", "./one.txt")
        self.assertEqual([list(entry)[0] for entry in objects], ["file"] * 4)
        self.assertEqual([entry["file"] for entry in objects], ["one.txt", "one.txt", "./one.txt", "./one.txt"])
        self.assertEqual([entry["line"] for entry in objects], [1, 2, 1, 2])

    def test_both_formats_give_the_same_status(self):
        for stdin in ["", GET, BAD, f"{GET} 05"]:
            with self.subTest(stdin=stdin):
                self.assertEqual(self.disasm("cat.xml", "--format", "json", stdin=stdin).returncode,
                                 self.disasm("cat.xml", stdin=stdin).returncode)


class Example(DisasmTest):
    def setUp(self):
        super().setUp()
        self.copy_examples()

    def assert_expected(self, name, *options):
        result = self.disasm("roadster.xml", "roadster.capture", *options)
        expected = (EXPECTED / name).read_bytes()
        if result.stdout != expected:  # a readable difference
            self.assertEqual(result.stdout.decode().splitlines(), expected.decode().splitlines())
        self.assertEqual(result.stdout, expected)
        self.assertEqual(result.returncode, 1)

    def test_the_text_is_as_expected_byte_for_byte(self):
        self.assert_expected("roadster.capture.txt")

    def test_the_json_is_as_expected_byte_for_byte(self):
        self.assert_expected("roadster.capture.jsonl", "--format", "json")

    def test_the_locale_changes_nothing(self):
        for locale in ["C", "C.UTF-8"]:
            with self.subTest(locale=locale), unittest.mock.patch.dict(os.environ, LC_ALL=locale):
                self.assert_expected("roadster.capture.txt")


# A message of no byte that says some megabytes: fields of a record without a byte of their own.
FIELDS = 4_000
RECORD = f'<TRecord TypeRef="type_void" NElements="{FIELDS}">' + "".join(
    f'<TRecordField FieldIdx="{i}"><TRecordFieldName>{"N" * 200}</TRecordFieldName><TVoid TypeRef="type_void"/>'
    "</TRecordField>" for i in range(1, FIELDS + 1)) + "</TRecord>"
WIDE = (CATALOG[:CATALOG.index("<PNumber>")]
        + "<PUnclassified><PUParam><ParamName>Wide</ParamName><PUParamOPType><PCmdGet><ParamPos>1</ParamPos></PCmdGet>"
        + f"</PUParamOPType><PUParamType>{RECORD}</PUParamType></PUParam></PUnclassified>"
        + CATALOG[CATALOG.index("</PNumber>") + len("</PNumber>"):])
TOO_LARGE = "the report would become too large"


@unittest.skipIf(os.environ.get("TARVEX_SANITIZED") == "ON", "takes a minute")
class Allowance(DisasmTest):
    """What a run says is bounded by the bytes of its captures: 64 MiB, and 256 bytes for each."""

    def setUp(self):
        super().setUp()
        block = CATALOG[CATALOG.index("<FBlock>"):CATALOG.index("</FBlock>") + 9].replace("0x22", "0x23")
        block = block.replace("Audio", "Video")
        self.write("cat.xml", WIDE.replace("<Definition>", block + "<Definition>", 1))

    def told(self, form):
        """How much one message says, and what 100 of them, a short one, a note and two more messages come to."""
        whole = len(self.disasm("cat.xml", "--format", form, stdin=GET).stdout)
        self.assertGreater(whole, 800_000)
        capture = f"{GET}\n" * 100 + GET.replace("22", "23", 1) + "\n"
        # As many as the bound has room for, which grows by 256 times the 12 bytes of each line.
        count = next(n for n in range(100) if (n + 1) * whole > (64 << 20) + 256 * 12 * (n + 1))
        self.assertLess(count, 98)
        note = f"#{'x' * 19_998}\n"  # room for some more, and for what was decoded in vain
        result = self.disasm("cat.xml", "--format", form, stdin=capture + note + f"{GET}\n" * 2)
        self.assertEqual(result.returncode, 1)
        self.assertLess(len(result.stdout), (64 << 20) + 256 * (len(capture) + 20_024))
        return count, result.stdout.decode().splitlines()

    def test_text_that_is_too_much_is_a_fault_and_the_rest_is_told(self):
        count, lines = self.told("text")
        message = f"{GET} () Audio_Amp.Volume.Get"
        whole = FIELDS + 2
        self.assertEqual([lines[n] for n in range(0, count * whole, whole)], [message] * count)
        rest = lines[count * whole:]
        # The short message has to wait, too, until what was decoded in vain is earned again.
        faults = [line for number in range(count + 1, 102)
                  for line in (f"{GET if number < 101 else '23.01.400.1'} ()", f"  error: line {number}: {TOO_LARGE}")]
        self.assertEqual(rest[:len(faults)], faults)
        rest = rest[len(faults):]
        self.assertEqual([rest[0], rest[whole]], [message] * 2)
        self.assertEqual(len(rest), 2 * whole)

    def test_json_that_is_too_much_is_a_fault_and_the_rest_is_told(self):
        count, lines = self.told("json")
        objects = [json.loads(line) for line in lines if len(line) < 1000]
        self.assertEqual([len(line) > 1000 for line in lines], [True] * count + [False] * (101 - count) + [True] * 2)
        for number, entry in enumerate(objects, count + 1):
            message = GET if number <= 100 else "23.01.400.1"
            self.assertEqual(entry, {"line": number, "message": message, "data": "", "function_block": None,
                                     "function": None, "operation": None, "items": [], "errors": [TOO_LARGE]})


class Memory(DisasmTest):
    def peak(self, count, form):
        """Peak memory in bytes of a run that has decoded so many messages."""
        end = b"end of the capture"
        with subprocess.Popen([DISASM, "cat.xml", "--format", form], cwd=self.dir, stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, bufsize=0) as process:
            writer = os.fork()
            if writer == 0:
                process.stdout.close()
                lines = f"{GET} (05 06 07 08 09 0A)\n".encode() * 100
                for _ in range(count // 100):
                    os.write(process.stdin.fileno(), lines)
                os.write(process.stdin.fileno(), end + b"\n")
                os._exit(0)
            tail = b""
            deadline = time.monotonic() + 240
            while end not in tail:
                self.assertTrue(select.select([process.stdout], [], [], deadline - time.monotonic())[0])
                piece = process.stdout.read(65536)
                self.assertNotEqual(piece, b"")
                tail = tail[-len(end):] + piece
            # The program waits for more; what it has needed so far stands in its status.
            with open(f"/proc/{process.pid}/status", encoding="utf-8") as status:
                kilobytes = next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))
            os.waitpid(writer, 0)
            process.stdin.close()
            process.stdout.read()
            self.assertEqual(process.wait(timeout=60), 1)
        return kilobytes * 1024

    @unittest.skipIf(os.environ.get("TARVEX_SANITIZED") == "ON", "the sanitizers hold on to freed memory")
    def test_memory_does_not_grow_with_the_capture(self):
        for form in ["text", "json"]:
            with self.subTest(format=form):
                few = self.peak(1000, form)
                many = self.peak(200000, form)
                self.assertLess(abs(many - few), 8 << 20)
