/// Faults of a database, told to people and to programs.

#pragma once

#include <string>
#include <vector>

#include "vorn/check.h"

namespace vorn {

/// A line for each fault: "message Volume: 5 pairs of signals overlap: A and B, A and C, A and D and 2 more".
std::string FaultsText(const std::vector<Fault>& faults);

/// The faults as a JSON list, an object on each line.
std::string FaultsJson(const std::vector<Fault>& faults);

}  // namespace vorn
