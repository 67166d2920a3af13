#include "review/diff_report.h"

namespace tarvex::review {
namespace {

/// What a change tells about a side that has nothing.
std::string SideText(const Change& change, const std::string& side) {
    if (side.empty()) {
        return "none";
    }
    return change.aspect == Aspect::Description ? '"' + side + '"' : side;
}

vorn::Colour ColourOf(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Added:
            return vorn::Colour::Added;
        case ChangeKind::Removed:
            return vorn::Colour::Removed;
        case ChangeKind::Renamed:
        case ChangeKind::Moved:
        case ChangeKind::Changed:
            break;
    }
    return vorn::Colour::Changed;
}

std::string Line(const Change& change, const vorn::Style& style) {
    const Sides sides = CutSides(change.before, change.after, kMaxShownText);
    std::string place = BlockText(change.block);
    if (change.function) {
        place += " " + FunctionText(*change.function);
    }
    std::string line =
        style(vorn::Colour::Heading, place + ":") + " " + style(ColourOf(change.kind), SubjectText(change));
    if (change.aspect != Aspect::Existence) {
        line += " " + SideText(change, sides.before) + " -> " + SideText(change, sides.after);
    } else if (const std::string whole = sides.before + sides.after; !whole.empty()) {
        line += ": " + whole;
    }
    if (!change.operations.empty()) {
        line += " [" + OperationsText(change) + "]";
    }
    if (change.effect != Effect::None) {
        const std::string effect = std::string("(").append(EffectName(change.effect)) + ")";
        line += " " + (change.effect == Effect::Bytes ? style(vorn::Colour::Warning, effect) : effect);
    }
    if (const std::string remark = RemarkText(change); !remark.empty()) {
        line += ", " + remark;
    }
    return line + "\n";
}

}  // namespace

void PrintDiffText(const DiffReport& report, const vorn::Style& style, const Print& print) {
    for (const Change& change : report.changes) {
        print(Line(change, style));
    }
    print(style(vorn::Colour::Faint, SummaryText(report.changes)) + "\n");
}

}  // namespace tarvex::review
