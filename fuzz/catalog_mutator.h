#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvex::fuzz {

/// Changes a catalog in place: mostly its elements, attributes and texts, sometimes its bytes. Gives the new
/// size.
std::size_t MutateCatalog(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);

/// Requires that the words that mutations put in are those of catalogs.
void RequireKnownWords();

}  // namespace tarvex::fuzz
