/// Pieces of text that reports and faults are made of.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarvex {

/// "1 byte", "2 bytes".
std::string ByteCount(std::size_t count);

/// The character if it is ASCII that can be printed, else ".".
constexpr char Printable(unsigned character) {
    return character >= ' ' && character <= '~' ? static_cast<char>(character) : '.';
}

/// Two hexadecimal digits for each byte, with `separator` between them.
std::string HexText(std::span<const std::uint8_t> bytes, std::string_view separator);
/// The same, appended.
void AppendHex(std::string& out, std::span<const std::uint8_t> bytes, std::string_view separator);

/// Appends a number with at least so many hexadecimal digits, in capitals.
void AppendHexNumber(std::string& out, std::uint32_t number, unsigned digits);
/// Appends a number in decimal digits.
void AppendNumber(std::string& out, std::int64_t number);

/// Text from a capture as it is shown: its first 200 bytes, less what is cut of a character, with "." for
/// what is no text.
std::string ShownText(std::string_view text);

/// A name from the catalog as it is shown: its first 200 bytes, so that a message with very many parameters
/// stays within bounds.
std::string ShownName(std::string_view name);
/// The same, appended.
void AppendShownName(std::string& out, std::string_view name);

}  // namespace tarvex
