/// Formatting of message texts, and texts of unknown origin used as a format.

#include "import/text/format_text.h"

#include <span>
#include <string>

#include <gtest/gtest.h>

namespace tarvex::test::format_text_test {
namespace {

TEST(FormatText, PutsArgumentsIntoTheText) {
    EXPECT_EQ(FormatText("Value '%d' out of range [%d, %d)", 256, 0, 256),
              "Value '256' out of range [0, 256)");
    EXPECT_EQ(FormatText("Double definition of element with ID 0x%X", 0x22U),
              "Double definition of element with ID 0x22");
    EXPECT_EQ(FormatText("Error #%04u in '%s':\n  %s\n", 7U, "/Cat", std::string("x")),
              "Error #0007 in '/Cat':\n  x\n");
    EXPECT_EQ(FormatText("%s'%s'", "Parsing XML ", std::string("a.xml")), "Parsing XML 'a.xml'");
    EXPECT_EQ(FormatText("%d", -1), "-1");
}

TEST(FormatText, EmptyFormatIsAnEmptyText) {
    EXPECT_EQ(FormatText(""), "");
}

TEST(FormatText, FormatWithoutArgumentsIsItself) {
    EXPECT_EQ(FormatText("no warnings"), "no warnings");
}

TEST(FormatText, PercentSignsInArgumentsStand) {
    EXPECT_EQ(FormatText("'%s'", "%n%s%d%%"), "'%n%s%d%%'");
}

TEST(FormatText, ResultIsCutAt979Bytes) {
    struct Case {
        std::size_t length;
        std::size_t kept;
    };
    constexpr Case kCases[] = {{978, 978}, {979, 979}, {980, 979}, {981, 979}, {100'000, 979}};
    for (const auto& [length, kept] : kCases) {
        SCOPED_TRACE(length);
        EXPECT_EQ(FormatText("%s", std::string(length, 'x')), std::string(kept, 'x'));
    }
}

TEST(FormatText, CutFallsInTheMiddleOfTheText) {
    EXPECT_EQ(FormatText("<%s>", std::string(978, 'x')), "<" + std::string(978, 'x'));
}

TEST(FormatTakes, AcceptsMatchingArgumentsOnly) {
    static_assert(FormatTakes<>("no warnings"));
    static_assert(FormatTakes<>("100%%"));
    static_assert(FormatTakes<const char*>("<%s>"));
    static_assert(FormatTakes<std::string>("<%s>"));
    static_assert(FormatTakes<int, const char*>("Position %d of '%s'"));
    static_assert(FormatTakes<unsigned>("0x%X"));
    static_assert(FormatTakes<unsigned>("#%04u"));
    static_assert(FormatTakes<double>("%f"));

    static_assert(!FormatTakes<>("<%s>"), "an argument is missing");
    static_assert(!FormatTakes<int>("no warnings"), "an argument is left");
    static_assert(!FormatTakes<int>("<%s>"), "a number for a text");
    static_assert(!FormatTakes<const char*>("%d"), "a text for a number");
    static_assert(!FormatTakes<const char*, int>("Position %d of '%s'"), "the wrong order");
    static_assert(!FormatTakes<long long>("%d"), "more bits than %d takes");
    static_assert(!FormatTakes<>("100%"), "an unfinished conversion");
    SUCCEED() << "checked when the test was compiled";
}

struct RenderCase {
    const char* text;
    const char* expected;
};

void ExpectRendered(std::span<const RenderCase> cases) {
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(RenderAsFormat(text), expected);
    }
}

TEST(RenderAsFormat, TextWithoutConversionsStands) {
    constexpr RenderCase kCases[] = {
        {"", ""}, {"PARAMVOID: {Void}", "PARAMVOID: {Void}"}, {"a\tb\n", "a\tb\n"}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, DoubledPercentSignIsOne) {
    constexpr RenderCase kCases[] = {{"%%", "%"},   {"100%%", "100%"}, {"%%%%", "%%"},
                                     {"%%d", "%d"}, {"%%%d", "%0"},    {"%%n%%s", "%n%s"}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, NumericConversionsPrintZero) {
    constexpr RenderCase kCases[] = {
        {"%d", "0"},
        {"%i", "0"},
        {"%u", "0"},
        {"%o", "0"},
        {"%x", "0"},
        {"%X", "0"},
        {"%#x", "0"},
        {"%#o", "0"},
        {"%ld", "0"},
        {"%lld", "0"},
        {"%hd", "0"},
        {"%hhu", "0"},
        {"%zu", "0"},
        {"%jd", "0"},
        {"%td", "0"},
        {"%f", "0.000000"},
        {"%F", "0.000000"},
        {"%e", "0.000000e+00"},
        {"%E", "0.000000E+00"},
        {"%g", "0"},
        {"%G", "0"},
        {"%a", "0x0p+0"},
        {"%A", "0X0P+0"},
        {"%Lf", "0.000000"},
        {"%.1f", "0.0"},
        {"%5d", "    0"},
        {"%-5d|", "0    |"},
        {"%05d", "00000"},
        {"%+d", "+0"},
        {"% d", " 0"},
        {"%.3d", "000"},
        {"%5.2d", "   00"},
        {"%.0d", ""},
        {"50% off", "500ff"},
        {"%d%d", "00"},
        {"a%db%uc", "a0b0c"},
    };
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, TextsAndCharactersPrintNothingButTheirWidth) {
    constexpr RenderCase kCases[] = {
        {"%s", ""},         {"%c", ""},       {"[%5s]", "[     ]"},  {"[%-5s]", "[     ]"},
        {"[%3c]", "[   ]"}, {"[%.3s]", "[]"}, {"[%4.2s]", "[    ]"}, {"%s%s%s%s%s%s%s%s", ""}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, PointersPrintAsNull) {
    constexpr RenderCase kCases[] = {{"%p", "(nil)"}, {"%8p", "   (nil)"}, {"%-8p|", "(nil)   |"}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, CountConversionWritesNothing) {
    constexpr RenderCase kCases[] = {{"%n", ""},  {"%hhn", ""},   {"%lln", ""},
                                     {"%5n", ""}, {"a%nb", "ab"}, {"%n%s%d.xml", "0.xml"}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, MalformedConversionsStandAsTheyAre) {
    constexpr RenderCase kCases[] = {{"%", "%"},
                                     {"100%", "100%"},
                                     {"%5%", "%5%"},
                                     {"%m", "%m"},
                                     {"%y", "%y"},
                                     {"%5", "%5"},
                                     {"%-", "%-"},
                                     {"%.", "%."},
                                     {"%l", "%l"},
                                     {"%\n", "%\n"},
                                     {"%(d", "%(d"},
                                     {"%1$d", "%1$d"},
                                     {"%\xC3\xA4", "%\xC3\xA4"}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, WidthAndPrecisionAreHonouredUpTo255) {
    struct Case {
        const char* text;
        std::size_t blanks;
        std::size_t zeros;
    };
    constexpr Case kCases[] = {
        {"%254d", 253, 1},          {"%255d", 254, 1},        {"%256d", 254, 1},
        {"%1000d", 254, 1},         {"%.255d", 0, 255},       {"%.256d", 0, 255},
        {"%.99999999999d", 0, 255}, {"%0255d", 0, 255},       {"%99999999999999999999d", 254, 1},
        {"%255s", 255, 0},          {"%4294967297s", 255, 0}, {"%300.300x", 0, 255},
    };
    for (const auto& [text, blanks, zeros] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(RenderAsFormat(text), std::string(blanks, ' ') + std::string(zeros, '0'));
    }
    EXPECT_EQ(RenderAsFormat("%.300f"), "0." + std::string(255, '0'));
}

TEST(RenderAsFormat, StarsReadNoArgument) {
    constexpr RenderCase kCases[] = {{"%*d", "0"}, {"[%*s]", "[]"}, {"%-*d", "0"}, {"%*.*f", "0"}};
    ExpectRendered(kCases);
}

TEST(RenderAsFormat, LongTextsAreNotCut) {
    const std::string text(5000, 'x');
    EXPECT_EQ(RenderAsFormat(text + "%d" + text), text + "0" + text);
    std::string many;
    for (int i = 0; i < 1000; ++i) {
        many += "%255d";
    }
    EXPECT_EQ(RenderAsFormat(many).size(), 255'000U);
}

TEST(RenderAsFormat, ZeroBytesStand) {
    const std::string text("a\0%d\0%", 6);
    EXPECT_EQ(RenderAsFormat(text), std::string("a\0"
                                                "0"
                                                "\0%",
                                                5));
}

TEST(RenderAsFormat, EveryByteAfterAPercentSignIsHarmless) {
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == 'C' || byte == 'S') {
            continue;  // some systems know these conversions
        }
        SCOPED_TRACE(byte);
        const std::string text = {'%', static_cast<char>(byte)};
        const bool isConversion = std::string_view("diouxXeEfFgGaAcspn%").find(text[1]) != std::string::npos;
        EXPECT_EQ(RenderAsFormat(text) == text, !isConversion);
    }
}

}  // namespace
}  // namespace tarvex::test::format_text_test
