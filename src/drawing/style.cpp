#include "drawing/style.h"

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
        case Colour::Error:
            return "1;31";
        case Colour::Warning:
            return "1;33";
    }
    return "0";
}

}  // namespace

Style Style::OfStandardOutput(Colouring colouring) {
    if (colouring != Colouring::Auto) {
        return Style(colouring == Colouring::Always);
    }
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

}  // namespace vorn
