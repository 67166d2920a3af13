/// Captures line by line, from files and pipes.

#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "driver/text_input.h"

namespace tarvex {

/// Of a longer line only so many bytes are given at once.
inline constexpr std::size_t kMaxLine = std::size_t{1} << 18;

/// Reads the lines of a stream of any length in constant memory.
class LineReader {
  public:
    /// `beforeRead` is called each time before the reader asks for more, which may block; when it returns
    /// false the stream counts as ended. The descriptor is not owned.
    LineReader(int descriptor, std::function<bool()> beforeRead);

    /// The next line without its line feed, valid until the next call; false at the end of the stream. The
    /// last line may lack its line feed, but an error ends no line: its beginning is not given.
    bool Next(std::string_view& line);
    /// Of the line that Next gave, which is longer than kMaxLine, some more, valid as above; false when there
    /// is none. What nobody asks for is skipped.
    bool NextPiece(std::string_view& piece);
    /// There is more of the line than was given.
    bool IsCut() const { return isCut_; }
    /// The stream ended with an error.
    bool HasFailed() const { return hasFailed_; }

  private:
    bool Fill();
    bool FindLineFeed(std::size_t from, std::size_t& at) const;
    void SkipRestOfLine();

    TextInput input_;
    std::function<bool()> beforeRead_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;  // of what was not given out yet
    std::size_t end_ = 0;
    bool isCut_ = false;
    bool isAtEnd_ = false;
    bool hasFailed_ = false;
};

}  // namespace tarvex
