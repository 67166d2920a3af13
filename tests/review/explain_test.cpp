/// Explanations of messages as text, JSON and Markdown, and the words that ask for them.

#include "review/explain.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "import/log/messages.h"
#include "review/explanation_words.h"

namespace tarvex::test::explain_test {
namespace {

using review::Explanation;
using review::Explanations;
using review::FindExplanations;
using review::Frame;
using review::Loss;
using review::Wrapped;

std::vector<unsigned> Found(std::string_view word) {
    std::vector<unsigned> numbers;
    for (const Explanation* explanation : FindExplanations(word)) {
        numbers.push_back(explanation->message->number);
    }
    return numbers;
}

TEST(Explain, FindsNumbersAsTheLogHasThem) {
    EXPECT_THAT(Found("9"), testing::ElementsAre(9U));
    EXPECT_THAT(Found("0009"), testing::ElementsAre(9U));
    EXPECT_THAT(Found("#0009"), testing::ElementsAre(9U));
    EXPECT_THAT(Found("215"), testing::ElementsAre(215U));
    EXPECT_THAT(Found("88"), testing::ElementsAre(88U, 88U));
    for (const char* word :
         {"0", "#", "", "-9", "+9", "9 ", "9x", "x9", "##9", "4294967305", "64", "none", "Fatal"}) {
        EXPECT_THAT(Found(word), testing::IsEmpty()) << word;
    }
}

TEST(Explain, FindsErrorsWithoutANumber) {
    EXPECT_THAT(Found("fatal"), testing::ElementsAre(0U, 0U, 0U, 0U, 0U));
}

TEST(Explain, SaysWhichNumbersAreNear) {
    EXPECT_EQ(review::NotExplained("64"), "there is no message 64; near it are 63 and 66");
    EXPECT_EQ(review::NotExplained("0153"), "there is no message 153; near it are 152 and 201");
    const unsigned last = std::ranges::max(kMessages, {}, &Message::number)->number;
    EXPECT_EQ(review::NotExplained("4294967295"),
              "there is no message 4294967295; near it is " + std::to_string(last));
    for (const char* word : {"", "0", "-1", "93.5", "4294967296", "0x5D"}) {
        EXPECT_EQ(review::NotExplained(word),
                  "'" + std::string(word) + "' is no number of a message, nor 'fatal'");
    }
}

TEST(Explain, HasAllMessages) {
    std::multiset<const Message*> explained;
    for (const Explanation* explanation : review::AllExplanations()) {
        explained.insert(explanation->message);
    }
    EXPECT_THAT(explained, testing::UnorderedElementsAreArray(kMessages));
}

/// Explanations with everything that one can have, and with as little as possible.
constexpr Message kFull{7, Kind::Warning, "No <%s>"};
constexpr Message kBare{0, Kind::Fatal, "Gone"};
constexpr Explanation kFullOne = {
    .message = &kFull,
    .when = "A `Lamp` is off.",
    .becomes = "It stays.",
    .repair = "Switch it on. Then look at it again, and again, and again, until it is on.",
    .frame = Frame::Type,
    .excerpt = "<Lamp>\n  <Off/>\n</Lamp>",
    .behind = {1, 2},
    .followers = {3, 4, 5},
    .loss = Loss::Part,
    .isIncomplete = true,
    .newer = "Off is `on`."};
constexpr Explanation kNewOne = {.message = &kFull,
                                 .when = "A",
                                 .becomes = "B",
                                 .repair = "C",
                                 .frame = Frame::Definition,
                                 .excerpt = "<A/>",
                                 .followers = {3},
                                 .isNewer = true};
constexpr Explanation kBareOne = {.message = &kBare, .when = "The end.", .noExcerpt = "Never."};

TEST(Explain, AsText) {
    EXPECT_EQ(review::ExplanationText({&kFullOne}, vorn::Style(false)), R"(7 warning: No <%s>

When: A Lamp is off.

What TARVEX does: It stays.

With SafeLayout=1: Signals end where the layout is not sure any more, and the
message's attribute Layout says Incomplete.

With FCatImportNewer=1: Off is on.

How to mend it: Switch it on. Then look at it again, and again, and again, until
it is on.

Example (the type of a parameter), behind 1 and 2, followed by 3, 4 and 5:

    <Lamp>
      <Off/>
    </Lamp>
)");
    EXPECT_EQ(review::ExplanationText({&kBareOne, &kNewOne}, vorn::Style(false)), R"(fatal error: Gone

When: The end.

Example: Never.


7 warning: No <%s>

When: A

What TARVEX does: B

Only: with FCatImportNewer=1, and in tarvex-disasm.

How to mend it: C

Example (in Definition), followed by 3:

    <A/>
)");
    EXPECT_EQ(review::ExplanationText({}, vorn::Style(false)), "");
}

TEST(Explain, AsMarkdown) {
    EXPECT_EQ(review::ExplanationMarkdown({&kFullOne, &kBareOne}), R"(### 7 warning: `No <%s>`

- **When:** A `Lamp` is off.
- **What TARVEX does:** It stays.
- **With `SafeLayout=1`:** Signals end where the layout is not sure any more, and the message's attribute `Layout` says
  `Incomplete`.
- **With `FCatImportNewer=1`:** Off is `on`.
- **How to mend it:** Switch it on. Then look at it again, and again, and again, until it is on.

**Example (the type of a parameter), behind 1 and 2, followed by 3, 4 and 5:**

```xml
<Lamp>
  <Off/>
</Lamp>
```

### fatal error: `Gone`

- **When:** The end.
- **Example:** Never.
)");
}

TEST(Explain, AsJson) {
    const auto json = nlohmann::json::parse(review::ExplanationJson({&kFullOne, &kNewOne, &kBareOne}));
    EXPECT_EQ(json[0], nlohmann::json::parse(R"({"number": 7, "kind": "warning", "text": "No <%s>",
        "when": "A `Lamp` is off.", "becomes": "It stays.", "loses": "part", "layout_incomplete": true,
        "newer_forms": "Off is `on`.",
        "repair": "Switch it on. Then look at it again, and again, and again, until it is on.",
        "place": "the type of a parameter", "excerpt": "<Lamp>\n  <Off/>\n</Lamp>", "behind": [1, 2],
        "followed_by": [3, 4, 5]})"));
    EXPECT_EQ(json[1]["newer_forms"], "only");
    EXPECT_EQ(json[1]["followed_by"], nlohmann::json::parse("[3]"));
    EXPECT_EQ(json[2], nlohmann::json::parse(R"({"number": null, "kind": "fatal error", "text": "Gone",
        "when": "The end.", "becomes": "", "loses": "nothing", "layout_incomplete": false, "newer_forms": "",
        "repair": "", "no_excerpt": "Never."})"));
    EXPECT_EQ(json.size(), 3U);
    EXPECT_EQ(review::ExplanationJson({}), "[]\n");
}

TEST(Explain, WrapsAtWords) {
    EXPECT_EQ(Wrapped("", 10), "");
    EXPECT_EQ(Wrapped("12345 7890", 10), "12345 7890");
    EXPECT_EQ(Wrapped("12345 78901", 10), "12345\n78901");
    EXPECT_EQ(Wrapped("123456789012 4", 10), "123456789012\n4");
    EXPECT_EQ(Wrapped("1 123456789012 4", 10), "1\n123456789012\n4");
    EXPECT_EQ(Wrapped("  a   b ", 10), "a b");
    EXPECT_EQ(Wrapped("12345 7890 34567890 3", 10, "  "), "12345 7890\n  34567890\n  3");
}

}  // namespace
}  // namespace tarvex::test::explain_test
