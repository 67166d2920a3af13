#include "import/text/utf8.h"

namespace tarvex {
namespace {

/// What a leading byte says: how long its character is, its bits, and the least character of that length.
struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t least;
};

constexpr Lead LeadOf(unsigned char byte) {
    if (byte >= 0xF0 && byte < 0xF8) {
        return {4, byte & 0x07U, 0x10000};
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        return {3, byte & 0x0FU, 0x800};
    }
    if (byte >= 0xC0 && byte < 0xE0) {
        return {2, byte & 0x1FU, 0x80};
    }
    return {1, byte, 0};
}

constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

constexpr bool IsScalar(char32_t character) {
    return character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
}

}  // namespace

void TakeByteOrderMark(std::string_view& text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.starts_with(kMark)) {
        text.remove_prefix(kMark.size());
    }
}

std::optional<char32_t> TakeCharacter(std::string_view& text) {
    const std::string_view before = text;
    text.remove_prefix(1);
    const auto first = static_cast<unsigned char>(before.front());
    const auto [length, bits, least] = LeadOf(first);
    if (length == 1) {
        return first < 0x80 ? std::optional(bits) : std::nullopt;
    }
    if (length > before.size()) {
        return std::nullopt;
    }
    char32_t character = bits;
    for (const char byte : before.substr(1, length - 1)) {
        if (!IsContinuation(byte)) {
            return std::nullopt;
        }
        character = character << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    if (character < least || !IsScalar(character)) {
        return std::nullopt;
    }
    text = before.substr(length);
    return character;
}

void AppendUtf8(std::string& out, char32_t character) {
    const auto append = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0U | character >> 6);
        append(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        append(0xE0U | character >> 12);
        append(0x80U | (character >> 6 & 0x3FU));
        append(0x80U | (character & 0x3FU));
    } else {
        append(0xF0U | character >> 18);
        append(0x80U | (character >> 12 & 0x3FU));
        append(0x80U | (character >> 6 & 0x3FU));
        append(0x80U | (character & 0x3FU));
    }
}

std::string_view CutAtCharacter(std::string_view text, std::size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return text;
    }
    constexpr std::size_t kLongest = 4;
    // The character that goes over the cut begins at most three bytes before it.
    for (std::size_t back = 1; back < kLongest && back <= maxBytes; ++back) {
        std::string_view rest = text.substr(maxBytes - back);
        const std::size_t size = rest.size();
        if (TakeCharacter(rest) && size - rest.size() > back) {
            return text.substr(0, maxBytes - back);
        }
    }
    return text.substr(0, maxBytes);
}

}  // namespace tarvex
