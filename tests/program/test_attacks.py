"""Documents made to harm whoever reads them: each ends by itself, in time and memory that are bounded, with a
message, and leaves the output alone."""

import os
import resource
import subprocess
import unittest

from support import CATALOG, PROGRAM, ProgramTest

# Of the processor. Stops what would never end; whatever ends takes less on any machine.
MAX_SECONDS = 120
MAX_MEGABYTES = 500
SANITIZED = os.environ["TARVEX_SANITIZED"] == "ON"  # takes many times the time and the memory
SCALE = 10 if SANITIZED else 1

HEAD = '<?xml version="1.0"?>\n'
DEFINITION = "<Definition/>"
BODY = CATALOG.split("\n", 1)[1]  # without its XML declaration

READ = "Output file 'out.vorn' written"
NO_BLOCK = "Import result: fatal errors: 1"  # read to the end, and no catalog after all
MEMORY = "the document needs more than 16 times the memory of its files"
CONTENT = "the document's content is more than 8 times as long as its files"
ENTITIES = "the document uses entities more than 5"
MODEL = "a content model of the DTD has more than 10000 parts"
MODELS = "the content models and lists of words of the DTD are too large"
LEVELS = "the elements of the document are more than 1024 levels deep"
CUT = "the text of the element is cut to 4096 characters"
CROWD = "more than 64 names of the document are too much alike for the tables of the parser"
PARTS = "an element of the document has more than 4096 attributes or references"
UNREADABLE = "unable to open external entity"


def document(content="", declarations="", dtd=""):
    doctype = ""
    if declarations or dtd:
        external = f' SYSTEM "{dtd}"' if dtd else ""
        doctype = f"<!DOCTYPE FunctionCatalog{external} [{declarations}]>\n"
    return f"{HEAD}{doctype}<FunctionCatalog>{content}{DEFINITION}</FunctionCatalog>"


def named(text):
    return f"<FBlock><FBlockName>{text}</FBlockName></FBlock>"


def chain(kind, first, each, length=40):
    """Entities of which each is made of the one before."""
    lines = [f'<!ENTITY {kind}e0 "{first}">']
    lines += [f'<!ENTITY {kind}e{i} "{each.replace("@", str(i - 1))}">' for i in range(1, length)]
    return "\n".join(lines) + "\n"


def default_values(count, value="d"):
    return "<!ATTLIST x " + "".join(f"a{i} CDATA '{value}' " for i in range(count)) + ">"


def encoded(encoding, declared=None):
    return f'<?xml version="1.0" encoding="{declared or encoding}"?>\n{BODY}'.encode(encoding)


def crowd(count):
    """Names that have one hash in the parser's tables: 38 * "a" + "z" is 38 * "b" + "T"."""
    return ["".join("bT" if i >> bit & 1 else "az" for bit in range(17)) for i in range(count)]


def nested_functions(depth):
    """Functions, of 6 levels each, that stand in the operations of each other."""
    inside = ""
    for i in range(depth):
        inside = (f"<Function><FunctionID>{i}</FunctionID><FunctionName>F{i}</FunctionName><FunctionClass ClassRef='c'>"
                  "<Property><PUnclassified><PUParam><ParamName>P</ParamName><PUParamType><TVoid TypeRef='type_void'/>"
                  f"</PUParamType><PUParamOPType>{inside}</PUParamOPType></PUParam></PUnclassified></Property>"
                  "</FunctionClass></Function>")
    return inside


