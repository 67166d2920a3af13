import json
import os
import re
import sqlite3
import subprocess
import textwrap

from support import on_terminal
from vorn_support import COMMANDS, DIFFERENCE, ESCAPE, EXAMPLE, ONE, VORN, VornTest, database, message


class Usage(VornTest):
    def test_wrong_usage_is_trouble(self):
        for arguments in [(), ("one.vorn",), ("print", "one.vorn"), ("--no-such-option",), ("show",), ("list",),
                          ("check",), ("convert",), ("convert", "one.vorn"), ("diff",), ("diff", "one.vorn"),
                          ("show", "one.vorn", "two.vorn"), ("diff", "one.vorn", "two.vorn", "faulty.vorn"),
                          ("show", "one.vorn", "--message"), ("show", "one.vorn", "--nod", "Amp"),
                          ("list", "one.vorn", "--match"), ("list", "one.vorn", "--node"),
                          ("diff", "one.vorn", "two.vorn", "--format"),
                          ("diff", "one.vorn", "two.vorn", "--format", "xml"),
                          ("check", "one.vorn", "--format", "markdown"), ("show", "one.vorn", "list", "one.vorn")]:
            with self.subTest(arguments=arguments):
                self.assert_trouble(self.vorn(*arguments))

    def test_help_names_every_command(self):
        for option in ["--help", "-h"]:
            result = self.vorn(option)
            self.assertEqual((result.returncode, result.stderr), (0, b""))
            for word in [*COMMANDS, "--version", "Exit status"]:
                self.assertIn(word, result.stdout.decode())

    def test_help_of_a_command_names_its_options_and_needs_no_database(self):
        words = {"show": ["DB", "--message", "--fblock"], "list": ["DB", "--node", "--match", "--optype", "--format"],
                 "convert": ["IN", "OUT", ".sqlite", ".kcd"], "diff": ["OLD", "NEW", "--format", "text", "json"],
                 "check": ["DB"], "subset": ["IN", "OUT", "--except", "--force"],
                 "merge": ["A", "B", "OUT", "--prefer"]}
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
            Amp_Mute_Set  22.113.0  0x221130 extended, 1 byte, from AudioAmp
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
        for name in ["Amp_Mute_Set", "0x221130", "2232624", "22.113.0", "22.01.113.0"]:
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

    def test_several_messages_have_an_empty_line_between_them(self):
        result = self.vorn("show", "roadster.vorn", "--fblock", "audioamp", "--function", "Mute", "--optype", "*Get")
        heads = re.findall(r"(?:^|\n\n)(\w+)  22\.113\.\d  0x", result.stdout.decode())
        self.assertEqual(heads, ["Amp_Mute_Get", "Amp_Mute_SetGet"])

    def test_what_is_not_there_is_said_with_the_nearest_names(self):
        for options, text in [
            (("--message", "Amp_Mut_Set"), "there is no message 'Amp_Mut_Set'; the nearest are Amp_Mute_Set, "
                                           "Amp_Mute_SetGet and Amp_Mute_Get"),
            (("--match", "Amp_Mute_?"), "there is no message 'Amp_Mute_?'; the nearest are Amp_Mute_Set, Amp_Mute_Get "
                                        "and Amp_Mute_Stat"),
            (("--message", "22.113.E"), "there is no message '22.113.E'; the nearest are 22.113.0, 22.113.1 and "
                                        "22.113.2"),
            (("--fblock", "AudoAmp"), "there is no function block 'AudoAmp'; the nearest are "),
            (("--node", "Fone"), "there is no node 'Fone'; the nearest are Phone, "),
            (("--node", "Phone", "--optype", "Sett"), "there is no operation 'Sett'; the nearest are Set, SetGet and ")]:
            for command in ["show", "list"]:
                with self.subTest(options=options, command=command):
                    result = self.vorn(command, "roadster.vorn", *options)
                    self.assertEqual((result.stdout, result.returncode), (b"", 1))
                    beginning = f"vorn: roadster.vorn: {text}"
                    self.assertEqual(result.stderr.decode()[:len(beginning)], beginning)
                    self.assertEqual(result.stderr.count(b"\n"), 1)

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
        self.assertEqual((result.returncode, result.stderr), (0, b""), options)
        return [line.replace(" extended", "").split()[1] for line in result.stdout.decode().splitlines()]

    def test_all_messages_in_the_order_of_the_database(self):
        self.assertEqual(self.names(), [entry["name"] for entry in json.loads(EXAMPLE.read_text())["messages"]])

    def test_messages_of_a_node_and_of_names_that_match(self):
        volume = [f"Amp_Volume_{operation}" for operation in ["Set", "Get", "SetGet", "Increment", "Decrement", "Stat"]]
        for options, names in [(("--match", "Amp_Volume_*"), volume),
                               (("--match", "Amp_Volume_?et"), volume[:2]),
                               (("--match", "Amp_Volume_[FG]et"), volume[1:2]),
                               (("--node", "AUDIO*", "--match", "*_Volume_Get"), volume[1:2]),
                               (("--message", "22.400.*"), volume), (("--fblock", "AudioAmp", "--function", "Volume"), volume),
                               (("--match", "*Volume_Get", "--message", "0x224000"), volume[:2])]:
            with self.subTest(options=options):
                self.assertEqual(self.names(*options), names)
        phone = [entry["name"] for entry in json.loads(EXAMPLE.read_text())["messages"] if entry["node"] == "Phone"]
        self.assertEqual(self.names("--node", "Phone"), phone)

    def test_as_json(self):
        result = self.vorn("list", "roadster.vorn", "--format", "json", "--message", "22.113.0")
        self.assertEqual(json.loads(result.stdout), [
            {"address": "22.113.0", "fblock": "AudioAmp", "function": "Mute", "optype": "Set", "identifier": 0x221130,
             "extended": True, "name": "Amp_Mute_Set", "length": 1, "node": "AudioAmp", "signals": 1}])
        result = self.vorn("list", "roadster.vorn", "--format", "json", "--message", "22.113.E")
        self.assertEqual((result.stdout, result.returncode), (b"[]\n", 1))


