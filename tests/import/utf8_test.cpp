/// Characters of UTF-8, and texts made of them as they are shown.

#include "import/text/utf8.h"

#include <string>

#include <gtest/gtest.h>

#include "import/text/shown_text.h"

namespace tarvex::test::utf8_test {
namespace {

struct CutCase {
    const char* text;
    std::size_t maxBytes;
    const char* kept;
};
constexpr CutCase kCuts[] = {
    {"", 0, ""},
    {"Amp", 3, "Amp"},
    {"Amp", 2, "Am"},
    {"Amp", 0, ""},
    {"A\xC3\xA4", 3, "A\xC3\xA4"},
    {"A\xC3\xA4", 2, "A"},
    {"\xE2\x82\xACx", 3, "\xE2\x82\xAC"},
    {"\xE2\x82\xACx", 2, ""},
    {"\xE2\x82\xACx", 1, ""},
    {"a\xF0\x9F\x8E\xB5", 4, "a"},
    {"a\xF0\x9F\x8E\xB5", 2, "a"},
    // what is no character need not be kept whole
    {"a\xE2\x82", 2, "a\xE2"},
    {"a\x82\x82\x82", 3, "a\x82\x82"},
};

TEST(CutAtCharacter, LeavesNoHalfOfACharacter) {
    for (const auto& [text, maxBytes, kept] : kCuts) {
        EXPECT_EQ(CutAtCharacter(text, maxBytes), kept) << text << " to " << maxBytes;
    }
}

struct ShownCase {
    const char* text;
    const char* shown;
};
constexpr ShownCase kShown[] = {
    {"", ""},
    {"Amp 1", "Amp 1"},
    {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5"},
    {"a\x1B[31m\tb\x7F", "a.[31m.b."},
    {"\x01\n\r\x1F ~\x7F", ".... ~."},
    {"\xC2\x80\xC2\x9F\xC2\xA0", "..\xC2\xA0"},         // U+0080, U+009F and what comes behind them
    {"\xD8\x9B\xD8\x9C\xD8\x9D", "\xD8\x9B.\xD8\x9D"},  // U+061B to U+061D
    {"\xE2\x80\x8D\xE2\x80\x8E\xE2\x80\x8F\xE2\x80\x90", "\xE2\x80\x8D..\xE2\x80\x90"},  // U+200D to U+2010
    {"\xE2\x80\xA9\xE2\x80\xAA\xE2\x80\xAE\xE2\x80\xAF", "\xE2\x80\xA9..\xE2\x80\xAF"},  // U+2029 to U+202F
    {"\xE2\x81\xA5\xE2\x81\xA6\xE2\x81\xA9\xE2\x81\xAA", "\xE2\x81\xA5..\xE2\x81\xAA"},  // U+2065 to U+206A
    // broken UTF-8, byte by byte
    {"a\xE4"
     "b",
     "a.b"},
    {"\x9B"
     "31m",
     ".31m"},
    {"\xE2\x82", ".."},
    {"\xC0\x80", ".."},
    {"\xED\xA0\x80", "..."},
};

TEST(Shown, HasNothingThatATerminalObeysAndNothingThatIsNoText) {
    for (const auto& [text, shown] : kShown) {
        EXPECT_EQ(Shown(text), shown);
    }
    EXPECT_EQ(Shown(std::string_view("a\0b", 3)), "a.b");
}

constexpr ShownCase kHidden[] = {
    {"", ""},
    {"Amp 1\n\t100%~\n", "Amp 1\n\t100%~\n"},
    {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5\t\xD0\x96\n", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5\t\xD0\x96\n"},
    {"a\x1B[31m\tb\x7F\n", "a.[31m\tb.\n"},
    {"a\rb\x08", "a.b."},
    {"\xC3\xA4\xC2\x9B\n\xE2\x80\xAE", "\xC3\xA4.\n."},  // U+009B and U+202E behind a letter
    {"\xD8\x9C", "."},
    {"\xE4\x9B\xFF", "\xE4\x9B\xFF"},  // no UTF-8
};

TEST(HideControls, LeavesLinesOfTextAsTheyAre) {
    for (const auto& [text, shown] : kHidden) {
        std::string line = text;
        HideControls(line);
        EXPECT_EQ(line, shown);
    }
}

}  // namespace
}  // namespace tarvex::test::utf8_test
