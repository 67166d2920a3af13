/// Which name somebody may have meant.

#pragma once

#include <span>
#include <string_view>

namespace tarvex {

/// The name that is most like the one given, whatever the case of their letters: at most three letters are
/// other ones, missing or too many, and less than half of the name. The first of several; empty for none, and
/// for a name that is longer than any setting.
std::string_view NearestName(std::string_view given, std::span<const std::string_view> names);

}  // namespace tarvex
