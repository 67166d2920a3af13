/// Numbers in capitals, as they stand behind names that were taken.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvex {

/// The number in base 26 with the digits "A" to "Z": "B" for 1, "BA" for 26, nothing for 0.
std::string LettersOf(unsigned number);

/// The number that these letters stand for. Nothing for other characters, for an "A" in front, and for more
/// letters than any database needs.
std::optional<unsigned> NumberOfLetters(std::string_view letters);

}  // namespace tarvex
