/// The catalogs that the excerpts of explanations are put into.

#pragma once

#include <string>
#include <string_view>

#include "review/explanations/explanation.h"

namespace tarvex::test {

/// A catalog with the excerpt in its frame. Without an excerpt no frame but that of the whole catalog has a
/// fault.
std::string InFrame(review::Frame frame, std::string_view excerpt);

}  // namespace tarvex::test
