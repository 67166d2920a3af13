/// Where a word stands in a catalog.

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "review/find.h"

namespace tarvex::review {

/// A block or function that has a word.
struct FoundPlace {
    Target target;
    /// "function", "parameter Data.Trim", "value 0x21 Rock Pop of Preset", "bit 0 of Speakers, Front_left"
    std::string what;
};

/// Looks for a word, in any case, in the names of blocks, functions, parameters, bits and values, as the
/// catalog and as databases have them, and in units, in the order of the identifiers. A parameter of several
/// operations is found once in its function.
void Search(const ZMTCatalog& catalog, std::string_view word,
            const std::function<void(const FoundPlace& place)>& found);

}  // namespace tarvex::review
