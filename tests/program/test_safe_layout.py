"""Random functions, and the same with random parameters taken away: with SafeLayout no signal may stand where it does not
stand in the database of the whole."""

import json
import os
import random
import re

from support import ProgramTest

FUNCTIONS = 100  # in a catalog
# The sanitizers take many times the time.
CATALOGS = int(os.environ.get("TARVEX_CATALOGS", "2" if os.environ["TARVEX_SANITIZED"] == "ON" else "20"))

DEFINITION = "<Definition>" + "".join(
    f'<TypeDef TypeID="{name}"><TDefName>{name}</TDefName>' + (f"<TDefSize>{size}</TDefSize>" if size else "") +
    "</TypeDef>"
    for name, size in [("type_unsigned_byte", 1), ("type_signed_byte", 1), ("type_unsigned_word", 2),
                       ("type_signed_word", 2), ("type_unsigned_long", 4), ("type_signed_long", 4), ("type_other", 1),
                       ("type_without_size", None)]
) + '<UnitDef UnitID="unit_none"><UnitDefName>none</UnitDefName><UnitDefCode>0</UnitDefCode></UnitDef></Definition>'

NUMBERS = [("TUByte", "type_unsigned_byte"), ("TSByte", "type_signed_byte"), ("TUWord", "type_unsigned_word"),
           ("TSWord", "type_signed_word"), ("TULong", "type_unsigned_long"), ("TSLong", "type_signed_long")]
OPERATIONS = ["PCmdSet", "PCmdSetGet", "PReportStatus"]

# What can be wrong with a parameter; the last ones only with numbers and records.
LOSSES = ["unknown type", "no name", "position is no number", "position is too large", "no OPType element",
          "position of another", "named twice", "gone"]
NUMBER_LOSSES = LOSSES + ["no size"]
RECORD_LOSSES = LOSSES + ["other count", "field fails"]


def number(basis, type_ref):
    return (f'<TNumber><BasisDataType><{basis} TypeRef="{type_ref}"/></BasisDataType><Exponent>0</Exponent>'
            '<Step>1</Step><Unit UnitRef="unit_none"/></TNumber>')


def bits(element, positions):
    return (f'<{element} TypeRef="type_other" Length="1">' + "".join(
        f'<TBoolField BitPos="{bit}"><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>'
        for bit in positions) + f"</{element}>")


