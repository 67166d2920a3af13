/// Databases whose records look alike are compared, divided and joined with work that grows with their
/// number, not with its square.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cost/work.h"
#include "import/text/number_letters.h"
#include "vorn/compare.h"
#include "vorn/merge.h"
#include "vorn/sample.h"
#include "vorn/selection.h"
#include "vorn/subset.h"

namespace tarvex::test::database_cost_test {
namespace {

using vorn::test::Sample;

using NameOf = std::function<std::string(unsigned number)>;

NameOf Always(const char* name) {
    return [name](unsigned /*number*/) { return name; };
}

NameOf Numbered(const char* name) {
    return [name](unsigned number) { return name + std::to_string(number); };
}

/// As names are made unique.
NameOf Lettered(const char* name) {
    return [name](unsigned number) { return name + LettersOf(number); };
}

/// All of one block, function and operation.
Sample Messages(unsigned count, unsigned first, const NameOf& nameOf) {
    Sample sample{.definitions = {vorn::test::String("message", "FBlock", ""),
                                  vorn::test::String("message", "Function", ""),
                                  vorn::test::String("message", "OpType", "")}};
    for (unsigned number = 0; number < count; ++number) {
        sample.messages.push_back({first + number,
                                   nameOf(number),
                                   0,
                                   {},
                                   "",
                                   {{"FBlock", "B"}, {"Function", "F"}, {"OpType", "Get"}}});
    }
    return sample;
}

Sample Signals(unsigned count, const NameOf& nameOf, const std::function<unsigned(unsigned)>& placeOf) {
    Sample sample{.messages = {{1, "m", 8}}};
    for (unsigned number = 0; number < count; ++number) {
        sample.messages[0].signals.push_back(
            {nameOf(number), static_cast<std::uint16_t>(placeOf(number)), 1});
    }
    return sample;
}

Sample Values(unsigned count, unsigned first, const NameOf& nameOf) {
    Sample sample{.messages = {{1, "m", 8, {{"s", 0, 8}}}}};
    for (unsigned number = 0; number < count; ++number) {
        sample.messages[0].signals[0].values.emplace_back(first + number, nameOf(number));
    }
    return sample;
}

/// Each of which sends a message.
Sample Nodes(unsigned count, const NameOf& nameOf) {
    Sample sample;
    for (unsigned number = 0; number < count; ++number) {
        sample.nodes.push_back({nameOf(number)});
        sample.messages.push_back({number, "m" + std::to_string(number), 0, {}, nameOf(number)});
    }
    return sample;
}

struct Row {
    const char* name;
    std::function<Sample(unsigned count)> before;
    std::function<Sample(unsigned count)> after;
};

const Row kRows[] = {
    {"other identifiers", [](unsigned count) { return Messages(count, 0, Numbered("a")); },
     [](unsigned count) { return Messages(count, count, Numbered("b")); }},
    {"equal names of messages", [](unsigned count) { return Messages(count, 0, Always("a")); },
     [](unsigned count) { return Messages(count, count, Always("a")); }},
    {"unique names of messages", [](unsigned count) { return Messages(count, 0, Numbered("a")); },
     [](unsigned count) { return Messages(count, count / 2, Numbered("a_")); }},
    {"equal names of signals",
     [](unsigned count) { return Signals(count, Always("s"), [](unsigned number) { return number; }); },
     [](unsigned count) {
         return Signals(count, Always("s"), [count](unsigned number) { return number + count; });
     }},
    {"names with letters of signals",
     [](unsigned count) { return Signals(count, Lettered("s"), [](unsigned number) { return number; }); },
     [](unsigned count) {
         return Signals(count, Lettered("s"), [count](unsigned number) { return number + count; });
     }},
    {"signals at one place",
     [](unsigned count) { return Signals(count, Numbered("s"), [](unsigned) { return 7; }); },
     [](unsigned count) { return Signals(count, Numbered("t"), [](unsigned) { return 7; }); }},
    {"signals alike", [](unsigned count) { return Signals(count, Always("s"), [](unsigned) { return 7; }); },
     [](unsigned count) { return Signals(count / 2, Always("s"), [](unsigned) { return 7; }); }},
    {"values", [](unsigned count) { return Values(count, 0, Numbered("v")); },
     [](unsigned count) { return Values(count, count / 2, Always("v")); }},
    {"nodes", [](unsigned count) { return Nodes(count, Numbered("n")); },
     [](unsigned count) { return Nodes(count, Numbered("m")); }},
};

constexpr unsigned kRecords = 200;

Work WorkOnBoth(const Row& row, unsigned count,
                const std::function<void(const kestrel::Database&, const kestrel::Database&)>& action) {
    const auto before = Build(row.before(count));
    const auto after = Build(row.after(count));
    return WorkOf([&] { action(*before, *after); });
}

TEST(DatabaseCost, DiffAndMergeGrowInProportion) {
    for (const Row& row : kRows) {
        const auto compare = [&](const auto& before, const auto& after) {
            EXPECT_FALSE(vorn::Compare(before, after).changes.empty()) << row.name;
        };
        const auto merge = [&](const auto& before, const auto& after) {
            EXPECT_FALSE(vorn::Merge(before, after, vorn::Preference::First)->Messages().empty()) << row.name;
        };
        EXPECT_TRUE(
            GrowsInProportion(WorkOnBoth(row, kRecords, compare), WorkOnBoth(row, 2 * kRecords, compare)))
            << row.name;
        EXPECT_TRUE(GrowsInProportion(WorkOnBoth(row, kRecords, merge), WorkOnBoth(row, 2 * kRecords, merge)))
            << row.name;
    }
}

TEST(DatabaseCost, SubsetGrowsInProportion) {
    const auto workOfSubset = [](unsigned count) {
        const auto database = Build(Messages(count, 0, Numbered("a")));
        return WorkOf([&] {
            const auto subset = vorn::SubsetOf(*database, vorn::Select(*database, {.messages = {"a*"}}));
            EXPECT_EQ(subset->Messages().size(), count);
        });
    };
    EXPECT_TRUE(GrowsInProportion(workOfSubset(kRecords), workOfSubset(2 * kRecords)));
}

TEST(DatabaseCost, PatternsGrowInProportion) {
    const auto workOfPattern = [](unsigned count) {
        std::string pattern;
        for (unsigned number = 0; number < count; ++number) {
            pattern += "*a";
        }
        const auto database = Build(Messages(2, 0, Always("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa")));
        return WorkOf([&] { EXPECT_TRUE(vorn::Select(*database, {.messages = {pattern + "*b"}}).empty()); });
    };
    EXPECT_TRUE(GrowsInProportion(workOfPattern(kRecords), workOfPattern(2 * kRecords)));
}

}  // namespace
}  // namespace tarvex::test::database_cost_test
