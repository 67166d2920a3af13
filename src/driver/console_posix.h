#pragma once

#include <optional>

namespace tarvex {

/// Waits for one key, without echo and without Enter when standard input is a terminal; else reads one byte.
/// None at the end of the input.
std::optional<char> ReadKey();

}  // namespace tarvex
