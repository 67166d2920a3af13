/// How TARVEX ends.

#pragma once

namespace tarvex {

/// What the program returns to its caller; a failure arrives there as 255.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = -1;

}  // namespace tarvex
