#include "review/diff_change.h"

#include "import/text/shown_text.h"
#include "import/text/utf8.h"

namespace tarvex::review {

std::string ShownText(std::string_view text) {
    return text.size() <= kMaxShownText ? Shown(text) : Shown(CutAtCharacter(text, kMaxShownText)) + "...";
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
