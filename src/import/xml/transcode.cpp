#include "import/xml/transcode.h"

#include <algorithm>

#include "import/text/utf8.h"

namespace tarvex {

std::string Transcode(const XMLCh* text) {
    std::string result;
    if (text != nullptr) {
        AppendTranscoded(text, result);
    }
    return result;
}

void AppendTranscoded(std::basic_string_view<XMLCh> text, std::string& out) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
        if (unit < 0x80) {
            out += static_cast<char>(unit);
        } else if (unit < 0xD800 || unit > 0xDFFF) {
            AppendUtf8(out, unit);
        } else if (unit < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF) {
            AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++i;
        } else {
            AppendUtf8(out, kReplacementCharacter);
        }
    }
}

DomText ToDomText(std::string_view text) {
    DomText result;
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text).value_or(kReplacementCharacter);
        if (character < 0x10000) {
            result += static_cast<XMLCh>(character);
        } else {
            result += static_cast<XMLCh>(0xD800 + ((character - 0x10000) >> 10));
            result += static_cast<XMLCh>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return result;
}

bool IsWhiteSpace(std::basic_string_view<XMLCh> text) {
    return std::ranges::all_of(text, [](XMLCh c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

}  // namespace tarvex
