/// Which records of two databases are the same.

#pragma once

#include "kestrel/database.h"
#include "vorn/pairing.h"
#include "vorn/renamed_nodes.h"

namespace vorn {

/// Attribute definitions by kind of object and name.
Pairing<kestrel::AttrDef> PairDefinitions(const kestrel::Database& before, const kestrel::Database& after);

/// Messages by identifier, then by block, function and operation, then by name.
Pairing<kestrel::Message> PairMessages(const kestrel::Database& before, const kestrel::Database& after);

/// Nodes by name, then by the messages that they send.
Pairing<kestrel::Node> PairNodes(const kestrel::Database& before, const kestrel::Database& after,
                                 const RenamedNodes& renamed);

}  // namespace vorn
