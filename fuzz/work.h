#pragma once

#include <cstdint>

namespace tarvex::fuzz {

/// What something costs, the same on any machine.
struct Work {
    std::uint64_t steps = 0;      ///< Calls of functions, none of which is inlined where they are counted.
    std::uint64_t allocated = 0;  ///< Bytes, freed ones too.
    std::uint64_t written = 0;    ///< Bytes of files.
};

/// The steps and bytes of memory since the start of the process.
Work WorkSoFar();

/// From now on the process ends, so that libFuzzer keeps the input as a finding, when there are so many more
/// steps or bytes of memory.
void StopAt(const Work& more);

}  // namespace tarvex::fuzz
