#include "disasm/string_item.h"

#include <algorithm>

#include "disasm/item_list.h"
#include "import/text/shown_text.h"
#include "import/text/utf8.h"
#include "import/text/wording.h"

namespace tarvex {
char32_t Latin9Character(std::uint8_t byte) {
    switch (byte) {
        case 0xA4:
            return 0x20AC;
        case 0xA6:
            return 0x0160;
        case 0xA8:
            return 0x0161;
        case 0xB4:
            return 0x017D;
        case 0xB8:
            return 0x017E;
        case 0xBC:
            return 0x0152;
        case 0xBD:
            return 0x0153;
        case 0xBE:
            return 0x0178;
        default:
            return byte;
    }
}

namespace {

constexpr bool IsAscii(std::uint8_t byte) {
    return byte >= ' ' && byte <= '~';
}

/// What a string's bytes come to.
struct Extent {
    std::span<const std::uint8_t> characters;
    bool isTerminated = false;
    std::size_t size = 0;  // in bytes, with the first byte and the zero character
};

constexpr std::size_t WidthOf(std::uint8_t encoding) {
    return encoding == kUtf16 ? 2 : 1;
}

/// Reads at most `maxSize` characters, and the zero one behind them.
Extent ReadCharacters(std::span<const std::uint8_t> bytes, std::uint32_t maxSize) {
    Extent read;
    if (bytes.empty()) {
        return read;
    }
    const std::size_t width = WidthOf(bytes[0]);
    std::size_t count = 0;
    for (read.size = 1; bytes.size() - read.size >= width; read.size += width) {
        if (bytes[read.size] == 0 && bytes[read.size + width - 1] == 0) {
            read.size += width;
            read.isTerminated = true;
            break;
        }
        if (count == maxSize) {
            break;
        }
        ++count;
    }
    read.characters = bytes.subspan(1, count * width);
    return read;
}

/// Characters of two bytes, two of which may stand for one beyond U+FFFF.
void AppendUtf16(std::string& out, std::span<const std::uint8_t> bytes) {
    const auto unitAt = [&](std::size_t at) {
        return at + 1 < bytes.size() ? static_cast<char32_t>(bytes[at] << 8 | bytes[at + 1]) : 0;
    };
    constexpr char32_t kHigh = 0xD800;
    constexpr char32_t kLow = 0xDC00;
    constexpr char32_t kEnd = 0xE000;
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const char32_t unit = unitAt(at);
        if (unit < kHigh || unit >= kEnd) {
            AppendUtf8(out, unit);
            continue;
        }
        const char32_t next = unitAt(at + 2);
        if (unit >= kLow || next < kLow || next >= kEnd) {
            out += '.';
            continue;
        }
        constexpr char32_t kBeyond = 0x10000;
        AppendUtf8(out, kBeyond + ((unit - kHigh) << 10 | (next - kLow)));
        at += 2;
    }
}

/// The characters in UTF-8, whatever they are.
void AppendCharacters(std::string& out, std::uint8_t encoding, std::span<const std::uint8_t> bytes) {
    switch (encoding) {
        case kUtf16:
            AppendUtf16(out, bytes);
            break;
        case kLatin9:
            for (const std::uint8_t byte : bytes) {
                AppendUtf8(out, Latin9Character(byte));
            }
            break;
        case kUtf8:
            out.append(bytes.begin(), bytes.end());
            break;
        default:
            for (const std::uint8_t byte : bytes) {
                out += Printable(byte);
            }
            break;
    }
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamString& string, Bytes message) {
    const auto rest = message.subspan(std::min(Offset(), message.size()));
    // Even an empty string has its first byte.
    const std::size_t size = std::max<std::size_t>(ReadCharacters(rest, string.MaxSize()).size, 1);
    return TakeItem<ZMostParameterString>(*this, string, static_cast<std::int64_t>(size), message);
}

void ZMostParameterString::AppendText(std::string& out) const {
    const Extent read = ReadCharacters(Bytes(), string_.MaxSize());
    if (std::ranges::all_of(read.characters, IsAscii) && WidthOf(Bytes()[0]) == 1) {
        out.append(read.characters.begin(), read.characters.end());
    } else {
        std::string characters;
        AppendCharacters(characters, Bytes()[0], read.characters);
        out += Shown(characters);
    }
    out += read.isTerminated ? "" : " {NotTerm}";
}

}  // namespace tarvex
