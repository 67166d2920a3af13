/// Reads Vorn files.

#pragma once

#include <memory>
#include <string>

#include "kestrel/database.h"

namespace kestrel {

/// Reads a Vorn file record by record. The top-level keys have to stand in the order in which they are
/// written. Throws `ReadError` with the line.
std::unique_ptr<Database> ReadVorn(const std::string& path);

}  // namespace kestrel
