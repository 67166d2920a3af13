/// Bit fields and their bits.

#include "params/bit_field.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "support/catalog_import.h"

namespace tarvex::test::bit_field_test {
namespace {

/// A bit of that position, and of that name if it has one.
std::string Bit(int pos, const std::string& name = "") {
    return "<TBoolField BitPos=\"" + std::to_string(pos) + "\">" +
           (name.empty() ? "" : "<ParamName>" + name + "</ParamName>") +
           "<BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField>";
}

std::string Field(const std::string& length, const std::string& bits) {
    return "<TBitField TypeRef=\"type_bitfield\" Length=\"" + length + "\">" + bits + "</TBitField>";
}

/// Imports a parameter "Flags" with this type element.
struct FieldImport {
    explicit FieldImport(const std::string& typeElement) {
        ok = import.Import(flags, "<PUParam><ParamName>Flags</ParamName><PUParamType>" + typeElement +
                                      "</PUParamType></PUParam>");
        messages = import.TakeMessages();
    }

    ElementImport import;
    ZMTParamBitField flags;
    bool ok = false;
    std::string messages;
};

struct LengthCase {
    const char* declared;
    int highestBit;  ///< -1 for no bit
    unsigned length;
    int bytes;
    const char* messages;
};
constexpr LengthCase kLengths[] = {
    {"1", -1, 1, 1, ""},
    {"8", 7, 8, 1, ""},
    {"0x8", 3, 8, 1, ""},
    {"9", 7, 9, 2, ""},
    {"16", 15, 16, 2, ""},
    {"4", 7, 8, 1,
     R"(Warning #0093 in '/Flags':
  Ambiguous length of bitfield (4 bits <-> 8 bits). Length will be set to 8 bits.
)"},
    {"8", 8, 9, 2,
     R"(Warning #0093 in '/Flags':
  Ambiguous length of bitfield (8 bits <-> 9 bits). Length will be set to 9 bits.
)"},
    {"1", 15, 16, 2,
     R"(Warning #0093 in '/Flags':
  Ambiguous length of bitfield (1 bits <-> 16 bits). Length will be set to 16 bits.
)"},
    {"0", -1, 1, 1,
     R"(Warning #0093 in '/Flags':
  Ambiguous length of bitfield (0 bits <-> 1 bits). Length will be set to 1 bits.
)"},
    {"many", 2, 3, 1,
     R"(Warning #0093 in '/Flags':
  Ambiguous length of bitfield (0 bits <-> 3 bits). Length will be set to 3 bits.
)"},
    {"17", -1, 16, 2,
     R"(Warning #0094 in '/Flags':
  Invalid length of bitfield (17)
)"},
    {"-1", 3, 16, 2,
     R"(Warning #0094 in '/Flags':
  Invalid length of bitfield (-1)
)"},
    {"20", 3, 16, 2,
     R"(Warning #0094 in '/Flags':
  Invalid length of bitfield (20)
)"},
};

TEST(BitField, LengthHasRoomForEveryBit) {
    for (const LengthCase& row : kLengths) {
        SCOPED_TRACE(std::string(row.declared) + " for " + std::to_string(row.highestBit));
        const FieldImport read(Field(row.declared, row.highestBit < 0 ? "" : Bit(row.highestBit)));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.flags.Length(), row.length);
        EXPECT_EQ(read.flags.GetBytesInMsg(), row.bytes);
    }
}

struct MessageCase {
    const char* what;
    const char* typeElement;
    const char* messages;
};
constexpr MessageCase kFailures[] = {
    {"no type element", "<TBool/>", "Error #0088 in '/Flags':\n  Can not find element <TBitField>\n"},
    {"no length", R"(<TBitField TypeRef="type_bitfield"/>)",
     "Error #0089 in '/Flags':\n  Missing required attribute Length\n"},
    {"no type", R"(<TBitField Length="8"/>)",
     "Error #0090 in '/Flags':\n  Missing required attribute TypeRef\n"},
    {"neither", "<TBitField/>", "Error #0089 in '/Flags':\n  Missing required attribute Length\n"},
    {"bit without position",
     R"(<TBitField TypeRef="type_bitfield" Length="8"><TBoolField><ParamName>Mute</ParamName></TBoolField>
        </TBitField>)",
     R"(Error #0059 in '/Flags/Mute':
  Missing required attribute BitPos
Error #0092 in '/Flags':
  Failed to import element <TBoolField>
)"},
    {"position that is no number",
     R"(<TBitField TypeRef="type_bitfield" Length="8"><TBoolField BitPos="low"/></TBitField>)",
     R"(Error #0060 in '/Flags/':
  Failed to analyze value 'low'
Error #0092 in '/Flags':
  Failed to import element <TBoolField>
)"},
    {"position too large",
     R"(<TBitField TypeRef="type_bitfield" Length="8"><TBoolField BitPos="16"><ParamName>Mute</ParamName>
        </TBoolField></TBitField>)",
     R"(Error #0061 in '/Flags/Mute':
  Invalid position of parameter 'Mute'
Error #0092 in '/Flags':
  Failed to import element <TBoolField>
)"},
    {"negative position",
     R"(<TBitField TypeRef="type_bitfield" Length="8"><TBoolField BitPos="-1"/></TBitField>)",
     R"(Error #0061 in '/Flags/':
  Invalid position of parameter ''
Error #0092 in '/Flags':
  Failed to import element <TBoolField>
)"},
    {"bit that fails behind one that does not",
     R"(<TBitField TypeRef="type_bitfield" Length="8">
        <TBoolField BitPos="0"><BitTrueDesc>a</BitTrueDesc><BitFalseDesc>b</BitFalseDesc></TBoolField>
        <TBoolField/></TBitField>)",
     R"(Error #0059 in '/Flags/':
  Missing required attribute BitPos