# name, how to make the document, its DTD "a.dtd" or nothing, a text that the console must show, exit status
ATTACKS = [
    ("billion laughs", lambda: document(named("&e11;"), chain("", "lol", "&e@;" * 10, 12)), "", ENTITIES, 255),
    ("billion laughs of elements", lambda: document("&e11;", chain("", "<FBlock/>", "&e@;" * 10, 12)), "", ENTITIES, 255),
    ("one long entity many times", lambda: document(named("&a;" * 20_000), f'<!ENTITY a "{"a" * 100_000}">'), "",
     CONTENT, 255),
    ("one entity of elements many times", lambda: document("&a;" * 20_000, f'<!ENTITY a "{"<FBlock/>" * 10_000}">'), "",
     CONTENT, 255),
    ("the same in an attribute", lambda: document(f'<FBlock x="{"&a;" * 20_000}"/>', f'<!ENTITY a "{"a" * 100_000}">'),
     "", MEMORY, 255),
    ("a long default value", lambda: document("<FBlock/>" * 100_000, f'<!ATTLIST FBlock x CDATA "{"a" * 100_000}">'), "",
     CONTENT, 255),
    ("many default values", lambda: document("<x/>" * 20_000,
                                           default_values(3000, "d" * (50 if SANITIZED else 1))),
     "", CONTENT, 255),
    ("entities 30,000 deep", lambda: document("<FBlock>&e29999;</FBlock>", chain("", "v", "&e@;", 30_000)), "", MEMORY,
     255),
    ("a file that is an entity many times", lambda: document("&a;" * 40_000, '<!ENTITY a SYSTEM "a.dtd">'),
     "<TVoid/>" * 20_000, CONTENT, 255),
    ("a file that is a parameter entity many times", lambda: document(
        declarations='<!ENTITY % a SYSTEM "a.dtd">' + "%a;" * 40_000), "<!ELEMENT x EMPTY>" + " " * 400_000, CONTENT, 255),
    ("texts in pieces", lambda: document(named("&a;" * 40_000), f'<!ENTITY a "{"a<?p?>" * 10_000}">'), "", CONTENT, 255),
    ("comments many times", lambda: document("&a;" * 40_000, f'<!ENTITY a "{"<!--x-->" * 50_000}">'), "", CONTENT, 255),
    ("instructions many times", lambda: document("&a;" * 40_000, f'<!ENTITY a "{"<?x y?>" * 50_000}">'), "", CONTENT, 255),
    ("a tag full of blanks many times", lambda: document("&a;" * 40_000, f'<!ENTITY a "<x{" " * 400_000}/>">'), "", CONTENT,
     255),
    ("an attribute full of blanks many times", lambda: document(
        f'<x a="{"&a;" * 40_000}"/>', f'<!ENTITY a "{" " * 400_000}"><!ATTLIST x a NMTOKENS #IMPLIED>'), "", CONTENT, 255),
    ("blanks in the DTD many times", lambda: document(
        declarations=f'<!ENTITY % a "{" " * 400_000}">' + "%a;" * 40_000), "", CONTENT, 255),
    ("ignored sections many times", lambda: document(dtd="a.dtd"),
     f'<!ENTITY % a "<![IGNORE[{"x" * 400_000}]]>">' + "%a;" * 40_000, CONTENT, 255),
    ("an entity declared many times", lambda: document(dtd="a.dtd"),
     f"<!ENTITY % a \"<!ENTITY b '{'x' * 400_000}'>\">" + "%a;" * 40_000, CONTENT, 255),
    ("many attributes that are never there", lambda: document(
        "<x/>" * 500_000, "<!ATTLIST x " + "".join(f"a{i} CDATA #IMPLIED " for i in range(20_000)) + ">"), "", CONTENT, 255),
    ("an attribute of many words", lambda: document(
        "<x a='n99999'/>" * 60_000, f'<!ELEMENT x EMPTY><!ATTLIST x a ({"|".join(f"n{i}" for i in range(100_000))}) #IMPLIED>'),
     "", MODELS, 255),
    ("an attribute of some words", lambda: document(
        "<x a='n9999'/>" * 60_000, f'<!ELEMENT x EMPTY><!ATTLIST x a ({"|".join(f"n{i}" for i in range(10_000))}) #IMPLIED>'),
     "", CONTENT, 255),
    ("parameter entities that double their texts", lambda: document(dtd="a.dtd"), chain("% ", "x" * 16, "%e@;%e@;"),
     CONTENT, 255),
    ("parameter entities that double and say nothing", lambda: document(dtd="a.dtd"),
     chain("% ", "", "&#37;e@;&#37;e@;") + "%e39;", ENTITIES, 255),
    ("parameter entities that double declarations", lambda: document(dtd="a.dtd"),
     chain("% ", "<!ELEMENT e EMPTY>", "&#37;e@;&#37;e@;") + "%e39;", ENTITIES, 255),
    ("parameter entities in a content model", lambda: document(dtd="a.dtd"),
     chain("% ", "a|a|a|a|a|a|a|a|a|a", "%e@;|%e@;", 12) + "<!ELEMENT FunctionCatalog (%e11;)>", MODEL, 255),
    ("a DTD that includes itself", lambda: document(dtd="a.dtd"), '<!ENTITY % me SYSTEM "a.dtd">%me;',
     "recursive entity expansion 'me'", 255),
    ("a content model of 2,000,000 names", lambda: document(declarations=f'<!ELEMENT x ({"|".join(["a"] * 2_000_000)})>'),
     "", MODEL, 255),
    ("2,000 content models of 500 names", lambda: document(declarations="".join(
        f'<!ELEMENT x{i} ({"|".join(["a"] * 500)})>' for i in range(2_000))), "", MODELS, 255),
    ("a content model that branches without end", lambda: document(
        declarations=f'<!ELEMENT FunctionCatalog ((a|b)*,a,{",".join(["(a|b)"] * 60)})>'), "", NO_BLOCK, 255),
    ("a content model in 100,000 parentheses", lambda: document(
        declarations=f'<!ELEMENT x {"(" * 100_000}a{")" * 100_000}>'), "", NO_BLOCK, 255),
    ("300,000 declarations", lambda: document(declarations="".join(f"<!ELEMENT n{i} (a,b,c)>" for i in range(300_000))), "",
     MEMORY, 255),
    ("500,000 entities", lambda: document(declarations="".join(f'<!ENTITY e{i} "v">' for i in range(500_000 // SCALE))), "",
     NO_BLOCK, 255),
    ("sections inside sections", lambda: document(dtd="a.dtd"), "<![INCLUDE[" * 100_000 + "]]>" * 100_000,
     "Fatal error at file", 255),
    ("each of 100,000 umlauts an entity", lambda: document("<x>" + "gr&uuml;ner  " * (100_000 // SCALE) + "</x>",
                                                            '<!ENTITY uuml "\xfc">'), "", NO_BLOCK, 255),
    ("an entity that is a local file", lambda: document(named("&x;"), '<!ENTITY x SYSTEM "/etc/passwd">'), "", NO_BLOCK,
     255),
    ("a parameter entity that is a local file", lambda: document(declarations='<!ENTITY % x SYSTEM "/etc/passwd">%x;'), "",
     "Fatal error at file '/etc/passwd'", 255),
    ("an entity from the network", lambda: document(named("&x;"), '<!ENTITY x SYSTEM "http://127.0.0.1:9/x">'), "",
     UNREADABLE, 255),
    ("a DTD from the network", lambda: document(dtd="http://127.0.0.1:9/x.dtd"), "",
     "cannot open the DTD 'http://127.0.0.1:9/x.dtd'; it counts as empty", 255),
    ("an entity without end", lambda: document(named("&x;"), '<!ENTITY x SYSTEM "/dev/zero">'), "", UNREADABLE, 255),
    ("UTF-16", lambda: encoded("utf-16"), "", READ, 0),
    ("UTF-16LE without a mark", lambda: encoded("utf-16-le", "UTF-16LE"), "", READ, 0),
    ("UTF-32", lambda: encoded("utf-32"), "", READ, 0),
    ("UTF-8 that calls itself UTF-16", lambda: encoded("utf-8", "UTF-16"), "", "contradicts the auto-sensed", 0),
    ("Latin-1 that calls itself UTF-8", lambda: encoded("utf-8").replace(b"Volume", b"Volum\xe9"), "",
     "invalid byte", 255),
    ("an encoding that nobody knows", lambda: encoded("utf-8", "KLINGON"), "", "unable to create converter", 255),
    ("a zero byte", lambda: document("<FBlock>\0</FBlock>"), "", "Fatal error at file", 255),
    ("an element name of 1 MB", lambda: document("<" + "n" * 1_000_000 + "/>"), "", NO_BLOCK, 255),
    ("an attribute name of 1 MB", lambda: document("<FBlock " + "n" * 1_000_000 + '="x"/>'), "", NO_BLOCK, 255),
    ("a name text of 50 MB", lambda: document(named("n" * 50_000_000)), "", CUT, 255),
    ("1,000,000 attributes", lambda: document("<FBlock " + " ".join(f'a{i}=""' for i in range(1_000_000)) + "/>"), "",
     PARTS, 255),
    ("1,000,000 element names", lambda: document("".join(f"<n{i}/>" for i in range(1_000_000))), "", MEMORY, 255),
    ("1,000,000 levels", lambda: document("<x>" * 1_000_000 + "</x>" * 1_000_000), "", LEVELS, 255),
    ("100,000 levels of blocks", lambda: document("<FBlock>" * 100_000 + "</FBlock>" * 100_000), "", LEVELS, 255),
    ("functions inside functions", lambda: catalog("".join(
        block(i, f"B{i}", nested_functions(170)) for i in range(20 // SCALE))), "", "Import result: ", 0),
    ("functions inside functions without end", lambda: catalog(block(1, "B", nested_functions(10_000))), "", LEVELS, 255),
    ("a comment of 50 MB", lambda: document("<!--" + "c " * 25_000_000 + "-->"), "", NO_BLOCK, 255),
    ("100,000 element names of one hash", lambda: document("".join(f"<{name}/>" for name in crowd(100_000))), "", CROWD,
     255),
    ("80,000 entities of one hash", lambda: document("", "".join(f'<!ENTITY {name} "x">' for name in crowd(80_000))), "",
     CROWD, 255),
    ("20,000 parameter entities of one hash",
     lambda: document("", "".join(f'<!ENTITY % {name} "x">' for name in crowd(20_000))), "", CROWD, 255),
    ("100 notations of one hash",
     lambda: document("", "".join(f'<!NOTATION {name} SYSTEM "x">' for name in crowd(100))), "", CROWD, 255),
    ("20,000 attributes of one hash", lambda: document("<a " + " ".join(f"{name}=''" for name in crowd(20_000)) + "/>"),
     "", PARTS, 255),
    ("100 attributes of one hash", lambda: document("<a " + " ".join(f"{name}=''" for name in crowd(100)) + "/>"), "",
     CROWD, 255),
    ("20,000 declared attributes of one hash", lambda: document("", "<!ATTLIST a " + " ".join(
        f"{name} CDATA #IMPLIED" for name in crowd(20_000)) + ">"), "", CROWD, 255),
    ("100 element names of one hash in content models",
     lambda: document("", f"<!ELEMENT a ({'|'.join(crowd(100))})>"), "", CROWD, 255),
    ("a DTD that fails inside an entity", lambda: document(dtd="a.dtd"), '<!ENTITY % x SYSTEM "nofile">%x;', UNREADABLE,
     255),
    ("nothing", lambda: "", "", "invalid document structure", 255),
    ("half a tag", lambda: HEAD + "<FunctionCatalog><FBlock", "", "unexpected end of input", 255),
]

# Validation may find a fault before the bound is reached; the bound holds all the same.
VALIDATED = ["a file that is an entity many times", "comments many times", "an attribute of many words", "an attribute of some words",
             "billion laughs", "one entity of elements many times", "parameter entities that double their texts",
             "parameter entities that double and say nothing", "a content model that branches without end",
             "2,000 content models of 500 names", "1,000,000 element names", "1,000,000 levels"]

if SANITIZED:
    # Each goes the way of another one.
    TWINS = ["billion laughs of elements", "parameter entities that double declarations", "1,000,000 element names",
             "300,000 declarations"]
    ATTACKS = [row for row in ATTACKS if row[0] not in TWINS]
    VALIDATED = [name for name in VALIDATED if name not in [
        "one entity of elements many times", "parameter entities that double and say nothing", "1,000,000 element names",
        "billion laughs", "a file that is an entity many times"]]


TYPES = """<Definition>
  <TypeDef TypeID="type_byte"><TDefName>Byte</TDefName><TDefSize>1</TDefSize></TypeDef>
  <TypeDef TypeID="type_void"><TDefName>Void</TDefName><TDefSize>0</TDefSize></TypeDef>
  <UnitDef UnitID="unit_none"><UnitDefName>none</UnitDefName><UnitDefCode>0</UnitDefCode></UnitDef>
</Definition>"""
COMMANDS = ["PCmdSet", "PCmdGet", "PCmdSetGet", "PCmdIncrement", "PCmdDecrement", "PCmdGetInterface",
            "PReportStatus", "PReportInterface", "PReportError"]
NUMBER = ("<TNumber><BasisDataType><TUByte TypeRef='type_byte'/></BasisDataType><Exponent>0</Exponent>"
          "<RangeMin>0</RangeMin><RangeMax>1</RangeMax><Step>1</Step><Unit UnitRef='unit_none'/></TNumber>")


def catalog(blocks):
    return f"{HEAD}<FunctionCatalog>{blocks}{TYPES}</FunctionCatalog>"


def block(number, name, functions):
    return f"<FBlock><FBlockID>{number}</FBlockID><FBlockName>{name}</FBlockName>{functions}</FBlock>"


def function(number, types, attributes="", commands=COMMANDS):
    """A function whose parameters, of these types, stand in all operations of a property."""
    params = ""
    for pos, kind in enumerate(types, 1):
        uses = "".join(f"<{command}><ParamPos>{pos}</ParamPos></{command}>" for command in commands)
        params += (f"<PUParam><ParamName>P{pos}</ParamName><PUParamOPType>{uses}</PUParamOPType>"
                   f"<PUParamType>{kind}</PUParamType></PUParam>")
    return (f"<Function {attributes}><FunctionID>{number}</FunctionID><FunctionName>F{number}</FunctionName>"
            f"<FunctionClass ClassRef='c'><Property><PUnclassified>{params}</PUnclassified></Property>"
            "</FunctionClass></Function>")


def enumeration(values):
    return f"<TEnum TypeRef='type_byte' TEnumMax='65535'>{values}</TEnum>"


def records(depth):
    """Records inside records, of two fields each: both double what is in them."""
    inside = NUMBER
    for _ in range(depth):
        fields = "".join(f"<TRecordField FieldIdx='{i}'><TRecordFieldName>R{i}</TRecordFieldName>{kind}</TRecordField>"
                         for i, kind in enumerate([NUMBER, inside], 1))
        inside = f"<TRecord TypeRef='type_byte' NElements='2'>{fields}</TRecord>"
    return inside


def inside_each_other(depth, inside, name):
    """Records of one field each."""
    for _ in range(depth):
        inside = ("<TRecord TypeRef='type_byte' NElements='1'><TRecordField FieldIdx='1'>"
                  f"<TRecordFieldName>{name}</TRecordFieldName>{inside}</TRecordField></TRecord>")
    return inside


def wide(name, count):
    """A record with so many fields."""
    fields = "".join(f"<TRecordField FieldIdx='{i}'><TRecordFieldName>{name}{i}</TRecordFieldName>{NUMBER}</TRecordField>"
                     for i in range(1, count + 1))
    return f"<TRecord TypeRef='type_byte' NElements='{count}'>{fields}</TRecord>"


def functions_in_operations(depth, inside):
    for i in range(depth):
        inside = function(i, [VOID], commands=[]).replace("<PUParamOPType>", "<PUParamOPType>" + inside)
    return inside


VOID = "<TVoid TypeRef='type_void'/>"
ALL_CODES = enumeration("<TEnumValue Code='0..65535'>All</TEnumValue>")
SIGNALS = "too many signals or value descriptions"
WORK = "The catalog asks for too much work"

# name, how to make the catalog, a text that the console must show, exit status
GREEDY = [
    ("an enumeration of 5,000 values in every block", lambda: catalog(
        block(0, "First", function(1, [enumeration("".join(f"<TEnumValue Code='{i}'>v{i}</TEnumValue>"
                                                           for i in range(5_000)))], "FktDefId='f'"))
        + "".join(block(i, f"B{i}", "<Function FktDefRef='f'/>" + function(2, ["<TVoid TypeRef='type_void'/>"]))
                  for i in range(1, 256))), "Import result: errors: ", 0),
    ("64 enumerations of all codes", lambda: catalog(block(1, "B", "".join(
        function(i, [enumeration("<TEnumValue Code='0..65535'>All</TEnumValue>")]) for i in range(64)))),
     SIGNALS, 0),
    ("records 12 deep in 500 functions", lambda: catalog(block(1, "B", "".join(
        function(i, [records(12)]) for i in range(500)))), SIGNALS, 0),
    ("a block name of 1 MB over 4,000 functions", lambda: catalog(block(1, "n" * 1_000_000, "".join(
        function(i, ["<TVoid TypeRef='type_void'/>"]) for i in range(4_000)))), CUT, 0),
    ("block names of 4,000 characters over 90,000 messages", lambda: catalog(
        block(0, "First", "".join(function(i, ["<TVoid TypeRef='type_void'/>"], f"FktDefId='f{i}'") for i in range(40)))
        + "".join(block(i, f"B{i}" + "n" * 3_990, "".join(f"<Function FktDefRef='f{j}'/>" for j in range(40)))
                  for i in range(1, 255))), "too many texts of attributes", 0),
    ("a tree log of records 55 deep with long names", lambda: catalog(block(1, "B", function(
        1, [inside_each_other(55, wide("f", 1_500), "n" * 4_000)]))), READ, 0),
    ("records 60 deep with long names, and 40 fields, in 100 functions", lambda: catalog(block(1, "B" * 4_000, "".join(
        function(i, [inside_each_other(60, wide("f", 40), "n" * 600)]) for i in range(100)))), SIGNALS, 0),
    ("2,000 functions of 9 operations, copied into 39 blocks with long names", lambda: catalog(
        block(0, "First", "".join(function(i, [VOID], f"FktDefId='f{i}'") for i in range(2_000)))
        + "".join(block(i, f"B{i}" + "n" * 3_990, "".join(f"<Function FktDefRef='f{j}'/>" for j in range(2_000)))
                  for i in range(1, 40))), "too many texts of attributes", 0),
    ("functions 168 deep in the operations of each other, over 550,000 elements", lambda: catalog(block(
        1, "B", functions_in_operations(168, "<TVoid/>" * 550_000))), WORK, 255),
    ("a record of 18 fields in 60 others, with long names", lambda: catalog(block(1, "B", function(
        1, [inside_each_other(60, wide("m" * 4_085, 18), "q" * 4_085)]))), READ, 0),
    ("names that are one on every level", lambda: catalog(block(1, "B", "".join(
        function(i, [inside_each_other(60, NUMBER, "q" * 4_090)]) for i in range(20)))), READ, 0),
    ("5 enumerations of all codes and 20 nested records", lambda: catalog(block(1, "B", "".join(
        function(i, [ALL_CODES]) for i in range(5)) + "".join(function(10 + i, [records(12)]) for i in range(20)))),
     SIGNALS, 0),
    ("6 enumerations of all codes, 20 nested records, 11,000 functions at the last position", lambda: catalog(
        "".join(block(b, f"B{b}", "".join(function(i, [VOID]).replace("<ParamPos>1<", "<ParamPos>255<")
                                          for i in range(550))) for b in range(10))
        + block(20, "E", "".join(function(i, [ALL_CODES]) for i in range(6))
                + "".join(function(10 + i, [records(12)]) for i in range(20)))), SIGNALS, 0),
    ("an error function, used 190,000 times", lambda: catalog(block(1, "B", function(1, [VOID]).replace(
        "</PUnclassified>", f"<ERParam ParamDefId='e'><ParamName>E</ParamName><PUParamType>{VOID}</PUParamType>"
        "<PUParamOPType><PReportError/></PUParamOPType></ERParam>" + "<ERParam ParamDefRef='e'/>" * 190_000
        + "</PUnclassified>"))), "Import result: errors: ", 0),
]


def bound_time():
    resource.setrlimit(resource.RLIMIT_CPU, (MAX_SECONDS, MAX_SECONDS))


class AttackTest(ProgramTest):
    program = [PROGRAM, "in.xml", "out.vorn"]

    def run_measured(self, name):
        """Exit status, console, seconds and megabytes of one run."""
        console = self.dir / "console"
        with open(console, "wb") as out:
            # A process made by fork counts its own memory only, and that is what a preexec_fn asks for.
            process = subprocess.Popen(self.program, cwd=self.dir, stdin=subprocess.DEVNULL,
                                       stdout=out, stderr=out, preexec_fn=bound_time)
            _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        seconds = usage.ru_utime + usage.ru_stime  # whatever else runs on the machine
        megabytes = usage.ru_maxrss / 1024
        print(f"{name}: exit status {process.returncode}, {seconds:.2f} s, {megabytes:.0f} MB")
        if not SANITIZED:
            self.assertLess(megabytes, MAX_MEGABYTES)
        return process.returncode, console.read_text(errors="replace")

    def attack(self, validate, name, xml, dtd, **settings):
        self.write_settings(FCatImportValidate=validate, **settings)
        self.write("in.xml", xml())
        self.write("a.dtd", dtd)
        self.write("out.vorn", "the old file")
        for log in ["in.log", "in.tree"]:
            (self.dir / log).unlink(missing_ok=True)
        status, console = self.run_measured(name)
        if status != 0:
            self.assertEqual((self.dir / "out.vorn").read_text(), "the old file")
        self.assertEqual(list(self.dir.glob(".kestrel-*")), [])
        return status, console


class Attacks(AttackTest):
    def test_every_attack_ends_with_a_message(self):
        for name, xml, dtd, message, expected in ATTACKS:
            with self.subTest(name):
                status, console = self.attack(0, name, xml, dtd)
                self.assertEqual(status, expected)
                self.assertIn(message, console)


@unittest.skipIf(SANITIZED, "takes minutes")
class GreedyCatalogs(AttackTest):
    def test_greedy_catalogs_get_what_there_is(self):
        for name, xml, message, expected in GREEDY:
            with self.subTest(name):
                status, console = self.attack(0, name, xml, "", FCatImportLog=1, FCatTreeLog="in.tree")
                self.assertEqual(status, expected, console)
                self.assertIn(message, console)
                written = sum(path.stat().st_size for path in self.dir.iterdir() if path.name != "in.xml")
                size = (self.dir / "in.xml").stat().st_size
                print(f"    {size / 1e6:.2f} MB, {written / 1e6:.0f} MB written")
                self.assertLess(written, 2 ** 27 + 64 * size)


@unittest.skipIf(SANITIZED, "takes minutes")
class CatalogAttacks(AttackTest):
    """The same against tarvex-catalog, which keeps more of a catalog than a conversion does."""

    program = [os.environ["TARVEX_CATALOG"], "check", "in.xml"]

    def test_every_attack_is_told(self):
        for name, xml, dtd in [row[:3] for row in ATTACKS[::3]] + [(*row[:2], "") for row in GREEDY]:
            with self.subTest(name):
                status, console = self.attack(0, name, xml, dtd)
                self.assertIn(status, (0, 1), console)
                self.assertRegex(console, r"\nin\.xml: .*\n$|^in\.xml: .*\n$")


@unittest.skipIf(SANITIZED, "takes minutes")
class PageAttacks(AttackTest):
    """And against its pages, which have everything that a catalog says several times."""

    program = [os.environ["TARVEX_CATALOG"], "page", "in.xml", "page.html"]

    def test_every_attack_ends_with_a_page_or_a_message(self):
        for name, xml, dtd in [row[:3] for row in ATTACKS[1::6]] + [(*row[:2], "") for row in GREEDY]:
            with self.subTest(name):
                page = self.dir / "page.html"
                page.unlink(missing_ok=True)
                status, console = self.attack(0, name, xml, dtd)
                self.assertEqual(page.exists(), status == 0)
                self.assertIn(status, (0, 2), console)
                if status == 0:
                    written = page.stat().st_size
                    size = (self.dir / "in.xml").stat().st_size
                    print(f"    {size / 1e6:.2f} MB, {written / 1e6:.1f} MB written")
                    self.assertLess(written, 2 ** 24 + 2 * size)


# what 5 MB of an alias or network file consist of, and whether each has too many lines
LISTS = [
    ("only commas", ("," * 5_000_000,), False, False),
    ("lines of a comma", (",\n" * 2_500_000,), True, True),
    ("one name and one address", ("A,1\n" * 1_250_000,), True, True),
    ("one name and many addresses", (f"A,{i}\n" for i in range(570_000)), False, True),
    ("many names and addresses", (f"{i:x},{i}\n" for i in range(390_000)), False, True),
    ("many long names", (f"{'n' * 80}{i},{i}\n" for i in range(54_000)), False, False),
]


@unittest.skipIf(SANITIZED, "takes minutes")
class GreedyLists(AttackTest):
    def test_alias_and_network_files_are_read_as_far_as_they_count(self):
        self.write("in.xml", CATALOG)
        for name, lines, *are_too_many in LISTS:
            self.write("list.txt", "".join(lines))
            for setting, is_too_long in zip(["AliasNames", "NetworkConfiguration"], are_too_many):
                with self.subTest(name, setting=setting):
                    self.write_settings(**{setting: "list.txt"})
                    status, console = self.run_measured(f"{setting}, {name}")
                    self.assertEqual(status, 0, console)
                    self.assertEqual("The file list.txt has too many lines, some are left out!\n" in console,
                                     is_too_long, console)


IDENTIFIED = "<!ELEMENT FunctionCatalog ANY><!ELEMENT a EMPTY><!ATTLIST a i ID #IMPLIED r IDREFS #IMPLIED>"
# What costs validation only.
VALID = [
    ("100 identifiers of one hash", lambda: document("".join(f"<a i='{name}'/>" for name in crowd(100)), IDENTIFIED),
     CROWD),
    ("50,000 references of one hash in an attribute", lambda: document(f"<a r='{' '.join(crowd(50_000))}'/>", IDENTIFIED),
     PARTS),
    ("100 references of one hash in an attribute", lambda: document(f"<a r='{' '.join(crowd(100))}'/>", IDENTIFIED),
     CROWD),
    ("400,000 times the last name of a long content model", lambda: document(
        "<n4899/>" * 400_000, "<!ELEMENT FunctionCatalog (#PCDATA|"
        + "|".join(f"n{i}" for i in range(4_900)) + ")*><!ELEMENT n4899 EMPTY>"), CONTENT),
]


class ValidatedAttacks(AttackTest):
    def test_what_validation_costs_is_bounded(self):
        for name, xml, message in VALID:
            with self.subTest(name):
                status, console = self.attack(1, name, xml, "")
                self.assertEqual(status, 255)
                self.assertIn(message, console)

    def test_validation_changes_nothing(self):
        rows = {row[0]: row for row in ATTACKS}
        for name in VALIDATED:
            with self.subTest(name):
                status, console = self.attack(1, name + ", validated", *rows[name][1:3])
                self.assertEqual(status, 255)
                self.assertRegex(console, "Error\\(s\\) occured|Import result: fatal")
