#include "work.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <sanitizer/allocator_interface.h>

#include "support.h"

namespace tarvex::fuzz {
namespace {

Work soFar;
std::int64_t mostHeld = 0;
constexpr Work kAny{UINT64_MAX, UINT64_MAX, INT64_MAX, 0};
Work most = kAny;

__attribute__((no_instrument_function)) void Stop(const char* what) {
    most = kAny;  // what follows calls functions and allocates memory too
    std::fprintf(stderr, "Costs too much for the size of the input: %s\n", what);
    std::abort();
}

void CountBytes(const volatile void* /*memory*/, std::size_t size) {
    soFar.allocated += size;
    soFar.held += static_cast<std::int64_t>(size);
    mostHeld = std::max(mostHeld, soFar.held);
    if (soFar.allocated > most.allocated) {
        Stop("bytes of memory that are allocated");
    }
    if (soFar.held > most.held) {
        Stop("bytes of memory at a time");
    }
}

void CountFreed(const volatile void* memory) {
    if (memory != nullptr) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the memory is only asked for its size.
        soFar.held -=
            static_cast<std::int64_t>(__sanitizer_get_allocated_size(const_cast<const void*>(memory)));
    }
}

void CountMemory() {
    static const int hooks = __sanitizer_install_malloc_and_free_hooks(CountBytes, CountFreed);
    Require(hooks != 0, "memory can be counted");
}

}  // namespace

// NOLINTBEGIN(readability-identifier-naming): called at both ends of every function, under these names.
extern "C" __attribute__((no_instrument_function)) void __cyg_profile_func_enter(void* /*function*/,
                                                                                 void* /*caller*/) {
    if (++soFar.steps > most.steps) {
        Stop("calls of functions");
    }
}

extern "C" __attribute__((no_instrument_function)) void __cyg_profile_func_exit(void* /*function*/,
                                                                                void* /*caller*/) {}
// NOLINTEND(readability-identifier-naming)

Work WorkSoFar() {
    CountMemory();
    return soFar;
}

std::int64_t MostHeld() {
    return mostHeld;
}

void StopBeyond(const Work& more) {
    CountMemory();
    mostHeld = soFar.held;
    most = {soFar.steps + more.steps, soFar.allocated + more.allocated, soFar.held + more.held, 0};
}

}  // namespace tarvex::fuzz
