#include "review/progress_bar.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

#include "import/text/shown_text.h"

namespace tarvex::review {
namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr unsigned kAll = 100;
/// Back to the beginning of the line, and nothing in it.
constexpr const char* kEmptyLine = "\r\x1B[K";

}  // namespace

ProgressBar::ProgressBar(const std::string& name, std::size_t total)
    : name_(Shown(name)),
      total_(total),
      begin_(std::chrono::steady_clock::now()),
      isOnTerminal_(::isatty(STDERR_FILENO) == 1) {}

ProgressBar::~ProgressBar() {
    if (shown_ >= 0) {
        (void)std::fputs(kEmptyLine, stderr);
    }
}

void ProgressBar::Show(std::size_t done) {
    if (!isOnTerminal_ || total_ == 0 || std::chrono::steady_clock::now() - begin_ < kPatience) {
        return;
    }
    const auto percent = static_cast<int>(std::min(done, total_) * kAll / total_);
    if (percent != shown_) {
        shown_ = percent;
        std::fprintf(stderr, "%s%s", kEmptyLine, Line(name_, static_cast<unsigned>(percent)).c_str());
        (void)std::fflush(stderr);
    }
}

std::string ProgressBar::Line(const std::string& name, unsigned percent) {
    constexpr unsigned kWidth = 20;
    const unsigned done = percent * kWidth / kAll;
    const std::string number = std::to_string(percent);
    return name + " [" + std::string(done, '#') + std::string(kWidth - done, ' ') + "] " +
           std::string(3 - std::min<std::size_t>(number.size(), 3), ' ') + number + " %";
}

}  // namespace tarvex::review
