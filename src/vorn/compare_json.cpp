#include <algorithm>
#include <string_view>

#include "kestrel/json_text.h"
#include "vorn/change_counts.h"
#include "vorn/compare_report.h"
#include "vorn/json_object.h"

namespace vorn {
namespace {

void AppendValue(std::string& json, const FieldValue& value) {
    if (const bool* flag = std::get_if<bool>(&value)) {
        json += *flag ? "true" : "false";
    } else if (const double* number = std::get_if<double>(&value)) {
        kestrel::AppendShortNumber(json, *number);
    } else if (const Identifier* identifier = std::get_if<Identifier>(&value)) {
        kestrel::AppendInteger(json, identifier->number);
    } else if (const std::string* text = std::get_if<std::string>(&value)) {
        kestrel::AppendQuoted(json, *text);
    } else {
        json += "null";
    }
}

/// What tells a record from others of its kind.
void AppendIdentity(std::string& json, const Change& change) {
    if (change.object == "message") {
        AppendNumber(json, "identifier", *change.number & ~kExtendedIdentifier);
        AppendFlag(json, "extended", (*change.number & kExtendedIdentifier) != 0);
    }
    if (change.object == "value") {
        AppendNumber(json, "value", *change.number);
    } else {
        AppendMember(json, "name", change.name);
    }
}

void AppendFields(std::string& json, const std::vector<FieldChange>& fields) {
    json += "[";
    for (const FieldChange& field : fields) {
        json += &field == &fields.front() ? "{" : ", {";
        AppendMember(json, "field", field.field);
        AppendKey(json, "before");
        AppendValue(json, field.before);
        AppendKey(json, "after");
        AppendValue(json, field.after);
        json += "}";
    }
    json += "]";
}

void AppendChanges(std::string& json, const std::vector<Change>& changes, const std::string& indent) {
    json += "[";
    for (const Change& change : changes) {
        json += &change == &changes.front() ? "\n" : ",\n";
        json += indent + "  {";
        AppendMember(json, "change", NameOf(change.kind));
        AppendMember(json, "object", change.object);
        AppendIdentity(json, change);
        if (!change.fields.empty()) {
            AppendKey(json, "fields");
            AppendFields(json, change.fields);
        }
        if (!change.parts.empty()) {
            AppendKey(json, "parts");
            AppendChanges(json, change.parts, indent + "  ");
        }
        json += "}";
    }
    json += changes.empty() ? "]" : "\n" + indent + "]";
}

void AppendSummary(std::string& json, const Comparison& comparison) {
    const ChangeCounts counts = CountChanges(comparison);
    json += "{";
    for (std::size_t object = 0; object < counts.size(); ++object) {
        std::string key = std::string(kObjects[object]) + "s";
        std::ranges::replace(key, ' ', '_');
        AppendKey(json, key);
        json += "{";
        for (const ChangeKind kind : kChangeKinds) {
            AppendKey(json, NameOf(kind));
            json += std::to_string(counts[object][static_cast<std::size_t>(kind)]);
        }
        json += "}";
    }
    AppendKey(json, "unique_names");
    json += std::to_string(comparison.uniqueNames) + "}";
}

}  // namespace

std::string ChangesJson(const Comparison& comparison) {
    std::string json = "{\n\"changes\": ";
    AppendChanges(json, comparison.changes, "");
    json += ",\n\"summary\": ";
    AppendSummary(json, comparison);
    return json + "\n}\n";
}

}  // namespace vorn
