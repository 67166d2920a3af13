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
ERROR = "PReportError"

# What can be wrong with a parameter; the last ones only with those of one kind.
LOSSES = ["unknown type", "no name", "position is no number", "position is too large", "no OPType element",
          "position of another", "named twice", "gone"]
NUMBER_LOSSES = LOSSES + ["no size"]
RECORD_LOSSES = LOSSES + ["other count", "field fails"]
ENUM_LOSSES = LOSSES + ["no TypeRef", "code is none"] * 2
STREAM_LOSSES = LOSSES + ["case fails", "place is claimed twice"] * 2
KIND_LOSSES = {"number": NUMBER_LOSSES, "record": RECORD_LOSSES, "enum": ENUM_LOSSES, "stream": STREAM_LOSSES}


def number(basis, type_ref):
    return (f'<TNumber><BasisDataType><{basis} TypeRef="{type_ref}"/></BasisDataType><Exponent>0</Exponent>'
            '<Step>1</Step><Unit UnitRef="unit_none"/></TNumber>')


def bits(element, positions):
    return (f'<{element} TypeRef="type_other" Length="1">' + "".join(
        f'<TBoolField BitPos="{bit}"><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>'
        for bit in positions) + f"</{element}>")


class ErrorParams:
    """Two parameters of the operation "Error" that functions refer to; one of them may be lost."""

    def __init__(self, rng, name):
        self.ids = [f"{name}{index}" for index in (1, 2)]
        self.basis = [rng.choice(NUMBERS) for _ in self.ids]
        self.harmed = rng.choice([None, 0, 1])
        self.damage = rng.choice(["unknown type", "position is no number", "no OPType element"])

    def is_incomplete(self, operation):
        return self.harmed is not None and (operation == ERROR or self.damage == "no OPType element")

    def references(self):
        return "".join(f'<ERParam ParamDefRef="{param_id}"/>' for param_id in self.ids)

    def xml(self, is_harmed):
        return "".join(self.param_xml(index, self.damage if is_harmed and index == self.harmed else None)
                       for index in range(len(self.ids)))

    def param_xml(self, index, damage):
        wrapper = "OtherOPType" if damage == "no OPType element" else "ERParamOPType"
        content = "<TUnknown/>" if damage == "unknown type" else number(*self.basis[index])
        pos = "x1" if damage == "position is no number" else index + 1
        return (f'<ERParam ParamDefId="{self.ids[index]}"><ParamName>{self.ids[index]}</ParamName><{wrapper}><{ERROR}>'
                f"<ParamPos>{pos}</ParamPos></{ERROR}></{wrapper}><ERParamType>{content}</ERParamType></ERParam>")


class Function:
    """A property with some parameters; `damage` says what is wrong with which of them."""

    def __init__(self, rng, fkt_id, all_errors):
        self.fkt_id = fkt_id
        self.is_copied = rng.random() < 0.3
        self.errors = rng.choice(all_errors) if rng.random() < 0.3 else None
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
                      "stream": '<TStream TypeRef="type_other"><StreamCase><StreamParam><ParamName ParamIdx="1">'
                                f"{name}s</ParamName>{number(*NUMBERS[0])}</StreamParam></StreamCase></TStream>",
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
        losses = KIND_LOSSES.get(kind, LOSSES)
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
        if self.errors and self.errors.is_incomplete(operation):
            return True
        places = self.positions(operation)
        for index, damage in self.damage.items():
            if damage == "no TypeRef":
                continue
            if damage == "no OPType element" or (index in places and damage != "gone"):
                return damage != "field fails" or self.params[index][2].count("<TRecord ") > 1
            if index in places and damage == "gone" and any(
                    pos > places[index] for i, pos in places.items() if i not in self.damage):
                return True
        return False

    def xml(self, is_harmed):
        params = "".join(self.param_xml(index, self.damage.get(index) if is_harmed else None)
                         for index in range(len(self.params)))
        params += self.errors.references() if self.errors else ""
        return (f'<Function FktDefId="F{self.fkt_id}"><FunctionID>0x{self.fkt_id:03X}</FunctionID>'
                f"<FunctionName>F{self.fkt_id}</FunctionName><FunctionClass><Property><PUnclassified>{params}"
                "</PUnclassified></Property></FunctionClass></Function>")

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
        elif damage == "no TypeRef":
            content = content.replace(' TypeRef="type_other"', "", 1)
        elif damage == "code is none":
            content = re.sub(r'Code="(\d+)"', r'Code="\1y"', content, count=1)
        elif damage == "case fails":
            content = content.replace(' ParamIdx="1"', "", 1)
        elif damage == "place is claimed twice":
            content = re.sub(r"(<StreamParam>.*</StreamParam>)", r"\1\1", content, count=1)
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
    def convert(self, functions, all_errors, is_harmed):
        errors = "".join(errors.xml(is_harmed) for errors in all_errors)
        own = "".join(function.xml(is_harmed) for function in functions)
        copies = "".join(f'<Function FktDefRef="F{function.fkt_id}"/>' for function in functions if function.is_copied)
        self.write("cat.xml", f"<FunctionCatalog>{errors}<FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>{own}"
                              f"</FBlock><FBlock><FBlockID>0x23</FBlockID><FBlockName>Copy</FBlockName>{copies}</FBlock>"
                              f"{DEFINITION}</FunctionCatalog>")
        result = self.run_program("cat.xml", "out.vorn")
        self.assertEqual(result.returncode, 0, result.stdout)
        database = json.loads((self.dir / "out.vorn").read_text())
        return {message["identifier"]: message for message in database["messages"]}

    def check(self, functions, all_errors):
        whole = self.convert(functions, all_errors, False)
        harmed = self.convert(functions, all_errors, True)
        found = 0
        for function in functions:
            for block in (0x22, 0x23) if function.is_copied else (0x22,):
                for number_of_operation, operation in zip((0, 2, 12, 15), [*OPERATIONS, ERROR]):
                    identifier = (block << 12 | function.fkt_id) << 4 | number_of_operation
                    if identifier in harmed:
                        found += self.check_message(function, operation, whole[identifier], harmed[identifier])
        return found

    def check_message(self, function, operation, whole, harmed):
        expected = places(whole)
        for name, place in places(harmed).items():
            self.assertEqual(place, expected.get(name), (function.damage, function.xml(True)))
        if function.is_incomplete(operation):
            self.assertEqual(harmed["attributes"]["Layout"], "Incomplete", (function.damage, operation, function.xml(True)))
        return len(harmed["signals"])

    def test_no_signal_moves(self):
        self.write("TARVEX.ini", "[Import]\nFCatImportNewer=1\n[Conversion]\nSafeLayout=1\nUniqueSignalNames=0\n"
                                 "WarnOnOverwrite=0\nMakeReadOnly=0\n")
        found = 0
        for seed in range(CATALOGS):
            rng = random.Random(seed)
            all_errors = [ErrorParams(rng, name) for name in ("Er", "Fault")]
            functions = [Function(rng, fkt_id, all_errors) for fkt_id in range(FUNCTIONS)]
            for function in functions:
                function.harm(rng)
                # A place that two claim is one only as long as the other is there.
                if rng.random() < 0.5 and "position of another" not in function.damage.values():
                    function.harm(rng)
                    if len(function.damage) > 1 and "position of another" in function.damage.values():
                        function.damage.popitem()
            found += self.check(functions, all_errors)
        self.assertGreater(found, CATALOGS * FUNCTIONS)  # there was something to compare
