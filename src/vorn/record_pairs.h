/// Which records of two databases are the same.

#pragma once

#include <string>

#include "kestrel/database.h"
#include "vorn/pairing.h"
#include "vorn/renamed_nodes.h"

namespace vorn {

/// "message Layout": the kind of object and the name, by which a definition is known.
std::string DefinitionName(const kestrel::AttrDef& definition);

/// Attribute definitions by kind of object and name.
Pairing<kestrel::AttrDef> PairDefinitions(const kestrel::Database& before, const kestrel::Database& after);

/// What becomes of messages with different identifiers, of which several of one database have one name or one
/// block, function and operation.
enum class Namesakes { InOrder, Apart };

/// Messages by identifier, then by block, function and operation, then by name.
Pairing<kestrel::Message> PairMessages(const kestrel::Database& before, const kestrel::Database& after,
                                       Namesakes namesakes);

/// Nodes by name, then by the messages that they send.
Pairing<kestrel::Node> PairNodes(const kestrel::Database& before, const kestrel::Database& after,
                                 const RenamedNodes& renamed);

}  // namespace vorn
