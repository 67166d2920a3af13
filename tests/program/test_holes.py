"""What a lost parameter does to the signals of its message, to the verdict on it and to the decoder: each kind of loss, of
the first, the middle and the last of three parameters."""

import json
import os
import subprocess

from support import ProgramTest

DISASM = os.environ["TARVEX_DISASM"]

BYTE = ('<TNumber><BasisDataType><TUByte TypeRef="{0}"/></BasisDataType><Exponent>0</Exponent><Step>1</Step>'
        '<Unit UnitRef="unit_none"/></TNumber>')
GOOD = BYTE.format("type_unsigned_byte")
OPERATION = "<PReportStatus><ParamPos>{0}</ParamPos></PReportStatus>"
RECORD = ('<TRecord TypeRef="type_unsigned_byte" NElements="2"><TRecordField FieldIdx="1"><TRecordFieldName>Field'
          f"</TRecordFieldName>{GOOD}</TRecordField></TRecord>")
# Its codes tell whether it has one byte or two, and one is none.
ENUMERATION = '<TEnum TypeRef="type_enum"><TEnumValue Code="1">On</TEnumValue><TEnumValue Code="x">Off</TEnumValue></TEnum>'

CATALOG = """<FunctionCatalog><FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>
<Function><FunctionID>0x400</FunctionID><FunctionName>Tone</FunctionName><FunctionClass><Property><PUnclassified>
{0}</PUnclassified></Property></FunctionClass></Function>
<Function><FunctionID>0x401</FunctionID><FunctionName>Mute</FunctionName><FunctionClass><Property><PUnclassified>
{1}</PUnclassified></Property></FunctionClass></Function></FBlock>
<Definition><TypeDef TypeID="type_unsigned_byte"><TDefName>Byte</TDefName><TDefSize>1</TDefSize></TypeDef>
<TypeDef TypeID="type_word"><TDefName>Word</TDefName><TDefSize>2</TDefSize></TypeDef>
<TypeDef TypeID="type_open"><TDefName>Open</TDefName></TypeDef>
<UnitDef UnitID="unit_none"><UnitDefName>none</UnitDefName><UnitDefCode>0</UnitDefCode></UnitDef></Definition>
</FunctionCatalog>
"""


def param(name, pos, content=GOOD, operations=None, op_types="PUParamOPType"):
    operations = OPERATION.format(pos) if operations is None else operations
    return (f"<PUParam><ParamName>{name}</ParamName><{op_types}>{operations}</{op_types}>"
            f"<PUParamType>{content}</PUParamType></PUParam>\n")


def with_loss(where, **loss):
    """Three parameters, of which one has what `loss` says."""
    return "".join(param(name, pos, **(loss if pos == where else {})) for pos, name in enumerate("ABC", 1))


def lost(message):
    return [f"the parameter at position {pos} could not be imported (message {message})" for pos in (1, 2, 3)]


def somewhere(message):
    return [f"the parameter at an unknown position could not be imported (message {message})"] * 3


# What is wrong, the catalog's parameters when it is wrong with the first, second or third; how many parameters keep
# their signals, and what the decoder says.
LOSSES = [
    ("128", lambda at: with_loss(at, content="<TOther/>"), [0, 1, 2], lost(128)),
    ("129", lambda at: with_loss(at, content=GOOD.replace("Unit ", "Other ")), [0, 1, 2], lost(129)),
    ("131", lambda at: with_loss(at, operations=OPERATION.format("first")), [0, 0, 0], somewhere(131)),
    ("132", lambda at: with_loss(at, operations=OPERATION.format(256)), [0, 0, 0], somewhere(132)),
    # Of two parameters at one position nobody knows which it is; the first one's own place is a gap.
    ("134", lambda at: with_loss(at, operations=OPERATION.format(at - 1 if at > 1 else 2)), [0, 0, 1],
     ["there is no parameter at position 1 (message 102)",
      "the parameter at position 1 could not be imported (message 134)",
      "the parameter at position 2 could not be imported (message 134)"]),
    ("135", lambda at: with_loss(at, op_types="Other"), [0, 0, 0], somewhere(135)),
    ("gap", lambda at: "".join(param(name, pos if pos < at else pos + 1) for pos, name in enumerate("ABC", 1)),
     [0, 1, 2], [f"there is no parameter at position {pos} (message 102)" for pos in (1, 2, 3)]),
    ("no size", lambda at: with_loss(at, content=BYTE.format("type_open")), [0, 1, 2],
     [f"{name} has a type without a size (message 3)" for name in "ABC"]),
    ("a code", lambda at: with_loss(at, content=ENUMERATION), [0, 1, 2],
     [f"{name} has no sure size, as a code could not be read (message 76)" for name in "ABC"]),
    ("named twice", lambda at: with_loss(at, operations=OPERATION.format(at) * 2), [0, 1, 2],
     [f"the parameter at position {pos} could not be imported (it names the operation twice)" for pos in (1, 2, 3)]),
]

