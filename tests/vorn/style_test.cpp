#include "drawing/style.h"

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

}  // namespace
}  // namespace vorn::test