class Function:
    """A property with some parameters; `damage` says what is wrong with which of them."""

    def __init__(self, rng, fkt_id):
        self.fkt_id = fkt_id
        self.params = []
        if rng.random() < 0.25:
            self.params = [("Pos", "number", number("TUWord", "type_unsigned_word")),
                           ("Data", "record", self.record(rng, "D", 0))]
        for index in range(rng.randint(1, 5)):
            self.params.append((f"P{index}", *self.kind(rng, f"P{index}", 0)))
        self.used = [rng.sample(OPERATIONS, rng.randint(1, 3)) for _ in self.params]
        self.damage = {}

    def kind(self, rng, name, depth):
        kinds = ["number"] * 5 + ["enum"] * 2 + ["bool", "bits"]
        kinds += ["record"] * 3 if depth < 3 else []
        kinds += ["string", "array", "stream", "short stream"] if rng.random() < 0.3 else []
        kind = rng.choice(kinds)
        if kind == "number":
            return kind, number(*rng.choice(NUMBERS))
        if kind == "enum":
            code = rng.choice([1, 300])
            return kind, f'<TEnum TypeRef="type_other"><TEnumValue Code="{code}">{name}x</TEnumValue></TEnum>'
        if kind in ("bool", "bits"):
            return kind, bits("TBool" if kind == "bool" else "TBitField", rng.sample(range(8), rng.randint(1, 3)))
        if kind == "record":
            return kind, self.record(rng, name, depth)
        return kind, {"string": '<TString TypeRef="type_other"/>',
                      "array": f'<TArray TypeRef="type_other"><TArrayName>{name}e</TArrayName>'
                               f'<TArrayElementType>{number(*NUMBERS[0])}</TArrayElementType></TArray>',
                      "stream": '<TStream TypeRef="type_other"><StreamCase/></TStream>',
                      "short stream": '<TShortStream TypeRef="type_other"/>'}[kind]

    def record(self, rng, name, depth):
        fields = [(f"{name}f{index}", *self.kind(rng, f"{name}f{index}", depth + 1))
                  for index in range(1, rng.randint(1, 4) + 1)]
        return (f'<TRecord TypeRef="type_other" NElements="{len(fields)}">' + "".join(
            f'<TRecordField FieldIdx="{index}"><TRecordFieldName>{field}</TRecordFieldName>'
            f"<TRecordFieldType>{content}</TRecordFieldType></TRecordField>"
            for index, (field, _, content) in enumerate(fields, 1)) + "</TRecord>")

    def harm(self, rng):
        index = rng.randrange(len(self.params))
        kind = self.params[index][1]
        losses = NUMBER_LOSSES if kind == "number" else RECORD_LOSSES if kind == "record" else LOSSES
        if kind == "record" and self.params[0][0] == "Pos":
            # Without any trace of a record "Pos" is a number as any other.
            losses = [loss for loss in losses if loss != "gone"]
        self.damage[index] = rng.choice(losses)

    def positions(self, operation):
        """The parameters of an operation, each with its position in the whole catalog."""
        return {index: pos for pos, index in enumerate(
            (i for i, used in enumerate(self.used) if operation in used), 1)}

    def is_incomplete(self, operation):
        """Something is wrong in the operation that the catalog itself shows."""
        places = self.positions(operation)
        for index, damage in self.damage.items():
            if damage == "no OPType element" or (index in places and damage != "gone"):
                return damage != "field fails" or self.params[index][2].count("<TRecord ") > 1
            if index in places and damage == "gone" and any(
                    pos > places[index] for i, pos in places.items() if i not in self.damage):
                return True
        return False

    def xml(self, is_harmed):
        params = "".join(self.param_xml(index, self.damage.get(index) if is_harmed else None)
                         for index in range(len(self.params)))
        return (f"<Function><FunctionID>0x{self.fkt_id:03X}</FunctionID><FunctionName>F{self.fkt_id}</FunctionName>"
                f"<FunctionClass><Property><PUnclassified>{params}</PUnclassified></Property></FunctionClass></Function>")

    def param_xml(self, index, damage):
        name, _, content = self.params[index]
        if damage == "gone":
            return ""
        operations = ""
        for operation in self.used[index]:
            pos = self.positions(operation)[index]
            text = {"position is no number": "x1", "position is too large": "256",
                    "position of another": str(pos + 1 if pos == 1 else pos - 1)}.get(damage, str(pos))
            element = f"<{operation}><ParamPos>{text}</ParamPos></{operation}>"
            operations += element * (2 if damage == "named twice" else 1)
        wrapper = "OtherOPType" if damage == "no OPType element" else "PUParamOPType"
        if damage == "unknown type":
            content = "<TUnknown/>"
        elif damage == "no name":
            name = ""
        elif damage == "no size":
            content = re.sub(r"type_\w+", "type_without_size", content, count=1)
        elif damage == "other count":
            content = re.sub(r'NElements="(\d+)"', lambda found: f'NElements="{int(found[1]) + 1}"', content, count=1)
        elif damage == "field fails":
            # A record inside that is called "Data" wants a "Pos" beside it.
            content = re.sub(r"<TRecordFieldName>\w+(</TRecordFieldName><TRecordFieldType><TRecord )",
                             r"<TRecordFieldName>Data\1", content, count=1)
        return (f"<PUParam><ParamName>{name}</ParamName><{wrapper}>{operations}</{wrapper}>"
                f"<PUParamType>{content}</PUParamType></PUParam>")


def places(message):
    """Where the signals of a message stand, by name."""
    return {signal["name"]: {key: value for key, value in signal.items() if key != "values"}
            for signal in message["signals"]}


class TakenAway(ProgramTest):
    def convert(self, functions, is_harmed):
        blocks = "".join(function.xml(is_harmed) for function in functions)
        self.write("cat.xml", f"<FunctionCatalog><FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>{blocks}"
                              f"</FBlock>{DEFINITION}</FunctionCatalog>")
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual(result.returncode, 0, result.stdout)
        database = json.loads((self.dir / "out.vorn").read_text())
        return {message["identifier"]: message for message in database["messages"]}

    def check(self, functions):
        whole = self.convert(functions, False)
        harmed = self.convert(functions, True)
        found = 0
        for function in functions:
            for number_of_operation, operation in zip((0, 2, 12), OPERATIONS):
                identifier = (0x22 << 12 | function.fkt_id) << 4 | number_of_operation
                message = harmed.get(identifier)
                if message is None:
                    continue
                expected = places(whole[identifier])
                for name, place in places(message).items():
                    self.assertEqual(place, expected.get(name), (function.damage, function.xml(True)))
                    found += 1
                if function.is_incomplete(operation):
                    self.assertEqual(message["attributes"]["Layout"], "Incomplete",
                                     (function.damage, operation, function.xml(True)))
        return found

    def test_no_signal_moves(self):
        self.write("TARVEX.ini", "[Import]\nFCatImportNewer=1\n[Conversion]\nSafeLayout=1\nUniqueSignalNames=0\n"
                                 "WarnOnOverwrite=0\nMakeReadOnly=0\n")
        found = 0
        for seed in range(CATALOGS):
            rng = random.Random(seed)
            functions = [Function(rng, fkt_id) for fkt_id in range(FUNCTIONS)]
            for function in functions:
                function.harm(rng)
                # A place that two claim is one only as long as the other is there.
                if rng.random() < 0.5 and "position of another" not in function.damage.values():
                    function.harm(rng)
                    if len(function.damage) > 1 and "position of another" in function.damage.values():
                        function.damage.popitem()
            found += self.check(functions)
        self.assertGreater(found, CATALOGS * FUNCTIONS)  # there was something to compare
