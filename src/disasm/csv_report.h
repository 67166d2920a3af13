/// Decoded messages as a table.

#pragma once

#include "disasm/report.h"

namespace tarvex {

/// A header, then a row for each item that is not made of others; a message without such an item has a row of
/// its own, and so have faults.
class CsvReport : public Report {
  public:
    void Begin(std::string& out) const override;
    void BadLine(const LinePlace& place, std::string_view line, std::string_view fault,
                 std::string& out) const override;

  private:
    void AppendMessage(const LinePlace& place, const CapturedMessage& message, const DecodedMessage& decoded,
                       std::size_t end, std::string& out) const override;
};

}  // namespace tarvex
