#include <string_view>

#include "import/text/shown_text.h"
#include "review/diff_report.h"

namespace tarvex::review {
namespace {

/// A text in a table: what would be markup is not.
std::string TableText(std::string_view text) {
    constexpr std::string_view kMarkup = "\\|`*_<[]#~&";
    std::string escaped;
    for (const char character : text) {
        escaped.append(kMarkup.find(character) == std::string_view::npos ? "" : "\\").push_back(character);
    }
    return escaped;
}

void AppendCell(std::string& row, std::string_view text) {
    row.append(text.empty() ? " " : " " + TableText(text) + " ").append("|");
}

std::string Row(const Change& change) {
    std::string row = "|";
    AppendCell(row, change.function ? FunctionText(*change.function) : std::string());
    const std::string remark = RemarkText(change);
    AppendCell(row, SubjectText(change) + (remark.empty() ? "" : ", " + remark));
    const Sides sides = CutSides(change.before, change.after, kMaxShownText);
    AppendCell(row, sides.before);
    AppendCell(row, sides.after);
    AppendCell(row, OperationsText(change));
    AppendCell(row, change.effect == Effect::None ? "" : EffectName(change.effect));
    return row + "\n";
}

}  // namespace

void PrintDiffMarkdown(const DiffReport& report, const Print& print) {
    print("# " + TableText(Shown(report.before)) + " -> " + TableText(Shown(report.after)) + "\n\n" +
          SummaryText(report.changes) + "\n");
    const Place* block = nullptr;
    for (const Change& change : report.changes) {
        if (block == nullptr || block->number != change.block.number || block->name != change.block.name) {
            print("\n## " + TableText(BlockText(change.block)) +
                  "\n\n| Function | Change | Before | After | Operations | On the bus |\n"
                  "|---|---|---|---|---|---|\n");
        }
        block = &change.block;
        print(Row(change));
    }
}

}  // namespace tarvex::review
