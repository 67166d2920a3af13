/// What of a function can be searched for.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "page/function_piece.h"
#include "page/search_index.h"

namespace tarvex::page {

// The contexts of descriptions that are not those of parameters.
inline constexpr std::string_view kBlockContext = "block";
inline constexpr std::string_view kFunctionContext = "function";

/// Adds the name of a block or function as the catalog writes it, and as databases have it where that is
/// found by other words.
void AddNames(Topic topic, const std::string& name, const std::string& inDatabases, Place place,
              SearchIndex& index);

/// Adds the names, values, units and descriptions of a function that has so many in front of it, and its
/// messages and signals.
void AddToSearch(const FunctionPart& part, std::size_t function, SearchIndex& index);

}  // namespace tarvex::page