Error #0092 in '/Flags':
  Failed to import element <TBoolField>
)"},
};

TEST(BitField, FaultEndsTheImport) {
    for (const MessageCase& row : kFailures) {
        SCOPED_TRACE(row.what);
        const FieldImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

TEST(BitField, NeedsAName) {
    ElementImport import;
    ZMTParamBitField field;
    EXPECT_FALSE(import.Import(field, "<PUParam>" + Field("8", "") + "</PUParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

TEST(BitField, HoldsItsBitsAtTheirPositions) {
    const FieldImport read(Field("8", Bit(5, "Mute") + Bit(0, "Power")));
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.flags.Count(), 2U);
    EXPECT_EQ(read.flags.Size(), 6U);
    ASSERT_NE(read.flags.FindBit(5), nullptr);
    EXPECT_EQ(read.flags.FindBit(5)->GetName(), "Mute");
    EXPECT_EQ(read.flags.FindBit(5)->BitPos(), 5U);
    EXPECT_EQ(read.flags.FindBit(5)->GetPosition(), 5U);
    EXPECT_EQ(read.flags.FindBit(5)->GetParent(), &read.flags);
    EXPECT_EQ(read.flags.FindBit(0), read.flags.FindChild("POWER"));
    EXPECT_EQ(read.flags.FindBit(0), read.flags.GetChild(0));
    EXPECT_EQ(read.flags.FindBit(3), nullptr);
    EXPECT_EQ(read.flags.FindBit(100), nullptr);
    EXPECT_EQ(read.flags.MaxLength(), 16U);
}

TEST(BitField, SecondBitAtAPositionIsDropped) {
    const FieldImport read(Field("8", Bit(3, "First") + Bit(3, "Second") + Bit(4, "Last")));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "Warning #0091 in '/Flags':\n  Double definition of element at position 3\n");
    EXPECT_EQ(read.flags.Count(), 2U);
    EXPECT_EQ(read.flags.FindBit(3)->GetName(), "First");
    EXPECT_NE(read.flags.FindBit(4), nullptr);
}

TEST(BitField, TypeIsLookedUp) {
    const FieldImport known(R"(<TBitField TypeRef="type_BITFIELD" Length="8"/>)");
    ASSERT_NE(known.flags.TypeDefinition(), nullptr);
    EXPECT_EQ(known.flags.TypeDefinition()->GetName(), "BitField");
    const FieldImport unknown(R"(<TBitField TypeRef="type_x" Length="8"/>)");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.flags.TypeDefinition(), nullptr);
}

struct DescCase {
    const char* bit;
    const char* name;
    const char* trueDesc;
    const char* falseDesc;
    const char* messages;
};
constexpr DescCase kDescriptions[] = {
    {R"(<TBoolField BitPos="1"><ParamName>Mute</ParamName><BitTrueDesc>is muted</BitTrueDesc>
        <BitFalseDesc>loud!</BitFalseDesc></TBoolField>)",
     "Mute", "is muted", "loud", ""},
    {R"(<TBoolField BitPos="1"><TRecordFieldName>Is Muted</TRecordFieldName><BitTrueDesc>y</BitTrueDesc>
        <BitFalseDesc>n</BitFalseDesc></TBoolField>)",
     "Is_Muted", "y", "n", ""},
    {R"(<TBoolField BitPos="1"><BitTrueDesc>y</BitTrueDesc><BitFalseDesc>n</BitFalseDesc></TBoolField>)", "",
     "y", "n", ""},
    {R"(<TBoolField BitPos="1"><ParamName/><BitTrueDesc>y</BitTrueDesc><BitFalseDesc>n</BitFalseDesc>
        </TBoolField>)",
     "", "y", "n", ""},
    {R"(<TBoolField BitPos="1"><ParamName>Mute</ParamName><BitFalseDesc>n</BitFalseDesc></TBoolField>)",
     "Mute", "True", "n", "Warning #0062 in '/Flags/Mute':\n  Can not find element <BitTrueDesc>\n"},
    {R"(<TBoolField BitPos="1"><ParamName>Mute</ParamName><BitTrueDesc>y</BitTrueDesc></TBoolField>)", "Mute",
     "y", "False", "Warning #0063 in '/Flags/Mute':\n  Can not find element <BitFalseDesc>\n"},
    {R"(<TBoolField BitPos="1"><BitTrueDesc/><BitFalseDesc></BitFalseDesc></TBoolField>)", "", "True",
     "False",
     "Warning #0062 in '/Flags/':\n  Can not find element <BitTrueDesc>\n"
     "Warning #0063 in '/Flags/':\n  Can not find element <BitFalseDesc>\n"},
};

