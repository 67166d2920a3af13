/// Names that the database accepts, comparison of names, and lists in settings.

#include "import/text/names.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvex::test::names_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct SanitizeCase {
    const char* text;
    const char* asName;
    const char* asText;
};

TEST(Sanitize, KeepsNameCharactersAndTreatsBlanks) {
    constexpr SanitizeCase kCases[] = {
        // text               as name                as text
        {"Audio Disk Player", "Audio_Disk_Player", "Audio Disk Player"},
        {" Amp ", "_Amp_", " Amp "},
        {"  ", "__", "  "},
        {"Vol.Ctrl", "VolCtrl", "VolCtrl"},
        {"a[1](2)_-Z9", "a[1](2)_-Z9", "a[1](2)_-Z9"},
        {"km/h", "kmh", "kmh"},
        {"a\tb\nc\rd", "abcd", "abcd"},
        {"L\xC3\xA4nge", "Lnge", "Lnge"},
        {"L\xE4nge", "Lnge", "Lnge"},
        {"{Void}", "Void", "Void"},
        {"%n%s", "ns", "ns"},
        {"...", "", ""},
        {"", "", ""},
    };
    for (const auto& [text, asName, asText] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(SanitizeName(text), asName);
        EXPECT_EQ(SanitizeText(text), asText);
    }
}

TEST(Sanitize, EveryByteIsKeptOrDroppedAsListed) {
    const std::string valid = "[]()_-ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string text(1, static_cast<char>(byte));
        const std::string kept = valid.find(text) != std::string::npos ? text : "";
        EXPECT_EQ(SanitizeName(text), byte == ' ' ? "_" : kept);
        EXPECT_EQ(SanitizeText(text), byte == ' ' ? " " : kept);
    }
}

struct EqualCase {
    const char* a;
    const char* b;
    bool withoutCase;
    bool withCase;
};

TEST(NamesEqual, ComparesWithoutCaseUnlessAskedOtherwise) {
    constexpr EqualCase kCases[] = {
        {"Amp", "Amp", true, true},
        {"Amp", "aMP", true, false},
        {"Amp", "Amps", false, false},
        {"Amps", "Amp", false, false},
        {"", "", true, true},
        {"", "a", false, false},
        {"a_b", "A_B", true, false},
        {"[", "{", false, false},
        {"@", "`", false, false},
        {"a b", "a_b", false, false},
        {"\xC3\x84", "\xC3\xA4", false, false},
    };
    for (const auto& [a, b, withoutCase, withCase] : kCases) {
        SCOPED_TRACE(std::string(a) + " / " + b);
        EXPECT_EQ(NamesEqual(a, b), withoutCase);
        EXPECT_EQ(NamesEqual(a, b, false), withoutCase);
        EXPECT_EQ(NamesEqual(a, b, true), withCase);
    }
}

TEST(NamesEqual, TextsAfterAZeroByteCount) {
    EXPECT_FALSE(NamesEqual(std::string("a\0b", 3), std::string("a\0c", 3), true));
}

TEST(NameHash, EqualNamesHashAlike) {
    EXPECT_EQ(NameHash()("AudioAmplifier"), NameHash()("AUDIOamplifier"));
    EXPECT_NE(NameHash()("AudioAmplifier"), NameHash()("AudioAmplifie"));
    EXPECT_NE(NameHash()("ab"), NameHash()("ba"));
}

TEST(SoughtName, HashesAsTheNameDoes) {
    const std::string name = "AudioAmplifier";
    EXPECT_EQ(SoughtName(name).Hash(), NameHash()(name));
    EXPECT_EQ(SoughtName("AUDIOamplifier").Hash(), NameHash()(name));
    EXPECT_EQ(SoughtName(name).Text(), name);
}

TEST(SplitTokens, YieldsTheRunsBetweenSeparators) {
    EXPECT_THAT(SplitTokens(",,12;;0x0A .", kListSeparators), ElementsAre("12", "0x0A"));
    EXPECT_THAT(SplitTokens("A.B", kListSeparators), ElementsAre("A", "B"));
    EXPECT_THAT(SplitTokens("a,b;c:d.e f\tg", kListSeparators),
                ElementsAre("a", "b", "c", "d", "e", "f", "g"));
    EXPECT_THAT(SplitTokens("one", kListSeparators), ElementsAre("one"));
    EXPECT_THAT(SplitTokens("", kListSeparators), IsEmpty());
    EXPECT_THAT(SplitTokens(",;:. \t", kListSeparators), IsEmpty());
    EXPECT_THAT(SplitTokens("a\nb/c-d", kListSeparators), ElementsAre("a\nb/c-d"));
    EXPECT_THAT(SplitTokens("a,b c", ","), ElementsAre("a", "b c"));
    EXPECT_THAT(SplitTokens("a,b", ""), ElementsAre("a,b"));
}

TEST(ParseNumberList, TakesTheNumbersAndSkipsTheRest) {
    struct Case {
        const char* text;
        std::set<std::uint32_t> numbers;
    };
    const Case kCases[] = {
        {"5, 0x10; abc", {5, 16}},
        {"10, 0x20;junk", {10, 32}},
        {"7,7,0x7,0b111", {7}},
        {"3 2 1", {1, 2, 3}},
        {"1..5", {1, 5}},
        {"152", {152}},
        {"4294967295", {2147483647}},
        {"0xFFFFFFFF", {0xFFFFFFFF}},
        {"", {}},
        {" ,;", {}},
        {"1F,x", {}},
    };
    for (const auto& [text, numbers] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(ParseNumberList(text), numbers);
    }
}

}  // namespace
}  // namespace tarvex::test::names_test
