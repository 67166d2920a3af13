/// Captures line by line, in all styles: each line shows by itself which one it has.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "capture/address_names.h"
#include "capture/json_splitter.h"
#include "capture/table_line.h"

namespace tarvex {

/// Reads lines and objects that hold more than messages, before a CaptureReader takes them for such.
class LineTaker {
  public:
    LineTaker() = default;
    LineTaker(const LineTaker&) = delete;
    LineTaker& operator=(const LineTaker&) = delete;
    virtual ~LineTaker() = default;

    /// True when the line has been read, whatever came of it.
    virtual bool TakeOwnLine(std::string_view line, std::uint64_t number) = 0;
    /// The text of a JSON object; the number is that of its first line. True as above.
    virtual bool TakeOwnObject(std::string_view object, std::uint64_t number) = 0;
};

/// Reads the lines of one capture: messages as people write them, rows of a table behind its header, JSON
/// objects. What it finds goes to a sink, in the order of the capture.
class CaptureReader {
  public:
    /// All outlive the reader. `columns`: of tables without a header; `taker`: who is asked first. Null if
    /// there are none.
    CaptureReader(const AddressNames& names, const TableColumns* columns, MessageSink& sink,
                  LineTaker* taker = nullptr);

    /// The next line, without its line feed. `isCut`: there is more of it.
    void TakeLine(std::string_view line, bool isCut = false);
    /// What is more of the line that was cut would be of use.
    bool WantsMore() const { return isMoreWanted_; }
    /// More of that line.
    void TakeMore(std::string_view more, bool isCut);
    /// The capture ends.
    void Finish();

  private:
    void ReadLine(std::string_view line, std::uint64_t number, bool isCut);
    void ReadAgain();
    void TakeJson();
    void TakeBroken(JsonSplitter::Piece& piece);
    bool TakeRow(std::string_view line, std::uint64_t number);
    bool TakeHeader(std::string_view line);
    void TakeMessageLine(std::string_view line, std::uint64_t number);
    void Tell(const std::string& fault, std::string_view text, std::uint64_t line);

    const AddressNames& names_;
    MessageSink& sink_;
    LineTaker* taker_;
    std::optional<TableColumns> table_;
    JsonSplitter json_;
    bool isMoreWanted_ = false;
    bool isBehindBroken_ = false;      // an object of several lines, of which more may come
    std::vector<CaptureLine> others_;  // lines of broken objects to be read anew, the next one last
    CapturedMessage message_;
    std::uint64_t number_ = 0;
};

}  // namespace tarvex
