/// What the decoder says where the catalog lacks something inside a parameter, and the verdict on its
/// operation.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/catalog.h"
#include "disasm/decoding.h"
#include "params/layout.h"

namespace tarvex::test::holes_test {
namespace {

struct Row {
    const char* what;
    std::vector<ParamOf> params;
    const char* bytes;
    const char* shown;
    Layout layout;
};

/// All forms are read. The messages of the import are those of other tests.
void Expect(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.what) + ": " + row.bytes);
        const Decoding decoding(row.params, true);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
        const ZMTFunction* function = decoding.Import().catalog->GetAt(0x22)->GetAt(0x400);
        EXPECT_EQ(LayoutOf(*function->GetAt(0xC)), row.layout);
    }
}

std::string Enumeration(std::string_view attributes, std::string_view values) {
    return std::string("<TEnum ").append(attributes).append(">").append(values) + "</TEnum>";
}

std::string Value(std::string_view code) {
    return "<TEnumValue Code=\"" + std::string(code) + "\">V</TEnumValue>";
}

TEST(Holes, WithoutALargestCodeEveryCodeTellsTheSize) {
    const std::string typed = "TypeRef=\"type_enum\"";
    const std::string bounded = typed + " TEnumMax=\"9\"";
    const ParamOf next{"Z", kUByte};
    Expect({
        {"no type, a code of one byte",
         {{"E", Enumeration("", Value("1"))}, next},
         "01 02",
         "E@0+1=0x01 Z@1+1=2",
         Layout::Complete},
        {"no type, a code of two bytes",
         {{"E", Enumeration("", Value("1") + Value("0x100"))}, next},
         "01 00 02",
         "E@0+2=0x0100 Z@2+1=2",
         Layout::Complete},
        {"a code that is none",
         {{"A", kUByte}, {"E", Enumeration(typed, Value("1") + Value("0x1G0"))}, next},
         "07 01 02",
         "A@0+1=7 !byte 1: E has no sure size, as a code could not be read (message 76); the rest is 01 02",
         Layout::Incomplete},
        {"no code",
         {{"E", Enumeration(typed, "<TEnumValue>V</TEnumValue>")}, next},
         "01 02",
         "!byte 0: E has no sure size, as a code could not be read (message 75); the rest is 01 02",
         Layout::Incomplete},
        {"no type and a code that is none",
         {{"E", Enumeration("", Value("x"))}, next},
         "01 02",
         "!byte 0: E has no sure size, as a code could not be read (message 80); the rest is 01 02",
         Layout::Incomplete},
        {"two bytes are the most",
         {{"E", Enumeration(typed, Value("x") + Value("256") + Value("y"))}, next},
         "01 00 02",
         "E@0+2=V (0x0100) Z@2+1=2",
         Layout::Complete},
        {"the largest code is given",
         {{"E", Enumeration(bounded, Value("x"))}, next},
         "01 02",
         "E@0+1=0x01 Z@1+1=2",
         Layout::Complete},
        {"in a record",
         {{"R", Record({{"A", kUByte}, {"E", Enumeration(typed, Value("x"))}})}, next},
         "07 01 02",
         "R@0+1=<A@0+1=7> !byte 1: E has no sure size, as a code could not be read (message 76); the rest "
         "is 01 02",
         Layout::Incomplete},
    });
}

/// A record "Data" of which "Pos" in front of it chooses a field.
std::vector<ParamOf> Chosen(const std::string& record) {
    return {{"Pos", kUWord}, {"Data", record}};
}

std::string Declaring(const char* count, std::string record) {
    const std::string attribute = "NElements=\"";
    const std::size_t begin = record.find(attribute) + attribute.size();
    return record.replace(begin, record.find('"', begin) - begin, count);
}

