/// What differs between two databases, told to people and to programs.

#pragma once

#include <string>
#include <vector>

#include "vorn/compare.h"
#include "vorn/style.h"

namespace vorn {

/// The differences as indented lines that begin with "+", "-" or "~".
std::string ChangesText(const std::vector<Change>& changes, const Style& style);

/// The differences as a JSON list.
std::string ChangesJson(const std::vector<Change>& changes);

}  // namespace vorn
