/// Numbers in capitals.

#include "import/text/number_letters.h"

#include <gtest/gtest.h>

namespace tarvex::test::number_letters_test {
namespace {

struct LettersCase {
    unsigned number;
    const char* letters;
};

TEST(NumberLetters, AreDigitsFromAToZ) {
    const LettersCase kCases[] = {{0, ""},    {1, "B"},   {25, "Z"},    {26, "BA"},       {27, "BB"},
                                  {51, "BZ"}, {52, "CA"}, {676, "BAA"}, {456976, "BAAAA"}};
    for (const auto& [number, letters] : kCases) {
        EXPECT_EQ(LettersOf(number), letters);
        EXPECT_EQ(NumberOfLetters(letters), number);
    }
}

TEST(NumberLetters, OtherTextsAreNone) {
    for (const char* text : {"A", "AB", "b", "B1", "1", "B ", "BAAAAA"}) {
        EXPECT_EQ(NumberOfLetters(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace tarvex::test::number_letters_test
