/// JSON texts, appended to a text under construction.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvex {

/// Appends `text` in quotes. Quotes, backslashes and control characters are escaped, letters beyond ASCII
/// stay, bytes that are no UTF-8 become U+FFFD.
void AppendJsonText(std::string& out, std::string_view text);

/// Makes a JSON text of everything from `begin` on: puts it in quotes and escapes it in place.
void QuoteJsonText(std::string& out, std::size_t begin);

}  // namespace tarvex
