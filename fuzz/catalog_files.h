#pragma once

#include <string>
#include <string_view>

namespace tarvex::fuzz {

/// Writes an input as a catalog into a file `catalog.xml` and gives its path. Behind a comment `<!--a.dtd-->`
/// the input goes on in a file of that name beside the catalog, and so with `b.dtd`, so that the catalog has
/// files that its document type and its entities can name. `fcat.dtd`, that of the examples, is there too.
std::string WriteCatalog(std::string_view input);

}  // namespace tarvex::fuzz
