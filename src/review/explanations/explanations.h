/// What all messages of the importer mean, by groups.

#pragma once

#include <span>

#include "review/explanations/explanation.h"

namespace tarvex::review {

/// Each message is explained once.
std::span<const Group> Groups();

}  // namespace tarvex::review
