#include "driver/line_reader.h"

#include <cstring>
#include <utility>

namespace tarvex {

// One byte more than the longest line, so that its line feed can be seen.
LineReader::LineReader(int descriptor, std::function<bool()> beforeRead)
    : input_(descriptor), beforeRead_(std::move(beforeRead)), buffer_(kMaxLine + 1) {}

bool LineReader::Next(std::string_view& line) {
    if (std::exchange(isCut_, false)) {
        SkipRestOfLine();
    }
    std::size_t searched = begin_;
    std::size_t lineEnd = 0;
    while (!FindLineFeed(searched, lineEnd)) {
        searched = end_;
        const std::size_t moved = begin_;
        if (end_ - begin_ == buffer_.size()) {
            isCut_ = true;
            line = {buffer_.data(), kMaxLine};
            begin_ = kMaxLine;
            return true;
        }
        if (!Fill()) {
            line = {buffer_.data() + begin_, end_ - begin_};
            begin_ = end_;
            return !line.empty() && !hasFailed_;
        }
        searched -= moved;
    }
    line = {buffer_.data() + begin_, lineEnd - begin_};
    begin_ = lineEnd + 1;
    return true;
}

bool LineReader::NextPiece(std::string_view& piece) {
    if (!isCut_) {
        return false;
    }
    if (begin_ == end_) {
        isCut_ = Fill();
    }
    std::size_t lineEnd = 0;
    if (FindLineFeed(begin_, lineEnd)) {
        isCut_ = false;
        piece = {buffer_.data() + begin_, lineEnd - begin_};
        begin_ = lineEnd + 1;
    } else {
        piece = {buffer_.data() + begin_, end_ - begin_};
        begin_ = end_;
    }
    return !hasFailed_;
}

bool LineReader::FindLineFeed(std::size_t from, std::size_t& at) const {
    const void* found = from < end_ ? std::memchr(buffer_.data() + from, '\n', end_ - from) : nullptr;
    if (found == nullptr) {
        return false;
    }
    at = static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data());
    return true;
}

/// Moves what is left to the front and reads more behind it.
bool LineReader::Fill() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    isAtEnd_ = isAtEnd_ || !beforeRead_();
    if (isAtEnd_) {
        return false;
    }
    const ssize_t count = input_.Read(buffer_.data() + end_, buffer_.size() - end_);
    hasFailed_ = count < 0;
    isAtEnd_ = count <= 0;
    end_ += isAtEnd_ ? 0 : static_cast<std::size_t>(count);
    return !isAtEnd_;
}

void LineReader::SkipRestOfLine() {
    std::size_t lineEnd = 0;
    while (!FindLineFeed(begin_, lineEnd)) {
        begin_ = end_;
        if (!Fill()) {
            return;
        }
    }
    begin_ = lineEnd + 1;
}

}  // namespace tarvex