BYTES = ["01", "02", "03"]


def case(selector, value, content=GOOD):
    return (f'<StreamCase><PosDescription PosX="{selector}" PosY="{value}"/><StreamParam><ParamName ParamIdx="1">In</ParamName>'
            f"{content}</StreamParam></StreamCase>")


def stream(*cases):
    return f'<TStream TypeRef="t">{"".join(cases)}</TStream>'


WORD = BYTE.format("type_word").replace("TUByte", "TUWord")
# The field "Data" fails its check, as no "Pos" stands beside it.
FIELDS = ('<TRecord TypeRef="t" NElements="2"><TRecordField FieldIdx="1"><TRecordFieldName>First</TRecordFieldName>'
          f'{GOOD}</TRecordField><TRecordField FieldIdx="2"><TRecordFieldName>Data</TRecordFieldName>'
          f'<TRecord TypeRef="t" NElements="1"><TRecordField FieldIdx="1"><TRecordFieldName>In</TRecordFieldName>{GOOD}'
          "</TRecordField></TRecord></TRecordField></TRecord>")

# What it is, the parameters, the bytes of a message, the signals, what the decoder says.
CONTAINERS = [
    ("a case with another selector",
     param("A", 1) + param("B", 2) + param("C", 3, stream(case("A", 1), case("B", 2))), "02 02 03", {"A": 7, "B": 15},
     ["  A = 2", "  B = 2", "  error: byte 2: C has no case that fits, and one that could not be imported (message 27); "
      "the rest is 03"]),
    ("a lost case", param("A", 1) + param("B", 2, stream(case("A", 1), case("A", 2, "<TOther/>"))), "02 03", {"A": 7},
     ["  A = 2", "  error: byte 1: B has no case that fits, and one that could not be imported (message 32); the rest is 03"]),
    ("another case than the lost one", param("A", 1) + param("B", 2, stream(case("A", 1), case("A", 2, "<TOther/>"))),
     "01 03", {"A": 7}, ["  A = 1", "  B = (A=0x01)", "    In = 3"]),
    ("a place in a case that two claim",
     param("A", 1, stream(case("#NULL#", "#NULL#").replace("<StreamParam>", "<StreamParam>{}<StreamParam>".format(
         f'<ParamName ParamIdx="1">Out</ParamName>{GOOD}</StreamParam>')))), "01", {},
     ["  error: byte 0: {StreamCase} has two things at position 1 (message 22); the rest is 01"]),
    # For the value 0 the field "First" stands at byte 2 as for 1.
    ("a chosen field that failed", param("Pos", 1, WORD) + param("Data", 2, FIELDS), "02 00 05",
     {"PosX": 0, "First_M0": 23, "First_M1": 23},
     ["  Pos = PosX=2 PosY=0", "  error: byte 2: Data could not keep what stands at position 2; the rest is 05"]),
]


