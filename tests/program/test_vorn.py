import json
import os
import pty
import re
import shutil
import sqlite3
import subprocess
import textwrap

from support import SOURCE, ProgramTest

VORN = os.environ["TARVEX_VORN"]
EXAMPLE = SOURCE / "tests" / "data" / "example" / "roadster.vorn"
COMMANDS = ["show", "list", "convert", "diff", "check"]
ESCAPE = "\x1b"


def database(nodes="[]", messages="[]", version=1):
    """A database whose nodes stand in line 7 and whose messages begin in line 8."""
    return (f'{{\n"format": "Vorn",\n"version": {version},\n"database": "cabin",\n"attributes": {{}},\n'
            f'"attribute_definitions": [],\n"nodes": {nodes},\n"messages": {messages}\n}}\n')


def message(identifier, name, signals=""):
    return (f'{{"identifier": {identifier}, "extended": false, "name": "{name}", "length": 1, "node": null, '
            f'"attributes": {{}}, "signals": [{signals}]}}')


def signal(name, start_bit, length):
    return (f'{{"name": "{name}", "start_bit": {start_bit}, "length": {length}, "byte_order": "big_endian", '
            '"signed": false}')


ONE = database(messages=f'[{message(16, "Ping", signal("Level", 7, 4))}]')
TWO = database(messages=f'[{message(16, "Ping", signal("Level", 3, 4))}]')
# The two signals share bit 4.
FAULTY = database(messages=f'[{message(16, "Ping", signal("A", 7, 4) + ", " + signal("B", 4, 1))}]')
DIFFERENCE = '~ message 0x10 Ping\n  ~ signal Level\n      start_bit: "7" -> "3"\n'


class VornTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.maxDiff = None
        shutil.copy(EXAMPLE, self.dir)
        self.write("one.vorn", ONE)
        self.write("two.vorn", TWO)
        self.write("faulty.vorn", FAULTY)

    def vorn(self, *arguments, **environment):
        return subprocess.run([VORN, *map(str, arguments)], cwd=self.dir, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=120, check=False, env={**os.environ, **environment})

    def assert_output(self, result, output, status=0):
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.stdout.decode(), output)
        self.assertEqual(result.returncode, status)

    def assert_trouble(self, result, beginning=""):
        """Exit status 2, nothing on standard output, and an explanation that begins like this."""
        errors = result.stderr.decode()
        self.assertEqual(errors[:len(beginning)], beginning)
        self.assertRegex(errors, r"[^:\s]\n\Z")
        self.assertEqual(result.stdout, b"")
        self.assertEqual(result.returncode, 2)


class Usage(VornTest):
    def test_wrong_usage_is_trouble(self):
        for arguments in [(), ("one.vorn",), ("print", "one.vorn"), ("--no-such-option",), ("show",), ("list",),
                          ("check",), ("convert",), ("convert", "one.vorn"), ("diff",), ("diff", "one.vorn"),
                          ("show", "one.vorn", "two.vorn"), ("diff", "one.vorn", "two.vorn", "faulty.vorn"),
                          ("show", "one.vorn", "--message"), ("show", "one.vorn", "--node", "Amp"),
                          ("list", "one.vorn", "--match"), ("list", "one.vorn", "--node"),
                          ("diff", "one.vorn", "two.vorn", "--format"),
                          ("diff", "one.vorn", "two.vorn", "--format", "xml"),
                          ("check", "one.vorn", "--format", "json"), ("show", "one.vorn", "list", "one.vorn")]:
            with self.subTest(arguments=arguments):
                self.assert_trouble(self.vorn(*arguments))

    def test_help_names_every_command(self):
        for option in ["--help", "-h"]:
            result = self.vorn(option)
            self.assertEqual((result.returncode, result.stderr), (0, b""))
            for word in [*COMMANDS, "--version", "Exit status"]:
                self.assertIn(word, result.stdout.decode())

    def test_help_of_a_command_names_its_options_and_needs_no_database(self):
        words = {"show": ["DB", "--message"], "list": ["DB", "--node", "--match"],
                 "convert": ["IN", "OUT", ".sqlite", ".kcd"], "diff": ["OLD", "NEW", "--format", "text", "json"],
                 "check": ["DB"]}
        for command in COMMANDS:
            with self.subTest(command=command):
                result = self.vorn(command, "--help")
                self.assertEqual((result.returncode, result.stderr), (0, b""))
                for word in words[command]:
                    self.assertIn(word, result.stdout.decode())

    def test_version_is_one_line(self):
        result = self.vorn("--version")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"vorn 1.0.4\n", b""))

    def test_options_may_stand_in_front_of_the_database(self):
        for arguments in [("--match", "Ping", "one.vorn"), ("one.vorn", "--match=Ping"), ("--match=Ping", "one.vorn")]:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.vorn("list", *arguments).stdout.decode().count("\n"), 1)

    def test_reading_leaves_no_files(self):
        self.vorn("convert", "one.vorn", "one.db")
        before = sorted(os.listdir(self.dir))
        for arguments in [("show", "one.db"), ("list", "one.db"), ("diff", "one.db", "two.vorn"), ("check", "one.db")]:
            self.vorn(*arguments)
        self.assertEqual(sorted(os.listdir(self.dir)), before)


