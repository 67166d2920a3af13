/// The words that a parser keeps.

#include "import/xml/vocabulary.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvex::test::vocabulary_test {
namespace {

using testing::ElementsAre;
using enum ElementText;

TEST(Vocabulary, HasWordsOnceOneIsAdded) {
    Vocabulary words;
    EXPECT_FALSE(words.HasWords());
    EXPECT_EQ(words.Find("TEnum"), nullptr);
    words.Add("TEnum");
    EXPECT_TRUE(words.HasWords());
}

TEST(Vocabulary, WordIsFoundWithWhatIsReadOfIt) {
    Vocabulary words;
    words.Add("TVoid");
    words.Add("Step", Read);
    words.Add("TEnum", Unread, {"TypeRef", "TEnumMax"});
    words.Add("TEnumValue", Read, {"Code"});
    struct Case {
        const char* element;
        bool hasText;
        std::vector<std::string> attributes;
    };
    const Case kCases[] = {
        {"TVoid", false, {}},
        {"Step", true, {}},
        {"TEnum", false, {"TypeRef", "TEnumMax"}},
        {"TEnumValue", true, {"Code"}},
    };
    for (const auto& [element, hasText, attributes] : kCases) {
        SCOPED_TRACE(element);
        const Vocabulary::Word* word = words.Find(element);
        ASSERT_NE(word, nullptr);
        EXPECT_EQ(word->hasText, hasText);
        EXPECT_EQ(word->attributes, attributes);
    }
}

TEST(Vocabulary, OnlyTheExactNameIsAWord) {
    Vocabulary words;
    words.Add("TEnum");
    for (const char* element : {"tenum", "TEn", "TEnumValue", "n:TEnum", " TEnum", "\xC3\xA4", ""}) {
        EXPECT_EQ(words.Find(element), nullptr) << element;
    }
}

TEST(Vocabulary, WordThatIsAddedTwiceHasTheTextAndAttributesOfBoth) {
    struct Addition {
        ElementText text;
        const char* attribute;
    };
    struct Case {
        const char* what;
        Addition first;
        Addition second;
        bool hasText;
        std::vector<std::string> attributes;
    };
    const Case kCases[] = {
        {"text comes", {Unread, "a"}, {Read, "a"}, true, {"a"}},
        {"text stays", {Read, "a"}, {Unread, "a"}, true, {"a"}},
        {"no text", {Unread, "a"}, {Unread, "b"}, false, {"a", "b"}},
        {"all", {Read, "b"}, {Read, "a"}, true, {"b", "a"}},
    };
    for (const auto& [what, first, second, hasText, attributes] : kCases) {
        SCOPED_TRACE(what);
        Vocabulary words;
        words.Add("e", first.text, {first.attribute});
        words.Add("e", second.text, {second.attribute});
        const Vocabulary::Word* word = words.Find("e");
        ASSERT_NE(word, nullptr);
        EXPECT_EQ(word->hasText, hasText);
        EXPECT_EQ(word->attributes, attributes);
    }
}

TEST(Vocabulary, AttributeNamedTwiceAtOnceIsOne) {
    Vocabulary words;
    words.Add("e", Unread, {"a", "b", "a"});
    EXPECT_THAT(words.Find("e")->attributes, ElementsAre("a", "b"));
}

TEST(Vocabulary, CopyGoesItsOwnWay) {
    Vocabulary words;
    words.Add("e");
    Vocabulary copy = words;
    copy.Add("e", Read, {"a"});
    copy.Add("f");
    EXPECT_FALSE(words.Find("e")->hasText);
    EXPECT_EQ(words.Find("e")->attributes, std::vector<std::string>());
    EXPECT_EQ(words.Find("f"), nullptr);
    EXPECT_NE(copy.Find("f"), nullptr);
}

}  // namespace
}  // namespace tarvex::test::vocabulary_test
