/// Faults that a database can have although it can be written and read.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

enum class Cause {
    /// A node or a message has the name of another.
    Name,
    /// A message has the identifier of another.
    Identifier,
    /// A signal has the name of another one of its message.
    SignalName,
    /// A signal ends behind its message.
    End,
    /// The minimum of a signal is above its maximum.
    Range,
    /// A signal is multiplexed, but the message has no multiplexor.
    Multiplexor,
    /// Two signals share bits although they can be in the message at the same time.
    Overlap,
};

/// All that one cause does to one node or message.
struct Fault {
    Cause cause;
    /// "node" or "message".
    std::string object;
    std::string name;
    /// Of a message.
    std::optional<std::uint32_t> identifier = {};
    /// How many signals or pairs of them, or nodes and messages of that name besides the first.
    std::size_t count = 0;
    /// There may be more.
    bool isAtLeast = false;
    /// The first of them in words, at most `kMaxExamples`; of messages of one name their identifiers, the
    /// first included.
    std::vector<std::string> examples = {};
    /// What is wrong if there is but one; empty for names of nodes and messages.
    std::string sentence = {};
};

inline constexpr std::size_t kMaxExamples = 3;

/// The faults, those of nodes first, then message by message. A message has one for each cause.
std::vector<Fault> FaultsOf(const kestrel::Database& database);

}  // namespace vorn
