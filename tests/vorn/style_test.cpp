#include "vorn/style.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

struct ColourCase {
    Colour colour;
    const char* coloured;
};

constexpr ColourCase kColours[] = {
    {Colour::Added, "\x1B[32mText\x1B[0m"},    // green
    {Colour::Removed, "\x1B[31mText\x1B[0m"},  // red
    {Colour::Changed, "\x1B[33mText\x1B[0m"},  // yellow
    {Colour::Heading, "\x1B[1mText\x1B[0m"},   // bold
    {Colour::Faint, "\x1B[2mText\x1B[0m"},
};

TEST(Style, MarksATextAndEndsTheMark) {
    for (const auto& [colour, coloured] : kColours) {
        EXPECT_EQ(Style(true)(colour, "Text"), coloured);
    }
}

TEST(Style, LeavesATextAsItIsWithoutColours) {
    for (const ColourCase& row : kColours) {
        EXPECT_EQ(Style(false)(row.colour, "Text"), "Text");
    }
}

struct ShownCase {
    std::string text;
    const char* shown;
};

const ShownCase kShown[] = {
    {"", ""},
    {"Volume 1/2 ~!", "Volume 1/2 ~!"},
    {"S\xC3\xBC"
     "d \xE2\x82\xAC \xF0\x9F\x9A\x97",
     "S\xC3\xBC"
     "d \xE2\x82\xAC \xF0\x9F\x9A\x97"},
    {"\x1B[31mred", ".[31mred"},
    {"a\nb\tc\rd", "a.b.c.d"},
    {std::string("a\0b", 3), "a.b"},
    {"\x01\x1F\x7F", "..."},
};

TEST(Shown, ControlCharactersBecomeDots) {
    for (const auto& [text, shown] : kShown) {
        EXPECT_EQ(Shown(text), shown);
    }
}

/// Terminals take U+009B for the beginning of a control sequence, as they take ESC and "[".
TEST(Shown, ControlCharactersOfTwoBytesBecomeDotsToo) {
    EXPECT_EQ(Shown("a\xC2\x9B"
                    "31mb"),
              "a.31mb");
    EXPECT_EQ(Shown("\xC2\x80\xC2\x9F\xC2\xA0"), "..\xC2\xA0");  // U+00A0 is a blank, no control character
}

/// Text behind such a mark is shown from right to left.
TEST(Shown, MarksOfDirectionBecomeDots) {
    EXPECT_EQ(Shown("\xE2\x80\x8E\xE2\x80\x8F\xE2\x80\xAA\xE2\x80\xAE\xE2\x81\xA6\xE2\x81\xA9"), "......");
    EXPECT_EQ(Shown("\xE2\x80\x93\xE2\x80\xAF\xE2\x81\xAA"), "\xE2\x80\x93\xE2\x80\xAF\xE2\x81\xAA");
}

}  // namespace
}  // namespace vorn::test
