/// Enumerations: the name that belongs to a code, in small lists and in very long ones.

#include "disasm/enum_item.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::enum_item_test {
namespace {

std::string Value(std::string_view code, std::string_view name) {
    std::string xml = "<TEnumValue Code=\"";
    return xml.append(code).append("\">").append(name) + "</TEnumValue>";
}

std::string Enumeration(int enumMax, std::string_view values) {
    std::string xml = "<TEnum TypeRef=\"type_enum\" TEnumMax=\"" + std::to_string(enumMax) + "\">";
    return xml.append(values) + "</TEnum>";
}

struct CodeRow {
    const char* bytes;
    const char* shown;
};

constexpr CodeRow kBytes[] = {
    {"00", "Mode@0+1=Play (0x00)"},
    {"01", "Mode@0+1=Fast Forward (0x01)"},
    {"02", "Mode@0+1=0x02"},
    {"03", "Mode@0+1=0x03"},
    {"0F", "Mode@0+1=0x0F"},
    {"10", "Mode@0+1=Scan (0x10)"},
    {"18", "Mode@0+1=Scan (0x18)"},
    {"1F", "Mode@0+1=Scan (0x1F)"},
    {"20", "Mode@0+1=0x20"},
    {"EF", "Mode@0+1=0xEF"},
    {"F0", "Mode@0+1=Own (0xF0)"},
    {"FF", "Mode@0+1=Own (0xFF)"},
    {"", "!byte 0: Mode needs 1 byte, 0 are left"},
    {"00 00", "Mode@0+1=Play (0x00) !byte 1: 1 byte left over"},
};

TEST(EnumItem, TextIsTheNameAndTheCode) {
    const Decoding decoding(
        {{"Mode", Enumeration(255, Value("0x00", "Play") + Value("1", " Fast Forward\n") + Value("3", "") +
                                       Value("0x10..0x1F", "Scan") + Value("&gt;0xF0", "Own"))}});
    for (const CodeRow& row : kBytes) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

constexpr CodeRow kWords[] = {
    {"00 00", "Mode@0+2=None (0x0000)"},
    {"01 00", "Mode@0+2=Much (0x0100)"},
    {"01 01", "Mode@0+2=0x0101"},
    {"00 01", "Mode@0+2=0x0001"},
    {"02 00", "Mode@0+2=More (0x0200)"},
    {"FF FE", "Mode@0+2=More (0xFFFE)"},
    {"FF FF", "Mode@0+2=0xFFFF"},
    {"01", "!byte 0: Mode needs 2 bytes, 1 is left"},
    {"", "!byte 0: Mode needs 2 bytes, 0 are left"},
};

TEST(EnumItem, CodesAbove255TakeTwoBytes) {
    const Decoding decoding({{"Mode", Enumeration(256, Value("0", "None") + Value("256", "Much") +
                                                           Value("0x200..0xFFFE", "More"))}});
    for (const CodeRow& row : kWords) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

TEST(EnumItem, ItemTellsNameTypeAndRawValue) {
    const Decoding decoding({{"Mode", kSwitch}});
    for (const auto& [bytes, name] : {std::pair{"02", "Auto"}, {"09", ""}}) {
        SCOPED_TRACE(bytes);
        const auto decoded = decoding.Decode(bytes);
        ASSERT_EQ(decoded->items.Items().size(), 1U);
        const auto* item = dynamic_cast<const ZMostParameterEnum*>(decoded->items.Items()[0].get());
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->ValueName(), name);
        EXPECT_EQ(item->RawValue(), BytesOf(bytes)[0]);
        EXPECT_EQ(item->GetType(), kParamEnum);
        EXPECT_EQ(item->Members(), nullptr);
    }
}

struct OverlapRow {
    const char* what;
    std::string values;
    const char* bytes;
    const char* shown;
};

TEST(EnumItem, FirstValueThatHoldsTheCodeCounts) {
    const OverlapRow rows[] = {
        {"inside", Value("1..10", "Wide") + Value("5", "Narrow"), "05", "Mode@0+1=Wide (0x05)"},
        {"inside, the other way round", Value("5", "Narrow") + Value("1..10", "Wide"), "05",
         "Mode@0+1=Narrow (0x05)"},
        {"beside", Value("5", "Narrow") + Value("1..10", "Wide"), "06", "Mode@0+1=Wide (0x06)"},
        {"before", Value("5", "Narrow") + Value("1..10", "Wide"), "04", "Mode@0+1=Wide (0x04)"},
        {"end of the first", Value("1..5", "Low") + Value("5..9", "High"), "05", "Mode@0+1=Low (0x05)"},
        {"the same twice", Value("7", "One") + Value("7", "Two"), "07", "Mode@0+1=One (0x07)"},
        {"descending", Value("10..20", "C") + Value("5..15", "B") + Value("0..9", "A"), "0C",
         "Mode@0+1=C (0x0C)"},
        {"descending", Value("10..20", "C") + Value("5..15", "B") + Value("0..9", "A"), "09",
         "Mode@0+1=B (0x09)"},
        {"descending", Value("10..20", "C") + Value("5..15", "B") + Value("0..9", "A"), "04",
         "Mode@0+1=A (0x04)"},
        {"ascending begins", Value("1..30", "A") + Value("2..3", "B") + Value("4..40", "C"), "1E",
         "Mode@0+1=A (0x1E)"},
        {"ascending begins", Value("1..30", "A") + Value("2..3", "B") + Value("4..40", "C"), "1F",
         "Mode@0+1=C (0x1F)"},
        {"open first", Value("&gt;3", "Open") + Value("9", "Nine"), "09", "Mode@0+1=Open (0x09)"},
    };
    for (const OverlapRow& row : rows) {
        SCOPED_TRACE(std::string(row.what) + " " + row.bytes);
        EXPECT_EQ(Decoding({{"Mode", Enumeration(255, row.values)}}).Shown(row.bytes), row.shown);
    }
}

constexpr int kMany = 5000;

std::string CodeBytes(int code) {
    char text[16];
    std::snprintf(text, sizeof text, "%02X %02X", static_cast<unsigned>(code) >> 8,
                  static_cast<unsigned>(code) & 0xFFU);
    return text;
}

std::string CodeText(int code) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%04X", static_cast<unsigned>(code));
    return text;
}

/// Looks every code of an enumeration up that has a value "V<code>" for each even code below 2 * kMany.
void ExpectEvenCodes(const std::string& values) {
    const Decoding decoding({{"Mode", Enumeration(65535, values)}});
    for (int code = 0; code < 2 * kMany + 4; ++code) {
        const bool isNamed = code % 2 == 0 && code < 2 * kMany;
        const std::string name =
            isNamed ? "V" + std::to_string(code) + " (" + CodeText(code) + ")" : CodeText(code);
        ASSERT_EQ(decoding.Shown(CodeBytes(code)), "Mode@0+2=" + name);
    }
}

TEST(EnumItem, FiveThousandAscendingValues) {
    std::string values;
    for (int i = 0; i < kMany; ++i) {
        values += Value(std::to_string(2 * i), "V" + std::to_string(2 * i));
    }
    ExpectEvenCodes(values);
}

TEST(EnumItem, FiveThousandValuesInNoOrder) {
    std::string values;
    for (int i = 0; i < kMany; ++i) {
        const int code = 2 * (i * 1237 % kMany);  // 1237 and kMany have no common divisor, so each comes once
        values += Value(std::to_string(code), "V" + std::to_string(code));
    }
    ExpectEvenCodes(values);
}

TEST(EnumItem, FiveThousandAscendingValuesThatOverlap) {
    // Value i stands for the codes i to i + 9, so the first one that holds code c is c - 9.
    std::string values;
    for (int i = 0; i < kMany; ++i) {
        values += Value(std::to_string(i) + ".." + std::to_string(i + 9), "V" + std::to_string(i));
    }
    const Decoding decoding({{"Mode", Enumeration(65535, values)}});
    for (const auto& [code, first] :
         {std::pair{0, 0}, {1, 0}, {9, 0}, {10, 1}, {2500, 2491}, {4999, 4990}, {5008, 4999}}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(decoding.Shown(CodeBytes(code)),
                  "Mode@0+2=V" + std::to_string(first) + " (" + CodeText(code) + ")");
    }
    EXPECT_EQ(decoding.Shown(CodeBytes(5009)), "Mode@0+2=0x1391");
}

}  // namespace
}  // namespace tarvex::test::enum_item_test
