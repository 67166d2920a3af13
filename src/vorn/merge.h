/// Two databases as one.

#pragma once

#include <memory>

#include "kestrel/database.h"
#include "vorn/compare.h"

namespace vorn {

/// What is in both databases and not the same: attribute definitions, nodes and messages, found as `Compare`
/// finds them, messages that share a name with another of their database by their identifiers alone. What
/// only one of them has is no conflict, but for a definition (added or removed) whose default, unless it is
/// an empty text, would become the value of nodes or messages that only the other has.
Comparison ConflictsOf(const kestrel::Database& first, const kestrel::Database& second);

/// Which of two records that are not the same is taken.
enum class Preference { First, Second };

/// The records of both, what is in both once. Messages stand in the order of their identifiers as far as they
/// do in both databases; other records of the second stand behind those of the first. The name is that of the
/// first, its own attributes come before those of the second. Throws `kestrel::BadRecord` for a value of an
/// attribute whose definition, that of the other database, does not allow it.
std::unique_ptr<kestrel::Database> Merge(const kestrel::Database& first, const kestrel::Database& second,
                                         Preference preference);

}  // namespace vorn
