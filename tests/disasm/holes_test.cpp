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
