#include "driver/capture_output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tarvex {
namespace {

constexpr std::size_t kOutputBuffer = std::size_t{1} << 16;

}  // namespace

std::size_t CaptureOutput::Room() const {
    const std::size_t bound = kReportBytes.For(input_);
    return bound - std::min(bound, used_ + text_.size());
}

void CaptureOutput::UseUp(std::size_t items) {
    constexpr std::size_t kBytesPerItem = 256;
    used_ += Room() + items * kBytesPerItem;
}

void CaptureOutput::WriteIfLarge() {
    if (text_.size() >= kOutputBuffer) {
        Write();
    }
}

bool CaptureOutput::Write() {
    const bool isWritten = std::fwrite(text_.data(), 1, text_.size(), stdout) == text_.size();
    if ((!isWritten || std::fflush(stdout) != 0) && error_ == 0) {
        error_ = errno;
    }
    used_ += text_.size();
    text_.clear();
    return error_ == 0;
}

std::string CaptureOutput::Error() const {
    return std::strerror(error_);
}

}  // namespace tarvex
