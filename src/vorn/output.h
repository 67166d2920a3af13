/// Databases that are written.

#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "kestrel/database.h"

namespace vorn {

/// A file that may not be written, or could not be: what is wrong, with the path in front.
class OutputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The extensions of the formats that databases are written in: ".vorn, .sqlite, ..."
std::string OutputExtensions();

/// Makes sure that nothing is lost when this path is written: no format may be meant that there is not, and
/// what stands there has to be a database that could be written again, or nothing, unless it is forced.
void RequireReplaceable(const std::string& path, bool isForced);

/// Writes the database in the format of the extension.
void Write(const kestrel::Database& database, const std::string& path);

}  // namespace vorn
