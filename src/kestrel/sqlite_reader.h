/// Reads SQLite files.

#pragma once

#include <memory>
#include <string>

#include "kestrel/database.h"

namespace kestrel {

/// Reads a SQLite file that has the tables of a database. Throws `ReadError` with the table, and the row
/// where one is at fault.
std::unique_ptr<Database> ReadSqlite(const std::string& path);

}  // namespace kestrel
