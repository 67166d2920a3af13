/// The list of hints, and how texts of files are shown in one.

#include "driver/hints.h"

#include <string>

#include <gtest/gtest.h>

namespace tarvex::test::hints_test {
namespace {

Hints Numbered(int count) {
    Hints hints;
    for (int i = 1; i <= count; ++i) {
        hints.Add("number " + std::to_string(i));
    }
    return hints;
}

TEST(HintList, EachIsALine) {
    EXPECT_EQ(Hints().Text(), "");
    EXPECT_EQ(Numbered(2).Text(), "TARVEX: hint: number 1\nTARVEX: hint: number 2\n");
}

TEST(HintList, LastLineOfManySaysHowManyThereAre) {
    const std::string ten = Numbered(10).Text();
    EXPECT_TRUE(ten.ends_with("TARVEX: hint: number 9\nTARVEX: hint: number 10\n")) << ten;
    const std::string eleven = Numbered(11).Text();
    EXPECT_TRUE(eleven.ends_with("TARVEX: hint: number 9\nTARVEX: hint: there are 2 more\n")) << eleven;
    const std::string many = Numbered(1009).Text();
    EXPECT_TRUE(many.ends_with("TARVEX: hint: number 9\nTARVEX: hint: there are 1000 more\n")) << many;
}

TEST(HintList, WordsAreMadeOnlyForHintsThatMayBeTold) {
    Hints hints;
    int made = 0;
    for (int i = 0; i < 1000; ++i) {
        hints.Make([&] { return std::to_string(++made); });
    }
    EXPECT_EQ(made, 10);
    EXPECT_TRUE(hints.Text().ends_with("TARVEX: hint: 9\nTARVEX: hint: there are 991 more\n"));
}

TEST(HintList, SearchWithoutMemoryEndsAlone) {
    Hints hints;
    LookForHints([&] {
        hints.Add("before");
        throw std::bad_alloc();
    });
    EXPECT_EQ(hints.Text(), "TARVEX: hint: before\n");
}

struct ShownCase {
    std::string text;
    std::string shown;
};

TEST(HintTexts, AreCutAndClean) {
    const ShownCase kCases[] = {
        {"", "''"},
        {"a b", "'a b'"},
        {"a\nb\x1B[m", "'a.b.[m'"},
        {std::string(200, 'x'), "'" + std::string(200, 'x') + "'"},
        {std::string(201, 'x'), "'" + std::string(200, 'x') + "...'"},
        {std::string(199, 'x') + "\xC3\xA4", "'" + std::string(199, 'x') + "...'"},  // no half of a letter
    };
    for (const auto& [text, shown] : kCases) {
        EXPECT_EQ(Quoted(text), shown);
    }
}

TEST(HintTexts, CountsHaveTheirNoun) {
    EXPECT_EQ(Counted(0, "error"), "0 errors");
    EXPECT_EQ(Counted(1, "error"), "1 error");
    EXPECT_EQ(Counted(12, "error"), "12 errors");
}

}  // namespace
}  // namespace tarvex::test::hints_test
