/// Where reports go.

#pragma once

#include <functional>
#include <string>

namespace tarvex::review {

/// Takes text as it comes.
using Print = std::function<void(const std::string& text)>;

}  // namespace tarvex::review
