/// Data bytes as captures write them.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// Appends bytes of two hexadecimal digits each, with "0x" in front or without, with blanks, commas and
/// semicolons between them or nothing. Empty on success, else what is wrong; `wrong` is then what of the text
/// it is.
std::string ReadDataBytes(std::string_view text, std::vector<std::uint8_t>& out,
                          std::string_view* wrong = nullptr);

/// What a capture says of the number of its bytes, in decimal or hexadecimal digits, is right. Nothing said
/// is right, too. Empty, or what is wrong.
std::string CheckLength(std::optional<std::string_view> length, std::size_t size);

}  // namespace tarvex
