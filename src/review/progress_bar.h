/// How far the reading of a catalog is, for people who wait.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tarvex::review {

/// A bar on standard error, on a terminal only and for what takes longer than a second. It is gone in the
/// end.
class ProgressBar {
  public:
    /// `total`: bytes that there are to read.
    ProgressBar(const std::string& name, std::size_t total);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// So many bytes are read.
    void Show(std::size_t done);

    /// The bar as a line: "roadster.xml [#####     ]  50 %".
    static std::string Line(const std::string& name, unsigned percent);

  private:
    std::string name_;
    std::size_t total_;
    std::chrono::steady_clock::time_point begin_;
    bool isOnTerminal_;
    int shown_ = -1;  // percent; none yet
};

}  // namespace tarvex::review
