/// Captures line by line, in all styles: each line shows by itself which one it has.

#pragma once

#include <optional>
#include <string>

#include "capture/address_names.h"
#include "capture/json_splitter.h"
#include "capture/table_line.h"

namespace tarvex {

/// Reads the lines of one capture: messages as people write them, rows of a table behind its header, JSON
/// objects. What it finds goes to a sink, in the order of the capture.
class CaptureReader {
  public:
    /// All three outlive the reader. `columns`: of tables without a header; null if there are none.
    CaptureReader(const AddressNames& names, const TableColumns* columns, MessageSink& sink);

    /// The next line, without its line feed. `isCut`: there was more of it, which is missing.
    void TakeLine(std::string_view line, bool isCut = false);
    /// The capture ends.
    void Finish();

  private:
    void TakeJson();
    bool TakeRow(std::string_view line);
    void Tell(const std::string& fault, std::string_view text, std::uint64_t line);

    const AddressNames& names_;
    MessageSink& sink_;
    std::optional<TableColumns> table_;
    JsonSplitter json_;
    CapturedMessage message_;
    std::uint64_t number_ = 0;
};

}  // namespace tarvex
