/// The forms of newer catalogs: what their import says, and what messages of them say.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/operation.h"
#include "disasm/decoding.h"
#include "params/layout.h"

namespace tarvex::test::newer_forms_test {
namespace {

struct Row {
    const char* what;
    std::vector<ParamOf> params;
    const char* bytes;
    const char* shown;
    const char* messages = "";
};

void Expect(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.what) + ": " + row.bytes);
        const Decoding decoding(row.params, true);
        EXPECT_EQ(decoding.Import().messages, row.messages);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

std::string Short(std::string_view cases, std::string_view attributes = "") {
    return std::string(R"(<TShortStream TypeRef="type_stream" )")
               .append(attributes)
               .append(">")
               .append(cases) +
           "</TShortStream>";
}

std::string Classified(std::string_view attributes = "") {
    return std::string(R"(<TCStream TypeRef="type_stream" )").append(attributes) + "/>";
}

std::string Signal(std::string_view idx, std::string_view name, std::string_view bits) {
    return std::string("<StreamSignal><SignalName SignalIdx=\"")
        .append(idx)
        .append("\">")
        .append(name)
        .append("</SignalName><SignalBitLength>")
        .append(bits)
        .append("</SignalBitLength></StreamSignal>");
}

std::string CaseOf(std::string_view content, std::string_view posX = "#NULL#",
                   std::string_view posY = "#NULL#") {
    return std::string("<StreamCase><PosDescription PosX=\"")
               .append(posX)
               .append("\" PosY=\"")
               .append(posY)
               .append("\"/>")
               .append(content) +
           "</StreamCase>";
}

TEST(NewerForms, ShortStreamsTakeAsManyBytesAsTheySay) {
    const std::string one = Short(Case("#NULL#", "#NULL#", {{"1", "A", kUByte}, {"2", "B", kUWord}}));
    Expect({
        {"bytes", {{"S", Short("")}, {"Z", kUByte}}, "02 AA BB 05", "S@0+3=AA BB<> Z@3+1=5"},
        {"no bytes", {{"S", Short("")}, {"Z", kUByte}}, "00 05", "S@0+1=<> Z@1+1=5"},
        {"no length", {{"S", Short("")}}, "", "!byte 0: S needs 1 byte, 0 are left"},
        {"too few", {{"S", Short("")}}, "03 AA BB", "!byte 0: S needs 4 bytes, 3 are left"},
        {"a case",
         {{"S", one}, {"Z", kUByte}},
         "03 01 00 02 05",
         "S@0+4={StreamCase}<A@1+1=1 B@2+2=2> Z@4+1=5"},
        {"longer than its case",
         {{"S", one}, {"Z", kUByte}},
         "04 01 00 02 FF 05",
         "S@0+5={StreamCase}<A@1+1=1 B@2+2=2> Z@5+1=5 !byte 4: S has 1 byte left over"},
        {"shorter than its case",
         {{"S", one}},
         "02 01 00 02",
         "S@0+2={StreamCase}<A@1+1=1> !byte 2: B needs 2 bytes, 1 is left"},
        {"at its bound", {{"S", Short("", R"(MaxLength="2")")}}, "02 AA BB", "S@0+3=AA BB<>"},
        {"beyond its bound",
         {{"S", Short("", R"(MaxLength="1")")}},
         "02 AA BB",
         "S@0+3=AA BB<> !byte 0: S has 2 bytes, the catalog allows 1"},
        {"no bound", {{"S", Short("", R"(MaxLength="0")")}}, "02 AA BB", "S@0+3=AA BB<>"},
        {"a bound that is no number",
         {{"S", Short("", R"(MaxLength="some")")}},
         "02 AA BB",
         "S@0+3=AA BB<>",
         "Warning #0203 in '/Cat/Amp/Volume/S':\n  Failed to analyze value 'some'\n"},
        {"in an array",
         {{"L", Array("9", "E", Short(""))}},
         "01 AA 00 02 BB CC",
         "L@0+6=<[1]E@0+2=AA<> [2]E@2+1=<> [3]E@3+3=BB CC<>>"},
        {"in a record",
         {{"R", Record({{"E", Short("")}, {"F", kUByte}})}},
         "01 AA 07",
         "R@0+3=<E@0+2=AA<> F@2+1=7>"},
    });
}

TEST(NewerForms, ClassifiedStreamsHaveAMediaTypeAndContent) {
    const ParamOf stream{"S", Classified()};
    Expect({
        {"content", {stream, {"Z", kUByte}}, "00 05 61 2F 62 00 FF 07", "S@0+7=a/b: FF Z@7+1=7"},
        {"no content", {stream}, "00 04 61 2F 62 00", "S@0+6=a/b"},
        {"no zero byte", {stream}, "00 03 61 2F 62", "S@0+5=a/b {NotTerm}"},
        {"what can't be printed", {stream}, "00 03 61 1B 00", "S@0+5=a."},
        {"nothing", {stream}, "00 00", "S@0+2="},
        {"too few", {stream}, "00 04 61", "!byte 0: S needs 6 bytes, 3 are left"},
        {"half a length", {stream}, "00", "!byte 0: S needs 2 bytes, 1 is left"},
        {"beyond its bound",
         {{"S", Classified(R"(MaxLength="3" MediaType="a/b")")}},
         "00 04 61 2F 62 00",
         "S@0+6=a/b !byte 0: S has 4 bytes, the catalog allows 3"},
    });
}

TEST(NewerForms, StreamSignalsArePackedFromTheHighestBitOn) {
    const std::string content = Signal("1", "A", "3") + Signal("2", "B", "7") + Signal("3", "C", "6");
    const std::string unordered = Signal("2", "B", "7") + Signal("3", "C", "6") + Signal("1", "A", "3");
    const std::string large = Signal("1", "A", "4") + Signal("2", "B", "32");
    // 101 0000011 000010: 5, 3, 2
    Expect({
        {"in order",
         {{"S", Stream(CaseOf(content))}, {"Z", kUByte}},
         "A0 C2 09",
         "S@0+2={StreamCase}<A@0+1=5 B@0+2=3 C@1+1=2> Z@2+1=9"},
        {"by index",
         {{"S", Stream(CaseOf(unordered))}},
         "A0 C2",
         "S@0+2={StreamCase}<A@0+1=5 B@0+2=3 C@1+1=2>"},
        {"short stream",
         {{"S", Short(CaseOf(content))}},
         "02 A0 C2",
         "S@0+3={StreamCase}<A@1+1=5 B@1+2=3 C@2+1=2>"},
        {"not all there",
         {{"S", Stream(CaseOf(content))}},
         "A0",
         "S@0+1={StreamCase}<A@0+1=5> !byte 0: B is not all there"},
        {"over five bytes",
         {{"S", Stream(CaseOf(large))}},
         "1F FF FF FF F0",
         "S@0+5={StreamCase}<A@0+1=1 B@0+5=4294967295>"},
    });
}

TEST(NewerForms, AttributesMayBeMissing) {
    const std::string bare = "<TEnum TypeRef=\"type_enum\"><TEnumValue Code=\"0x1\">On</TEnumValue>";
    Expect({
        {"MaxSize", {{"T", R"(<TString TypeRef="type_string"/>)"}}, "01 41 42 00", "T@0+4=AB"},
        {"NMax",
         {{"L", R"(<TArray TypeRef="type_array"><TArrayName>E</TArrayName>)" + kUByte + "</TArray>"}},
         "01 02",
         "L@0+2=<[1]E@0+1=1 [2]E@1+1=2>"},
        {"NElements",
         {{"R",
           R"(<TRecord TypeRef="type_record"><TRecordField FieldIdx="1"><TRecordFieldName>F</TRecordFieldName>)" +
               kUByte + "</TRecordField></TRecord>"},
          {"Z", kUByte}},
         "01 02",
         "R@0+1=<F@0+1=1> Z@1+1=2"},
        {"TEnumMax", {{"E", bare + "</TEnum>"}}, "01", "E@0+1=On (0x01)"},
        {"TEnumMax, a code of two bytes",
         {{"E", bare + "<TEnumValue Code=\"0x100\">All</TEnumValue></TEnum>"}},
         "01 00",
         "E@0+2=All (0x0100)"},
        {"TEnumMax, an open range",
         {{"E", bare + "<TEnumValue Code=\"&gt;7\">Many</TEnumValue></TEnum>"}},
         "09",
         "E@0+1=Many (0x09)"},
        {"codes beyond TEnumMax",
         {{"E",
           R"(<TEnum TypeRef="type_enum" TEnumMax="67"><TEnumValue Code="0xC0">X</TEnumValue></TEnum>)"}},
         "C0",
         "E@0+1=X (0xC0)"},
        {"codes beyond the byte",
         {{"E",
           R"(<TEnum TypeRef="type_enum" TEnumMax="67"><TEnumValue Code="0x1C0">X</TEnumValue></TEnum>)"}},
         "C0",
         "E@0+1=0xC0",
         "Warning #0083 in '/Cat/Amp/Volume/E':\n  Enum code out of range (0...EnumMax)\n"},
    });
}

TEST(NewerForms, SymbolicNamesGoBeforeTexts) {
    const auto value = [](std::string_view attribute, std::string_view text) {
        return "<TEnum TypeRef=\"type_enum\"><TEnumValue Code=\"1\" " + std::string(attribute) + ">" +
               std::string(text) + "</TEnumValue></TEnum>";
    };
    Expect({
        {"both", {{"E", value("SymbolicName=\"Busy\"", "The device is busy.")}}, "01", "E@0+1=Busy (0x01)"},
        {"name alone", {{"E", value("SymbolicName=\"Busy\"", "")}}, "01", "E@0+1=Busy (0x01)"},
        {"empty name", {{"E", value("SymbolicName=\"\"", "Idle")}}, "01", "E@0+1=Idle (0x01)"},
        {"text alone", {{"E", value("", "Idle")}}, "01", "E@0+1=Idle (0x01)"},
    });
}

TEST(NewerForms, BitFieldsMayCountBytes) {
    struct BitRow {
        const char* length;
        int highestBit;
        int bytes;
        const char* messages;
    };
    constexpr BitRow kRows[] = {
        {"1", 0, 1, ""},
        {"1", 7, 1, ""},
        {"1", 8, 2,
         "Warning #0093 in '/Cat/Amp/Volume/B':\n  Ambiguous length of bitfield (1 bits <-> 9 bits). Length "
         "will be set "
         "to 9 bits.\n"},
        {"2", 1, 1, ""},
        {"2", 2, 2, ""},
        {"2", 15, 2, ""},
        {"8", 7, 1, ""},
        {"9", 9, 2, ""},
    };
    for (const BitRow& row : kRows) {
        SCOPED_TRACE(std::string(row.length) + ", bit " + std::to_string(row.highestBit));
        const Decoding decoding(
            {{"B", "<TBitField TypeRef=\"type_bitfield\" Length=\"" + std::string(row.length) +
                       "\"><TBoolField BitPos=\"" + std::to_string(row.highestBit) +
                       "\"><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc>"
                       "</TBoolField></TBitField>"}},
            true);
        EXPECT_EQ(decoding.Import().messages, row.messages);
        const auto decoded = decoding.Decode("FF FF");
        ASSERT_EQ(decoded->items.Items().size(), 1U);
        EXPECT_EQ(decoded->items.Items()[0]->Bytes().size(), static_cast<std::size_t>(row.bytes));
    }
}

TEST(NewerForms, SelectorsAreFoundOutward) {
    const std::string cases =
        Case("Mode", "1", {{"1", "A", kUByte}}) + Case("Mode", "2", {{"1", "B", kUWord}});
    Expect({
        {"beside",
         {{"Mode", kUByte}, {"S", Stream(cases)}},
         "02 00 05",
         "Mode@0+1=2 S@1+2=(Mode=0x02)<B@1+2=5>"},
        {"around a record",
         {{"Mode", kUByte}, {"R", Record({{"S", Stream(cases)}})}},
         "01 05",
         "Mode@0+1=1 R@1+1=<S@1+1=(Mode=0x01)<A@1+1=5>>"},
        {"around an array",
         {{"Mode", kUByte}, {"L", Array("9", "E", Record({{"S", Short(cases)}}))}},
         "01 01 05 01 06",
         "Mode@0+1=1 L@1+4=<[1]E@1+2=<S@1+2=(Mode=0x01)<A@2+1=5>> [2]E@3+2=<S@3+2=(Mode=0x01)<A@4+1=6>>>"},
        {"the nearest",
         {{"Mode", kUByte}, {"R", Record({{"Mode", kUByte}, {"S", Stream(cases)}})}},
         "01 02 00 05",
         "Mode@0+1=1 R@1+3=<Mode@1+1=2 S@2+2=(Mode=0x02)<B@2+2=5>>",
         "Warning #0009 in '/Cat/Amp/Volume/Status/R/Mode':\n  Multiple use of parameter name 'Mode'\n"},
        {"it comes later",
         {{"R", Record({{"S", Stream(cases)}})}, {"Mode", kUByte}},
         "05 01",
         "!byte 0: S has no case that fits"},
    });
}

TEST(NewerForms, GroupsRepeatToTheEndOfTheirStream) {
    const auto only = [](const std::vector<StreamParamOf>& params) {
        return Case("#NULL#", "#NULL#", params);
    };
    const std::string pair = only({{"1seq1", "A", kUByte}, {"1seq2", "B", kUByte}});
    const std::string across = only({{"1seq1", "A", kUByte}, {"2seq2", "B", kUByte}});
    const std::string behind = only({{"1", "N", kUByte}, {"2seq1", "A", kUByte}});
    const std::string reversed = only({{"1seq2", "B", kUByte}, {"2seq1", "A", kUByte}});
    const std::string inside =
        only({{"1", "N", kUByte}, {"2seq1", "A", kUByte}, {"2seq2", "B", kUByte}, {"3", "Z", kUByte}});
    Expect({
        {"one",
         {{"S", Stream(only({{"1seq1", "A", kUByte}}))}},
         "05 06",
         "S@0+2={StreamCase}<[1]A@0+1=5 [2]A@1+1=6>"},
        {"none of them", {{"S", Stream(pair)}}, "", "S@0+0={StreamCase}<>"},
        {"two",
         {{"S", Stream(pair)}},
         "01 02 03 04",
         "S@0+4={StreamCase}<[1]A@0+1=1 [1]B@1+1=2 [2]A@2+1=3 [2]B@3+1=4>"},
        {"numbered across positions",
         {{"S", Stream(across)}},
         "01 02 03 04",
         "S@0+4={StreamCase}<[1]A@0+1=1 [1]B@1+1=2 [2]A@2+1=3 [2]B@3+1=4>"},
        {"in the order of their numbers",
         {{"S", Stream(reversed)}},
         "01 02",
         "S@0+2={StreamCase}<[1]A@0+1=1 [1]B@1+1=2>"},
        {"behind one that stands once",
         {{"S", Stream(behind)}},
         "09 05 06",
         "S@0+3={StreamCase}<N@0+1=9 [1]A@1+1=5 [2]A@2+1=6>"},
        {"not all of the last",
         {{"S", Stream(pair)}},
         "01 02 03",
         "S@0+3={StreamCase}<[1]A@0+1=1 [1]B@1+1=2 [2]A@2+1=3> !byte 3: B needs 1 byte, 0 are left"},
        {"in front of others it stands once",
         {{"S", Stream(inside)}},
         "09 01 02 03",
         "S@0+4={StreamCase}<N@0+1=9 A@1+1=1 B@2+1=2 Z@3+1=3>"},
        {"in a short stream",
         {{"S", Short(pair)}, {"Z", kUByte}},
         "04 01 02 03 04 09",
         "S@0+5={StreamCase}<[1]A@1+1=1 [1]B@2+1=2 [2]A@3+1=3 [2]B@4+1=4> Z@5+1=9"},
        // The "Pos" of the repetition before says nothing of this one's "Data".
        {"a Pos behind its Data",
         {{"S", Stream(only(
                    {{"1seq1", "Data", Record({{"A", kUByte}, {"B", kUByte}})}, {"1seq2", "Pos", kUWord}}))}},
         "05 06 01 00 07 08 01 00",
         "S@0+8={StreamCase}<[1]Data@0+2=<A@0+1=5 B@1+1=6> [1]Pos@2+2=PosX=1 PosY=0 [2]Data@4+2=<A@4+1=7 "
         "B@5+1=8> "
         "[2]Pos@6+2=PosX=1 PosY=0>"},
        {"without bytes",
         {{"S", Stream(only({{"1seq1", "V", kVoid}}))}},
         "01",
         "S@0+0={StreamCase}<[1]V@0+0=> !byte 0: 1 byte left over"},
        {"a number is missing",
         {{"S", Stream(only({{"1seq1", "A", kUByte}, {"1seq3", "B", kUByte}}))}},
         "01",
         "!byte 0: S has no case that fits, and one that could not be imported (message 32); the rest is 01",
         "Error #0025 in '/Cat/Amp/Volume/S/{StreamCase}':\n  Can't reconstruct sequence of parameters "
         "(check attribute "
         "'ParamIdx' of StreamParams)\nError #0032 in '/Cat/Amp/Volume/S':\n  Failed to import element "
         "<StreamCase>\n"},
    });
}

TEST(NewerForms, CasesWithoutContentAreBytes) {
    const std::string among = Case("Mode", "1", {{"1", "A", kUByte}}) + Case("Mode", "2", {});
    Expect({
        {"alone", {{"S", Stream(Case("#NULL#", "#NULL#", {}))}}, "01 02", "S@0+2=01 02<>"},
        {"among others",
         {{"Mode", kUByte}, {"S", Stream(among)}},
         "02 AA BB",
         "Mode@0+1=2 S@1+2=(Mode=0x02) AA BB<>"},
        {"within the bytes of a short stream",
         {{"Mode", kUByte}, {"S", Short(among)}, {"Z", kUByte}},
         "02 01 AA 07",
         "Mode@0+1=2 S@1+2=(Mode=0x02) AA<> Z@3+1=7"},
    });
}

TEST(NewerForms, VerdictsTellWhatAMessageAloneTells) {
    struct LayoutRow {
        const char* what;
        std::vector<ParamOf> params;
        Layout layout;
    };
    const std::string record = Record({{"F", kUByte}, {"G", Record({{"H", kUByte}})}});
    const LayoutRow rows[] = {
        {"numbers", {{"A", kUByte}, {"B", kSwitch}}, Layout::Complete},
        {"void", {{"A", kVoid}}, Layout::Complete},
        {"records in records", {{"R", record}, {"Z", kUByte}}, Layout::Complete},
        {"a chosen record", {{"Pos", kUWord}, {"Data", record}}, Layout::Complete},
        {"more behind it", {{"Pos", kUWord}, {"Data", record}, {"Z", kUByte}}, Layout::Open},
        {"chosen by another size of Pos", {{"Pos", kUByte}, {"Data", record}}, Layout::Open},
        {"a string", {{"A", kUByte}, {"T", Text("8")}}, Layout::Open},
        {"a string in a record", {{"R", Record({{"T", Text("8")}})}}, Layout::Open},
        {"an array", {{"L", Array("2", "E", kUByte)}}, Layout::Open},
        {"a short stream", {{"S", Short("")}}, Layout::Open},
        {"a classified stream", {{"S", Classified()}}, Layout::Open},
        {"a lost case", {{"S", Stream(CaseOf("<StreamParam/>"))}}, Layout::Incomplete},
    };
    for (const LayoutRow& row : rows) {
        SCOPED_TRACE(row.what);
        const Decoding decoding(row.params, true);
        const ZMTFunction* function = decoding.Import().catalog->GetAt(0x22)->GetAt(0x400);
        EXPECT_EQ(LayoutOf(*function->GetAt(0xC)), row.layout);
    }
}

}  // namespace
}  // namespace tarvex::test::newer_forms_test
