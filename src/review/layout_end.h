/// Where that ends what is known of a message without seeing it.

#pragma once

#include <optional>
#include <string>

#include "catalog/operation.h"

namespace tarvex::review {

struct LayoutEnd {
    /// Something is missing or not sure; else messages alone tell.
    bool isHole = false;
    /// The parameter that it is about and what there is to say of it.
    std::string why;
};

/// The first parameter of an operation, or the first in one, behind whose beginning no place is known;
/// nothing for an operation whose places are all known. Signals of a safe layout end there.
std::optional<LayoutEnd> LayoutEndOf(const ZMTOperation& operation);

}  // namespace tarvex::review
