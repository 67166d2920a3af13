/// Enumerations and their values.

#include "params/enumeration.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"

namespace tarvex::test::enumeration_test {
namespace {

/// Imports a parameter "Mode" with this type element.
struct EnumImport {
    explicit EnumImport(const std::string& typeElement) {
        ok = import.Import(mode, "<PEParam><ParamName>Mode</ParamName><PEParamType>" + typeElement +
                                     "</PEParamType></PEParam>");
        messages = import.TakeMessages();
    }

    ElementImport import;
    ZMTParamEnum mode;
    bool ok = false;
    std::string messages;
};

std::string Enum(const std::string& enumMax, const std::string& values) {
    return "<TEnum TypeRef=\"type_enum\" TEnumMax=\"" + enumMax + "\">" + values + "</TEnum>";
}

std::string Value(const std::string& code, const std::string& name = "V") {
    return "<TEnumValue Code=\"" + code + "\">" + name + "</TEnumValue>";
}

struct EnumMaxCase {
    const char* text;
    unsigned enumMax;
    int bytes;
    const char* messages;
};
constexpr EnumMaxCase kEnumMax[] = {
    {"1", 1, 1, ""},
    {"255", 255, 1, ""},
    {"0xFF", 255, 1, ""},
    {" 3 ", 3, 1, ""},
    {"256", 256, 2, ""},
    {"65535", 65535, 2, ""},
    {"0", 255, 1,
     R"(Warning #0079 in '/Mode':
  Failed to analyze attribute value '0'. Using EnumMax=255 instead.
)"},
    {"-3", 255, 1,
     R"(Warning #0079 in '/Mode':
  Failed to analyze attribute value '-3'. Using EnumMax=255 instead.
)"},
    {"abc", 255, 1,
     R"(Warning #0079 in '/Mode':
  Failed to analyze attribute value 'abc'. Using EnumMax=255 instead.
)"},
    {"", 255, 1,
     R"(Warning #0079 in '/Mode':
  Failed to analyze attribute value ''. Using EnumMax=255 instead.
)"},
    {"65536", 65535, 2,
     R"(Warning #0082 in '/Mode':
  Value 65536 out of range [0,65536). Using 65535 instead.
)"},
    {"70000", 65535, 2,
     R"(Warning #0082 in '/Mode':
  Value 70000 out of range [0,65536). Using 65535 instead.
)"},
    {"99999999999", 65535, 2,
     R"(Warning #0082 in '/Mode':
  Value 2147483647 out of range [0,65536). Using 65535 instead.
)"},
};

TEST(Enumeration, LargestCodeDecidesTheSize) {
    for (const EnumMaxCase& row : kEnumMax) {
        SCOPED_TRACE(row.text);
        const EnumImport read(Enum(row.text, Value("1")));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.mode.EnumMax(), row.enumMax);
        EXPECT_EQ(read.mode.GetBytesInMsg(), row.bytes);
        EXPECT_EQ(read.mode.Count(), 1U);
    }
}

TEST(Enumeration, WithoutLargestCodeStays) {
    const EnumImport read("<TEnum TypeRef=\"type_enum\">" + Value("1") + "</TEnum>");
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, R"(Error #0078 in '/Mode':
  Missing required attribute TEnumMax
Warning #0079 in '/Mode':
  Failed to analyze attribute value ''. Using EnumMax=255 instead.
)");
    EXPECT_EQ(read.mode.EnumMax(), 255U);
    EXPECT_EQ(read.mode.GetBytesInMsg(), 1);
    EXPECT_EQ(read.mode.Count(), 1U);
}

TEST(Enumeration, WithoutTypeStaysWithoutValues) {
    const EnumImport read("<TEnum TEnumMax=\"300\">" + Value("1") + "<TEnumValue/>" + Value("999") +
                          "</TEnum>");
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, R"(Error #0080 in '/Mode':
  Missing required attribute TypeRef
)");
    EXPECT_EQ(read.mode.Count(), 0U);
    EXPECT_EQ(read.mode.EnumMax(), 300U);
    EXPECT_EQ(read.mode.GetBytesInMsg(), 2);
    EXPECT_EQ(read.mode.TypeDefinition(), nullptr);
}

