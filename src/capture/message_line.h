/// Lines of a capture that hold a message as people write it.

#pragma once

#include <string>
#include <string_view>

#include "capture/address_names.h"

namespace tarvex {

/// A blank line, or one that begins with "#", ";" or "//".
bool IsCommentLine(std::string_view line);

/// The end of the address at the front of a line. Names may have parentheses, an OPType has none.
std::size_t AddressEnd(std::string_view line);

/// Reads a message: what TakePrefix knows, an address as AddressNames reads it, and the data bytes, in
/// parentheses or not. A length may stand before the data: as a fifth field of the address, before the
/// parentheses, as a single digit, or as "[12]" or "12:". A comment may follow, and behind parentheses the
/// names that reports write there. Empty on success, else what is wrong.
std::string ParseMessageLine(std::string_view line, CapturedMessage& out, const AddressNames& names);
/// The same; `at` is where in the line the wrong begins.
std::string ParseMessageLine(std::string_view line, CapturedMessage& out, const AddressNames& names,
                             std::size_t& at);
/// The same with numbers alone.
std::string ParseMessageLine(std::string_view line, CapturedMessage& out);

}  // namespace tarvex
