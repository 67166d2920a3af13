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

std::string Line(const Change& change) {
    std::string line = BlockText(change.block);
    if (change.function) {
        line += " " + FunctionText(*change.function);
    }
    line += ": " + SubjectText(change);
    if (change.aspect != Aspect::Existence) {
        line += " " + SideText(change, change.before) + " -> " + SideText(change, change.after);
    } else if (const std::string whole = change.before + change.after; !whole.empty()) {
        line += ": " + whole;
    }
    if (!change.operations.empty()) {
        line += " [" + OperationsText(change) + "]";
    }
    if (change.effect != Effect::None) {
        line.append(" (").append(EffectName(change.effect)).append(")");
    }
    if (const std::string remark = RemarkText(change); !remark.empty()) {
        line += ", " + remark;
    }
    return line + "\n";
}

}  // namespace

void PrintDiffText(const DiffReport& report, const Print& print) {
    for (const Change& change : report.changes) {
        print(Line(change));
    }
    print(SummaryText(report.changes) + "\n");
}

}  // namespace tarvex::review
