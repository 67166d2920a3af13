/// What the output formats of tarvex-disasm have in common.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "disasm/decoded_message.h"
#include "import/text/wording.h"

namespace tarvex {

/// Where a line of a capture stands.
struct LinePlace {
    /// Empty when there is only standard input.
    std::string file;
    /// Counted from 1.
    std::uint64_t number = 0;
};

/// What a message comes to at most, in bytes: more than all items of the largest one that can be captured,
/// unless units or the like have names of thousands of letters.
inline constexpr std::size_t kMaxReport = std::size_t{64} << 20;

/// Appends what the lines of a capture say to a text, in one of the output formats.
class Report {
  public:
    Report() = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    virtual ~Report() = default;

    /// A message with its items and faults. False, and nothing of it, when that takes more than `room` bytes;
    /// much more are never made.
    bool Message(const LinePlace& place, const CapturedMessage& message, const DecodedMessage& decoded,
                 std::string& out, std::size_t room = kMaxReport) const;
    /// What stands in front of everything; nothing for most formats.
    virtual void Begin(std::string& /*out*/) const {}
    /// A line that is no message.
    virtual void BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                         std::string& out) const = 0;

  private:
    /// May stop once the text is longer than `end`.
    virtual void AppendMessage(const LinePlace& place, const CapturedMessage& message,
                               const DecodedMessage& decoded, std::size_t end, std::string& out) const = 0;
};

}  // namespace tarvex