TEST(Holes, FieldsThatAreChosenMayBeMissing) {
    // The field "Data" fails its check, as no "Pos" stands beside it.
    const std::string lost = Record({{"A", kUByte}, {"Data", Record({{"B", kUByte}})}, {"C", kUByte}});
    const std::string two = Record({{"A", kUByte}, {"B", kUByte}});
    Expect({
        {"the one that failed", Chosen(lost), "02 00 05",
         "Pos@0+2=PosX=2 PosY=0 !byte 2: Data could not keep what stands at position 2; the rest is 05",
         Layout::Incomplete},
        {"one behind it", Chosen(lost), "03 00 05", "Pos@0+2=PosX=3 PosY=0 Data@2+1=<C@2+1=5>",
         Layout::Incomplete},
        {"no field of so few", Chosen(lost), "04 00 05", "Pos@0+2=PosX=4 PosY=0 !byte 2: Data has no field 4",
         Layout::Incomplete},
        {"one that is declared", Chosen(Declaring("3", two)), "03 00 05",
         "Pos@0+2=PosX=3 PosY=0 !byte 2: Data has another number of fields than it says (message 55); the "
         "rest is 05",
         Layout::Incomplete},
        {"one that is there", Chosen(Declaring("3", two)), "02 00 05",
         "Pos@0+2=PosX=2 PosY=0 Data@2+1=<B@2+1=5>", Layout::Incomplete},
        {"one beyond what is declared", Chosen(Declaring("3", two)), "04 00 05",
         "Pos@0+2=PosX=4 PosY=0 !byte 2: Data has no field 4", Layout::Incomplete},
        {"fewer are declared", Chosen(Declaring("1", two)), "03 00 05",
         "Pos@0+2=PosX=3 PosY=0 !byte 2: Data has no field 3", Layout::Incomplete},
    });
}

std::string Signals(const std::vector<const char*>& indices) {
    std::string xml = R"(<StreamCase><PosDescription PosX="#NULL#" PosY="#NULL#"/>)";
    for (const char* index : indices) {
        xml += "<StreamSignal><SignalName SignalIdx=\"" + std::string(index) + "\">S" + index +
               "</SignalName><SignalBitLength>4</SignalBitLength></StreamSignal>";
    }
    return xml + "</StreamCase>";
}

/// A case that names another parameter is no case of the selector that its neighbours have.
TEST(Holes, CasesThatNameNothingNeverFitAmongOthers) {
    const std::string first = Case("X", "1", {{"1", "A", kUByte}});
    const std::string second = Case("Xx", "2", {{"1", "B", kUByte}});
    const std::string text = Text("9");
    Expect({
        {"the other one",
         {{"X", kUByte}, {"S", Stream(first + second)}},
         "01 05",
         "X@0+1=1 S@1+1=(X=0x01)<A@1+1=5>",
         Layout::Open},
        {"it",
         {{"X", kUByte}, {"S", Stream(first + second)}},
         "02 05",
         "X@0+1=2 !byte 1: S has no case that fits",
         Layout::Open},
        {"it comes first",
         {{"X", kUByte}, {"S", Stream(second + first)}},
         "02 05",
         "X@0+1=2 !byte 1: S has no case that fits",
         Layout::Open},
        {"a string can't select",
         {{"X", kUByte}, {"Xx", text}, {"S", Stream(first + second)}},
         "02 01 41 00 05",
         "X@0+1=2 Xx@1+3=A !byte 4: S has no case that fits",
         Layout::Open},
        {"beside a Pos",
         {{"Pos", kUByte}, {"S", Stream(second + Case("#NULL#", "1", {{"1", "A", kUByte}}))}},
         "02 05",
         "Pos@0+1=2 !byte 1: S has no case that fits",
         Layout::Open},
        {"alone",
         {{"Pos", kUByte}, {"S", Stream(second)}},
         "02 05",
         "Pos@0+1=2 S@1+1=(Pos=0x02)<B@1+1=5>",
         Layout::Open},
        {"alone without any selector",
         {{"S", Stream(second)}},
         "05",
         "S@0+1={StreamCase}<B@0+1=5>",
         Layout::Open},
        {"a coordinate is no name",
         {{"Pos", kUWord}, {"S", Stream(Case("3", "1", {{"1", "A", kUByte}}) + Case("4", "2", {}))}},
         "03 01 05",
         "Pos@0+2=PosX=3 PosY=1 S@2+1=(Pos=0x01)<A@2+1=5>",
         Layout::Open},
    });
}

