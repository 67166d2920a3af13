#include "disasm/string_item.h"

#include <algorithm>

#include "disasm/item_list.h"
#include "disasm/wording.h"

namespace tarvex {
namespace {

/// The first byte of a string whose characters have two bytes.
constexpr std::uint8_t kTwoByteCharacters = 0;

/// What a string's bytes come to.
struct Characters {
    std::string text;
    bool isTerminated = false;
    std::size_t size = 0;  // in bytes, with the first byte and the zero character
};

/// Reads at most `maxSize` characters, and the zero one behind them.
Characters ReadCharacters(std::span<const std::uint8_t> bytes, std::uint32_t maxSize) {
    Characters read;
    if (bytes.empty()) {
        return read;
    }
    const std::size_t width = bytes[0] == kTwoByteCharacters ? 2 : 1;
    read.size = 1;
    while (bytes.size() - read.size >= width) {
        const unsigned character = width == 2
                                       ? static_cast<unsigned>(bytes[read.size] << 8 | bytes[read.size + 1])
                                       : bytes[read.size];
        if (character == 0) {
            read.size += width;
            read.isTerminated = true;
            break;
        }
        if (read.text.size() == maxSize) {
            break;
        }
        read.size += width;
        read.text += Printable(character);
    }
    return read;
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamString& string, Bytes message) {
    const auto rest = message.subspan(std::min(Offset(), message.size()));
    // Even an empty string has its first byte.
    const std::size_t size = std::max<std::size_t>(ReadCharacters(rest, string.MaxSize()).size, 1);
    return TakeItem<ZMostParameterString>(*this, string, static_cast<std::int64_t>(size), message);
}

std::string ZMostParameterString::GetText() const {
    Characters read = ReadCharacters(Bytes(), string_.MaxSize());
    return read.isTerminated ? read.text : read.text + " {NotTerm}";
}

}  // namespace tarvex
