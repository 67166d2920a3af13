/// Faults that a database can have although it can be written and read.

#pragma once

#include <string>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

/// A line for each fault: signals that share bits of a message although they can meet in it, signals beyond
/// the end of their message, ranges whose minimum is above their maximum, names of nodes,
/// messages or signals and identifiers that occur twice.
std::vector<std::string> Check(const kestrel::Database& database);

}  // namespace vorn
