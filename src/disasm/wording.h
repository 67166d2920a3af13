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

/// Text from a capture as it is shown: its first 200 bytes, less what is cut of a character, with "." for
/// what is no text.
std::string ShownText(std::string_view text);

/// A name from the catalog as it is shown: its first 200 bytes, so that a message with very many parameters
/// stays within bounds.
std::string ShownName(const std::string& name);

}  // namespace tarvex
