#pragma once

#include <cstdint>

namespace tarvex::fuzz {

/// What something costs, the same on any machine.
struct Work {
    std::uint64_t steps = 0;      ///< Calls of functions.
    std::uint64_t allocated = 0;  ///< Bytes, freed ones too.
    std::int64_t held = 0;        ///< Bytes that are not freed yet.
    std::uint64_t written = 0;    ///< Bytes of files; nobody counts them here.
};

/// The steps and the memory since counting began, with the first call of one of these functions.
Work WorkSoFar();

/// The most bytes that were not freed at a time since the last call of StopBeyond.
std::int64_t MostHeld();

/// Ends the process as soon as there are so many more steps or bytes of memory, so that libFuzzer keeps the
/// input as a finding. The next call takes the place of this one.
void StopBeyond(const Work& more);

}  // namespace tarvex::fuzz
