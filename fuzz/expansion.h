#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarvex::fuzz {

/// A text in which `<?times 50?>piece<?end?>` stands for 50 pieces, with their numbers from 1 in the place of
/// `@`. Pieces may have others inside. What is longer than `most` is cut.
std::string Expanded(std::string_view text, std::size_t most);

/// The text with another number for one such piece, or with one element put into such a piece; empty for a
/// text without elements.
std::string MutateTimes(std::string_view text, unsigned seed);

}  // namespace tarvex::fuzz
