/// UTF-8, character by character.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvex {

/// Stands for what is no character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// Takes the byte order mark off the front of a text: some editors begin a file with it.
void TakeByteOrderMark(std::string_view& text);

/// Takes one character off the front of a text, which is not empty. Of bytes that are no UTF-8 one is taken,
/// and the result is nothing.
std::optional<char32_t> TakeCharacter(std::string_view& text);

/// Appends a character, which is at most U+10FFFF.
void AppendUtf8(std::string& out, char32_t character);

/// The start of a text, at most so many bytes of it, without the half of a character at its end.
std::string_view CutAtCharacter(std::string_view text, std::size_t maxBytes);

}  // namespace tarvex
