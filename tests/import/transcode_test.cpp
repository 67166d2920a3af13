/// Texts from the XML parser and to it.

#include "import/xml/transcode.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace tarvex::test::transcode_test {
namespace {

struct CodingCase {
    const char* utf8;
    std::u16string dom;
};

TEST(Transcode, IsUtf8WhateverTheLocale) {
    const CodingCase kCases[] = {
        {"", u""},
        {"Amp", u"Amp"},
        {"\xC3\xA4", u"\u00E4"},
        {"\xE2\x82\xAC", u"\u20AC"},
        {"\xF0\x9F\x8E\xB5", u"\U0001F3B5"},
        {"\xEF\xBF\xBD", u"\uFFFD"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    };
    for (const auto& [utf8, dom] : kCases) {
        SCOPED_TRACE(utf8);
        const std::basic_string<XMLCh> text(dom.begin(), dom.end());
        EXPECT_EQ(Transcode(text.c_str()), utf8);
        EXPECT_EQ(ToDomText(utf8), text);
    }
    EXPECT_EQ(Transcode(nullptr), "");
}

TEST(Transcode, HalvesOfSurrogatePairsAreReplaced) {
    const std::basic_string<XMLCh> kTexts[] = {
        {0xD83C, 'a'}, {'a', 0xD83C}, {0xDFB5, 'a'}, {0xD83C, 0xD83C, 0xDFB5}};
    const char* kExpected[] = {
        "\xEF\xBF\xBD"
        "a",
        "a\xEF\xBF\xBD",
        "\xEF\xBF\xBD"
        "a",
        "\xEF\xBF\xBD\xF0\x9F\x8E\xB5"};
    for (std::size_t i = 0; i < std::size(kTexts); ++i) {
        EXPECT_EQ(Transcode(kTexts[i].c_str()), kExpected[i]);
    }
}

TEST(ToDomText, BytesThatAreNoUtf8AreReplaced) {
    const std::pair<const char*, std::u16string> kCases[] = {
        {"\xE4", u"\uFFFD"},  // Latin-1
        {"a\xE4"
         "b",
         u"a\uFFFDb"},
        {"\x80", u"\uFFFD"},                      // continuation alone
        {"\xC0\x80", u"\uFFFD\uFFFD"},            // overlong
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},  // half of a surrogate pair
        {"\xE2\x82", u"\uFFFD\uFFFD"},            // cut off
        {"\xFF", u"\uFFFD"},
    };
    for (const auto& [bytes, expected] : kCases) {
        SCOPED_TRACE(bytes);
        EXPECT_EQ(ToDomText(bytes), std::basic_string<XMLCh>(expected.begin(), expected.end()));
    }
}

}  // namespace
}  // namespace tarvex::test::transcode_test
