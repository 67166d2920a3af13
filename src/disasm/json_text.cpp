#include "disasm/json_text.h"

#include <algorithm>

#include "import/text/utf8.h"

namespace tarvex {
namespace {

/// The character stands for itself, with no need to look at its neighbours.
constexpr bool IsPlain(char c) {
    return c >= ' ' && c != '"' && c != '\\';
}

/// Appends a quote, a backslash or a control character.
void AppendEscaped(std::string& out, char c) {
    constexpr std::string_view kShort = "\"\"\\\\\bb\ff\nn\rr\tt";
    for (std::size_t i = 0; i < kShort.size(); i += 2) {
        if (kShort[i] == c) {
            (out += '\\') += kShort[i + 1];
            return;
        }
    }
    constexpr char kDigits[] = "0123456789abcdef";
    out += "\\u00";
    out += kDigits[static_cast<unsigned char>(c) >> 4];
    out += kDigits[static_cast<unsigned char>(c) & 0xF];
}

}  // namespace

void AppendJsonText(std::string& out, std::string_view text) {
    out += '"';
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(), IsPlain);
        const auto plain = static_cast<std::size_t>(end - text.begin());
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        if (static_cast<unsigned char>(text.front()) < 0x80) {
            AppendEscaped(out, text.front());
            text.remove_prefix(1);
        } else {
            AppendUtf8(out, TakeCharacter(text).value_or(kReplacementCharacter));
        }
    }
    out += '"';
}

void QuoteJsonText(std::string& out, std::size_t begin) {
    const std::string_view text = std::string_view(out).substr(begin);
    if (std::all_of(text.begin(), text.end(), IsPlain)) {
        out.insert(begin, 1, '"');
        out += '"';
        return;
    }
    const std::string raw(text);
    out.resize(begin);
    AppendJsonText(out, raw);
}

}  // namespace tarvex
