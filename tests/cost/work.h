#pragma once

#include <cstdint>
#include <functional>

#include <gtest/gtest.h>

namespace tarvex::test {

/// What something costs, the same on any machine: calls of functions, none of which is inlined where this is
/// counted, and bytes of memory that are allocated.
struct Work {
    std::uint64_t calls = 0;
    std::uint64_t bytes = 0;
};

/// The work of an action.
Work WorkOf(const std::function<void()>& action);

/// Twice the input takes at most two and a half times the work, and some was counted.
testing::AssertionResult GrowsInProportion(const Work& once, const Work& twice);

}  // namespace tarvex::test
