#include "review/diff_change.h"

#include <algorithm>

#include "import/text/shown_text.h"
#include "import/text/utf8.h"

namespace tarvex::review {
namespace {

/// Where to begin so that the first difference is seen: at the beginning of a character, some in front of it.
std::size_t BeginOfCut(std::string_view before, std::string_view after, std::size_t maxBytes) {
    constexpr std::size_t kInFront = 40;
    const auto [end, other] = std::ranges::mismatch(before, after);
    const auto common = static_cast<std::size_t>(end - before.begin());
    if (common + kInFront < maxBytes) {
        return 0;
    }
    std::size_t begin = common - std::min(common, kInFront);
    const auto isInside = [&] { return (static_cast<unsigned char>(before[begin]) & 0xC0U) == 0x80; };
    while (begin > 0 && begin < before.size() && isInside()) {
        --begin;
    }
    return begin;
}

std::string Cut(std::string_view text, std::size_t begin, std::size_t maxBytes) {
    const std::string_view kept = CutAtCharacter(text.substr(begin), maxBytes);
    return std::string(begin == 0 ? "" : "...").append(kept) +
           (begin + kept.size() < text.size() ? "..." : "");
}

}  // namespace

std::string ShownText(std::string_view text) {
    return text.size() <= kMaxShownText ? Shown(text) : Shown(CutAtCharacter(text, kMaxShownText)) + "...";
}

Sides CutSides(std::string_view before, std::string_view after, std::size_t maxBytes) {
    if (before.size() <= maxBytes && after.size() <= maxBytes) {
        return {std::string(before), std::string(after)};
    }
    const std::size_t begin = BeginOfCut(before, after, maxBytes);
    return {Cut(before, begin, maxBytes), Cut(after, begin, maxBytes)};
}

void SetSides(Change& change, std::string_view before, std::string_view after) {
    const Sides sides = CutSides(before, after, kMaxKeptText);
    change.before = Shown(sides.before);
    change.after = Shown(sides.after);
}

std::string_view KindName(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Added:
            return "added";
        case ChangeKind::Removed:
            return "removed";
        case ChangeKind::Renamed:
            return "renamed";
        case ChangeKind::Moved:
            return "moved";
        case ChangeKind::Changed:
            break;
    }
    return "changed";
}

std::string_view ObjectName(Object object) {
    switch (object) {
        case Object::Block:
            return "block";
        case Object::Function:
            return "function";
        case Object::Operation:
            return "operation";
        case Object::Parameter:
            return "parameter";
        case Object::Value:
            return "value";
        case Object::Bit:
            return "bit";
        case Object::Case:
            break;
    }
    return "case";
}

std::string_view AspectName(Aspect aspect) {
    switch (aspect) {
        case Aspect::Existence:
            return "existence";
        case Aspect::Name:
            return "name";
        case Aspect::Number:
            return "number";
        case Aspect::Position:
            return "position";
        case Aspect::Class:
            return "class";
        case Aspect::Type:
            return "type";
        case Aspect::Layout:
            return "layout";
        case Aspect::Length:
            return "length";
        case Aspect::Limit:
            return "limit";
        case Aspect::Range:
            return "range";
        case Aspect::Step:
            return "step";
        case Aspect::Exponent:
            return "exponent";
        case Aspect::Unit:
            return "unit";
        case Aspect::Texts:
            return "texts";
        case Aspect::MediaType:
            return "media type";
        case Aspect::Selector:
            return "selector";
        case Aspect::Repetition:
            return "repetition";
        case Aspect::Description:
            break;
    }
    return "description";
}

std::string_view EffectName(Effect effect) {
    switch (effect) {
        case Effect::None:
            return "none";
        case Effect::Meaning:
            return "meaning";
        case Effect::Bytes:
            break;
    }
    return "bytes";
}

}  // namespace tarvex::review
