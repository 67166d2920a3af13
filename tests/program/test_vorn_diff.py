"""What `vorn diff` tells of databases, and of those of two catalogs."""

import itertools
import json
import re
import subprocess
import textwrap

from support import GENERATOR
from vorn_support import DIFFERENCE, VornTest


class Diff(VornTest):
    def test_differences_as_text(self):
        for options in [(), ("--format", "text"), ("--format=text",)]:
            self.assert_output(self.vorn("diff", "one.vorn", "two.vorn", *options), DIFFERENCE, 1)

    def test_differences_as_json(self):
        result = self.vorn("diff", "one.vorn", "two.vorn", "--format", "json")
        self.assertEqual(json.loads(result.stdout)["changes"], [
            {"change": "changed", "object": "message", "identifier": 16, "extended": False, "name": "Ping", "parts": [
                {"change": "changed", "object": "signal", "name": "Level", "fields": [
                    {"field": "start_bit", "before": 7, "after": 3}]}]}])
        self.assertEqual((result.returncode, result.stderr), (1, b""))

    def test_differences_as_markdown(self):
        self.assert_output(self.vorn("diff", "one.vorn", "two.vorn", "--format", "markdown"), textwrap.dedent("""\
            - message `0x10 Ping` **changed**
              - signal `Level` **changed**
                - `start_bit`: `7` → `3`

            messages: 1 changed; signals: 1 changed
            """), 1)

    def test_a_file_and_itself_in_another_format_are_the_same(self):
        self.vorn("convert", "roadster.vorn", "copy.db")
        for pair in [("roadster.vorn", "copy.db"), ("copy.db", "roadster.vorn"), ("copy.db", "copy.db"),
                     ("roadster.vorn", "roadster.vorn")]:
            with self.subTest(pair=pair):
                self.assert_output(self.vorn("diff", *pair), "")
        result = self.vorn("diff", "roadster.vorn", "copy.db", "--format", "json")
        self.assertEqual((result.returncode, json.loads(result.stdout)["changes"]), (0, []))

    def test_either_file_that_can_not_be_read_is_named(self):
        self.write("bad.vorn", "hello")
        self.assert_trouble(self.vorn("diff", "bad.vorn", "one.vorn"), "vorn: bad.vorn: line 1: ")
        self.assert_trouble(self.vorn("diff", "one.vorn", "bad.vorn"), "vorn: bad.vorn: line 1: ")
        self.assert_trouble(self.vorn("diff", "one.vorn", "none.vorn"), "vorn: none.vorn: ")


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
            messages: 2 changed; signals: 3 changed; values: 1 changed
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

        def message(identifier, name, **rest):
            return {"change": "changed", "object": "message", "identifier": identifier, "extended": True, "name": name,
                    **rest}

        self.assertEqual(json.loads(result.stdout)["changes"], [
            message(0x22400C, "Amp_Volume_Status", parts=[
                moved("Balance", 15, 7),
                moved("Level", 7, 23),
                {"change": "changed", "object": "signal", "name": "Mode", "parts": [
                    {"change": "changed", "object": "value", "value": 1,
                     "fields": [{"field": "text", "before": "Stereo", "after": "Surround"}]}]}]),
            message(0x224011, "Amp_Silence_Get", fields=[
                {"field": "name", "before": "Amp_Mute_Get", "after": "Amp_Silence_Get"},
                {"field": "attribute Function", "before": "Mute", "after": "Silence"}])])
        self.assertEqual((result.returncode, result.stderr), (1, b""))

    def test_their_signals_have_no_faults(self):
        self.convert("old.vorn", "new.db")
        self.assert_output(self.vorn("check", "old.vorn"), "")
        self.assert_output(self.vorn("check", "new.db"), "")


def with_capitals(text):
    """Parameters that have a name of their own share two names, whose ends look like letters that make names unique."""
    names = itertools.cycle(["GPS", "DeviceID"])
    return re.sub(r"(<ParamName[^>]*>)\w*\d<", lambda match: f"{match.group(1)}{next(names)}<", text)


class GeneratedCatalogs(VornTest):
    """A catalog whose names are unique in the whole database, and the same with one function in the middle changed."""

    def setUp(self):
        super().setUp()
        self.write_settings(FCatImportValidate=0)
        self.old = subprocess.run([GENERATOR, "--megabytes", "0.2", "--blocks", "4"], capture_output=True, timeout=60,
                                  check=True).stdout.decode()
        start = self.middle_function().start()
        self.old = self.old[:start] + with_capitals(self.old[start:])
        self.middle = self.middle_function()
        self.assertIn(">GPS<", self.middle.group())
        self.convert("old.vorn", self.old)

    def middle_function(self):
        """One with an enumeration, which has signals with values."""
        functions = list(re.finditer(r"[ \t]*<Function>.*?</Function>\n?", self.old, re.DOTALL))
        return next(function for function in functions[len(functions) // 2:] if "<TEnumValue" in function.group())

    def convert(self, output, content):
        self.write("catalog.xml", content)
        self.assertEqual(self.run_program("catalog.xml", output).returncode, 0)

    def difference(self, content):
        self.convert("new.vorn", content)
        result = self.vorn("diff", "old.vorn", "new.vorn")
        self.assertEqual(result.stderr, b"")
        *lines, summary = result.stdout.decode().splitlines()
        return lines, summary, result.returncode

    def replaced(self, text):
        return self.old[:self.middle.start()] + text + self.old[self.middle.end():]

    def test_a_function_less_is_its_messages_and_a_summary(self):
        name = re.search("<FunctionName>(.*?)<", self.middle.group()).group(1)
        for old, new, sign in [("old.vorn", "new.vorn", "- message"), ("new.vorn", "old.vorn", "+ message")]:
            self.convert("new.vorn", self.replaced(""))
            *lines, summary = self.vorn("diff", old, new).stdout.decode().splitlines()
            self.assertGreater(len(lines), 0)
            for line in lines:
                self.assertEqual(line[:len(sign)], sign)
                self.assertIn(f"_{name}_", line)
            self.assertRegex(summary, rf"^messages: {len(lines)} \w+; \d+ names differ only in what makes them unique$")

    def test_a_text_of_a_function_is_its_values_and_a_summary(self):
        lines, summary, status = self.difference(
            self.replaced(re.sub(r"(<TEnumValue [^>]*>)[^<]*", r"\1Changed", self.middle.group(), count=1)))
        self.assertRegex("\n".join(lines) + "\n", r'^(~ message .*\n(  ~ signal .*\n    ~ value \d+\n'
                                                  r'        text: ".*" -> "Changed"\n)+)+$')
        self.assertRegex(summary, r"^messages: \d+ changed; signals: (\d+) changed; values: \1 changed$")
        self.assertEqual(status, 1)

    def test_the_order_of_the_blocks_is_no_difference(self):
        blocks = re.findall(r"[ \t]*<FBlock>.*?</FBlock>\n", self.old, re.DOTALL)
        self.assertEqual(len(blocks), 4)
        together = "".join(blocks)
        self.assertIn(together, self.old)
        self.convert("new.vorn", self.old.replace(together, "".join(reversed(blocks))))
        self.assert_output(self.vorn("diff", "old.vorn", "new.vorn"), "")
