/// Nodes that have another name in a second database.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "kestrel/database.h"
#include "kestrel/keyed_hash.h"
#include "vorn/pairing.h"

namespace vorn {

/// A node was renamed if all its messages, as far as they are in both databases, come from one node that only
/// the second database has, and that node sends none of another.
class RenamedNodes {
  public:
    RenamedNodes(const kestrel::Database& before, const kestrel::Database& after,
                 const Pairing<kestrel::Message>& messages);

    /// The name that the node of the second database had in the first; nothing if it is not renamed.
    std::optional<std::string> OldNameOf(const kestrel::Node& node) const;
    /// Whether both are one node under two names.
    bool AreSame(const symblk* before, const symblk* after) const;

  private:
    kestrel::KeyedMap<std::string, std::string> oldNames_;  // by the new ones
};

}  // namespace vorn
