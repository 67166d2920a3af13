#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvex::fuzz {

/// No input is expanded to more bytes of a catalog.
inline constexpr std::size_t kMaxCatalog = std::size_t{64} << 10;

/// Writes an input as a catalog into a file `catalog.xml` and gives its path. Behind a comment `<!--a.dtd-->`
/// the input goes on in a file of that name beside the catalog, and so with `b.dtd`, so that the catalog has
/// files that its document type and its entities can name. `fcat.dtd`, that of the examples, is there too.
std::string WriteCatalog(std::string_view input);

}  // namespace tarvex::fuzz
