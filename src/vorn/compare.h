/// What differs between two databases.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "kestrel/database.h"
#include "vorn/record_pairs.h"

namespace vorn {

enum class ChangeKind { Added, Removed, Moved, Changed };

/// The identifier of a message, without the mark of extended ones.
struct Identifier {
    std::uint32_t number;
    bool operator==(const Identifier&) const = default;
};

/// The value of a property; empty where a record does not have it.
using FieldValue = std::variant<std::monostate, bool, double, Identifier, std::string>;

/// A property that has two values.
struct FieldChange {
    std::string field;
    FieldValue before;
    FieldValue after;
    /// Both values are names that differ in what makes them unique.
    bool isUniqueness = false;
};

/// A record that stands in one database only, or in both with differences. Parts are the records inside it.
struct Change {
    ChangeKind kind;
    /// "attribute definition", "node", "message", "signal" or "value".
    std::string_view object;
    /// In the new database, if it is there. Values have none.
    std::string name;
    /// The identifier of a message, with its mark, or the number of a value.
    std::optional<std::uint32_t> number = {};
    std::vector<FieldChange> fields = {};
    std::vector<Change> parts = {};
};

struct Comparison {
    std::vector<Change> changes;
    /// Names that are equal but for the letters or digits that make them unique.
    std::size_t uniqueNames = 0;
};

/// What of a difference is told.
struct CompareOptions {
    /// Names that are equal but for what makes them unique are changes like others.
    bool withUniqueNames = false;
    /// What becomes of messages that share a name; see `PairMessages`.
    Namesakes namesakes = Namesakes::InOrder;
};

/// The differences, in the order of the new database, removed records last.
///
/// Messages are found by identifier, then by block, function and operation, then by name: these have moved.
/// Signals are found by place and multiplexer value if their names are equal, then by name, then by place and
/// multiplexer value alone. Nodes are found by name, then by the messages that they send; attribute
/// definitions by name and values by number. Of several alike the first belongs to the first. Names are equal
/// if they differ only in letters or digits that make them unique.
///
/// Order alone makes no difference. A database's own name and attributes tell where it came from and are not
/// compared.
Comparison Compare(const kestrel::Database& before, const kestrel::Database& after,
                   const CompareOptions& options = {});

}  // namespace vorn