TEST(Bit, MayDoWithoutNameAndDescriptions) {
    for (const DescCase& row : kDescriptions) {
        SCOPED_TRACE(row.bit);
        const FieldImport read(Field("8", row.bit));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        const ZMTParamBoolField* bit = read.flags.FindBit(1);
        ASSERT_NE(bit, nullptr);
        EXPECT_EQ(bit->GetName(), row.name);
        EXPECT_EQ(bit->TrueDesc(), row.trueDesc);
        EXPECT_EQ(bit->FalseDesc(), row.falseDesc);
    }
}

TEST(Bit, PositionIsAnyNumber) {
    const FieldImport read(Field("16", R"(<TBoolField BitPos=" 0xF "><BitTrueDesc>y</BitTrueDesc>
                                          <BitFalseDesc>n</BitFalseDesc></TBoolField>)"));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_NE(read.flags.FindBit(15), nullptr);
}

TEST(Bit, IsCheckedWithTheRestOfTheTree) {
    const auto imported =
        ImportText(CatalogOfParams(Param("Flags", Field("8", Bit(0, "Mute") + Bit(1, "mute") + Bit(2)))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Warning #0009 in '/Cat/Amp/Volume/Status/Flags/mute':
  Multiple use of parameter name 'mute'
)");
    const auto* bit =
        NodeAt<ZMTParamBoolField>(imported->catalog, "Amp", "Volume", "Status", "Flags", "Mute");
    ASSERT_NE(bit, nullptr);
    EXPECT_EQ(bit->GetIndent(), 5U);
}

/// A bit that fails the check after the import.
class FailingBit : public ZMTParamBoolField {
  public:
    bool Resolve(ImportContext& /*context*/) override { return false; }
};

TEST(Bit, ThatFailsItsCheckIsDeletedAndTheFieldStays) {
    ElementImport import;
    ZMTParamBitField field;
    field.SetAt(std::make_unique<ZMTParamBoolField>(), 0);
    field.SetAt(std::make_unique<FailingBit>(), 1);
    EXPECT_TRUE(field.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_NE(field.FindBit(0), nullptr);
    EXPECT_EQ(field.FindBit(1), nullptr);
}

}  // namespace
}  // namespace tarvex::test::bit_field_test