TEST(Enumeration, TypeIsLookedUp) {
    const EnumImport known("<TEnum TypeRef=\"TYPE_enum\" TEnumMax=\"1\"/>");
    ASSERT_NE(known.mode.TypeDefinition(), nullptr);
    EXPECT_EQ(known.mode.TypeDefinition()->GetName(), "Enum");
    const EnumImport unknown("<TEnum TypeRef=\"type_x\" TEnumMax=\"1\">" + Value("1") + "</TEnum>");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.messages, "");
    EXPECT_EQ(unknown.mode.TypeDefinition(), nullptr);
    EXPECT_EQ(unknown.mode.Count(), 1U);
}

TEST(Enumeration, NeedsItsTypeElementAndName) {
    const EnumImport read("<TNumber/>");
    EXPECT_FALSE(read.ok);
    EXPECT_EQ(read.messages, "Error #0077 in '/Mode':\n  Can not find element <TEnum>\n");
    ElementImport import;
    ZMTParamEnum nameless;
    EXPECT_FALSE(import.Import(nameless, "<PEParam><TEnum/></PEParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

struct CodeCase {
    const char* code;
    unsigned min;
    unsigned max;
};
constexpr CodeCase kCodes[] = {
    {"0", 0, 0},    {"0x1F", 31, 31},   {"0b101", 5, 5},  {"0x10..0x1F", 16, 31}, {"2...9", 2, 9},
    {"1..2", 1, 2}, {" 4 .. 5 ", 4, 5}, {"#NULL#", 0, 0}, {"#null#", 0, 0},       {"", 0, 0},
};

TEST(EnumValue, CodeIsOneOrARange) {
    for (const CodeCase& row : kCodes) {
        SCOPED_TRACE(row.code);
        const EnumImport read(Enum("255", Value(row.code)));
        EXPECT_EQ(read.messages, "");
        ASSERT_EQ(read.mode.Count(), 1U);
        EXPECT_EQ(read.mode.GetAt(0)->CodeMin(), row.min);
        EXPECT_EQ(read.mode.GetAt(0)->CodeMax(), row.max);
    }
}

TEST(EnumValue, OpenRangeReachesBeyondEveryLargestCode) {
    const EnumImport read(Enum("255", Value(">3")));
    ASSERT_EQ(read.mode.Count(), 1U);
    EXPECT_EQ(read.mode.GetAt(0)->CodeMin(), 3U);
    EXPECT_EQ(read.mode.GetAt(0)->CodeMax(), 2147483647U);
    EXPECT_EQ(read.messages, "Warning #0083 in '/Mode':\n  Enum code out of range (0...EnumMax)\n");
}

struct NameCase {
    const char* value;
    const char* name;
};
constexpr NameCase kNames[] = {
    {R"(<TEnumValue Code="1">Play</TEnumValue>)", "Play"},
    {"<TEnumValue Code=\"1\">\n\t  Play it \n</TEnumValue>", "Play it"},
    {R"(<TEnumValue Code="1">Play/Stop, 100%</TEnumValue>)", "PlayStop 100"},
    {R"(<TEnumValue Code="1" SymbolicName="PLAY">Starts the player</TEnumValue>)", "Starts the player"},
    {R"(<TEnumValue Code="1" SymbolicName="PLAY"></TEnumValue>)", "PLAY"},
    {"<TEnumValue Code=\"1\" SymbolicName=\"PLAY\">\n  </TEnumValue>", "PLAY"},
    {R"(<TEnumValue Code="1" SymbolicName=" PLAY it "/>)", "PLAY it"},
    {R"(<TEnumValue Code="1"/>)", ""},
};

TEST(EnumValue, NameIsTheTextTrimmed) {
    for (const NameCase& row : kNames) {
        SCOPED_TRACE(row.value);
        const EnumImport read(Enum("255", row.value));
        EXPECT_EQ(read.messages, "");
        ASSERT_EQ(read.mode.Count(), 1U);
        EXPECT_EQ(read.mode.GetAt(0)->GetName(), row.name);
    }
}

struct BadValueCase {
    const char* value;
    const char* messages;
};
constexpr BadValueCase kBadValues[] = {
    {"<TEnumValue>Bad</TEnumValue>",
     R"(Error #0075 in '/Mode/Bad':
  Missing required attribute Code
Error #0081 in '/Mode':
  Failed to import element <TEnumValue>
)"},
    {R"(<TEnumValue Code="x">Bad</TEnumValue>)",
     R"(Error #0076 in '/Mode/Bad':
  Failed to analyze value 'x'
Error #0081 in '/Mode':
  Failed to import element <TEnumValue>
)"},
    {R"(<TEnumValue Code="1..x">Bad</TEnumValue>)",
     R"(Error #0076 in '/Mode/Bad':
  Failed to analyze value '1..x'
Error #0081 in '/Mode':
  Failed to import element <TEnumValue>
)"},
    {R"(<TEnumValue Code="&gt;">Bad</TEnumValue>)",
     R"(Error #0076 in '/Mode/Bad':
  Failed to analyze value '>'
Error #0081 in '/Mode':
  Failed to import element <TEnumValue>
)"},
};

TEST(EnumValue, ThatFailsIsDroppedAndItsNeighboursStay) {
    for (const BadValueCase& row : kBadValues) {
        SCOPED_TRACE(row.value);
        const EnumImport read(Enum("255", Value("1", "First") + row.value + Value("2", "Last")));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        ASSERT_EQ(read.mode.Size(), 2U);
        EXPECT_EQ(read.mode.GetAt(0)->GetName(), "First");
        EXPECT_EQ(read.mode.GetAt(1)->GetName(), "Last");
    }
}

TEST(EnumValue, StandsDirectlyInTheTypeElement) {
    const EnumImport read(Enum("255", "<Group>" + Value("1") + "</Group>" + Value("2", "Own")));
    ASSERT_EQ(read.mode.Count(), 1U);
    EXPECT_EQ(read.mode.GetAt(0)->GetName(), "Own");
    EXPECT_EQ(read.mode.GetAt(0)->GetParent(), &read.mode);
    EXPECT_EQ(read.mode.FindChild("OWN"), read.mode.GetAt(0));
    EXPECT_EQ(read.mode.GetChild(0), read.mode.GetAt(0));
}

struct CheckCase {
    const char* what;
    const char* enumMax;
    std::string values;
    const char* messages;
};

TEST(Enumeration, CodesAreCheckedOnceAndAllStay) {
    const char* outOfRange = "Warning #0083 in '/Mode':\n  Enum code out of range (0...EnumMax)\n";
    const char* overlap = "Warning #0085 in '/Mode':\n  Overlapping value(s) of enum codes\n";
    const CheckCase rows[] = {
        {"none", "10", "", ""},
        {"apart", "10", Value("1") + Value("2..4") + Value("5"), ""},
        {"largest code", "10", Value("10"), ""},
        {"beyond the largest", "10", Value("11"), outOfRange},
        {"range that ends beyond", "10", Value("9..11"), outOfRange},
        {"two beyond, one warning", "10", Value("11") + Value("12"), outOfRange},
        {"negative code", "10", Value("-1"), outOfRange},
        {"beyond hides the overlap", "10", Value("1") + Value("1") + Value("11"), outOfRange},
        {"equal codes", "10", Value("3") + Value("3"), overlap},
        {"code in a later range", "10", Value("1") + Value("0..5"), overlap},
        {"several overlaps, one warning", "10", Value("1") + Value("1") + Value("1..9") + Value("9"),
         overlap},
        {"earlier range ends in a later one", "10", Value("1..5") + Value("4..8"), overlap},
        {"earlier range begins in a later one", "10", Value("4..8") + Value("1..5"), overlap},
        {"earlier range around a later one is no overlap", "10", Value("1..9") + Value("4..5"), ""},
        {"with something between", "10", Value("1") + Value("5") + Value("1"), overlap},
        {"cut largest code", "70000", Value("65535"),
         "Warning #0082 in '/Mode':\n  Value 70000 out of range [0,65536). Using 65535 instead.\n"},
    };
    for (const CheckCase& row : rows) {
        SCOPED_TRACE(row.what);
        const EnumImport read(Enum(row.enumMax, row.values));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
    const EnumImport both(Enum("10", Value("1") + Value("0..5")));
    EXPECT_EQ(both.mode.Count(), 2U);
}

TEST(Enumeration, CutLargestCodeIsTheOneThatCodesAreCheckedAgainst) {
    const EnumImport read(Enum("70000", Value("65536")));
    EXPECT_EQ(read.messages, R"(Warning #0082 in '/Mode':
  Value 70000 out of range [0,65536). Using 65535 instead.
Warning #0083 in '/Mode':
  Enum code out of range (0...EnumMax)
)");
}

}  // namespace
}  // namespace tarvex::test::enumeration_test
