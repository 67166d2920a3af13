#include "vorn/compare_report.h"

#include <string_view>

#include "import/text/shown_text.h"
#include "kestrel/json_text.h"
#include "vorn/change_counts.h"
#include "vorn/describe.h"

namespace vorn {
namespace {

using tarvex::Shown;

std::string NumberText(double number) {
    std::string text;
    kestrel::AppendShortNumber(text, number);
    return text;
}

/// A value in words; empty for none.
std::string TextOf(const FieldValue& value) {
    if (const bool* flag = std::get_if<bool>(&value)) {
        return *flag ? "yes" : "no";
    }
    if (const double* number = std::get_if<double>(&value)) {
        return NumberText(*number);
    }
    if (const Identifier* identifier = std::get_if<Identifier>(&value)) {
        return IdentifierText(identifier->number);
    }
    const std::string* text = std::get_if<std::string>(&value);
    return text == nullptr ? std::string() : Shown(*text);
}

/// What a record is called: "0x22400C extended Amp_Volume_Set".
std::string TitleOf(const Change& change) {
    if (!change.number) {
        return Shown(change.name);
    }
    return change.object == "message" ? IdentifierText(*change.number) + " " + Shown(change.name)
                                      : std::to_string(*change.number);
}

std::string Head(const Change& change, const Style& style) {
    const std::string text = std::string(change.object) + " " + TitleOf(change);
    switch (change.kind) {
        case ChangeKind::Added:
            return style(Colour::Added, "+ " + text);
        case ChangeKind::Removed:
            return style(Colour::Removed, "- " + text);
        case ChangeKind::Moved:
            return style(Colour::Changed, "> " + text);
        case ChangeKind::Changed:
            break;
    }
    return style(Colour::Changed, "~ " + text);
}

void AppendText(const std::vector<Change>& changes, const std::string& indent, const Style& style,
                std::string& out) {
    for (const Change& change : changes) {
        out += indent + Head(change, style) + "\n";
        for (const FieldChange& field : change.fields) {
            out += indent + "    " + Shown(field.field) + ": \"" + TextOf(field.before) + "\" -> \"" +
                   TextOf(field.after) + "\"\n";
        }
        AppendText(change.parts, indent + "  ", style, out);
    }
}

/// A text that Markdown shows as it is.
std::string Code(const std::string& text) {
    if (text.empty()) {
        return "(nothing)";
    }
    // Between more backquotes than it has in a row; a blank keeps those at its ends apart.
    std::string fence = "`";
    while (text.find(fence) != std::string::npos) {
        fence += "`";
    }
    const std::string blank = text.front() == '`' || text.back() == '`' ? " " : "";
    return fence + blank + text + blank + fence;
}

void AppendMarkdown(const std::vector<Change>& changes, const std::string& indent, std::string& out) {
    for (const Change& change : changes) {
        out += indent + "- " + std::string(change.object) + " " + Code(TitleOf(change)) + " **" +
               std::string(NameOf(change.kind)) + "**\n";
        for (const FieldChange& field : change.fields) {
            out += indent + "  - " + Code(Shown(field.field)) + ": " + Code(TextOf(field.before)) + " → " +
                   Code(TextOf(field.after)) + "\n";
        }
        AppendMarkdown(change.parts, indent + "  ", out);
    }
}

}  // namespace

bool AreSame(const Comparison& comparison) {
    return CountChanges(comparison) == ChangeCounts{};
}

std::string Summary(const Comparison& comparison) {
    const ChangeCounts counts = CountChanges(comparison);
    std::string text;
    for (std::size_t object = 0; object < counts.size(); ++object) {
        std::string ofObject;
        for (const ChangeKind kind : kChangeKinds) {
            if (const std::size_t count = counts[object][static_cast<std::size_t>(kind)]; count > 0) {
                ofObject += (ofObject.empty() ? "" : ", ") + std::to_string(count) + " ";
                ofObject += NameOf(kind);
            }
        }
        if (!ofObject.empty()) {
            text.append(text.empty() ? "" : "; ").append(kObjects[object]).append("s: ").append(ofObject);
        }
    }
    if (comparison.uniqueNames > 0) {
        text += (text.empty() ? "" : "; ") + std::to_string(comparison.uniqueNames) +
                (comparison.uniqueNames == 1 ? " name differs only in what makes it unique"
                                             : " names differ only in what makes them unique");
    }
    return text;
}

std::string ChangesText(const Comparison& comparison, const Style& style) {
    std::string text;
    AppendText(comparison.changes, "", style, text);
    const std::string summary = Summary(comparison);
    return summary.empty() ? text : text + style(Colour::Faint, summary) + "\n";
}

std::string ChangesMarkdown(const Comparison& comparison) {
    std::string text;
    AppendMarkdown(comparison.changes, "", text);
    const std::string summary = Summary(comparison);
    if (summary.empty()) {
        return text;
    }
    return text + (text.empty() ? "" : "\n") + summary + "\n";
}

}  // namespace vorn