class Show(VornTest):
    def test_one_message_with_its_bits(self):
        expected = textwrap.dedent("""\
            Amp_Mute_Set  0x221130 extended, 1 byte, from AudioAmp
              FBlock = AudioAmp
              Function = Mute
              OpType = Set
              FunctionClass = Property

                     7 6 5 4 3 2 1 0
            0        . . . . . . . A

            A  Mute_NN_0  start bit 0, 1 bit, big-endian
                 1     muted
                 0     audible
            """)
        for name in ["Amp_Mute_Set", "0x221130", "2232624"]:
            with self.subTest(name=name):
                self.assert_output(self.vorn("show", "roadster.vorn", "--message", name), expected)

    def test_the_whole_database(self):
        result = self.vorn("show", "roadster.vorn")
        lines = result.stdout.decode().splitlines()
        self.assertEqual(lines[:8], ["roadster", "  BusType = MOST", "  MostXMLFile = roadster.xml", "", "7 nodes",
                                     "  RearDisplay", "    MostNodeAdr = 0", "  AudioAmp"])
        begin = lines.index("144 messages") + 1
        self.assertEqual(len(lines) - begin, 144)
        self.assertEqual(lines[begin].split(),
                         ["0x220001", "extended", "Amp_FktIDs_Get", "0", "bytes", "0", "signals", "AudioAmp"])
        self.assertEqual(result.returncode, 0)

    def test_a_message_that_is_not_there_is_trouble(self):
        for name in ["Amp_Mute", "0x1", "amp_mute_set", "Amp_Mute_*"]:
            with self.subTest(name=name):
                self.assert_trouble(self.vorn("show", "roadster.vorn", "--message", name),
                                    f"vorn: roadster.vorn: there is no message '{name}'\n")

    def test_control_characters_of_names_do_not_reach_the_output(self):
        self.write("wild.vorn", database(f'[{{"name": "\\u001b[31mAmp\\n", "attributes": {{}}}}]',
                                         f'[{message(16, "Pi" + chr(92) + "u001bng")}]'))
        for arguments in [("show", "wild.vorn"), ("show", "wild.vorn", "--message", "16"), ("list", "wild.vorn"),
                          ("diff", "one.vorn", "wild.vorn"), ("diff", "one.vorn", "wild.vorn", "--format", "json")]:
            with self.subTest(arguments=arguments):
                output = self.vorn(*arguments).stdout.decode()
                self.assertIn("ng", output)
                self.assertNotIn(ESCAPE, output)


class List(VornTest):
    def names(self, *options):
        result = self.vorn("list", "roadster.vorn", *options)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return [line.replace(" extended", "").split()[1] for line in result.stdout.decode().splitlines()]

    def test_all_messages_in_the_order_of_the_database(self):
        self.assertEqual(self.names(), [entry["name"] for entry in json.loads(EXAMPLE.read_text())["messages"]])

    def test_messages_of_a_node_and_of_names_that_match(self):
        volume = [f"Amp_Volume_{operation}" for operation in ["Set", "Get", "SetGet", "Increment", "Decrement", "Stat"]]
        for options, names in [(("--match", "Amp_Volume_*"), volume),
                               (("--match", "Amp_Volume_?et"), volume[:2]),
                               (("--match", "Amp_Volume_[FG]et"), volume[1:2]),
                               (("--node", "AudioAmp", "--match", "*_Volume_Get"), volume[1:2]),
                               (("--node", "Phone", "--match", "*_Volume_Get"), []),
                               (("--node", "Nobody"), []), (("--match", "Amp_Volume"), [])]:
            with self.subTest(options=options):
                self.assertEqual(self.names(*options), names)
        phone = [entry["name"] for entry in json.loads(EXAMPLE.read_text())["messages"] if entry["node"] == "Phone"]
        self.assertEqual(self.names("--node", "Phone"), phone)


