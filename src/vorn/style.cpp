#include "vorn/style.h"

#include <cstdlib>
#include <unistd.h>

namespace vorn {
namespace {

std::string_view CodeOf(Colour colour) {
    switch (colour) {
        case Colour::Added:
            return "32";
        case Colour::Removed:
            return "31";
        case Colour::Changed:
            return "33";
        case Colour::Heading:
            return "1";
        case Colour::Faint:
            return "2";
    }
    return "0";
}

}  // namespace

Style Style::OfStandardOutput() {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool isRefused = (noColour != nullptr && *noColour != '\0') ||
                           (terminal != nullptr && std::string_view(terminal) == "dumb");
    return Style(!isRefused && isatty(STDOUT_FILENO) == 1);
}

std::string Style::operator()(Colour colour, std::string_view text) const {
    if (!isColoured_) {
        return std::string(text);
    }
    return std::string("\x1B[").append(CodeOf(colour)).append("m").append(text).append("\x1B[0m");
}

namespace {

/// The last two bytes of U+200E, U+200F, U+202A to U+202E and U+2066 to U+2069, which turn text around.
bool IsDirectionMark(unsigned second, unsigned third) {
    if (second == 0x80) {
        return third == 0x8E || third == 0x8F || (third >= 0xAA && third <= 0xAE);
    }
    return second == 0x81 && third >= 0xA6 && third <= 0xA9;
}

}  // namespace

std::string Shown(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
        const auto third = i + 2 < text.size() ? static_cast<unsigned char>(text[i + 2]) : 0U;
        if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // U+0080 to U+009F
            shown += '.';
            ++i;
        } else if (byte == 0xE2 && IsDirectionMark(next, third)) {
            shown += '.';
            i += 2;
        } else {
            shown += byte < ' ' || byte == 0x7F ? '.' : text[i];
        }
    }
    return shown;
}

}  // namespace vorn
