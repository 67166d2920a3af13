/// Texts from files as they stand in messages.

#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// A text of any length for a message: of a long one its beginning and "...". A character is never cut.
std::string Excerpt(std::string_view text);

}  // namespace kestrel
