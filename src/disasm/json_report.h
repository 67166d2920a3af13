/// Decoded messages as JSON.

#pragma once

#include "disasm/report.h"

namespace tarvex {

/// Appends a message as a line of its own, as captures may have it: where it comes from, address and data.
void AppendJsonMessage(const CapturedMessage& message, std::string& out);

/// One JSON object per line of the capture, with the items nested as the parameters are.
class JsonReport : public Report {
  public:
    void BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                 std::string& out) const override;

  private:
    void AppendMessage(const LinePlace& place, const CapturedMessage& message, const DecodedMessage& decoded,
                       std::size_t end, std::string& out) const override;
};

}  // namespace tarvex
