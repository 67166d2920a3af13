/// Where that ends what is known of a message without seeing it.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "catalog/operation.h"

namespace tarvex::review {

struct LayoutEnd {
    /// Something is missing or not sure; else messages alone tell.
    bool isHole = false;
    /// The parameter that it is about and what there is to say of it.
    std::string why;
    /// So many parameters stand in front of it, those inside others counted, too.
    std::size_t place = 0;
};

/// The first parameter of an operation, or the first in one, behind whose beginning no place is known;
/// nothing for an operation whose places are all known. Signals of a safe layout end there.
std::optional<LayoutEnd> LayoutEndOf(const ZMTOperation& operation);

/// Something that is missing or not sure in an operation.
struct LayoutHole {
    std::string text;
    unsigned message = 0;  ///< Of the importer; 0 for none.
};

/// All that make the layout of an operation incomplete, also those in what a message chooses.
std::vector<LayoutHole> LayoutHolesOf(const ZMTOperation& operation);

}  // namespace tarvex::review
