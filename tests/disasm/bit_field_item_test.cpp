/// Bit fields and booleans: an item for each bit.

#include "disasm/bit_field_item.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::bit_field_item_test {
namespace {

std::string Bit(int pos, std::string_view name, std::string_view descriptions = "") {
    std::string xml = "<TBoolField BitPos=\"" + std::to_string(pos) + "\">";
    if (!name.empty()) {
        xml.append("<ParamName>").append(name).append("</ParamName>");
    }
    return xml.append(descriptions) + "</TBoolField>";
}

std::string Boolean(std::string_view bits = "") {
    std::string xml = R"(<TBool TypeRef="type_bool">)";
    return xml.append(bits) + "</TBool>";
}

constexpr const char* kOpenClosed = "<BitTrueDesc>open</BitTrueDesc><BitFalseDesc>closed</BitFalseDesc>";

struct FieldRow {
    const char* bytes;
    const char* shown;
};

struct LengthRow {
    int length;
    const char* bytes;
    const char* shown;
};
constexpr LengthRow kLengths[] = {
    {1, "01", "F@0+1=<[bit0]@0+0=1>"},
    {1, "FE", "F@0+1=<[bit0]@0+0=0>"},
    {4, "FA", "F@0+1=<[bit0]@0+0=0 [bit1]@0+0=1 [bit2]@0+0=0 [bit3]@0+0=1>"},
    {8, "A5",
     "F@0+1=<[bit0]@0+0=1 [bit1]@0+0=0 [bit2]@0+0=1 [bit3]@0+0=0 [bit4]@0+0=0 [bit5]@0+0=1 [bit6]@0+0=0 "
     "[bit7]@0+0=1>"},
    {9, "01 02",
     "F@0+2=<[bit0]@0+0=0 [bit1]@0+0=1 [bit2]@0+0=0 [bit3]@0+0=0 [bit4]@0+0=0 [bit5]@0+0=0 [bit6]@0+0=0 "
     "[bit7]@0+0=0 [bit8]@0+0=1>"},
    {9, "FE 00",
     "F@0+2=<[bit0]@0+0=0 [bit1]@0+0=0 [bit2]@0+0=0 [bit3]@0+0=0 [bit4]@0+0=0 [bit5]@0+0=0 [bit6]@0+0=0 "
     "[bit7]@0+0=0 [bit8]@0+0=0>"},
    {10, "02 01",
     "F@0+2=<[bit 0]@0+0=1 [bit 1]@0+0=0 [bit 2]@0+0=0 [bit 3]@0+0=0 [bit 4]@0+0=0 [bit 5]@0+0=0 "
     "[bit 6]@0+0=0 [bit 7]@0+0=0 [bit 8]@0+0=0 [bit 9]@0+0=1>"},
    {16, "88 01",
     "F@0+2=<[bit 0]@0+0=1 [bit 1]@0+0=0 [bit 2]@0+0=0 [bit 3]@0+0=0 [bit 4]@0+0=0 [bit 5]@0+0=0 "
     "[bit 6]@0+0=0 [bit 7]@0+0=0 [bit 8]@0+0=0 [bit 9]@0+0=0 [bit10]@0+0=0 [bit11]@0+0=1 [bit12]@0+0=0 "
     "[bit13]@0+0=0 [bit14]@0+0=0 [bit15]@0+0=1>"},
    {8, "", "!byte 0: F needs 1 byte, 0 are left"},
    {9, "01", "!byte 0: F needs 2 bytes, 1 is left"},
    {16, "", "!byte 0: F needs 2 bytes, 0 are left"},
};

TEST(BitFieldItem, HasAnItemForEachOfItsBits) {
    for (const LengthRow& row : kLengths) {
        SCOPED_TRACE(std::to_string(row.length) + " bits: " + row.bytes);
        EXPECT_EQ(Decoding({{"F", Bits(row.length)}}).Shown(row.bytes), row.shown);
    }
}

constexpr FieldRow kNamed[] = {
    {"07 00", "N@0+1=7 F@1+1=<[bit0] Lid@1+0=closed [bit1]@1+0=0 [bit2]@1+0=False [bit3] Lamp@1+0=False>"},
    {"07 0F", "N@0+1=7 F@1+1=<[bit0] Lid@1+0=open [bit1]@1+0=1 [bit2]@1+0=True [bit3] Lamp@1+0=True>"},
    {"07 F1", "N@0+1=7 F@1+1=<[bit0] Lid@1+0=open [bit1]@1+0=0 [bit2]@1+0=False [bit3] Lamp@1+0=False>"},
    {"07", "N@0+1=7 !byte 1: F needs 1 byte, 0 are left"},
};

TEST(BitFieldItem, BitsOfTheCatalogHaveNamesAndTexts) {
    const Decoding decoding(
        {{"N", kUByte}, {"F", Bits(4, Bit(3, "Lamp") + Bit(0, "Lid", kOpenClosed) + Bit(2, ""))}});
    for (const FieldRow& row : kNamed) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

TEST(BitFieldItem, LongFieldsLabelNamedBitsInTheSameWay) {
    const Decoding decoding({{"F", Bits(10, Bit(1, "Lid", kOpenClosed) + Bit(9, "Lamp"))}});
    EXPECT_EQ(decoding.Shown("02 00"),
              "F@0+2=<[bit 0]@0+0=0 [bit 1] Lid@0+0=closed [bit 2]@0+0=0 [bit 3]@0+0=0 [bit 4]@0+0=0 "
              "[bit 5]@0+0=0 [bit 6]@0+0=0 [bit 7]@0+0=0 [bit 8]@0+0=0 [bit 9] Lamp@0+0=True>");
}

constexpr FieldRow kBooleans[] = {
    {"01",
     "B@0+1=<[bit0] Lid@0+0=open [bit1]@0+0=0 [bit2]@0+0=0 [bit3]@0+0=0 [bit4]@0+0=0 [bit5]@0+0=0 "
     "[bit6]@0+0=0 [bit7] Lamp@0+0=False>"},
    {"F0",
     "B@0+1=<[bit0] Lid@0+0=closed [bit1]@0+0=0 [bit2]@0+0=0 [bit3]@0+0=0 [bit4]@0+0=1 [bit5]@0+0=1 "
     "[bit6]@0+0=1 [bit7] Lamp@0+0=True>"},
    {"", "!byte 0: B needs 1 byte, 0 are left"},
};

TEST(BitFieldItem, BooleansHaveEightBits) {
    // The bit beyond the byte is cut.
    const Decoding decoding({{"B", Boolean(Bit(0, "Lid", kOpenClosed) + Bit(7, "Lamp") + Bit(11, "Far"))}});
    for (const FieldRow& row : kBooleans) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

TEST(BitFieldItem, FieldAndBitsTellTheirTypes) {
    const Decoding decoding({{"F", Bits(9, Bit(8, "Lid"))}, {"B", Boolean()}});
    const auto decoded = decoding.Decode("01 00 80");
    ASSERT_EQ(decoded->items.Items().size(), 2U);
    const ZMostParameter& field = *decoded->items.Items()[0];
    const ZMostParameter& boolean = *decoded->items.Items()[1];
    EXPECT_EQ(field.GetType(), kParamBitField);
    EXPECT_TRUE(field.IsType(kParamBitField));
    EXPECT_FALSE(field.IsType(kParam));
    EXPECT_EQ(boolean.GetType(), kParamBool);
    EXPECT_EQ(field.RawValue(), 0x0100U);
    ASSERT_NE(field.Members(), nullptr);
    ASSERT_EQ(field.Members()->Items().size(), 9U);
    for (unsigned pos = 0; pos < 9; ++pos) {
        const auto* bit = dynamic_cast<const ZMostParameterBoolField*>(field.Members()->Items()[pos].get());
        ASSERT_NE(bit, nullptr);
        EXPECT_EQ(bit->GetType(), kParamBoolField);
        EXPECT_EQ(bit->Bit(), pos);
        EXPECT_EQ(bit->Value(), pos == 8);
        EXPECT_EQ(bit->Members(), nullptr);
    }
    ASSERT_NE(boolean.Members(), nullptr);
    ASSERT_EQ(boolean.Members()->Items().size(), 8U);
    EXPECT_EQ(boolean.Members()->Items()[7]->GetText(), "1");
    EXPECT_EQ(boolean.Members()->Items()[7]->Offset(), 2U);
}

}  // namespace
}  // namespace tarvex::test::bit_field_item_test
