#include "kestrel/excerpt.h"

namespace kestrel {

std::string Excerpt(std::string_view text) {
    constexpr std::size_t kMaxBytes = 200;
    if (text.size() <= kMaxBytes) {
        return std::string(text);
    }
    // Bytes 10xxxxxx stand within a character, of which there are at most three in a row.
    const auto isWithin = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; };
    std::size_t end = kMaxBytes;
    while (end > kMaxBytes - 3 && isWithin(text[end])) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

}  // namespace kestrel
