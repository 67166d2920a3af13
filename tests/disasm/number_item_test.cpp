/// Numbers: their texts for every exponent, sign and size, coordinates, units and raw values.

#include "disasm/number_item.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::number_item_test {
namespace {

/// The text of the only item of a message.
std::string OnlyText(const Decoding& decoding, std::string_view hex) {
    const auto decoded = decoding.Decode(hex);
    EXPECT_TRUE(decoded->faults.empty()) << Shown(*decoded);
    EXPECT_EQ(decoded->items.Items().size(), 1U);
    return decoded->items.Items().empty() ? "(none)" : decoded->items.Items()[0]->GetText();
}

struct ScaleRow {
    const char* type;
    const char* bytes;
    const char* texts[11];  // for the exponents -5 to 5
};
constexpr ScaleRow kScales[] = {
    {"type_unsigned_byte", "00", {"0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}},
    {"type_unsigned_byte",
     "01",
     {"0.00001", "0.0001", "0.001", "0.01", "0.1", "1", "10", "100", "1000", "10000", "100000"}},
    {"type_unsigned_byte",
     "FF",
     {"0.00255", "0.0255", "0.255", "2.55", "25.5", "255", "2550", "25500", "255000", "2550000", "25500000"}},
    {"type_signed_byte", "00", {"0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}},
    {"type_signed_byte",
     "7F",
     {"0.00127", "0.0127", "0.127", "1.27", "12.7", "127", "1270", "12700", "127000", "1270000", "12700000"}},
    {"type_signed_byte",
     "80",
     {"-0.00128", "-0.0128", "-0.128", "-1.28", "-12.8", "-128", "-1280", "-12800", "-128000", "-1280000",
      "-12800000"}},
    {"type_signed_byte",
     "FF",
     {"-0.00001", "-0.0001", "-0.001", "-0.01", "-0.1", "-1", "-10", "-100", "-1000", "-10000", "-100000"}},
    {"type_unsigned_word", "00 00", {"0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}},
    {"type_unsigned_word",
     "01 00",
     {"0.00256", "0.0256", "0.256", "2.56", "25.6", "256", "2560", "25600", "256000", "2560000", "25600000"}},
    {"type_unsigned_word",
     "FF FF",
     {"0.65535", "6.5535", "65.535", "655.35", "6553.5", "65535", "655350", "6553500", "65535000",
      "655350000", "6553500000"}},
    {"type_signed_word", "00 00", {"0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}},
    {"type_signed_word",
     "7F FF",
     {"0.32767", "3.2767", "32.767", "327.67", "3276.7", "32767", "327670", "3276700", "32767000",
      "327670000", "3276700000"}},
    {"type_signed_word",
     "80 00",
     {"-0.32768", "-3.2768", "-32.768", "-327.68", "-3276.8", "-32768", "-327680", "-3276800", "-32768000",
      "-327680000", "-3276800000"}},
    {"type_signed_word",
     "FF FF",
     {"-0.00001", "-0.0001", "-0.001", "-0.01", "-0.1", "-1", "-10", "-100", "-1000", "-10000", "-100000"}},
    {"type_unsigned_long", "00 00 00 00", {"0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}},
    {"type_unsigned_long",
     "01 02 03 04",
     {"169.09060", "1690.9060", "16909.060", "169090.60", "1690906.0", "16909060", "169090600", "1690906000",
      "16909060000", "169090600000", "1690906000000"}},
    {"type_unsigned_long",
     "80 00 00 00",
     {"21474.83648", "214748.3648", "2147483.648", "21474836.48", "214748364.8", "2147483648", "21474836480",
      "214748364800", "2147483648000", "21474836480000", "214748364800000"}},
    {"type_unsigned_long",
     "FF FF FF FF",
     {"42949.67295", "429496.7295", "4294967.295", "42949672.95", "429496729.5", "4294967295", "42949672950",
      "429496729500", "4294967295000", "42949672950000", "429496729500000"}},
    {"type_signed_long", "00 00 00 00", {"0", "0", "0", "0", "0", "0", "0", "0", "0", "0", "0"}},
    {"type_signed_long",
     "7F FF FF FF",
     {"21474.83647", "214748.3647", "2147483.647", "21474836.47", "214748364.7", "2147483647", "21474836470",
      "214748364700", "2147483647000", "21474836470000", "214748364700000"}},
    {"type_signed_long",
     "80 00 00 00",
     {"-21474.83648", "-214748.3648", "-2147483.648", "-21474836.48", "-214748364.8", "-2147483648",
      "-21474836480", "-214748364800", "-2147483648000", "-21474836480000", "-214748364800000"}},
    {"type_signed_long",
     "FF FF FF FF",
     {"-0.00001", "-0.0001", "-0.001", "-0.01", "-0.1", "-1", "-10", "-100", "-1000", "-10000", "-100000"}},
};

TEST(NumberItem, TextIsTheRawValueScaledByTheExponent) {
    for (int exponent = -5; exponent <= 5; ++exponent) {
        for (const ScaleRow& row : kScales) {
            SCOPED_TRACE(std::string(row.type) + " " + row.bytes + " 10^" + std::to_string(exponent));
            const Decoding decoding({{"Level", Number(row.type, std::to_string(exponent))}});
            EXPECT_EQ(OnlyText(decoding, row.bytes), row.texts[exponent + 5]);
        }
    }
}

struct MagnitudeRow {
    const char* type;
    const char* exponent;
    const char* bytes;
    const char* text;
};
constexpr MagnitudeRow kMagnitudes[] = {
    // Between 0.1 and 10, both excluded, six decimals; else with an exponent.
    {"type_unsigned_long", "-6", "00 01 86 A0", "1.000000e-01"},
    {"type_unsigned_long", "-6", "00 01 86 A1", "0.100001"},
    {"type_unsigned_long", "-6", "00 0F 42 40", "1.000000"},
    {"type_unsigned_long", "-6", "00 98 96 7F", "9.999999"},
    {"type_unsigned_long", "-6", "00 98 96 81", "1.000000e+01"},
    {"type_signed_long", "-6", "FF FE 79 60", "-1.000000e-01"},
    {"type_signed_long", "-6", "FF FE 79 5F", "-0.100001"},
    {"type_signed_long", "-6", "FF 67 69 81", "-9.999999"},
    {"type_signed_long", "-6", "FF 67 69 7F", "-1.000000e+01"},
    {"type_unsigned_byte", "-6", "FF", "2.550000e-04"},
    {"type_unsigned_word", "-7", "FF FF", "6.553500e-03"},
    {"type_unsigned_long", "-7", "00 98 96 80", "1.000000"},
    {"type_signed_byte", "-8", "FF", "-1.000000e-08"},
    {"type_unsigned_long", "-9", "EE 6B 28 00", "4.000000"},
    {"type_unsigned_long", "-10", "FF FF FF FF", "0.429497"},
    {"type_unsigned_byte", "-20", "01", "1.000000e-20"},
    {"type_unsigned_byte", "6", "01", "1.000000e+06"},
    {"type_signed_byte", "6", "FF", "-1.000000e+06"},
    {"type_unsigned_byte", "6", "FF", "2.550000e+08"},
    {"type_unsigned_word", "7", "FF FF", "6.553500e+11"},
    {"type_unsigned_long", "10", "FF FF FF FF", "4.294967e+19"},
    {"type_signed_byte", "300", "80", "-1.280000e+302"},
    // Zero is zero.
    {"type_unsigned_byte", "-6", "00", "0"},
    {"type_signed_word", "6", "00 00", "0"},
    {"type_unsigned_byte", "400", "00", "0"},
    {"type_unsigned_byte", "-400", "00", "0"},
};

TEST(NumberItem, UnusualExponentsShowSixDecimalsNearOneAndAnExponentElsewhere) {
    for (const MagnitudeRow& row : kMagnitudes) {
        SCOPED_TRACE(std::string(row.type) + " " + row.bytes + " 10^" + row.exponent);
        const Decoding decoding({{"Level", Number(row.type, row.exponent)}});
        EXPECT_EQ(OnlyText(decoding, row.bytes), row.text);
    }
}

/// A catalog whose only number has a type definition of its own size.
Decoding OfSize(std::string_view type, int size, std::string_view exponent) {
    const std::string definitions =
        "<Definition><TypeDef TypeID=\"" + std::string(type) + "\"><TDefName>Own</TDefName><TDefSize>" +
        std::to_string(size) + "</TDefSize></TypeDef>" +
        R"(<UnitDef UnitID="unit_none"><UnitDefName>none</UnitDefName><UnitDefCode>0</UnitDefCode></UnitDef>)"
        "</Definition>";
    std::string xml =
        "<Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName><FunctionClass>"
        "<Property><PUnclassified>";
    xml += Param("Level", Number(type, exponent));
    xml += "</PUnclassified></Property></FunctionClass></Function>";
    return Decoding(CatalogOf(BlockOf(xml), definitions));
}

struct SizeRow {
    const char* type;
    int size;
    const char* exponent;
    const char* bytes;
    const char* text;
};
constexpr SizeRow kSizes[] = {
    {"type_unsigned_long", 3, "0", "00 00 00", "0"},
    {"type_unsigned_long", 3, "0", "12 34 56", "1193046"},
    {"type_unsigned_long", 3, "0", "FF FF FF", "16777215"},
    {"type_unsigned_long", 3, "-2", "FF FF FF", "167772.15"},
    {"type_signed_long", 3, "0", "7F FF FF", "8388607"},
    // There is no raw value of more than four bytes, which is told.
    {"type_unsigned_long", 5, "0", "01 02 03 04 05", "0 !byte 0: Level has 5 bytes, too many for a value"},
    {"type_unsigned_long", 8, "0", "00 00 00 00 00 00 00 01",
     "0 !byte 0: Level has 8 bytes, too many for a value"},
    {"type_signed_long", 8, "3", "FF FF FF FF FF FF FF FF",
     "0 !byte 0: Level has 8 bytes, too many for a value"},
};

TEST(NumberItem, TypeWithoutASizeEndsTheMessage) {
    EXPECT_EQ(OfSize("type_unsigned_long", 0, "0").Shown("01 02"),
              "!byte 0: Level has a type without a size; the rest is 01 02");
}

TEST(NumberItem, SizesBeyondFourBytesHaveNoValue) {
    for (const SizeRow& row : kSizes) {
        SCOPED_TRACE(std::string(row.type) + " " + row.bytes);
        EXPECT_EQ(OfSize(row.type, row.size, row.exponent).Shown(row.bytes),
                  "Level@0+" + std::to_string(row.size) + "=" + row.text);
    }
}

struct PosRow {
    const char* name;
    const char* type;
    const char* exponent;
    const char* bytes;
    const char* text;
};
constexpr PosRow kPositions[] = {
    {"Pos", "type_unsigned_word", "0", "01 02", "PosX=1 PosY=2"},
    {"Pos", "type_unsigned_word", "0", "00 00", "PosX=0 PosY=0"},
    {"Pos", "type_unsigned_word", "0", "00 FF", "PosX=0 PosY=255"},
    {"pOS", "type_unsigned_word", "0", "0A 0B", "PosX=10 PosY=11"},
    {"Pos", "type_signed_word", "0", "FF FE", "PosX=255 PosY=254"},
    {"Pos", "type_unsigned_word", "-1", "01 02", "PosX=1 PosY=2"},
    {"Pos", "type_unsigned_byte", "0", "05", "5"},
    {"Pos", "type_unsigned_long", "0", "00 00 01 02", "258"},
    {"Pos", "type_unsigned_byte", "-1", "05", "0.5"},
    {"Position", "type_unsigned_word", "0", "01 02", "258"},
    {"XPos", "type_unsigned_word", "0", "01 02", "258"},
};

TEST(NumberItem, TwoBytesCalledPosAreCoordinates) {
    for (const PosRow& row : kPositions) {
        SCOPED_TRACE(std::string(row.name) + " " + row.type + " " + row.bytes);
        const Decoding decoding({{row.name, Number(row.type, row.exponent)}});
        EXPECT_EQ(OnlyText(decoding, row.bytes), row.text);
    }
}

struct SignRow {
    const char* type;
    const char* bytes;
    std::int64_t value;
};
constexpr SignRow kSigned[] = {
    {"type_unsigned_byte", "80", 128},
    {"type_signed_byte", "7F", 127},
    {"type_signed_byte", "80", -128},
    {"type_unsigned_word", "80 00", 32768},
    {"type_signed_word", "80 00", -32768},
    {"type_signed_word", "00 80", 128},
    {"type_unsigned_long", "FF FF FF FF", 4294967295},
    {"type_signed_long", "FF FF FF FF", -1},
    {"type_signed_long", "80 00 00 00", -2147483648LL},
    // A definition that is none of the unsigned ones is signed.
    {"type_enum", "FF", -1},
};

TEST(NumberItem, SignIsThatOfTheType) {
    for (const SignRow& row : kSigned) {
        SCOPED_TRACE(std::string(row.type) + " " + row.bytes);
        const Decoding decoding({{"Level", Number(row.type, "3")}});
        const auto decoded = decoding.Decode(row.bytes);
        ASSERT_EQ(decoded->items.Items().size(), 1U);
        const auto* number = dynamic_cast<const ZMostParameterNumber*>(decoded->items.Items()[0].get());
        ASSERT_NE(number, nullptr);
        EXPECT_EQ(number->SignedValue(), row.value);
        EXPECT_EQ(number->GetType(), kParamNumber);
    }
}

struct UnitRow {
    const char* name;
    const char* type;
    const char* unit;
    const char* unitName;
};
constexpr UnitRow kUnits[] = {
    {"Level", "type_unsigned_byte", "unit_none", ""},
    {"Level", "type_unsigned_byte", "unit_km_h", "km/h"},
    {"Pos", "type_unsigned_byte", "unit_km_h", "km/h"},
};

TEST(NumberItem, UnitIsThatOfTheNumberUnlessItHasNone) {
    for (const UnitRow& row : kUnits) {
        SCOPED_TRACE(std::string(row.name) + " " + row.unit);
        const Decoding decoding({{row.name, Number(row.type, "0", row.unit)}});
        const auto decoded = decoding.Decode("05");
        ASSERT_EQ(decoded->items.Items().size(), 1U);
        const auto* number = dynamic_cast<const ZMostParameterNumber*>(decoded->items.Items()[0].get());
        ASSERT_NE(number, nullptr);
        EXPECT_EQ(number->UnitText(), row.unitName);
    }
}

struct RunRow {
    const char* bytes;
    const char* shown;
};
constexpr RunRow kRuns[] = {
    {"05 01 02 00 00 00 09", "A@0+1=5 B@1+2=258 C@3+4=9"},
    {"05 01 02 00 00 00 09 FF", "A@0+1=5 B@1+2=258 C@3+4=9 !byte 7: 1 byte left over"},
    {"05 01 02 00 00 00 09 FF FF", "A@0+1=5 B@1+2=258 C@3+4=9 !byte 7: 2 bytes left over"},
    {"05 01 02 00 00 00", "A@0+1=5 B@1+2=258 !byte 3: C needs 4 bytes, 3 are left"},
    {"05 01 02 00", "A@0+1=5 B@1+2=258 !byte 3: C needs 4 bytes, 1 is left"},
    {"05 01 02", "A@0+1=5 B@1+2=258 !byte 3: C needs 4 bytes, 0 are left"},
    {"05 01", "A@0+1=5 !byte 1: B needs 2 bytes, 1 is left"},
    {"05", "A@0+1=5 !byte 1: B needs 2 bytes, 0 are left"},
    {"", "!byte 0: A needs 1 byte, 0 are left"},
};

TEST(NumberItem, NumbersFollowEachOtherUntilBytesAreMissing) {
    const Decoding decoding({{"A", kUByte}, {"B", kUWord}, {"C", kULong}});
    for (const RunRow& row : kRuns) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

constexpr std::size_t kHuge = std::numeric_limits<std::size_t>::max();

struct RawRow {
    const char* bytes;
    std::size_t begin;
    std::size_t length;
    std::uint32_t value;
};
constexpr RawRow kRaws[] = {
    {"01 02 03 04 05", 0, 1, 0x01},
    {"01 02 03 04 05", 0, 2, 0x0102},
    {"01 02 03 04 05", 0, 3, 0x010203},
    {"01 02 03 04 05", 0, 4, 0x01020304},
    {"01 02 03 04 05", 1, 4, 0x02030405},
    {"01 02 03 04 05", 4, 1, 0x05},
    {"FF FF FF FF FF", 0, 4, 0xFFFFFFFF},
    {"01 02 03 04 05", 0, 0, 0},
    {"01 02 03 04 05", 0, 5, 0},
    {"01 02 03 04 05", 2, 4, 0},
    {"01 02 03 04 05", 4, 2, 0},
    {"01 02 03 04 05", 5, 0, 0},
    {"01 02 03 04 05", 5, 1, 0},
    {"01 02 03 04 05", kHuge, 1, 0},
    {"01 02 03 04 05", kHuge, 4, 0},
    {"01 02 03 04 05", kHuge - 3, 4, 0},
    {"01 02 03 04 05", 1, kHuge, 0},
    {"01 02 03 04 05", 0, kHuge, 0},
    {"", 0, 1, 0},
    {"", 0, 0, 0},
};

TEST(Item, RawValueIsMostSignificantByteFirstAndZeroBeyondTheBytes) {
    const Decoding decoding({{"Level", kUByte}});
    const auto decoded = decoding.Decode("00");
    ASSERT_EQ(decoded->items.Items().size(), 1U);
    for (const RawRow& row : kRaws) {
        SCOPED_TRACE(std::string(row.bytes) + " from " + std::to_string(row.begin) + " " +
                     std::to_string(row.length));
        const std::vector<std::uint8_t> bytes = BytesOf(row.bytes);
        const ZMostParameter item(decoded->items.Items()[0]->Parameter(), bytes, 0);
        EXPECT_EQ(item.RawValue(row.begin, row.length), row.value);
    }
}

struct WholeRow {
    const char* bytes;
    std::uint32_t value;
};
constexpr WholeRow kWholes[] = {
    {"", 0},
    {"7F", 0x7F},
    {"80 01", 0x8001},
    {"80 00 01", 0x800001},
    {"FE DC BA 98", 0xFEDCBA98},
    {"00 00 00 00 01", 0},
};

TEST(Item, RawValueOfAllBytesNeedsOneToFour) {
    const Decoding decoding({{"Level", kUByte}});
    const auto decoded = decoding.Decode("00");
    ASSERT_EQ(decoded->items.Items().size(), 1U);
    for (const WholeRow& row : kWholes) {
        SCOPED_TRACE(row.bytes);
        const std::vector<std::uint8_t> bytes = BytesOf(row.bytes);
        const ZMostParameter item(decoded->items.Items()[0]->Parameter(), bytes, 7);
        EXPECT_EQ(item.RawValue(), row.value);
        EXPECT_EQ(item.Offset(), 7U);
    }
}

}  // namespace
}  // namespace tarvex::test::number_item_test
