/// What tests of cost rely on: work that grows with the square of the input is seen.

#include "cost/work.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tarvex::test::work_test {
namespace {

void CallNothing() {}

void CallOften(unsigned calls) {
    for (unsigned left = calls; left > 0; --left) {
        CallNothing();
    }
}

void Allocate(unsigned bytes) {
    const std::vector<char> memory(bytes);
}

TEST(Work, IsTheCallsAndTheBytes) {
    // The action is a function as well, and wrapped in two more.
    const std::uint64_t around = WorkOf([] {}).calls;
    EXPECT_EQ(WorkOf([] { CallNothing(); }).calls, around + 1);
    EXPECT_EQ(WorkOf([] { CallOften(100); }).calls, around + 101);
    EXPECT_EQ(WorkOf([] { CallOften(100); }).bytes, 0U);
    EXPECT_EQ(WorkOf([] { Allocate(1000); }).bytes, 1000U);
}

struct GrowthCase {
    const char* what;
    Work once;
    Work twice;
    bool isInProportion;
};

TEST(Work, MayGrowTwoAndAHalfTimes) {
    const GrowthCase rows[] = {
        {"just so much", {100, 40}, {250, 100}, true},
        {"a call more", {100, 40}, {251, 100}, false},
        {"a byte more", {100, 40}, {250, 101}, false},
        {"the square of the calls", {100, 40}, {400, 80}, false},
        {"the square of the bytes", {100, 40}, {200, 160}, false},
        {"less", {100, 40}, {50, 20}, true},
        {"no call counted", {0, 40}, {0, 40}, false},
        {"no byte counted", {100, 0}, {100, 0}, false},
    };
    for (const GrowthCase& row : rows) {
        EXPECT_EQ(bool(GrowsInProportion(row.once, row.twice)), row.isInProportion) << row.what;
    }
}

}  // namespace
}  // namespace tarvex::test::work_test
