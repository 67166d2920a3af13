/// What one run may use up altogether.

#include "import/text/run_allowance.h"

#include <gtest/gtest.h>

namespace tarvex::test::run_allowance_test {
namespace {

void ExpectLeft(const RunAllowance& run, const Cost& left) {
    EXPECT_EQ(run.Left().steps, left.steps);
    EXPECT_EQ(run.Left().memory, left.memory);
    EXPECT_EQ(run.Left().written, left.written);
}

TEST(RunAllowance, GrowsWithTheInput) {
    ExpectLeft(RunAllowance(), {50'331'648, 301'989'888, 134'217'728});
    ExpectLeft(RunAllowance(1'000'000), {60'331'648, 333'989'888, 198'217'728});
}

TEST(RunAllowance, GivesAllOfACostOrNothing) {
    struct Row {
        const char* what;
        Cost cost;
        bool isGiven;
        Cost left;
    };
    const Row rows[] = {
        {"nothing", {0, 0, 0}, true, {10, 20, 30}},
        {"some of each", {1, 2, 3}, true, {9, 18, 27}},
        {"all", {10, 20, 30}, true, {0, 0, 0}},
        {"a step too many", {11, 1, 1}, false, {10, 20, 30}},
        {"a byte of memory too many", {1, 21, 1}, false, {10, 20, 30}},
        {"a byte of files too many", {1, 1, 31}, false, {10, 20, 30}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        RunAllowance run(Cost{10, 20, 30});
        EXPECT_EQ(run.Take(row.cost), row.isGiven);
        ExpectLeft(run, row.left);
    }
}

TEST(RunAllowance, GivesSmallerCostsAfterARefusal) {
    RunAllowance run(Cost{10, 20, 30});
    EXPECT_FALSE(run.Take({11, 0, 0}));
    EXPECT_TRUE(run.Take({10, 0, 0}));
}

TEST(RunAllowance, EndsAnImportThatIsOutOfSteps) {
    RunAllowance run(Cost{10, 0, 0});
    EXPECT_NO_THROW(run.TakeSteps(10));
    EXPECT_THROW(run.TakeSteps(1), AllowanceSpent);
}

TEST(RunAllowance, MemoryInUseIsTakenAsFarAsThereIsAnyAndMayComeBack) {
    RunAllowance run(Cost{10, 20, 30});
    EXPECT_EQ(run.TakeUsed(15), 15U);
    EXPECT_EQ(run.TakeUsed(15), 5U);
    ExpectLeft(run, {10, 0, 30});
    run.GiveBack(15);
    ExpectLeft(run, {10, 15, 30});
}

TEST(RunAllowance, APartHasThreeQuartersOfEverything) {
    RunAllowance run(Cost{100, 200, 301});
    ExpectLeft(run.TakeMost(), {75, 150, 225});
    ExpectLeft(run, {25, 50, 76});
}

}  // namespace
}  // namespace tarvex::test::run_allowance_test
