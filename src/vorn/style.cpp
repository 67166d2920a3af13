#include "vorn/style.h"

#include <algorithm>
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
    const char* no_colour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool is_refused = (no_colour != nullptr && *no_colour != '\0') ||
                            (terminal != nullptr && std::string_view(terminal) == "dumb");
    return Style(!is_refused && isatty(STDOUT_FILENO) == 1);
}

std::string Style::operator()(Colour colour, std::string_view text) const {
    if (!is_coloured_) return std::string(text);
    return std::string("\x1B[").append(CodeOf(colour)).append("m").append(text).append("\x1B[0m");
}

std::string Shown(std::string_view text) {
    std::string shown(text);
    std::ranges::replace_if(
        shown, [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, '.');
    return shown;
}

}  // namespace vorn
