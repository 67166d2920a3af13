/// The lines of a capture.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// A message has at most so many data bytes.
inline constexpr std::size_t kMaxMessageBytes = 65535;

/// A MOST message as it was captured.
struct CapturedMessage {
    std::uint32_t fBlockID = 0;
    std::uint32_t instID = 0;
    std::uint32_t fktID = 0;
    std::uint32_t opType = 0;
    std::vector<std::uint8_t> data;
};

/// A blank line, or one that begins with "#".
bool IsCommentLine(std::string_view line);

/// Reads "FBlockID.InstID.FktID.OPType", all hexadecimal, and the data bytes, two hexadecimal digits each,
/// with or without blanks between them, in parentheses or not. A length may stand before the data: as a fifth
/// field of the address, before the parentheses, as a single digit, or as "[12]" or "12:". Empty on success,
/// else what is wrong.
std::string ParseMessageLine(std::string_view line, CapturedMessage& out);

}  // namespace tarvex