class Holes(ProgramTest):
    def signals_and_layout(self, params, other=""):
        self.write("TARVEX.ini", "[Import]\nFCatImportNewer=1\n[Conversion]\nSafeLayout=1\nWarnOnOverwrite=0\n"
                                 "MakeReadOnly=0\n")
        self.write("cat.xml", CATALOG.format(params, other or param("On", 1)))
        self.assertEqual(self.run_program("cat.xml", "out.vorn").returncode, 0)
        message = json.loads((self.dir / "out.vorn").read_text())["messages"][0]
        self.assertEqual(message["identifier"], 0x22400C)
        return {signal["name"]: signal["start_bit"] for signal in message["signals"]}, message["attributes"]["Layout"]

    def decoded(self, line="22.01.400.C 01 02 03"):
        result = subprocess.run([DISASM, "cat.xml"], cwd=self.dir, input=line + "\n", capture_output=True, text=True,
                                timeout=60, check=False)
        return result.stdout.replace("  error: line 1: ", "  error: ").split("\n")[1:-1]

    def test_each_loss_at_each_place(self):
        for what, params, kept, faults in LOSSES:
            for at in (1, 2, 3):
                with self.subTest(what=what, at=at):
                    count = kept[at - 1]
                    signals, layout = self.signals_and_layout(params(at))
                    self.assertEqual(signals, {name: 8 * byte + 7 for byte, name in enumerate("ABC"[:count])})
                    self.assertEqual(layout, "Incomplete")
                    self.assertEqual(self.decoded(), [f"  {name} = {byte}" for byte, name in enumerate("ABC"[:count], 1)] + [
                        f"  error: byte {count}: {faults[at - 1]}; the rest is {' '.join(BYTES[count:])}"])

    def test_a_record_of_fewer_fields_than_it_says(self):
        rows = [
            (1, {"Field": 7}, ["  A", "    Field = 1", "  error: byte 1: A has another number of fields than it says "
                               "(message 55); the rest is 02 03"]),
            (2, {"A": 7, "Field": 15}, ["  A = 1", "  B", "    Field = 2", "  error: byte 2: B has another number of "
                                        "fields than it says (message 55); the rest is 03"]),
            (3, {"A": 7, "B": 15, "Field": 23}, ["  A = 1", "  B = 2", "  C", "    Field = 3", "  error: byte 3: C has "
                                                 "another number of fields than it says (message 55)"]),
        ]
        for at, signals, lines in rows:
            with self.subTest(at=at):
                self.assertEqual(self.signals_and_layout(with_loss(at, content=RECORD)), (signals, "Incomplete"))
                self.assertEqual(self.decoded(), lines)

    def test_what_containers_lack(self):
        for what, params, line, expected_signals, lines in CONTAINERS:
            with self.subTest(what):
                self.assertEqual(self.signals_and_layout(params), (expected_signals, "Incomplete"))
                self.assertEqual(self.decoded(f"22.01.400.C {line}"), lines)

    def test_a_copy_has_lost_what_its_original_has(self):
        catalog = CATALOG.replace("<Function>", '<Function FktDefId="tone">', 1).replace(
            "<Definition>", '<FBlock><FBlockID>0x23</FBlockID><FBlockName>Copy</FBlockName><Function FktDefRef="tone"/>'
            "</FBlock><Definition>")
        for what, params, kept, faults in LOSSES:
            with self.subTest(what):
                signals, _ = self.signals_and_layout(params(2))
                self.write("cat.xml", catalog.format(params(2), param("On", 1)))
                self.assertEqual(self.run_program("cat.xml", "out.vorn").returncode, 0)
                copy = json.loads((self.dir / "out.vorn").read_text())["messages"][-1]
                self.assertEqual(copy["identifier"], 0x23400C)
                # The names of signals are unique in the whole database.
                self.assertEqual([signal["start_bit"] for signal in copy["signals"]], list(signals.values()))
                self.assertEqual(copy["attributes"]["Layout"], "Incomplete")
                self.assertIn(f"byte {kept[1]}: {faults[1]}", self.decoded("23.01.400.C 01 02 03")[-1])

    def test_an_operation_that_lost_all_has_its_message(self):
        self.assertEqual(self.signals_and_layout(param("A", 1, content="<TOther/>")), ({}, "Incomplete"))
        self.assertEqual(self.decoded("22.01.400.C 01"), [
            "  error: the catalog has operation 0xC, but the parameter at position 1 could not be imported (message 128)"])

    def test_a_catalog_without_holes_is_complete(self):
        self.assertEqual(self.signals_and_layout(with_loss(0)), ({"A": 7, "B": 15, "C": 23}, "Complete"))
        self.assertEqual(self.decoded(), ["  A = 1", "  B = 2", "  C = 3"])

    def test_what_ends_the_signals_with_nothing_missing_is_open(self):
        for content in ['<TString TypeRef="t"/>', '<TShortStream TypeRef="t"/>', '<TCStream TypeRef="t"/>',
                        '<TStream TypeRef="t"><StreamCase/></TStream>',
                        f'<TArray TypeRef="t"><TArrayName>E</TArrayName>{GOOD}</TArray>']:
            with self.subTest(content=content):
                self.assertEqual(self.signals_and_layout(with_loss(2, content=content)), ({"A": 7}, "Open"))

    def test_a_lost_function_is_told_by_the_decoder(self):
        self.write("cat.xml", CATALOG.format(with_loss(0), param("On", 1)).replace("<Property>", "<Other>", 1).replace(
            "</Property>", "</Other>", 1))
        self.assertEqual(self.decoded(), [
            "  error: the catalog has function 0x400, but it could not be imported (message 120)"])

    def test_a_lost_block_is_told_by_the_decoder(self):
        second = ("<FBlock><FBlockID>0x23</FBlockID><FBlockName>Amp</FBlockName></FBlock><Definition>")
        self.write("cat.xml", CATALOG.format(with_loss(0), param("On", 1)).replace("<Definition>", second))
        self.assertEqual(self.decoded("23.01.400.C 01"), [
            "  error: the catalog has function block 0x23, but it could not be imported (message 144)"])
