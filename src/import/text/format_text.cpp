#include "import/text/format_text.h"

#include <algorithm>
#include <optional>

namespace tarvex {
namespace {

constexpr int kMaxWidth = 255;

/// One conversion of a printf format, as far as it matters without arguments.
struct Conversion {
    std::string flags;
    int width = 0;
    std::optional<int> precision;
    char letter = 0;
    std::size_t length = 0;  // of the whole conversion in the text, the "%" included
};

int ReadNumber(std::string_view text, std::size_t& at) {
    if (at < text.size() && text[at] == '*') {
        ++at;
        return 0;
    }
    int value = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        value = std::min(value * 10 + (text[at] - '0'), kMaxWidth);
    }
    return value;
}

void SkipLengthModifier(std::string_view text, std::size_t& at) {
    for (const std::string_view modifier : {"hh", "ll", "h", "l", "q", "j", "z", "t", "L"}) {
        if (text.substr(at).starts_with(modifier)) {
            at += modifier.size();
            return;
        }
    }
}

/// Reads the conversion at the start of the text, which begins with "%"; none when it is malformed.
std::optional<Conversion> ReadConversion(std::string_view text) {
    Conversion conversion;
    std::size_t at = 1;
    for (; at < text.size() && std::string_view("-+ #0").find(text[at]) != std::string_view::npos; ++at) {
        if (conversion.flags.find(text[at]) == std::string::npos) {
            conversion.flags += text[at];
        }
    }
    conversion.width = ReadNumber(text, at);
    if (at < text.size() && text[at] == '.') {
        ++at;
        conversion.precision = ReadNumber(text, at);
    }
    SkipLengthModifier(text, at);
    if (at >= text.size() ||
        std::string_view("diouxXeEfFgGaAcsCSpn").find(text[at]) == std::string_view::npos) {
        return std::nullopt;
    }
    conversion.letter = text[at];
    conversion.length = at + 1;
    return conversion;
}

std::string Render(const Conversion& conversion) {
    std::string format = "%";
    format += conversion.flags;
    if (conversion.width > 0) {
        format += std::to_string(conversion.width);
    }
    if (conversion.precision) {
        format += '.';
        format += std::to_string(*conversion.precision);
    }
    switch (conversion.letter) {
        case 'n':
            return {};
        case 'c':
        case 's':
        case 'C':
        case 'S':
            return FormatText((format + 's').c_str(), "");
        case 'p':
            return FormatText((format + "s").c_str(), "(nil)");
        case 'd':
        case 'i':
        case 'o':
        case 'u':
        case 'x':
        case 'X':
            return FormatText((format + conversion.letter).c_str(), 0);
        default:
            return FormatText((format + conversion.letter).c_str(), 0.0);
    }
}

}  // namespace

std::string RenderAsFormat(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t percent = text.find('%');
        result += text.substr(0, percent);
        if (percent == std::string_view::npos) {
            break;
        }
        text.remove_prefix(percent);
        if (text.starts_with("%%")) {
            result += '%';
            text.remove_prefix(2);
        } else if (const std::optional<Conversion> conversion = ReadConversion(text)) {
            result += Render(*conversion);
            text.remove_prefix(conversion->length);
        } else {
            result += '%';
            text.remove_prefix(1);
        }
    }
    return result;
}

}  // namespace tarvex
