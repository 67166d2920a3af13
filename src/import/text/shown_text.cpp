#include "import/text/shown_text.h"

#include "import/text/utf8.h"

namespace tarvex {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};
constexpr Range kHidden[] = {
    {0x00, 0x1F},      // control characters ...
    {0x7F, 0x9F},      // ... and those that some terminals obey as well
    {0x200E, 0x200F},  // marks of direction ...
    {0x202A, 0x202E},  // ... their embeddings ...
    {0x2066, 0x2069},  // ... and their isolates
};

bool IsHidden(char32_t character) {
    for (const auto& [first, last] : kHidden) {
        if (first <= character && character <= last) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string Shown(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::string_view before = text;
        const auto character = TakeCharacter(text);
        if (!character || IsHidden(*character)) {
            shown += '.';
        } else {
            shown += before.substr(0, before.size() - text.size());
        }
    }
    return shown;
}

}  // namespace tarvex