class Convert(VornTest):
    def test_to_sqlite_and_back_gives_the_same_bytes(self):
        for extension in ["sqlite", "sqlite3", "db", "DB"]:
            with self.subTest(extension=extension):
                self.assert_output(self.vorn("convert", "roadster.vorn", f"copy.{extension}"), "")
                self.assertEqual((self.dir / f"copy.{extension}").read_bytes()[:15], b"SQLite format 3")
                self.assert_output(self.vorn("convert", f"copy.{extension}", "back.vorn"), "")
                self.assertEqual((self.dir / "back.vorn").read_bytes(), EXAMPLE.read_bytes())

    def test_to_vorn_under_any_other_name(self):
        for name in ["copy.vorn", "copy", "copy.json"]:
            self.assert_output(self.vorn("convert", "roadster.vorn", name), "")
            self.assertEqual((self.dir / name).read_bytes(), EXAMPLE.read_bytes())

    def test_to_kcd(self):
        self.assert_output(self.vorn("convert", "roadster.vorn", "copy.kcd"), "")
        text = (self.dir / "copy.kcd").read_text(encoding="utf-8")
        self.assertEqual(text.count("<Message "), 144)

    def test_to_itself(self):
        self.assert_output(self.vorn("convert", "roadster.vorn", "roadster.vorn"), "")
        self.assertEqual((self.dir / "roadster.vorn").read_bytes(), EXAMPLE.read_bytes())

    def test_an_output_that_can_not_be_written_is_trouble(self):
        self.write("old.vorn", "old").chmod(0o444)
        for output in ["old.vorn", "no/copy.vorn", "no/copy.db", ".", "/dev/full"]:
            with self.subTest(output=output):
                self.assert_trouble(self.vorn("convert", "roadster.vorn", output), f"vorn: {output}: ")
        self.assertEqual((self.dir / "old.vorn").read_text(), "old")

    def test_a_database_that_can_not_be_read_leaves_the_output_as_it_was(self):
        self.write("old.vorn", "old")
        self.write("bad.vorn", database(version=2))
        self.assert_trouble(self.vorn("convert", "bad.vorn", "old.vorn"), "vorn: bad.vorn: line 3: ")
        self.assertEqual((self.dir / "old.vorn").read_text(), "old")


class Diff(VornTest):
    def test_differences_as_text(self):
        for options in [(), ("--format", "text"), ("--format=text",)]:
            self.assert_output(self.vorn("diff", "one.vorn", "two.vorn", *options), DIFFERENCE, 1)

    def test_differences_as_json(self):
        result = self.vorn("diff", "one.vorn", "two.vorn", "--format", "json")
        self.assertEqual(json.loads(result.stdout), [
            {"change": "changed", "object": "message", "name": "0x10 Ping", "parts": [
                {"change": "changed", "object": "signal", "name": "Level", "fields": [
                    {"field": "start_bit", "before": "7", "after": "3"}]}]}])
        self.assertEqual((result.returncode, result.stderr), (1, b""))

    def test_a_file_and_itself_in_another_format_are_the_same(self):
        self.vorn("convert", "roadster.vorn", "copy.db")
        for pair in [("roadster.vorn", "copy.db"), ("copy.db", "roadster.vorn"), ("copy.db", "copy.db"),
                     ("roadster.vorn", "roadster.vorn")]:
            with self.subTest(pair=pair):
                self.assert_output(self.vorn("diff", *pair), "")
                self.assert_output(self.vorn("diff", *pair, "--format", "json"), "[]\n")

    def test_either_file_that_can_not_be_read_is_named(self):
        self.write("bad.vorn", "hello")
        self.assert_trouble(self.vorn("diff", "bad.vorn", "one.vorn"), "vorn: bad.vorn: line 1: ")
        self.assert_trouble(self.vorn("diff", "one.vorn", "bad.vorn"), "vorn: bad.vorn: line 1: ")
        self.assert_trouble(self.vorn("diff", "one.vorn", "none.vorn"), "vorn: none.vorn: ")


