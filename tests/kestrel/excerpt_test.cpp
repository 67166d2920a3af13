/// Texts of any length in messages.

#include "kestrel/excerpt.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using kestrel::Excerpt;

struct ExcerptCase {
    const char* what;
    std::string text;
    std::string excerpt;
};

const std::string kLetters(197, 'x');

const ExcerptCase kExcerpts[] = {
    {"nothing", "", ""},
    {"200 bytes", kLetters + "abc", kLetters + "abc"},
    {"201 bytes", kLetters + "abcd", kLetters + "abc..."},
    {"very many", kLetters + "abc" + std::string(5'000'000, 'y'), kLetters + "abc..."},
    {"a character of two bytes up to the end", kLetters + "a\u00E4b", kLetters + "a\u00E4..."},
    {"a character of two bytes over the end", kLetters + "ab\u00E4", kLetters + "ab..."},
    {"a character of three bytes, two of them beyond", kLetters + "ab\u20AC", kLetters + "ab..."},
    {"a character of four bytes, one of them beyond", kLetters + "\U0001F600b", kLetters + "..."},
    {"bytes that are no characters", std::string(300, '\x80'), std::string(197, '\x80') + "..."},
};

TEST(Excerpt, IsShortAndCutsNoCharacter) {
    for (const auto& [what, text, excerpt] : kExcerpts) {
        EXPECT_EQ(Excerpt(text), excerpt) << what;
    }
}

}  // namespace
