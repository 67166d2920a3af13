#include "cost/work.h"

#include <cstddef>
#include <sanitizer/allocator_interface.h>

namespace tarvex::test {
namespace {

std::uint64_t callsSoFar = 0;
std::uint64_t bytesSoFar = 0;

void CountBytes(const volatile void* /*memory*/, std::size_t size) {
    bytesSoFar += size;
}

void CountNothing(const volatile void* /*memory*/) {}

bool GrowsAtMost(std::uint64_t once, std::uint64_t twice) {
    return once > 0 && twice <= once * 5 / 2;
}

}  // namespace

// NOLINTBEGIN(readability-identifier-naming): called at both ends of every function, under these names.
extern "C" __attribute__((no_instrument_function)) void __cyg_profile_func_enter(void* /*function*/,
                                                                                 void* /*caller*/) {
    ++callsSoFar;
}

extern "C" __attribute__((no_instrument_function)) void __cyg_profile_func_exit(void* /*function*/,
                                                                                void* /*caller*/) {}
// NOLINTEND(readability-identifier-naming)

Work WorkOf(const std::function<void()>& action) {
    static const int hooks = __sanitizer_install_malloc_and_free_hooks(CountBytes, CountNothing);
    EXPECT_NE(hooks, 0);
    const Work before{callsSoFar, bytesSoFar};
    action();
    return {callsSoFar - before.calls, bytesSoFar - before.bytes};
}

testing::AssertionResult GrowsInProportion(const Work& once, const Work& twice) {
    const bool grows = GrowsAtMost(once.calls, twice.calls) && GrowsAtMost(once.bytes, twice.bytes);
    return (grows ? testing::AssertionSuccess() : testing::AssertionFailure())
           << once.calls << " calls and " << once.bytes << " bytes become " << twice.calls << " calls and "
           << twice.bytes << " bytes";
}

}  // namespace tarvex::test