class Check(VornTest):
    def test_the_example_has_a_message_whose_signals_overlap(self):
        start = "message TunerSdWest_TrafficMessage_Stat: signals "
        self.assert_output(self.vorn("check", "roadster.vorn"),
                           f"{start}Event_M0 and RoadB_M0 overlap\n{start}Event_M1 and RoadB_M1 overlap\n"
                           f"{start}Road_M0 and DirectionB_M0 overlap\n", 1)

    def test_nothing_is_said_of_a_database_without_faults(self):
        self.assert_output(self.vorn("check", "one.vorn"), "")

    def test_a_fault_is_one_line(self):
        self.assert_output(self.vorn("check", "faulty.vorn"), "message Ping: signals A and B overlap\n", 1)


class Unreadable(VornTest):
    def assert_unreadable(self, name, place=""):
        for arguments in [("show", name), ("list", name), ("check", name), ("convert", name, "copy.vorn"),
                          ("diff", "one.vorn", name)]:
            with self.subTest(arguments=arguments):
                self.assert_trouble(self.vorn(*arguments), f"vorn: {name}: {place}")
        self.assertFalse((self.dir / "copy.vorn").exists())

    def test_missing_files_are_named(self):
        for name in ["none.vorn", "none.db", "no/none.vorn", ""]:
            self.assert_unreadable(name, "No such file or directory")

    def test_damaged_vorn_files_are_named_with_the_line(self):
        for content, line in [("", 1), ("hello\n", 1), ("[]\n", 1), (database(version=2), 3), (ONE[:-4], 8),
                              (database(nodes="{}"), 7), (database(nodes='[{"name": "Amp"}]'), 7),
                              (database(messages='[{"name": "Ping"}]'), 8), (ONE + "more", 10),
                              (ONE.replace("Vorn", "Born"), 2)]:
            self.write("bad.vorn", content)
            self.assert_unreadable("bad.vorn", f"line {line}: ")

    def test_damaged_sqlite_files_are_named(self):
        self.vorn("convert", "roadster.vorn", "good.db")
        good = (self.dir / "good.db").read_bytes()
        for content in [b"", b"hello\n", ONE.encode(), good[:5000], good[:100] + bytes(4096) + good[4196:]]:
            self.write("bad.db", content)
            self.assert_unreadable("bad.db")

    def test_damaged_tables_are_named_with_the_row(self):
        self.vorn("convert", "roadster.vorn", "bad.db")
        with sqlite3.connect(self.dir / "bad.db") as connection:
            connection.execute("UPDATE signal SET length = 'long' WHERE id = 3")
        connection.close()
        self.assert_unreadable("bad.db", "table signal, row 3: ")

    def test_kcd_files_are_refused(self):
        self.vorn("convert", "roadster.vorn", "copy.kcd")
        self.assert_unreadable("copy.kcd")

    def test_directories_are_not_blamed_for_their_syntax(self):
        for name in ["dir.vorn", "dir.db"]:
            (self.dir / name).mkdir()
            self.assert_unreadable(name)
            self.assertNotIn("syntax", self.vorn("show", name).stderr.decode())

    def test_pipes_and_devices_are_not_read(self):
        for name in ["pipe.vorn", "pipe.db"]:
            os.mkfifo(self.dir / name)
            self.assert_unreadable(name, "Not a regular file\n")
        self.assert_unreadable("/dev/stdin", "Not a regular file\n")

    def test_control_characters_of_a_file_do_not_reach_the_messages(self):
        bad = '[{"name": "\\u001b[31m' + "A" * 40 + '", "attributes": {}}]'
        self.write("bad.vorn", database(nodes=bad))
        result = self.vorn("show", "bad.vorn")
        self.assert_trouble(result, "vorn: bad.vorn: line 7: ")
        self.assertNotIn(ESCAPE, result.stderr.decode())


