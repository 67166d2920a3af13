/// Pieces of text that reports and faults are made of.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvex {

/// "1 byte", "2 bytes".
std::string ByteCount(std::size_t count);

/// Text from a capture as it is shown: its first 200 bytes, less what is cut of a character, with "." for
/// what is no text.
std::string ShownText(std::string_view text);

/// A name from the catalog as it is shown: its first 200 bytes, so that a message with very many parameters
/// stays within bounds.
std::string ShownName(const std::string& name);

}  // namespace tarvex
