/// Decoded messages as text for people.

#pragma once

#include "disasm/report.h"

namespace tarvex {

/// One block of lines for each message: its bytes and names, then its parameters, one per line and indented
/// by two blanks per level, then its faults.
class TextReport : public Report {
  public:
    void BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                 std::string& out) const override;

  private:
    void AppendMessage(const LinePlace& place, const CapturedMessage& message, const DecodedMessage& decoded,
                       std::size_t end, std::string& out) const override;
};

}  // namespace tarvex
