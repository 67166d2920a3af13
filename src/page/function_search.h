/// What of a function can be searched for.

#pragma once

#include <cstddef>
#include <string_view>

#include "page/function_piece.h"
#include "page/search_index.h"

namespace tarvex::page {

// The contexts of descriptions that are not those of parameters.
inline constexpr std::string_view kBlockContext = "block";
inline constexpr std::string_view kFunctionContext = "function";

/// Adds the names, values, units and descriptions of a function that has so many in front of it, and its
/// messages and signals.
void AddToSearch(const FunctionPart& part, std::size_t function, SearchIndex& index);

}  // namespace tarvex::page
