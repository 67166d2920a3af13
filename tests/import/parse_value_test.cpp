/// Numbers and ranges in the texts of a catalog.

#include "import/text/parse_value.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace tarvex::test::parse_value_test {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t kAllOnes = 0xFFFFFFFF;

struct SignedCase {
    const char* text;
    bool ok;
    std::int32_t value;
};

struct UnsignedCase {
    const char* text;
    bool ok;
    std::uint32_t value;
};

TEST(ParseDecimal, TakesDigitsAndMinusSigns) {
    constexpr SignedCase kCases[] = {
        {"0", true, 0},
        {"12", true, 12},
        {"007", true, 7},
        {"-5", true, -5},
        {"", true, 0},
        {"-", true, 0},
        {"--5", true, 0},
        {"5-3", true, 5},
        {"5-", true, 5},
        {"2147483647", true, kMax},
        {"-2147483648", true, kMin},
        {"2147483648", true, kMax},
        {"-2147483649", true, kMin},
        {"99999999999999999999", true, kMax},
        {"-99999999999999999999", true, kMin},
        {"1F", false, 0},
        {"0x1F", false, 0},
        {"+5", false, 0},
        {"1.5", false, 0},
        {" 12", false, 0},
        {"12 ", false, 0},
        {"12\n", false, 0},
        {"twelve", false, 0},
    };
    for (const auto& [text, ok, value] : kCases) {
        SCOPED_TRACE(text);
        std::int32_t out = 77;
        EXPECT_EQ(ParseDecimal(text, out), ok);
        EXPECT_EQ(out, value);
    }
}

TEST(ParseHex, TakesDigitsWithoutPrefix) {
    constexpr UnsignedCase kCases[] = {
        {"1F", true, 31},
        {"1f", true, 31},
        {"aBcDeF", true, 0xABCDEF},
        {"0", true, 0},
        {"00000000FF", true, 255},
        {"FFFFFFFF", true, kAllOnes},
        {"100000000", true, kAllOnes},
        {"123456789ABCDEF0123", true, kAllOnes},
        {"", true, 0},
        {"0x1F", false, 0},
        {"1G", false, 0},
        {"-1", false, 0},
        {" 1F", false, 0},
        {"1F ", false, 0},
    };
    for (const auto& [text, ok, value] : kCases) {
        SCOPED_TRACE(text);
        std::uint32_t out = 77;
        EXPECT_EQ(ParseHex(text, out), ok);
        EXPECT_EQ(out, value);
    }
}

TEST(ParseBinary, TakesDigitsWithoutPrefixAndWraps) {
    constexpr UnsignedCase kCases[] = {
        {"101", true, 5},
        {"0", true, 0},
        {"", true, 0},
        {"11111111111111111111111111111111", true, kAllOnes},
        {"100000000000000000000000000000000", true, 0},  // 33 digits
        {"100000000000000000000000000000011", true, 3},  // 33 digits
        {"102", false, 0},
        {"b1", false, 0},
        {"-1", false, 0},
        {" 1", false, 0},
    };
    for (const auto& [text, ok, value] : kCases) {
        SCOPED_TRACE(text);
        std::uint32_t out = 77;
        EXPECT_EQ(ParseBinary(text, out), ok);
        EXPECT_EQ(out, value);
    }
}

constexpr SignedCase kIntegers[] = {
    {"12", true, 12},
    {"-5", true, -5},
    {"5-3", true, 5},
    {"0x1F", true, 31},
    {"0X1f", true, 31},
    {"  0x1F  ", true, 31},
    {"\t0x1F\n", true, 31},
    {"\n\t 12 \t\n", true, 12},
    {"0b101", true, 5},
    {"0B101", true, 5},
    {" 0b101 ", true, 5},
    {"10x5", true, 5},  // what stands before "0x" is dropped
    {"-0x10", true, 16},
    {"junk0x10", true, 16},
    {"10b1", true, 1},
    {"0x0b1", true, 0xB1},  // "0x" is looked for first
    {"0b0x1", true, 1},
    {"0xFFFFFFFF", true, -1},
    {"0x80000000", true, kMin},
    {"0x100000000", true, -1},
    {"2147483648", true, kMax},
    {"", true, 0},
    {"   ", true, 0},
    {"0x", true, 0},
    {"0b", true, 0},
    {"1F", false, 0},
    {"x1F", false, 0},
    {"0x1G", false, 0},
    {"0x 1F", false, 0},
    {"0x10x5", false, 0},
    {"0b102", false, 0},
    {"0b2", false, 0},
    {"1 2", false, 0},
    {"1.5", false, 0},
    {"12\r", false, 0},
    {"\r0", false, 0},
    {"0x1F\r", false, 0},
    {"#NULL#", false, 0},
    {"1..2", false, 0},
};

TEST(ParseInteger, FindsTheBaseByThePrefix) {
    for (const auto& [text, ok, value] : kIntegers) {
        SCOPED_TRACE(text);
        std::int32_t out = 77;
        EXPECT_EQ(ParseInteger(text, out), ok);
        EXPECT_EQ(out, value);
    }
}

TEST(IntegerOrZero, IsTheIntegerOrZero) {
    for (const auto& [text, ok, value] : kIntegers) {
        SCOPED_TRACE(text);
        EXPECT_EQ(IntegerOrZero(text), ok ? value : 0);
    }
}