/// Of two that claim a place neither is sure to stand there.
TEST(Holes, PlacesThatTwoClaimEndTheirCase) {
    const auto only = [](const std::vector<StreamParamOf>& params) {
        return Stream(Case("#NULL#", "#NULL#", params));
    };
    Expect({
        {"the second parameter",
         {{"S", only({{"1", "A", kUByte}, {"2", "B", kUByte}, {"2", "C", kUWord}, {"3", "D", kUByte}})}},
         "01 02 03",
         "S@0+1={StreamCase}<A@0+1=1> !byte 1: {StreamCase} has two things at position 2 (message 22); the "
         "rest is 02 03",
         Layout::Incomplete},
        {"the first of a group",
         {{"S", only({{"1seq1", "A", kUByte}, {"1seq1", "B", kUWord}, {"1seq2", "C", kUByte}})}},
         "01 02",
         "!byte 0: {StreamCase} has two things at position 1 (message 22); the rest is 01 02",
         Layout::Incomplete},
        // In the order of their sequence numbers they are C, A, B.
        {"a group in another order",
         {{"S", only({{"1seq2", "A", kUByte},
                      {"2seq1", "C", kUByte},
                      {"3seq3", "B", kUByte},
                      {"3seq3", "D", kUWord}})}},
         "01 02 03",
         "S@0+2={StreamCase}<[1]C@0+1=1 [1]A@1+1=2> !byte 2: {StreamCase} has two things at position 3 "
         "(message 22); the rest is 03",
         Layout::Incomplete},
        {"the second signal",
         {{"S", Stream(Signals({"3", "2", "1", "2"}))}},
         "12 34",
         "S@0+1={StreamCase}<S1@0+1=1> !byte 0: {StreamCase} has two things at position 2 (message 213); the "
         "rest is 12 34",
         Layout::Incomplete},
        {"the first signal",
         {{"S", Stream(Signals({"1", "1"}))}},
         "12",
         "!byte 0: {StreamCase} has two things at position 1 (message 213); the rest is 12",
         Layout::Incomplete},
    });
}

TEST(Holes, CasesThatWereLostAreToldWhereNoneFits) {
    const std::string good = Case("X", "1", {{"1", "A", kUByte}});
    const std::string unknown = Case("X", "2", {{"1", "B", "<TOther/>"}});
    const std::string other = Case("Y", "2", {{"1", "B", kUByte}});
    const ParamOf x{"X", kUByte};
    Expect({
        {"one that is there",
         {x, {"S", Stream(good + unknown)}},
         "01 05",
         "X@0+1=1 S@1+1=(X=0x01)<A@1+1=5>",
         Layout::Incomplete},
        {"none",
         {x, {"S", Stream(good + unknown)}},
         "02 05",
         "X@0+1=2 !byte 1: S has no case that fits, and one that could not be imported (message 32); the "
         "rest is 05",
         Layout::Incomplete},
        {"all are lost",
         {x, {"S", Stream(unknown)}},
         "02 05",
         "X@0+1=2 !byte 1: S has no case that fits, and one that could not be imported (message 32); the "
         "rest is 05",
         Layout::Incomplete},
        {"one with another selector",
         {x, {"Y", kUByte}, {"S", Stream(good + other)}},
         "02 02 05",
         "X@0+1=2 Y@1+1=2 !byte 2: S has no case that fits, and one that could not be imported (message 27); "
         "the rest is 05",
         Layout::Incomplete},
    });
}

/// The message is that of a type without "TDefSize"; one that is 0, or no number, has none.
TEST(Holes, TypesWithoutASizeAreToldWithTheMessageThatTheyHave) {
    struct SizeRow {
        const char* size;
        const char* fault;
    };
    constexpr SizeRow kRows[] = {
        {"", "byte 0: N has a type without a size (message 3); the rest is 01"},
        {"<TDefSize/>", "byte 0: N has a type without a size (message 3); the rest is 01"},
        {"<TDefSize>0</TDefSize>", "byte 0: N has a type without a size; the rest is 01"},
        {"<TDefSize>one</TDefSize>", "byte 0: N has a type without a size; the rest is 01"},
    };
    for (const SizeRow& row : kRows) {
        SCOPED_TRACE(row.size);
        const std::string type =
            "<Definition><TypeDef TypeID=\"type_own\"><TDefName>Own</TDefName>" + std::string(row.size) +
            "</TypeDef>"
            "<UnitDef UnitID=\"unit_none\"><UnitDefName>none</UnitDefName><UnitDefCode>0</UnitDefCode>"
            "</UnitDef></Definition>";
        const std::string function =
            "<Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName><FunctionClass>"
            "<Property><PUnclassified>" +
            Param("N", Number("type_own")) + "</PUnclassified></Property></FunctionClass></Function>";
        const Decoding decoding(CatalogOf(BlockOf(function), type));
        EXPECT_EQ(decoding.Shown("01"), "!" + std::string(row.fault));
    }
}

}  // namespace
}  // namespace tarvex::test::holes_test
