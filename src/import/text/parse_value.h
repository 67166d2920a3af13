/// Numbers and ranges in the texts of a catalog.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvex {

/// What catalog texts are read as numbers by. All return false, with 0 in the results, for a text that is not
/// of the form; none raises a message. The texts are those of attributes and elements, untrimmed.

/// Upper bound of an open range such as ">3".
inline constexpr std::int32_t kOpenRangeEnd = 2147483647;

/// The longest text that ToLower takes; what comes after is cut off.
inline constexpr std::size_t kMaxNumberText = 300;

/// Every character is a decimal digit or "-"; reads as far as the first character that does not belong ("5-3"
/// is 5, an empty text 0). Values beyond 32 bits become the nearest value that fits.
bool ParseDecimal(std::string_view text, std::int32_t& out);

/// Hexadecimal digits without a prefix; an empty text is 0, a value beyond 32 bits 0xFFFFFFFF.
bool ParseHex(std::string_view text, std::uint32_t& out);

/// Binary digits without a prefix; more than 32 of them wrap, an empty text is 0.
bool ParseBinary(std::string_view text, std::uint32_t& out);

/// "0x" and hexadecimal digits, "0b" and binary digits, or a decimal number, in any case and with blanks
/// around. What stands before "0x" or "0b" is ignored.
bool ParseInteger(std::string_view text, std::int32_t& out);

/// The same for a caller to whom 0 is as good as a failure.
std::int32_t IntegerOrZero(std::string_view text);

/// The number at the start of the text, 0 if there is none.
double ParseFloat(const std::string& text);

/// The whole text, but for white space around it, is that number.
bool IsFloat(const std::string& text);

/// "#NULL#" or nothing (0 to 0), a value, "min..max", "min...max", or ">min" (up to kOpenRangeEnd).
bool ParseRange(std::string_view text, std::int32_t& outMin, std::int32_t& outMax);

/// ASCII letters made small, cut at kMaxNumberText characters.
std::string ToLower(std::string_view text);

/// Without blanks, tabs and line feeds at both ends; carriage returns stay.
std::string_view Trim(std::string_view text);

}  // namespace tarvex
