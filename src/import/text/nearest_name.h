/// Which name somebody may have meant.

#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace tarvex {

/// The name that is most like the one given, whatever the case of their letters: at most three letters are
/// other ones, missing, too many or in the place of their neighbour, and less than half of the name. The
/// first of several; empty for none, and for a name that is longer than any setting.
std::string_view NearestName(std::string_view given, std::span<const std::string_view> names);

/// So many different names (or all that there are) in which most of the given one is found, the nearest
/// first: what is found of it somewhere in the name counts, then how much longer or shorter the name is. None
/// for a text that is longer than any name.
std::vector<std::string_view> NearestNames(std::string_view given, std::span<const std::string_view> names,
                                           std::size_t count);

}  // namespace tarvex
