#include <algorithm>

#include "import/text/format_text.h"
#include "review/counted.h"
#include "review/diff_report.h"

namespace tarvex::review {
namespace {

bool HasItsOwnName(Object object) {
    return object != Object::Parameter;
}

void Append(std::string& text, std::string_view word) {
    text.append(text.empty() || word.empty() ? "" : " ").append(word);
}

}  // namespace

std::string BlockText(const Place& block) {
    return block.name + FormatText(" (%02X)", block.number);
}

std::string FunctionText(const Place& function) {
    return function.name + FormatText(" (%03X)", function.number);
}

std::string SubjectText(const Change& change) {
    std::string text = change.path;
    if (HasItsOwnName(change.object)) {
        Append(text, ObjectName(change.object));
    }
    const bool isQuoted = change.object == Object::Parameter && !change.item.empty();
    Append(text, isQuoted ? '"' + change.item + '"' : change.item);
    Append(text, change.kind == ChangeKind::Changed ? AspectName(change.aspect) : KindName(change.kind));
    return text;
}

std::string OperationsText(const Change& change) {
    std::string text;
    for (const std::string_view operation : change.operations) {
        text.append(text.empty() ? "" : ", ").append(operation);
    }
    return text;
}

std::string RemarkText(const Change& change) {
    std::string text;
    if (change.lostBy != 0) {
        text = std::string("could not be read in the ") + (change.kind == ChangeKind::Added ? "old" : "new") +
               " catalog: message " + std::to_string(change.lostBy);
    }
    if (change.alsoIn > 0) {
        text += (text.empty() ? "" : ", ") + ("and in " + Counted(change.alsoIn, "more function"));
    }
    return text;
}

std::string SummaryText(const std::vector<Change>& changes) {
    if (changes.empty()) {
        return "no changes";
    }
    std::string text = Counted(changes.size(), "change");
    const char* separator = ": ";
    for (const ChangeKind kind : {ChangeKind::Added, ChangeKind::Removed, ChangeKind::Renamed,
                                  ChangeKind::Moved, ChangeKind::Changed}) {
        if (const auto count = std::ranges::count(changes, kind, &Change::kind); count > 0) {
            text.append(separator).append(std::to_string(count)).append(" ").append(KindName(kind));
            separator = ", ";
        }
    }
    const auto bytes = std::ranges::count(changes, Effect::Bytes, &Change::effect);
    return text + "; bytes on the bus: " + std::to_string(bytes);
}

}  // namespace tarvex::review