TEST(ParseInteger, TextIsCutTo300CharactersFirst) {
    struct Case {
        const char* what;
        std::string text;
        std::int32_t value;
    };
    const Case kCases[] = {
        {"digit beyond the cut", std::string(299, ' ') + "75", 7},
        {"junk beyond the cut", "12" + std::string(298, ' ') + "junk", 12},
        {"prefix beyond the cut", std::string(300, '0') + "0x10", 0},
        {"megabytes", "12" + std::string(3'000'000, ' ') + "junk", 12},
    };
    for (const auto& [what, text, value] : kCases) {
        SCOPED_TRACE(what);
        std::int32_t out = 77;
        EXPECT_TRUE(ParseInteger(text, out));
        EXPECT_EQ(out, value);
    }
}

TEST(ParseFloat, ReadsTheNumberAtTheStart) {
    struct Case {
        const char* text;
        double value;
    };
    constexpr Case kCases[] = {{"0.5", 0.5},  {"-2.25", -2.25}, {"1e3", 1000}, {"12", 12}, {" 3", 3},
                               {"12abc", 12}, {"3,5", 3},       {"abc", 0},    {"", 0},    {".", 0}};
    for (const auto& [text, value] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_DOUBLE_EQ(ParseFloat(text), value);
    }
}

TEST(IsFloat, AsksForTheWholeText) {
    struct Case {
        const char* text;
        bool isFloat;
    };
    constexpr Case kCases[] = {{"0.5", true},     {"-2.25", true}, {"1e3", true},    {" 3 ", true},
                               {"\t3\r\n", true}, {"0x1F", true},  {"12abc", false}, {"3,5", false},
                               {"5 km", false},   {"1 2", false},  {"abc", false},   {"", false},
                               {" ", false},      {".", false}};
    for (const auto& [text, isFloat] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(IsFloat(text), isFloat);
    }
}

struct RangeCase {
    const char* text;
    bool ok;
    std::int32_t min;
    std::int32_t max;
};

TEST(ParseRange, TakesNothingAValueTwoValuesOrALowerBound) {
    constexpr RangeCase kCases[] = {
        {"", true, 0, 0},
        {"#NULL#", true, 0, 0},
        {"#null#", true, 0, 0},
        {"#Null#", true, 0, 0},
        {"7", true, 7, 7},
        {" 7 ", true, 7, 7},
        {"-7", true, -7, -7},
        {"0x10", true, 16, 16},
        {"0b11", true, 3, 3},
        {"1..4", true, 1, 4},
        {"1...4", true, 1, 4},
        {"1 .. 4", true, 1, 4},
        {"0x10..0x1F", true, 16, 31},
        {"0x10...0x1F", true, 16, 31},
        {"-5..-1", true, -5, -1},
        {"5..1", true, 5, 1},
        {"..5", true, 0, 5},
        {"5..", true, 5, 0},
        {">3", true, 3, kMax},
        {"> 3", true, 3, kMax},
        {">0x10", true, 16, kMax},
        {">-1", true, -1, kMax},
        {"a>3", true, 3, kMax},
        {"3>", true, 0, kMax},
    };
    for (const auto& [text, ok, min, max] : kCases) {
        SCOPED_TRACE(text);
        std::int32_t outMin = 77;
        std::int32_t outMax = 77;
        EXPECT_EQ(ParseRange(text, outMin, outMax), ok);
        EXPECT_EQ(outMin, min);
        EXPECT_EQ(outMax, max);
    }
}

TEST(ParseRange, RefusesEverythingElseWithZeros) {
    constexpr const char* kTexts[] = {">",   "..",  "abc",  " ",    "#NULL# ", " #NULL#", "#NUL#",
                                      ">x3", ">=3", ">3>4", "1..x", "x..1",    "1..2..3", "1....5",
                                      "1.5", "x7",  "1F",   "1 2",  "1,2",     "1..2\r",  "0x1G"};
    for (const char* text : kTexts) {
        SCOPED_TRACE(text);
        std::int32_t outMin = 77;
        std::int32_t outMax = 77;
        EXPECT_FALSE(ParseRange(text, outMin, outMax));
        EXPECT_EQ(outMin, 0);
        EXPECT_EQ(outMax, 0);
    }
}

TEST(ToLower, ChangesAsciiLettersOnly) {
    EXPECT_EQ(ToLower("AbC xyz 0X1F [\\]"), "abc xyz 0x1f [\\]");
    EXPECT_EQ(ToLower("\xC3\x84\xC4"), "\xC3\x84\xC4");
    EXPECT_EQ(ToLower(""), "");
}

TEST(ToLower, CutsAt300Characters) {
    EXPECT_EQ(ToLower(std::string(299, 'A')), std::string(299, 'a'));
    EXPECT_EQ(ToLower(std::string(300, 'A')), std::string(300, 'a'));
    EXPECT_EQ(ToLower(std::string(301, 'A')), std::string(300, 'a'));
}

TEST(Trim, DropsBlanksTabsAndLineFeedsAtBothEnds) {
    EXPECT_EQ(Trim(" \t\nA b\n\t "), "A b");
    EXPECT_EQ(Trim("A"), "A");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim(" \t\n"), "");
    EXPECT_EQ(Trim("\rA\r"), "\rA\r");
    EXPECT_EQ(Trim(" \rA\v "), "\rA\v");
}

}  // namespace
}  // namespace tarvex::test::parse_value_test
