#include "import/text/shown_text.h"

#include "import/text/utf8.h"

namespace tarvex {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};
constexpr Range kHidden[] = {
    {0x00, 0x1F},                        // control characters ...
    {0x7F, 0x9F},                        // ... and those that some terminals obey as well
    {0x061C, 0x061C},                    // marks of direction ...
    {0x200E, 0x200F}, {0x202A, 0x202E},  // ... their embeddings ...
    {0x2066, 0x2069},                    // ... and their isolates
};

bool IsHidden(char32_t character) {
    for (const auto& [first, last] : kHidden) {
        if (first <= character && character <= last) {
            return true;
        }
    }
    return false;
}

/// The text with "." in place of what is hidden; `isHidden` gets nothing for a byte that is no UTF-8.
template <class Predicate>
std::string WithDots(std::string_view text, const Predicate& isHidden) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::string_view before = text;
        if (isHidden(TakeCharacter(text))) {
            shown += '.';
        } else {
            shown += before.substr(0, before.size() - text.size());
        }
    }
    return shown;
}

/// Only characters that need no second look. Nearly every text is plain, and there are millions: so without a
/// branch for each letter.
template <class Predicate>
bool IsPlain(std::string_view text, const Predicate& isAllowed) {
    bool isPlain = true;
    for (const char c : text) {
        isPlain &= (c >= ' ' && c <= '~') || isAllowed(c);
    }
    return isPlain;
}

bool IsLayout(char32_t character) {
    return character == '\t' || character == '\n';
}

}  // namespace

std::string Shown(std::string_view text) {
    if (IsPlain(text, [](char /*c*/) { return false; })) {
        return std::string(text);
    }
    return WithDots(text, [](auto character) { return !character || IsHidden(*character); });
}

void HideControls(std::string& text) {
    if (!IsPlain(text, [](char c) { return c == '\t' || c == '\n'; })) {
        text = WithDots(
            text, [](auto character) { return character && !IsLayout(*character) && IsHidden(*character); });
    }
}

}  // namespace tarvex
