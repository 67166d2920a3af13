#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvex::fuzz {

/// Changes a SQLite file in place: half of the time a value, a column or a row of a table, else its bytes.
/// Gives the new size.
std::size_t MutateTables(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);

}  // namespace tarvex::fuzz
