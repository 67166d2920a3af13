/// What differs between two databases.

#pragma once

#include <string>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

enum class ChangeKind { Added, Removed, Changed };

/// A property that has two values.
struct FieldChange {
    std::string field;
    std::string before;
    std::string after;
};

/// A record that stands in one database only, or in both with differences. Parts are the records inside it.
struct Change {
    ChangeKind kind;
    /// "attribute definition", "node", "message", "signal" or "value".
    std::string object;
    /// What the record is found by: an identifier and a name, a name, or a number.
    std::string name;
    std::vector<FieldChange> fields;
    std::vector<Change> parts;
};

/// The differences, in the order of the new database, removed records last. Nodes and signals are found by
/// name, messages by identifier, values by number; of several alike the first belongs to the first. Order
/// alone makes no difference. A database's own name and attributes tell where it came from and are not
/// compared.
std::vector<Change> Compare(const kestrel::Database& before, const kestrel::Database& after);

}  // namespace vorn
