/// Parts of a database.

#pragma once

#include <memory>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

/// A database with these messages of another, which are in its order. Everything else stays: name,
/// attributes, definitions and all nodes, so that parts can be put together again.
std::unique_ptr<kestrel::Database> SubsetOf(const kestrel::Database& database,
                                            const std::vector<const kestrel::Message*>& messages);

}  // namespace vorn
