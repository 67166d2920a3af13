/// Hexadecimal numbers as captures write them.

#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvex {

/// The text begins with "0x".
constexpr bool HasHexMark(std::string_view text) {
    return text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

/// Takes "0x" off the front of a text that goes on behind it.
constexpr std::string_view WithoutHexMark(std::string_view text) {
    return text.size() > 2 && HasHexMark(text) ? text.substr(2) : text;
}

/// A number of digits alone, in that base; nothing for anything else, and from 2^32 on.
inline std::optional<std::uint32_t> DigitsOf(std::string_view text, int base) {
    std::uint32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

/// A hexadecimal number, with "0x" in front or without.
inline std::optional<std::uint32_t> HexOf(std::string_view text) {
    return DigitsOf(WithoutHexMark(text), 16);
}

/// The value of a hexadecimal digit; -1 for any other character.
constexpr int HexDigit(char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                  : -1;
}

}  // namespace tarvex