class Convert(VornTest):
    def test_to_sqlite_and_back_gives_the_same_bytes(self):
        for extension in ["sqlite", "sqlite3", "db", "DB"]:
            with self.subTest(extension=extension):
                self.assert_output(self.vorn("convert", "roadster.vorn", f"copy.{extension}"), "")
                self.assertEqual((self.dir / f"copy.{extension}").read_bytes()[:15], b"SQLite format 3")
                self.assert_output(self.vorn("convert", f"copy.{extension}", "back.vorn"), "")
                self.assertEqual((self.dir / "back.vorn").read_bytes(), EXAMPLE.read_bytes())

    def test_to_vorn(self):
        for name in ["copy.vorn", "copy", "copy.VORN"]:
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
        self.write("old.vorn", ONE).chmod(0o444)
        for output in ["old.vorn", "no/copy.vorn", "no/copy.db", ".", "/dev/full"]:
            with self.subTest(output=output):
                self.assert_trouble(self.vorn("convert", "roadster.vorn", output), f"vorn: {output}: ")
        self.assertEqual((self.dir / "old.vorn").read_text(), ONE)

    def test_a_database_that_can_not_be_read_leaves_the_output_as_it_was(self):
        self.write("old.vorn", ONE)
        self.write("bad.vorn", database(version=2))
        self.assert_trouble(self.vorn("convert", "bad.vorn", "old.vorn"), "vorn: bad.vorn: line 3: ")
        self.assertEqual((self.dir / "old.vorn").read_text(), ONE)


class Check(VornTest):
    def test_each_cause_of_a_message_of_the_example_is_one_line(self):
        result = self.vorn("check", "roadster.vorn")
        self.assertEqual((result.returncode, result.stderr), (1, b""))
        lines = result.stdout.decode().splitlines()
        self.assertEqual(lines[0], "message CDBox_Magazine_Stat: 2 signals are multiplexed, but there is no multiplexor: "
                                   "Loaded_NN_0_M0, Loaded_NN_0_M1")
        self.assertIn("message TunerSdWest_TrafficMessage_Stat: 3 pairs of signals overlap: Event_M0 and RoadB_M0, "
                      "Event_M1 and RoadB_M1, Road_M0 and DirectionB_M0", lines)
        self.assertEqual(len(lines), 6)

    def test_as_json(self):
        result = self.vorn("check", "faulty.vorn", "--format", "json")
        self.assertEqual(json.loads(result.stdout), [
            {"cause": "overlap", "object": "message", "identifier": 16, "extended": False, "name": "Ping", "count": 1,
             "is_at_least": False, "examples": ["A and B"]}])
        self.assertEqual(result.returncode, 1)

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
        for content, line in [("hello\n", 1), ("[]\n", 1), (database(version=2), 3), (ONE[:-4], 8),
                              (database(nodes="{}"), 7), (database(nodes='[{"name": "Amp"}]'), 7),
                              (database(messages='[{"name": "Ping"}]'), 8), (ONE + "more", 10),
                              (ONE.replace("Vorn", "Born"), 2)]:
            self.write("bad.vorn", content)
            self.assert_unreadable("bad.vorn", f"line {line}: ")

    def test_damaged_sqlite_files_are_named(self):
        self.vorn("convert", "roadster.vorn", "good.db")
        good = (self.dir / "good.db").read_bytes()
        for content in [b"", b"hello\n", good[:5000], good[:100] + bytes(4096) + good[4196:]]:
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
        return on_terminal(self.dir, VORN, *arguments, **environment)

    def test_a_terminal_shows_differences_in_colour(self):
        status, output = self.on_terminal("diff", "one.vorn", "two.vorn")
        self.assertEqual(output, "\x1b[33m~ message 0x10 Ping\x1b[0m\n  \x1b[33m~ signal Level\x1b[0m\n"
                                 '      start_bit: "7" -> "3"\n'
                                 "\x1b[2mmessages: 1 changed; signals: 1 changed\x1b[0m\n")
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

    def test_an_option_says_when_there_is_colour(self):
        for arguments, status in [(("show", "one.vorn"), 0), (("diff", "one.vorn", "two.vorn"), 1),
                                  (("merge", "one.vorn", "two.vorn", "whole.vorn"), 1)]:
            with self.subTest(arguments=arguments):
                plain = self.vorn(*arguments).stdout
                always = self.vorn(*arguments, "--color", "always", NO_COLOR="1")
                self.assertIn(ESCAPE.encode(), always.stdout)
                self.assertEqual((re.sub(rb"\x1b\[[\d;]+m", b"", always.stdout), always.returncode), (plain, status))
                self.assertNotIn(ESCAPE, self.on_terminal(*arguments, "--color", "never")[1])
                self.assertIn(ESCAPE, self.on_terminal(*arguments, "--color", "auto")[1])
        self.assertEqual(self.vorn("diff", "one.vorn", "two.vorn", "--color", "often").returncode, 2)

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
