/// Reads database files back into the model, for programs that show, compare or convert them.

#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "kestrel/database.h"

namespace kestrel {

/// What is wrong with a file, and where: the line of a Vorn file, the table of a SQLite file.
class ReadError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads a Vorn or a SQLite file; the extension tells which one. Throws `ReadError` for a file that cannot be
/// opened, is damaged or is of another format.
std::unique_ptr<Database> ReadDatabase(const std::string& path);

}  // namespace kestrel