class Output(VornTest):
    WRITING = [("show", "roadster.vorn"), ("show", "roadster.vorn", "--message", "Amp_Mute_Set"),
               ("list", "roadster.vorn"), ("diff", "one.vorn", "two.vorn"),
               ("diff", "one.vorn", "one.vorn", "--format", "json"), ("check", "faulty.vorn")]

    def redirected(self, redirection, arguments):
        return subprocess.run(["/bin/sh", "-c", f'exec "$0" "$@" {redirection}', VORN, *arguments], cwd=self.dir,
                              capture_output=True, timeout=120, check=False)

    def test_full_and_closed_outputs_are_trouble(self):
        for redirection in ["> /dev/full", ">&-"]:
            for arguments in self.WRITING:
                with self.subTest(redirection=redirection, arguments=arguments):
                    self.assert_trouble(self.redirected(redirection, arguments), "vorn: can't write the output: ")

    def test_full_outputs_are_trouble_for_help_too(self):
        for arguments in [("--help",), ("--version",), ("show", "--help")]:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.redirected("> /dev/full", arguments).returncode, 2)

    def test_commands_without_output_need_none(self):
        for arguments in [("check", "one.vorn"), ("diff", "one.vorn", "one.vorn"), ("convert", "one.vorn", "copy.db")]:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.redirected("> /dev/full", arguments).returncode, 0)

    def on_terminal(self, *arguments, **environment):
        """The exit status and what the terminal showed."""
        master, slave = pty.openpty()
        settings = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
        with subprocess.Popen([VORN, *arguments], cwd=self.dir, stdin=slave, stdout=slave, stderr=slave,
                              env={**settings, "TERM": "xterm", **environment}) as process:
            os.close(slave)
            output = b""
            while True:
                try:
                    block = os.read(master, 4096)
                except OSError:  # nobody has the terminal open any more
                    break
                if not block:
                    break
                output += block
            os.close(master)
            status = process.wait(timeout=120)
        return status, output.decode().replace("\r\n", "\n")

    def test_a_terminal_shows_differences_in_colour(self):
        status, output = self.on_terminal("diff", "one.vorn", "two.vorn")
        self.assertEqual(output, "\x1b[33m~ message 0x10 Ping\x1b[0m\n  \x1b[33m~ signal Level\x1b[0m\n"
                                 '      start_bit: "7" -> "3"\n')
        self.assertEqual(status, 1)

    def test_a_terminal_shows_headings_in_colour(self):
        for arguments in [("show", "one.vorn"), ("show", "one.vorn", "--message", "Ping")]:
            with self.subTest(arguments=arguments):
                status, output = self.on_terminal(*arguments)
                self.assertTrue(output.startswith("\x1b[1m"))
                self.assertEqual(re.sub(r"\x1b\[\d+m", "", output), self.vorn(*arguments).stdout.decode())
                self.assertEqual(status, 0)

    def test_a_terminal_shows_everything_without_colour_on_request(self):
        for environment in [{"NO_COLOR": "1"}, {"NO_COLOR": "no"}, {"TERM": "dumb"}]:
            with self.subTest(environment=environment):
                self.assertEqual(self.on_terminal("diff", "one.vorn", "two.vorn", **environment), (1, DIFFERENCE))

    def test_an_empty_request_counts_as_none(self):
        self.assertIn(ESCAPE, self.on_terminal("diff", "one.vorn", "two.vorn", NO_COLOR="")[1])

    def test_json_has_no_colour_on_a_terminal(self):
        status, output = self.on_terminal("diff", "one.vorn", "two.vorn", "--format", "json")
        self.assertEqual(output, self.vorn("diff", "one.vorn", "two.vorn", "--format", "json").stdout.decode())
        self.assertEqual(status, 1)

    def test_other_outputs_have_no_colour(self):
        for arguments in self.WRITING:
            with self.subTest(arguments=arguments):
                result = self.vorn(*arguments, TERM="xterm")
                self.assertNotIn(ESCAPE.encode(), result.stdout)
                self.assertGreater(len(result.stdout), 0)


def parameter(name, position, kind):
    return f"""
        <PUParam><ParamName>{name}</ParamName>
          <PUParamOPType><PUReport><PReportStatus><ParamPos>{position}</ParamPos></PReportStatus></PUReport></PUParamOPType>
          <PUParamType>{kind}</PUParamType></PUParam>"""


def number(type_name, reference):
    return (f'<TNumber><BasisDataType><{type_name} TypeRef="{reference}"/></BasisDataType><Exponent>0</Exponent>'
            '<RangeMin>0</RangeMin><RangeMax>10</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/></TNumber>')


