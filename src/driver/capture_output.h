/// Output that grows with its input at most.

#pragma once

#include <string>

#include "import/text/allowance.h"

namespace tarvex {

/// How much a run says of messages, by the bytes of the captures. Some thousand parameters without a byte of
/// their own would make megabytes of every line otherwise. The messages of the example take a sixteenth
/// of it.
inline constexpr Bound kReportBytes{std::size_t{64} << 20, 256};

/// Collects output and writes it to standard output in large pieces.
class CaptureOutput {
  public:
    std::string& Text() { return text_; }
    /// So many bytes of captures were read.
    void AddInput(std::size_t bytes) { input_ += bytes; }
    /// How long the report of a message may become.
    std::size_t Room() const;
    /// A report that was made in vain takes what it has found, and something for each of the items that were
    /// decoded for it, which the next lines have to earn.
    void UseUp(std::size_t items);
    void WriteIfLarge();
    /// False once something could not be written.
    bool Write();
    bool HasFailed() const { return error_ != 0; }
    std::string Error() const;

  private:
    std::string text_;
    std::size_t input_ = 0;
    std::size_t used_ = 0;  // of what the input allows
    int error_ = 0;
};

}  // namespace tarvex
