/// Operations whose bytes look alike.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "review/function_view.h"

namespace tarvex::page {

/// What the bytes of a function's operations look like. Most operations look like another one.
struct Looks {
    /// One operation for each look; it has a message.
    std::vector<const review::OperationView*> all;
    /// By operation; nothing for one without a message.
    std::vector<std::optional<std::size_t>> numbers;
};

/// The view outlives the looks.
Looks LooksOf(const review::FunctionView& view);

}  // namespace tarvex::page
