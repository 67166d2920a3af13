/// Texts as a catalog writes them.

#include "review/own_texts.h"

#include <gtest/gtest.h>

namespace tarvex::test::own_texts_test {
namespace {

struct Written {
    const char* text;
    const char* line;
};

class TextInOneLine : public testing::TestWithParam<Written> {};

TEST_P(TextInOneLine, HasOneBlankBetweenWords) {
    EXPECT_EQ(review::InOneLine(GetParam().text), GetParam().line);
}

constexpr Written kTexts[] = {
    {"", ""},
    {" \t\r\n ", ""},
    {"word", "word"},
    {"two words", "two words"},
    {"two  words", "two words"},
    {" a b ", "a b"},
    {"\n\t\tfirst line\n\t\tsecond line\n\t", "first line second line"},
    {"a \nb", "a b"},
    {"a\n b", "a b"},
    {"a\tb", "a b"},
    {"a b  c d", "a b c d"},
    {"\xC3\xA4 \xC3\xB6\n\xC3\xBC", "\xC3\xA4 \xC3\xB6 \xC3\xBC"},
    {"bell \x07 stays", "bell \x07 stays"},
};

INSTANTIATE_TEST_SUITE_P(All, TextInOneLine, testing::ValuesIn(kTexts));

}  // namespace
}  // namespace tarvex::test::own_texts_test
