/// Where the type of a parameter stands in its element.

#pragma once

#include <string_view>

#include "import/xml/element.h"

namespace tarvex {

/// The element of that type among the direct children, else one level deeper; null if there is none. Most
/// catalogs wrap the type element, and records may do either.
inline const Element* FindTypeElement(const Element& element, std::string_view name) {
    const Element* found = FindChildElement(&element, name);
    return found != nullptr ? found : FindGrandchildElement(&element, name);
}

}  // namespace tarvex
