/// Messages for programs.

#pragma once

#include <string>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

/// Messages of a database as a JSON list, an object on each line.
std::string MessagesJson(const kestrel::Database& database,
                         const std::vector<const kestrel::Message*>& messages);

}  // namespace vorn
