#include "driver/text_input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <unistd.h>

#include "import/text/utf8.h"

namespace tarvex {
namespace {

constexpr std::string_view kLittleMark = "\xFF\xFE";
constexpr std::string_view kBigMark = "\xFE\xFF";

/// So many bytes are read of UTF-16 at once.
constexpr std::size_t kPiece = 16384;

constexpr char32_t kHigh = 0xD800;
constexpr char32_t kLow = 0xDC00;
constexpr char32_t kEndOfLow = 0xE000;

}  // namespace

ssize_t TextInput::ReadBytes(char* out, std::size_t size) const {
    ssize_t count = 0;
    do {
        count = ::read(descriptor_, out, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// Reads the first two bytes. False after an error.
bool TextInput::FindEncoding() {
    while (text_.size() < kLittleMark.size() && !isAtEnd_) {
        char byte = '\0';
        const ssize_t count = ReadBytes(&byte, 1);
        if (count < 0) {
            return false;
        }
        isAtEnd_ = count == 0;
        text_.append(static_cast<std::size_t>(count), byte);
        if (!text_.empty() && text_[0] != kLittleMark[0] && text_[0] != kBigMark[0]) {
            break;
        }
    }
    encoding_ = text_ == kLittleMark ? Encoding::Utf16Little
                : text_ == kBigMark  ? Encoding::Utf16Big
                                     : Encoding::Bytes;
    if (encoding_ != Encoding::Bytes) {
        text_.clear();
    }
    return true;
}

ssize_t TextInput::Read(char* out, std::size_t size) {
    if (encoding_ == Encoding::Unknown && !FindEncoding()) {
        return -1;
    }
    if (encoding_ == Encoding::Bytes && text_.empty()) {
        return isAtEnd_ ? 0 : ReadBytes(out, size);
    }
    while (text_.empty() && !isAtEnd_) {
        std::array<char, kPiece> piece{};
        const ssize_t count = ReadBytes(piece.data(), piece.size());
        if (count < 0) {
            return -1;
        }
        isAtEnd_ = count == 0;
        raw_.append(piece.data(), static_cast<std::size_t>(count));
        Transcode();
    }
    return Give(out, size);
}

ssize_t TextInput::Give(char* out, std::size_t size) {
    const std::size_t given = std::min(size, text_.size());
    std::copy_n(text_.begin(), given, out);
    text_.erase(0, given);
    return static_cast<ssize_t>(given);
}

/// Turns what was read. Half a character waits for the rest, at the end it becomes a replacement.
void TextInput::Transcode() {
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(raw_[at]);
        const auto second = static_cast<unsigned char>(raw_[at + 1]);
        return static_cast<char32_t>(encoding_ == Encoding::Utf16Big ? first << 8 | second
                                                                     : second << 8 | first);
    };
    std::size_t at = 0;
    while (at < raw_.size()) {
        const std::size_t left = raw_.size() - at;
        const char32_t unit = left < 2 ? kReplacementCharacter : unitAt(at);
        const bool isHigh = unit >= kHigh && unit < kLow;
        if (!isAtEnd_ && left < (isHigh ? 4U : 2U)) {
            break;
        }
        at += std::min<std::size_t>(left, 2);
        const char32_t next = isHigh && left >= 4 ? unitAt(at) : 0;
        if (next >= kLow && next < kEndOfLow) {
            constexpr char32_t kBeyond = 0x10000;
            AppendUtf8(text_, kBeyond + ((unit - kHigh) << 10 | (next - kLow)));
            at += 2;
        } else {
            AppendUtf8(text_, unit >= kHigh && unit < kEndOfLow ? kReplacementCharacter : unit);
        }
    }
    raw_.erase(0, at);
}

}  // namespace tarvex
