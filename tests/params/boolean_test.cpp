/// Booleans: bit fields of one byte.

#include "params/boolean.h"

#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"

namespace tarvex::test::boolean_test {
namespace {

std::string Bit(int pos) {
    return "<TBoolField BitPos=\"" + std::to_string(pos) +
           "\"><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>";
}

std::string Bool(const std::string& bits) {
    return "<TBool TypeRef=\"type_bool\">" + bits + "</TBool>";
}

/// Imports a parameter "Switch" with this type element.
struct BoolImport {
    explicit BoolImport(const std::string& typeElement) {
        ok = import.Import(boolean, "<PSParam><ParamName>Switch</ParamName><PSParamType>" + typeElement +
                                        "</PSParamType></PSParam>");
        messages = import.TakeMessages();
    }

    ElementImport import;
    ZMTParamBool boolean;
    bool ok = false;
    std::string messages;
};

struct LengthCase {
    int highestBit;  ///< -1 for no bit
    const char* messages;
};
constexpr LengthCase kLengths[] = {
    {-1, ""},
    {0, ""},
    {7, ""},
    {8,
     R"(Warning #0093 in '/Switch':
  Ambiguous length of bitfield (8 bits <-> 9 bits). Length will be set to 8 bits.
)"},
    {11,
     R"(Warning #0093 in '/Switch':
  Ambiguous length of bitfield (8 bits <-> 12 bits). Length will be set to 8 bits.
)"},
    {15,
     R"(Warning #0093 in '/Switch':
  Ambiguous length of bitfield (8 bits <-> 16 bits). Length will be set to 8 bits.
)"},
};

TEST(Boolean, IsAlwaysOneByteOf8Bits) {
    for (const LengthCase& row : kLengths) {
        SCOPED_TRACE(row.highestBit);
        const BoolImport read(Bool(row.highestBit < 0 ? "" : Bit(row.highestBit)));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.boolean.Length(), 8U);
        EXPECT_EQ(read.boolean.GetBytesInMsg(), 1);
    }
}

struct MessageCase {
    const char* what;
    const char* typeElement;
    const char* messages;
};
constexpr MessageCase kFailures[] = {
    {"no type element", "<TBitField/>", "Error #0095 in '/Switch':\n  Can not find element <TBool>\n"},
    {"no type", "<TBool/>", "Error #0096 in '/Switch':\n  Missing required attribute TypeRef\n"},
    {"bit without position", R"(<TBool TypeRef="type_bool"><TBoolField/></TBool>)",
     R"(Error #0059 in '/Switch/':
  Missing required attribute BitPos
Error #0098 in '/Switch':
  Failed to import element <TBoolField>
)"},
    {"position that is no number", R"(<TBool TypeRef="type_bool"><TBoolField BitPos="?"/></TBool>)",
     R"(Error #0060 in '/Switch/':
  Failed to analyze value '?'
Error #0098 in '/Switch':
  Failed to import element <TBoolField>
)"},
    {"position too large even for a bit field",
     R"(<TBool TypeRef="type_bool"><TBoolField BitPos="16"><ParamName>On</ParamName></TBoolField></TBool>)",
     R"(Error #0061 in '/Switch/On':
  Invalid position of parameter 'On'
Error #0098 in '/Switch':
  Failed to import element <TBoolField>
)"},
};

TEST(Boolean, FaultEndsTheImport) {
    for (const MessageCase& row : kFailures) {
        SCOPED_TRACE(row.what);
        const BoolImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

TEST(Boolean, SecondBitAtAPositionIsDropped) {
    const BoolImport read(Bool(Bit(1) + Bit(1)));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "Warning #0097 in '/Switch':\n  Double definition of element at position 1\n");
    EXPECT_EQ(read.boolean.Count(), 1U);
}

TEST(Boolean, DeclaresNoLength) {
    const BoolImport read(R"(<TBool TypeRef="type_bool" Length="3"/>)");
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.boolean.Length(), 8U);
    EXPECT_EQ(read.boolean.MaxLength(), 8U);
}

TEST(Boolean, TypeIsLookedUp) {
    const BoolImport known(Bool(""));
    ASSERT_NE(known.boolean.TypeDefinition(), nullptr);
    EXPECT_EQ(known.boolean.TypeDefinition()->GetName(), "Boolean");
    const BoolImport unknown(R"(<TBool TypeRef="type_x"/>)");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.boolean.TypeDefinition(), nullptr);
}

TEST(Boolean, IsNoBitFieldToTheTree) {
    const BoolImport read(Bool(Bit(0)));
    EXPECT_TRUE(read.boolean.IsType(10));
    EXPECT_FALSE(read.boolean.IsType(17));
    EXPECT_EQ(DumpOf(read.boolean).substr(0, 18), "PARAMBOOL: Switch\n");
}

}  // namespace
}  // namespace tarvex::test::boolean_test
