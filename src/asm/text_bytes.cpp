#include <algorithm>

#include "asm/scalars.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

constexpr std::string_view kNotTerminated = " {NotTerm}";

constexpr char32_t kBeyond = 0x10000;

/// The place of a character in ISO 8859-15; nothing when it has none.
std::optional<std::uint8_t> Latin9Of(char32_t character) {
    for (unsigned byte = 0xA0; byte <= 0xFF; ++byte) {
        if (Latin9Character(static_cast<std::uint8_t>(byte)) == character) {
            return static_cast<std::uint8_t>(byte);
        }
    }
    constexpr char32_t kEndOfAscii = 0xA0;
    return character < kEndOfAscii ? std::optional(static_cast<std::uint8_t>(character)) : std::nullopt;
}

void AppendUnit(AsmBytes& out, char32_t unit) {
    out.push_back(static_cast<std::uint8_t>(unit >> 8));
    out.push_back(static_cast<std::uint8_t>(unit & 0xFF));
}

/// Appends one character; false when the encoding has none of it.
bool AppendCharacter(AsmBytes& out, char32_t character, StringEncoding encoding) {
    if (character == 0) {
        return false;
    }
    if (encoding == kUtf16) {
        constexpr char32_t kHigh = 0xD800;
        constexpr char32_t kLow = 0xDC00;
        if (character >= kBeyond) {
            AppendUnit(out, kHigh + ((character - kBeyond) >> 10));
            AppendUnit(out, kLow + ((character - kBeyond) & 0x3FF));
        } else {
            AppendUnit(out, character);
        }
        return true;
    }
    if (encoding == kUtf8) {
        std::string bytes;
        AppendUtf8(bytes, character);
        out.insert(out.end(), bytes.begin(), bytes.end());
        return true;
    }
    const auto byte = Latin9Of(character);
    out.push_back(byte.value_or(0));
    return byte.has_value();
}

/// The characters of a text; nothing for one that is no UTF-8 or has a zero in it.
std::optional<AsmBytes> Encoded(std::string_view text, StringEncoding encoding) {
    AsmBytes out;
    while (!text.empty()) {
        const auto character = TakeCharacter(text);
        if (!character || !AppendCharacter(out, *character, encoding)) {
            return std::nullopt;
        }
    }
    return out;
}

}  // namespace

std::size_t CountCharacters(std::string_view text) {
    constexpr unsigned kKind = 0xC0;
    constexpr unsigned kGoesOn = 0x80;
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & kKind) != kGoesOn; }));
}

AsmResult EncodeString(const ZMTParamString& string, const AsmValue& value, AsmBytes& out) {
    std::string_view text = value.text;
    const bool isOpen = value.form == AsmValue::Form::Item && text.ends_with(kNotTerminated);
    text.remove_suffix(isOpen ? kNotTerminated.size() : 0);
    StringEncoding encoding = value.encoding.value_or(kLatin9);
    auto characters = Encoded(text, encoding);
    if (!characters && !value.encoding) {
        encoding = kUtf16;
        characters = Encoded(text, encoding);
    }
    if (!characters) {
        return {"the text has characters that its encoding has not, expected utf16:\"...\" or utf8:\"...\"",
                value.place};
    }
    const std::size_t width = encoding == kUtf16 ? 2 : 1;
    const std::size_t count = characters->size() / width;
    if (count > string.MaxSize()) {
        const std::string expected =
            encoding == kUtf8 ? " bytes in UTF-8, expected at most " + std::to_string(string.MaxSize())
                              : " characters, expected " + ExpectedOf(string);
        return {"the text has " + std::to_string(count) + expected, value.place};
    }
    out.push_back(encoding);
    out.insert(out.end(), characters->begin(), characters->end());
    out.resize(out.size() + (isOpen ? 0 : width));
    return {};
}

}  // namespace tarvex
