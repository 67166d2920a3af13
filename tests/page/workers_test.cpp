/// Texts that are made beside the caller.

#include "page/workers.h"

#include <atomic>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tarvex::test::workers_test {
namespace {

using page::Workers;

class SomeWorkers : public testing::TestWithParam<unsigned> {};

TEST_P(SomeWorkers, GiveEachTextToTheOneWhoAskedForIt) {
    Workers workers(GetParam());
    std::vector<std::future<std::string>> texts;
    for (int number = 0; number < 200; ++number) {
        texts.push_back(workers.Make([number] { return std::to_string(number); }));
    }
    for (int number = 0; number < 200; ++number) {
        EXPECT_EQ(workers.Get(texts[static_cast<std::size_t>(number)]), std::to_string(number));
    }
}

TEST_P(SomeWorkers, PassOnWhatIsThrownAndGoOn) {
    Workers workers(GetParam());
    auto fails = workers.Make([]() -> std::string { throw std::runtime_error("no room"); });
    auto next = workers.Make([] { return std::string("next"); });
    EXPECT_THROW(workers.Get(fails), std::runtime_error);
    EXPECT_EQ(workers.Get(next), "next");
}

// Without any, the caller makes them.
INSTANTIATE_TEST_SUITE_P(All, SomeWorkers, testing::Values(0, 1, 3));

TEST(Workers, EndWithWhatIsBeingMade) {
    std::atomic<int> begun = 0;
    std::atomic<int> ended = 0;
    {
        Workers workers;
        for (int number = 0; number < 1000; ++number) {
            workers.Make([&] {
                ++begun;
                std::this_thread::yield();
                ++ended;
                return std::string();
            });
        }
    }
    EXPECT_EQ(begun, ended);
}

}  // namespace
}  // namespace tarvex::test::workers_test
