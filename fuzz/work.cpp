#include "work.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <sanitizer/allocator_interface.h>

#include "support.h"

namespace tarvex::fuzz {
namespace {

Work soFar;
Work most{UINT64_MAX, UINT64_MAX, 0};

[[noreturn]] void Stop(const char* what) {
    std::fprintf(stderr, "Costs too much for the size of the input: %s\n", what);
    std::abort();
}

void CountBytes(const volatile void* /*memory*/, std::size_t size) {
    soFar.allocated += size;
    if (soFar.allocated > most.allocated) {
        most.allocated = UINT64_MAX;
        Stop("memory is allocated");
    }
}

void CountNothing(const volatile void* /*memory*/) {}

}  // namespace

// NOLINTBEGIN(readability-identifier-naming): called at both ends of every function, under these names.
extern "C" __attribute__((no_instrument_function)) void __cyg_profile_func_enter(void* /*function*/,
                                                                                 void* /*caller*/) {
    if (++soFar.steps > most.steps) {
        most.steps = UINT64_MAX;
        Stop("functions are called");
    }
}

extern "C" __attribute__((no_instrument_function)) void __cyg_profile_func_exit(void* /*function*/,
                                                                                void* /*caller*/) {}
// NOLINTEND(readability-identifier-naming)

Work WorkSoFar() {
    return soFar;
}

void StopAt(const Work& more) {
    static const int hooks = __sanitizer_install_malloc_and_free_hooks(CountBytes, CountNothing);
    Require(hooks != 0, "memory can be counted");
    most.steps = soFar.steps + more.steps;
    most.allocated = soFar.allocated + more.allocated;
}

}  // namespace tarvex::fuzz
