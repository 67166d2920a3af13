/// Faults in words.

#pragma once

#include <string>
#include <string_view>

#include "drawing/style.h"
#include "review/catalog_reading.h"

namespace tarvex::review {

/// "roadster.xml:812:9", as editors know it; the file alone for a fault without a place.
std::string PlaceText(const CatalogReading& reading, const Fault& fault);

/// The tree of a catalog. Throws std::runtime_error, with the last fault that was met, where there is none.
const ZMTCatalog& TreeOf(const CatalogReading& reading);

/// What is wrong, in one line, with the name of the element at fault where the message does not have it.
std::string FaultText(const Fault& fault);

/// A whole line about a fault, without its end: place, kind, number, text and the path of the node.
std::string FaultLine(const CatalogReading& reading, const Fault& fault,
                      const vorn::Style& style = vorn::Style(false));

/// The colour of what is said of such faults.
vorn::Colour ColourOf(Kind kind);

/// The path of the node without the name of the catalog, which is that of its file.
std::string_view PathBelowCatalog(std::string_view path);

}  // namespace tarvex::review
