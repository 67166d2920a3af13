/// JSON values as text, appended to a text under construction.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "kestrel/records.h"

namespace kestrel {

/// Appends `text` in quotes. Quotes, backslashes and control characters are escaped, letters beyond ASCII are
/// written as they are, bytes that are not UTF-8 become U+FFFD.
void AppendQuoted(std::string& json, std::string_view text);

/// Appends a number in the shortest form that reads back as the same value; a whole number in full, without a
/// decimal point or an exponent. JSON has no infinity and no NaN: they become null.
void AppendNumber(std::string& json, double number);

/// The same with an exponent for whole numbers, too, that have more than 15 digits: powers of ten stay short.
void AppendShortNumber(std::string& json, double number);

/// Appends a whole number.
void AppendInteger(std::string& json, std::uint32_t number);

/// A name of `size` bytes may have been cut there in the middle of a character: the name without the
/// incomplete character at its end. A shorter name is returned as it is.
std::string_view WithoutCutCharacter(std::string_view name, std::size_t size = kNameSize);

}  // namespace kestrel
