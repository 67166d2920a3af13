/// Which things of two lists belong together.

#include "review/diff_match.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvex::test::diff_match_test {
namespace {

using namespace review;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Pairs = std::vector<Matches::Pair>;
using Indices = std::vector<std::size_t>;

TEST(DiffMatch, ByNumberAndName) {
    const struct {
        std::vector<Numbered> before;
        std::vector<Numbered> after;
        Pairs pairs;
        Indices removed;
        Indices added;
    } rows[] = {
        {{}, {}, {}, {}, {}},
        {{{1, "A"}, {2, "B"}}, {{1, "a"}, {2, "B"}}, {{0, 0}, {1, 1}}, {}, {}},
        // Another order.
        {{{1, "A"}, {2, "B"}}, {{2, "B"}, {1, "A"}}, {{0, 1}, {1, 0}}, {}, {}},
        // The name goes first, then the number.
        {{{1, "A"}, {2, "B"}}, {{2, "A"}, {3, "B"}}, {{0, 0}, {1, 1}}, {}, {}},
        {{{1, "A"}, {2, "B"}}, {{1, "C"}, {2, "A"}}, {{0, 1}}, {1}, {0}},
        {{{1, "A"}}, {{1, "B"}}, {{0, 0}}, {}, {}},
        {{{1, "A"}}, {{2, "B"}}, {}, {0}, {0}},
        // Without a name the number alone counts.
        {{{1, ""}, {2, ""}}, {{2, ""}, {3, ""}}, {{1, 0}}, {0}, {1}},
        // Names and numbers that stand several times: the first with the first.
        {{{1, "A"}, {1, "A"}}, {{1, "A"}}, {{0, 0}}, {1}, {}},
        {{{5, "A"}, {6, "A"}, {7, "A"}}, {{6, "A"}, {8, "A"}}, {{0, 1}, {1, 0}}, {2}, {}},
    };
    for (const auto& row : rows) {
        const Matches matches = MatchNumbered(row.before, row.after, nullptr);
        EXPECT_EQ(matches.pairs, row.pairs) << &row - rows;
        EXPECT_EQ(matches.removed, row.removed) << &row - rows;
        EXPECT_EQ(matches.added, row.added) << &row - rows;
    }
}

TEST(DiffMatch, ANameCountsMoreThanANumberOnlyWhereThingsAreAlike) {
    const Numbered before[] = {{1, "A"}};
    const Numbered after[] = {{1, "B"}, {2, "A"}};
    for (const bool areAlike : {false, true}) {
        const Matches matches =
            MatchNumbered(before, after, [&](std::size_t, std::size_t) { return areAlike; });
        EXPECT_THAT(matches.pairs, ElementsAre(Pair(0, areAlike ? 1 : 0)));
    }
    // Better a thing of that name than nothing.
    const Matches matches =
        MatchNumbered(before, std::span(after).subspan(1), [](std::size_t, std::size_t) { return false; });
    EXPECT_THAT(matches.pairs, ElementsAre(Pair(0, 0)));
}

std::vector<Placed> Things(const std::string& names) {
    static const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::vector<Placed> things;
    for (const char name : names) {  // those after M are of another form
        things.push_back({std::string_view(letters).substr(letters.find(name), 1), name > 'M' ? 1U : 0U});
    }
    return things;
}

TEST(DiffMatch, ByPlace) {
    const struct {
        const char* before;
        const char* after;
        Pairs pairs;
        Pairs moved;
    } rows[] = {
        {"", "", {}, {}},
        {"ABC", "ABC", {{0, 0}, {1, 1}, {2, 2}}, {}},
        {"ABC", "AC", {{0, 0}, {2, 1}}, {}},
        {"AC", "ABC", {{0, 0}, {1, 2}}, {}},
        // Another name in the same place, as long as the form is the same.
        {"ABC", "AXC", {{0, 0}, {2, 2}}, {}},
        {"ABC", "ADC", {{0, 0}, {1, 1}, {2, 2}}, {}},
        {"ABC", "DEF", {{0, 0}, {1, 1}, {2, 2}}, {}},
        // Another order: as few as possible have moved.
        {"ABCD", "BCDA", {{0, 3}, {1, 0}, {2, 1}, {3, 2}}, {{0, 3}}},
        {"BCDA", "ABCD", {{0, 1}, {1, 2}, {2, 3}, {3, 0}}, {{3, 0}}},
        {"AB", "BA", {{0, 1}, {1, 0}}, {{0, 1}}},
        {"BA", "AB", {{0, 1}, {1, 0}}, {{1, 0}}},
        // Of one name the first with the first.
        {"AAB", "ABA", {{0, 0}, {1, 2}, {2, 1}}, {{1, 2}}},
    };
    for (const auto& row : rows) {
        const std::vector<Placed> before = Things(row.before);
        const std::vector<Placed> after = Things(row.after);
        const Matches matches = MatchPlaced(before, after);
        EXPECT_EQ(matches.pairs, row.pairs) << row.before << " " << row.after;
        EXPECT_EQ(OutOfOrder(before, after, matches), row.moved) << row.before << " " << row.after;
    }
}

/// The pairs of one direction, as the other direction has them.
Pairs Swapped(Pairs pairs) {
    for (auto& [before, after] : pairs) {
        std::swap(before, after);
    }
    std::ranges::sort(pairs);
    return pairs;
}

/// What must hold of any two lists: everything is in the result once, and swapped lists give swapped pairs.
TEST(DiffMatch, IsTheSameBothWays) {
    const char* rounds = std::getenv("TARVEX_DIFF_ROUNDS");
    const int count = rounds == nullptr ? 300 : std::stoi(rounds);
    std::mt19937 random(11);
    const auto randomThings = [&] {
        std::string names(random() % 12, 'A');
        std::ranges::generate(names, [&] { return static_cast<char>('J' + random() % 7); });
        return names;
    };
    for (int round = 0; round < count; ++round) {
        const std::string namesBefore = randomThings();
        const std::string namesAfter = randomThings();
        const std::vector<Placed> before = Things(namesBefore);
        const std::vector<Placed> after = Things(namesAfter);
        const Matches there = MatchPlaced(before, after);
        const Matches back = MatchPlaced(after, before);
        ASSERT_EQ(there.pairs.size() + there.removed.size(), before.size());
        ASSERT_EQ(there.pairs.size() + there.added.size(), after.size());
        ASSERT_EQ(Swapped(back.pairs), Swapped(Swapped(there.pairs))) << namesBefore << " " << namesAfter;
        ASSERT_EQ(OutOfOrder(before, after, there).size(), OutOfOrder(after, before, back).size())
            << namesBefore << " " << namesAfter;
        std::vector<Numbered> numberedBefore;
        std::vector<Numbered> numberedAfter;
        for (const Placed& thing : before) {
            numberedBefore.push_back({random() % 5, thing.name});
        }
        for (const Placed& thing : after) {
            numberedAfter.push_back({random() % 5, thing.name});
        }
        const Matches numbered = MatchNumbered(numberedBefore, numberedAfter, nullptr);
        ASSERT_EQ(numbered.pairs.size() + numbered.removed.size(), before.size());
        ASSERT_EQ(numbered.pairs.size() + numbered.added.size(), after.size());
        ASSERT_EQ(Swapped(MatchNumbered(numberedAfter, numberedBefore, nullptr).pairs),
                  Swapped(Swapped(numbered.pairs)));
    }
}

}  // namespace
}  // namespace tarvex::test::diff_match_test
