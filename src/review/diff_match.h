/// Which things of two lists belong together.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvex::review {

/// What belongs together, and what stands in one list only; as indices of the lists.
struct Matches {
    using Pair = std::pair<std::size_t, std::size_t>;  ///< Before and after.
    std::vector<Pair> pairs;
    std::vector<std::size_t> removed;
    std::vector<std::size_t> added;
};

// All functions take time and memory in proportion to the lists, whatever is in them. Matching the other way
// round gives the same pairs. Names are compared without regard to case.

/// A thing that has a number and a name. The name outlives the matching; one that is empty says nothing.
struct Numbered {
    std::uint64_t number = 0;
    std::string_view name;
};
/// Two things of one name are alike in what they hold.
using AreAlike = std::function<bool(std::size_t before, std::size_t after)>;

/// Matches by number and name, then by name where the things are alike, then by number, then by name alone:
/// so that numbers may shift, and names may change, without anything getting lost.
Matches MatchNumbered(std::span<const Numbered> before, std::span<const Numbered> after,
                      const AreAlike& areAlike);

/// A thing that stands in an order and has a name.
struct Placed {
    std::string_view name;
    std::uint64_t form = 0;  ///< Things of another form are something else.
};

/// Matches by name and form, then by name, of several alike the first with the first; then those of one form
/// that stand behind the same thing, which have another name now.
Matches MatchPlaced(std::span<const Placed> before, std::span<const Placed> after);

/// The pairs whose order has changed: those that are left when as many as possible stay where they are.
/// What is added or removed moves nothing.
std::vector<Matches::Pair> OutOfOrder(std::span<const Placed> before, std::span<const Placed> after,
                                      const Matches& matches);

}  // namespace tarvex::review
