/// Reads database files back into the model, for programs that show, compare or convert them.

#pragma once

#include <memory>
#include <string>

#include "kestrel/database.h"
#include "kestrel/errors.h"

namespace kestrel {

/// Reads a Vorn or a SQLite file; what is in it tells which one. What is neither is read as Vorn where the
/// extension says so, for the place of the damage. Throws `ReadError` for a file that cannot be opened, is
/// damaged or is of another format.
std::unique_ptr<Database> ReadDatabase(const std::string& path);

}  // namespace kestrel
