/// Type and unit definitions and their lists.

#include "catalog/definitions.h"

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "support/catalog_import.h"

namespace tarvex::test::definitions_test {
namespace {

/// A catalog with one quiet block and these definitions.
std::unique_ptr<Imported> ImportDefinitions(std::string_view definitions) {
    std::string xml = "<Definition>";
    xml.append(definitions).append("</Definition>");
    return ImportText(CatalogOf(BlockOf(VoidFunction("0x100", "Version")), xml));
}

struct MessageCase {
    const char* what;
    const char* xml;
    const char* messages;
};
constexpr MessageCase kMessages[] = {
    {"complete type", R"(<TypeDef TypeID="type_x"><TDefName>X</TDefName><TDefSize>1</TDefSize></TypeDef>)",
     ""},
    {"type without name", R"(<TypeDef TypeID="type_x"><TDefSize>1</TDefSize></TypeDef>)",
     R"(Warning #0001 in '/Cat///':
  Can not find element <TDefName>
)"},
    {"type with an empty name",
     R"(<TypeDef TypeID="type_x"><TDefName></TDefName><TDefSize>1</TDefSize></TypeDef>)",
     R"(Warning #0001 in '/Cat///':
  Can not find element <TDefName>
)"},
    {"type without identifier", R"(<TypeDef><TDefName>X</TDefName><TDefSize>1</TDefSize></TypeDef>)",
     R"(Error #0002 in '/Cat///X':
  Missing required attribute TypeID
Error #0007 in '/Cat//':
  Failed to import element <TypeDef>
)"},
    {"type without size", R"(<TypeDef TypeID="type_x"><TDefName>X</TDefName></TypeDef>)",
     R"(Warning #0003 in '/Cat///X':
  Can not find element <TDefSize>
)"},
    {"type with an empty size", R"(<TypeDef TypeID="type_x"><TDefName>X</TDefName><TDefSize/></TypeDef>)",
     R"(Warning #0003 in '/Cat///X':
  Can not find element <TDefSize>
)"},
    {"type without anything", "<TypeDef/>",
     R"(Warning #0001 in '/Cat///':
  Can not find element <TDefName>
Error #0002 in '/Cat///':
  Missing required attribute TypeID
Error #0007 in '/Cat//':
  Failed to import element <TypeDef>
)"},
    {"complete unit",
     R"(<UnitDef UnitID="unit_x"><UnitDefName>x</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef>)", ""},
    {"unit without name", R"(<UnitDef UnitID="unit_x"><UnitDefCode>1</UnitDefCode></UnitDef>)",
     R"(Warning #0004 in '/Cat///':
  Can not find element <UnitDefName>
)"},
    {"unit without identifier",
     R"(<UnitDef><UnitDefName>x</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef>)",
     R"(Error #0005 in '/Cat///x':
  Missing required attribute UnitID
Error #0008 in '/Cat//':
  Failed to import element <UnitDef>
)"},
    {"unit without code", R"(<UnitDef UnitID="unit_x"><UnitDefName>x</UnitDefName></UnitDef>)",
     R"(Warning #0006 in '/Cat///x':
  Can not find element <UnitDefCode>
)"},
    {"unit with an empty code",
     R"(<UnitDef UnitID="unit_x"><UnitDefName>x</UnitDefName><UnitDefCode/></UnitDef>)",
     R"(Warning #0006 in '/Cat///x':
  Can not find element <UnitDefCode>
)"},
    {"unit that stands before a type is read after it", "<UnitDef/><TypeDef/>",
     R"(Warning #0001 in '/Cat///':
  Can not find element <TDefName>
Error #0002 in '/Cat///':
  Missing required attribute TypeID
Error #0007 in '/Cat//':
  Failed to import element <TypeDef>
Warning #0004 in '/Cat///':
  Can not find element <UnitDefName>
Error #0005 in '/Cat///':
  Missing required attribute UnitID
Error #0008 in '/Cat//':
  Failed to import element <UnitDef>
)"},
};

TEST(Definitions, RaiseOneMessagePerFault) {
    for (const MessageCase& row : kMessages) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportDefinitions(row.xml);
        EXPECT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
    }
}

TEST(Definitions, RejectedEntryIsLeftOutAndItsNeighboursStay) {
    const auto imported = ImportDefinitions(
        R"(<TypeDef TypeID="type_a"><TDefName>A</TDefName><TDefSize>1</TDefSize></TypeDef>
           <TypeDef><TDefName>B</TDefName><TDefSize>1</TDefSize></TypeDef>
           <TypeDef TypeID="type_c"><TDefName>C</TDefName><TDefSize>1</TDefSize></TypeDef>
           <UnitDef><UnitDefName>d</UnitDefName></UnitDef>
           <UnitDef UnitID="unit_e"><UnitDefName>e</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef>)");
    ASSERT_TRUE(imported->ok);
    const ZMTDefinition* definitions = imported->catalog->Definitions();
    ASSERT_EQ(definitions->Types().Size(), 2U);
    EXPECT_EQ(definitions->Types().GetAt(0)->GetName(), "A");
    EXPECT_EQ(definitions->Types().GetAt(1)->GetName(), "C");
    ASSERT_EQ(definitions->Units().Size(), 1U);
    EXPECT_EQ(definitions->Units().GetAt(0)->GetName(), "e");
}

struct CodeCase {
    const char* typeID;
    int code;
};
constexpr CodeCase kCodes[] = {
    {"type_unsigned_byte", 8}, {"type_signed_byte", 9},    {"type_unsigned_word", 10},
    {"type_signed_word", 11},  {"type_unsigned_long", 12}, {"type_signed_long", 13},
    {"Type_Signed_Word", 11},  {"TYPE_UNSIGNED_LONG", 12}, {"type_float", 0},
    {"type_signed_word ", 0},  {"signed_word", 0},         {"", 0},
};

TEST(TypeDefinition, IdentifierDecidesTheCode) {
    ElementImport import;
    for (const CodeCase& row : kCodes) {
        SCOPED_TRACE(row.typeID);
        ZMTDefType type;
        EXPECT_TRUE(import.Import(type, "<TypeDef TypeID=\"" + std::string(row.typeID) +
                                            "\"><TDefName>X</TDefName><TDefSize>1</TDefSize></TypeDef>"));
        EXPECT_EQ(type.Code(), row.code);
        EXPECT_EQ(type.GetDefName(), row.typeID);
    }
    EXPECT_EQ(import.TakeMessages(), "");
}

struct NumberCase {
    const char* text;
    int value;
};
constexpr NumberCase kNumbers[] = {
    {"1", 1}, {" 255 ", 255}, {"0x10", 16}, {"0b11", 3}, {"-1", -1}, {"4 bytes", 0}, {"open", 0},
};

TEST(TypeDefinition, SizeIsAnyNumber) {
    ElementImport import;
    for (const NumberCase& row : kNumbers) {
        SCOPED_TRACE(row.text);
        ZMTDefType type;
        EXPECT_TRUE(import.Import(type, "<TypeDef TypeID=\"t\"><TDefName>X</TDefName><TDefSize>" +
                                            std::string(row.text) + "</TDefSize></TypeDef>"));
        EXPECT_EQ(type.DefSize(), row.value);
    }
    EXPECT_EQ(import.TakeMessages(), "");
}

TEST(TypeDefinition, WithoutSizeHasNone) {
    ElementImport import;
    ZMTDefType type;
    EXPECT_TRUE(import.Import(type, "<TypeDef TypeID=\"t\"><TDefName>X</TDefName></TypeDef>"));
    EXPECT_EQ(type.DefSize(), 0);
}

TEST(UnitDefinition, CodeIsAnyNumber) {
    ElementImport import;
    for (const NumberCase& row : kNumbers) {
        SCOPED_TRACE(row.text);
        ZMTDefUnit unit;
        EXPECT_TRUE(import.Import(unit, "<UnitDef UnitID=\"u\"><UnitDefName>x</UnitDefName><UnitDefCode>" +
                                            std::string(row.text) + "</UnitDefCode></UnitDef>"));
        EXPECT_EQ(unit.Code(), row.value);
    }
    EXPECT_EQ(import.TakeMessages(), "");
}

struct NameCase {
    const char* text;
    const char* typeName;
    const char* unitName;
    const char* unitText;
};
constexpr NameCase kNames[] = {
    {"Byte", "Byte", "Byte", "Byte"},
    {"km/h", "kmh", "kmh", "km/h"},
    {" Unsigned Byte ", "_Unsigned_Byte_", "_Unsigned_Byte_", "Unsigned Byte"},
    {"°C", "C", "C", "°C"},
    {"%", "", "", "%"},
    {"\n\t 1/min&#13;", "_1min", "_1min", "1/min"},
    {"a&#9;b\nc\u202Ed", "abcd", "abcd", "a.b.c.d"},
    {"not_defined", "not_defined", "", ""},
    {"Not_Defined", "Not_Defined", "", ""},
    {"not_defined_yet", "not_defined_yet", "not_defined_yet", "not_defined_yet"},
};

TEST(Definitions, NamesAreSanitizedAndUnitsMayHaveNone) {
    ElementImport import;
    for (const NameCase& row : kNames) {
        SCOPED_TRACE(row.text);
        ZMTDefType type;
        ZMTDefUnit unit;
        EXPECT_TRUE(import.Import(type, "<TypeDef TypeID=\"t\"><TDefName>" + std::string(row.text) +
                                            "</TDefName><TDefSize>1</TDefSize></TypeDef>"));
        EXPECT_TRUE(import.Import(unit, "<UnitDef UnitID=\"u\"><UnitDefName>" + std::string(row.text) +
                                            "</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef>"));
        EXPECT_EQ(type.GetName(), row.typeName);
        EXPECT_EQ(unit.GetName(), row.unitName);
        EXPECT_EQ(unit.Text(), row.unitText);
    }
    EXPECT_EQ(import.TakeMessages(), "");
}

TEST(Definitions, AreFoundByIdentifierFirstInDocumentOrder) {
    const auto imported = ImportDefinitions(
        R"(<TypeDef TypeID="type_a"><TDefName>First</TDefName><TDefSize>1</TDefSize></TypeDef>
           <TypeDef TypeID="TYPE_A"><TDefName>Second</TDefName><TDefSize>2</TDefSize></TypeDef>
           <UnitDef UnitID="unit_a"><UnitDefName>first</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef>
           <UnitDef UnitID="unit_a"><UnitDefName>second</UnitDefName><UnitDefCode>2</UnitDefCode></UnitDef>)");
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const ZMTDefinition* definitions = imported->catalog->Definitions();
    EXPECT_EQ(definitions->Types().Size(), 2U);
    ASSERT_NE(definitions->Types().FindByDefName("Type_A"), nullptr);
    EXPECT_EQ(definitions->Types().FindByDefName("Type_A")->GetName(), "First");
    ASSERT_NE(definitions->Units().FindByDefName("UNIT_A"), nullptr);
    EXPECT_EQ(definitions->Units().FindByDefName("UNIT_A")->GetName(), "first");
    EXPECT_EQ(definitions->Types().FindByDefName("unit_a"), nullptr);
}

TEST(Definitions, AreTakenAtAnyDepth) {
    const auto imported = ImportDefinitions(
        R"(<Types><Basic><TypeDef TypeID="type_a"><TDefName>A</TDefName><TDefSize>1</TDefSize></TypeDef></Basic>
           <TypeDef TypeID="type_b"><TDefName>B</TDefName><TDefSize>1</TDefSize></TypeDef></Types>
           <Units><UnitDef UnitID="u"><UnitDefName>u</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef></Units>)");
    ASSERT_TRUE(imported->ok);
    const ZMTDefinition* definitions = imported->catalog->Definitions();
    ASSERT_EQ(definitions->Types().Size(), 2U);
    EXPECT_EQ(definitions->Types().GetAt(0)->GetName(), "A");
    EXPECT_EQ(definitions->Types().GetAt(1)->GetName(), "B");
    EXPECT_EQ(definitions->Units().Size(), 1U);
}

TEST(Definitions, HangBelowTheCatalogWithNamelessLists) {
    const auto imported = ImportText(CatalogOf(BlockOf(VoidFunction("0x100", "Version"))));
    ASSERT_TRUE(imported->ok);
    const ZMTDefinition* definitions = imported->catalog->Definitions();
    EXPECT_EQ(definitions->GetParent(), imported->catalog);
    EXPECT_EQ(definitions->GetPath(), "/Cat/");
    EXPECT_EQ(definitions->Types().GetParent(), definitions);
    EXPECT_EQ(definitions->Units().GetParent(), definitions);
    EXPECT_EQ(definitions->Types().GetPath(), "/Cat//");
    EXPECT_EQ(definitions->Types().GetAt(0)->GetPath(), "/Cat///Unsigned_Byte");
    EXPECT_EQ(definitions->Types().FindChild("BITFIELD"),
              definitions->Types().FindByDefName("type_bitfield"));
    EXPECT_EQ(definitions->Units().GetChild(1), definitions->Units().FindByDefName("unit_km_h"));
}

}  // namespace
}  // namespace tarvex::test::definitions_test
