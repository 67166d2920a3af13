/// Differences as Markdown.

#include <gtest/gtest.h>

#include "cabin.h"
#include "vorn/compare_report.h"

namespace vorn::test {
namespace {

std::string MarkdownDifference(const Sample& before, const Sample& after) {
    return ChangesMarkdown(Compare(*Build(before), *Build(after)));
}

TEST(CompareMarkdown, IsANestedListAndASummary) {
    Sample after = Cabin();
    after.nodes.push_back({"Phone"});
    after.messages[0].node = "";
    after.messages[0].signals[0].values[1].second = "Loud";
    after.messages[1].identifier = 0x11;
    EXPECT_EQ(MarkdownDifference(Cabin(), after), R"(- node `Phone` **added**
- message `0x22400C extended Amp_Volume_Status` **changed**
  - `node`: `Amp` → (nothing)
  - signal `Volume` **changed**
    - value `1` **changed**
      - `text`: `On` → `Loud`
- message `0x11 Ping` **moved**
  - `identifier`: `0x10` → `0x11`

nodes: 1 added; messages: 1 moved, 1 changed; signals: 1 changed; values: 1 changed
)");
    EXPECT_EQ(MarkdownDifference(Cabin(), Cabin()), "");
}

struct CodeCase {
    const char* name;
    const char* shown;
};

TEST(CompareMarkdown, ShowsNamesAsTheyAre) {
    const CodeCase kNames[] = {{"*a*<b>", "`*a*<b>`"},     {"a`b", "``a`b``"}, {"`a", "`` `a ``"},
                               {"a``b`", "``` a``b` ```"}, {"a\nb", "`a.b`"},  {"", "(nothing)"}};
    for (const auto& [name, shown] : kNames) {
        EXPECT_EQ(MarkdownDifference({}, {.nodes = {{name}}}),
                  "- node " + std::string(shown) + " **added**\n\nnodes: 1 added\n");
    }
}

}  // namespace
}  // namespace vorn::test
