#include "vorn/compare_report.h"

#include <string_view>

#include "import/text/shown_text.h"
#include "kestrel/json_text.h"

namespace vorn {
namespace {

using tarvex::Shown;

std::string_view KindName(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Added:
            return "added";
        case ChangeKind::Removed:
            return "removed";
        case ChangeKind::Changed:
            return "changed";
    }
    return "";
}

std::string Head(const Change& change, const Style& style) {
    const std::string text = change.object + " " + Shown(change.name);
    switch (change.kind) {
        case ChangeKind::Added:
            return style(Colour::Added, "+ " + text);
        case ChangeKind::Removed:
            return style(Colour::Removed, "- " + text);
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
            out += indent + "    " + Shown(field.field) + ": \"" + Shown(field.before) + "\" -> \"" +
                   Shown(field.after) + "\"\n";
        }
        AppendText(change.parts, indent + "  ", style, out);
    }
}

void AppendMember(std::string& json, const char* key, std::string_view value) {
    kestrel::AppendQuoted(json, key);
    json += ": ";
    kestrel::AppendQuoted(json, value);
}

void AppendJson(const std::vector<Change>& changes, const std::string& indent, std::string& json) {
    json += "[";
    for (const Change& change : changes) {
        json += &change == &changes.front() ? "\n" : ",\n";
        json += indent + "  {";
        AppendMember(json, "change", KindName(change.kind));
        json += ", ";
        AppendMember(json, "object", change.object);
        json += ", ";
        AppendMember(json, "name", change.name);
        if (!change.fields.empty()) {
            json += ", \"fields\": [";
            for (const FieldChange& field : change.fields) {
                if (&field != &change.fields.front()) {
                    json += ", ";
                }
                json += "{";
                AppendMember(json, "field", field.field);
                json += ", ";
                AppendMember(json, "before", field.before);
                json += ", ";
                AppendMember(json, "after", field.after);
                json += "}";
            }
            json += "]";
        }
        if (!change.parts.empty()) {
            json += ", \"parts\": ";
            AppendJson(change.parts, indent + "  ", json);
        }
        json += "}";
    }
    json += changes.empty() ? "]" : "\n" + indent + "]";
}

}  // namespace

std::string ChangesText(const std::vector<Change>& changes, const Style& style) {
    std::string text;
    AppendText(changes, "", style, text);
    return text;
}

std::string ChangesJson(const std::vector<Change>& changes) {
    std::string json;
    AppendJson(changes, "", json);
    return json + "\n";
}

}  // namespace vorn
