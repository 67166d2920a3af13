/// Counts in words.

#pragma once

#include <cstdint>
#include <string>

namespace tarvex::review {

/// "1 block", "2 blocks"
inline std::string Counted(std::uint64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace tarvex::review
