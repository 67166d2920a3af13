/// What the import could not find out about the messages of an operation.

#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tarvex {

enum class HoleCause {
    Lost,        ///< A parameter could not be imported.
    NamedTwice,  ///< The element of the operation stands twice in a parameter, so that it counts for neither.
    Gap,         ///< No parameter has the position.
    NoSize,      ///< The parameter's type has no size.
    CodeUnread,  ///< The largest code of an enumeration, which tells its size, could not be read.
    FieldCount,  ///< The record has another number of fields than it says.
    MemberFailed,  ///< A field, element or parameter inside has failed its check.
    MemberTwice,   ///< Two parameters or signals of a stream case claim one place.
    CaseLost       ///< No case of the stream fits, and one could not be imported.
};

/// A place in a message from which on nothing is sure.
struct Hole {
    HoleCause cause = HoleCause::Lost;
    /// As the catalog counts the parameters of an operation, or the fields of a record; nothing when it can't
    /// be read, so that the place may be anywhere.
    std::optional<unsigned> position = std::nullopt;
    /// Number of the importer's message about it; 0 for none.
    unsigned message = 0;
    /// A form of newer catalogs, which was not to be read, is the reason.
    bool isNewerForm = false;
};

/// The hole in words, with the number of its message: one of an operation as a whole sentence ("the parameter
/// at position 2 could not be imported ..."), the others as what is said of the parameter ("has a type ...").
std::string HoleText(const Hole& hole);

/// Stands for the OPTypes of a function when nobody knows which of them a loss concerns.
inline constexpr unsigned kEveryOperation = 16;

/// The parameters that operations have lost, by OPType and position. Empty for nearly every function, so that
/// it takes room only where something is in it. Copies with its function.
class Losses {
  public:
    Losses() = default;
    Losses(const Losses& other) { *this = other; }
    Losses& operator=(const Losses& other);
    ~Losses() = default;

    /// Of two losses at one place the first stays; true when it is new.
    bool Note(unsigned opType, const Hole& hole);

    /// The loss of that operation that stands first, an unknown place before all others; null for none.
    const Hole* FirstOf(unsigned opType) const;

    static constexpr int kUnknownPosition = -1;  ///< In front of all others.
    using Key = std::pair<unsigned, int>;        ///< OPType and position.
    using Map = std::map<Key, Hole>;
    const Map& All() const;

    /// Bytes of memory that one of them takes, roughly.
    static constexpr std::size_t kLossBytes = sizeof(Map::value_type) + 48;
    std::size_t MemorySize() const { return All().size() * kLossBytes; }

  private:
    std::unique_ptr<Map> map_;
};

}  // namespace tarvex
