/// The words that a parser keeps.

#include "import/vocabulary.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/dom_access.h"

namespace tarvex::test {
namespace {

using testing::ElementsAre;
using enum ElementText;

std::vector<std::string> AttributesOf(const Vocabulary::Word& word) {
    std::vector<std::string> names;
    for (const Vocabulary::DomText& name : word.attributes) {
        names.push_back(Transcode(name.c_str()));
    }
    return names;
}

TEST(Vocabulary, HasWordsOnceOneIsAdded) {
    Vocabulary words;
    EXPECT_FALSE(words.HasWords());
    EXPECT_EQ(words.Find(u"TEnum"), nullptr);
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
        const XMLCh* element;
        bool hasText;
        std::vector<std::string> attributes;
    };
    const Case kCases[] = {
        {u"TVoid", false, {}},
        {u"Step", true, {}},
        {u"TEnum", false, {"TypeRef", "TEnumMax"}},
        {u"TEnumValue", true, {"Code"}},
    };
    for (const auto& [element, hasText, attributes] : kCases) {
        SCOPED_TRACE(Transcode(element));
        const Vocabulary::Word* word = words.Find(element);
        ASSERT_NE(word, nullptr);
        EXPECT_EQ(word->hasText, hasText);
        EXPECT_EQ(AttributesOf(*word), attributes);
    }
}

TEST(Vocabulary, OnlyTheExactNameIsAWord) {
    Vocabulary words;
    words.Add("TEnum");
    for (const XMLCh* element : {u"tenum", u"TEnu", u"TEnumValue", u"n:TEnum", u" TEnum", u"\u00E4", u""}) {
        EXPECT_EQ(words.Find(element), nullptr) << Transcode(element);
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
        const Vocabulary::Word* word = words.Find(u"e");
        ASSERT_NE(word, nullptr);
        EXPECT_EQ(word->hasText, hasText);
        EXPECT_EQ(AttributesOf(*word), attributes);
    }
}

TEST(Vocabulary, AttributeNamedTwiceAtOnceIsOne) {
    Vocabulary words;
    words.Add("e", Unread, {"a", "b", "a"});
    EXPECT_THAT(AttributesOf(*words.Find(u"e")), ElementsAre("a", "b"));
}

TEST(Vocabulary, CopyGoesItsOwnWay) {
    Vocabulary words;
    words.Add("e");
    Vocabulary copy = words;
    copy.Add("e", Read, {"a"});
    copy.Add("f");
    EXPECT_FALSE(words.Find(u"e")->hasText);
    EXPECT_EQ(AttributesOf(*words.Find(u"e")), std::vector<std::string>());
    EXPECT_EQ(words.Find(u"f"), nullptr);
    EXPECT_NE(copy.Find(u"f"), nullptr);
}

}  // namespace
}  // namespace tarvex::test
