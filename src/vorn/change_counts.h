/// How many records differ between two databases.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "vorn/compare.h"

namespace vorn {

/// Kinds of records in the order in which they are told, and of changes.
inline constexpr std::string_view kObjects[] = {"attribute definition", "node", "message", "signal", "value"};
inline constexpr ChangeKind kChangeKinds[] = {ChangeKind::Added, ChangeKind::Removed, ChangeKind::Moved,
                                              ChangeKind::Changed};

/// "added", "removed", "moved" or "changed".
std::string_view NameOf(ChangeKind kind);

/// The changes by the places of their objects and kinds in the lists above.
using ChangeCounts = std::array<std::array<std::size_t, std::size(kChangeKinds)>, std::size(kObjects)>;

/// Counts changes and the parts inside them. What differs in unique names only is not counted.
ChangeCounts CountChanges(const Comparison& comparison);

}  // namespace vorn