def catalog(level, balance, stereo, mute):
    """A block with a status of three parameters, the first two of one and two bytes at these positions, the
    last an enumeration with this name for 1; and a function of this name."""
    return f"""<?xml version="1.0" encoding="UTF-8"?>
<FunctionCatalog>
  <FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>
    <Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName>
      <FunctionClass ClassRef="class_unclassified_property"><Property><PUnclassified>
        {parameter("Level", level, number("TUByte", "type_unsigned_byte"))}
        {parameter("Balance", balance, number("TUWord", "type_unsigned_word"))}
        {parameter("Mode", 3, '<TEnum TypeRef="type_enum" TEnumMax="1"><TEnumValue Code="0x0">Mono</TEnumValue>'
                              f'<TEnumValue Code="0x1">{stereo}</TEnumValue></TEnum>')}
      </PUnclassified></Property></FunctionClass></Function>
    <Function><FunctionID>0x401</FunctionID><FunctionName>{mute}</FunctionName>
      <FunctionClass ClassRef="class_unclassified_property"><Property><PUnclassified>
        <PUParam><ParamName/><PUParamOPType><PUCommand><PCmdGet/></PUCommand></PUParamOPType>
          <PUParamType><TVoid TypeRef="type_void"/></PUParamType></PUParam>
      </PUnclassified></Property></FunctionClass></Function>
  </FBlock>
  <Definition>
    <TypeDef TypeID="type_unsigned_byte"><TDefName>Byte</TDefName><TDefSize>1</TDefSize></TypeDef>
    <TypeDef TypeID="type_unsigned_word"><TDefName>Word</TDefName><TDefSize>2</TDefSize></TypeDef>
    <TypeDef TypeID="type_enum"><TDefName>Enum</TDefName><TDefSize>1</TDefSize></TypeDef>
    <TypeDef TypeID="type_void"><TDefName>Void</TDefName><TDefSize>0</TDefSize></TypeDef>
    <UnitDef UnitID="unit_none"><UnitDefName>none</UnitDefName><UnitDefCode>0</UnitDefCode></UnitDef>
  </Definition>
</FunctionCatalog>
"""


class ConvertedCatalogs(VornTest):
    """Two releases of a catalog: a function renamed, a value of an enumeration changed, a parameter moved."""

    def setUp(self):
        super().setUp()
        self.write_settings(MakeExtended=1, SetMessageLength=1, WriteSignals=1, StrictExport=0)
        self.write("old.xml", catalog(level=1, balance=2, stereo="Stereo", mute="Mute"))
        self.write("new.xml", catalog(level=2, balance=1, stereo="Surround", mute="Silence"))

    def convert(self, old, new):
        for source, output in [("old.xml", old), ("new.xml", new)]:
            self.assert_run(self.run_program(source, output), f"Parsing XML '{source}'\nConverting to Kestrel...\n"
                                                              f"Output file '{output}' written\n", 0)

    def test_their_differences_as_text(self):
        # Before: byte 0 Level, 1 and 2 Balance, 3 Mode. After: 0 and 1 Balance, 2 Level, 3 Mode.
        expected = textwrap.dedent("""\
            ~ message 0x22400C extended Amp_Volume_Status
              ~ signal Balance
                  start_bit: "15" -> "7"
              ~ signal Level
                  start_bit: "7" -> "23"
              ~ signal Mode
                ~ value 1
                    text: "Stereo" -> "Surround"
            ~ message 0x224011 extended Amp_Silence_Get
                name: "Amp_Mute_Get" -> "Amp_Silence_Get"
                attribute Function: "Mute" -> "Silence"
            """)
        for old, new in [("old.vorn", "new.vorn"), ("old.vorn", "new.db"), ("old.sqlite", "new.sqlite3")]:
            with self.subTest(old=old, new=new):
                self.convert(old, new)
                self.assert_output(self.vorn("diff", old, new), expected, 1)

    def test_their_differences_as_json(self):
        self.convert("old.vorn", "new.vorn")
        result = self.vorn("diff", "old.vorn", "new.vorn", "--format", "json")

        def moved(name, before, after):
            return {"change": "changed", "object": "signal", "name": name,
                    "fields": [{"field": "start_bit", "before": before, "after": after}]}

        self.assertEqual(json.loads(result.stdout), [
            {"change": "changed", "object": "message", "name": "0x22400C extended Amp_Volume_Status", "parts": [
                moved("Balance", "15", "7"),
                moved("Level", "7", "23"),
                {"change": "changed", "object": "signal", "name": "Mode", "parts": [
                    {"change": "changed", "object": "value", "name": "1",
                     "fields": [{"field": "text", "before": "Stereo", "after": "Surround"}]}]}]},
            {"change": "changed", "object": "message", "name": "0x224011 extended Amp_Silence_Get", "fields": [
                {"field": "name", "before": "Amp_Mute_Get", "after": "Amp_Silence_Get"},
                {"field": "attribute Function", "before": "Mute", "after": "Silence"}]}])
        self.assertEqual((result.returncode, result.stderr), (1, b""))

    def test_their_signals_have_no_faults(self):
        self.convert("old.vorn", "new.db")
        self.assert_output(self.vorn("check", "old.vorn"), "")
        self.assert_output(self.vorn("check", "new.db"), "")
