/// The bar for people who wait.

#include "review/progress_bar.h"

#include <gtest/gtest.h>

namespace tarvex::test::progress_bar_test {
namespace {

TEST(ReviewProgressBar, GrowsWithThePercent) {
    const struct {
        unsigned percent;
        const char* line;
    } rows[] = {
        {0, "a.xml [                    ]   0 %"},  {4, "a.xml [                    ]   4 %"},
        {5, "a.xml [#                   ]   5 %"},  {50, "a.xml [##########          ]  50 %"},
        {99, "a.xml [################### ]  99 %"}, {100, "a.xml [####################] 100 %"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(review::ProgressBar::Line("a.xml", row.percent), row.line);
    }
}

}  // namespace
}  // namespace tarvex::test::progress_bar_test
