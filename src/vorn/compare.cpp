#include "vorn/compare.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "kestrel/json_text.h"
#include "kestrel/keyed_hash.h"
#include "kestrel/model_text.h"
#include "vorn/describe.h"

namespace vorn {
namespace {

using kestrel::NameText;

/// The properties of a record in words.
using Fields = std::vector<std::pair<std::string, std::string>>;

std::string YesOrNo(bool flag) {
    return flag ? "yes" : "no";
}

std::string NumberText(double number) {
    std::string text;
    kestrel::AppendNumber(text, number);
    return text;
}

void AddKnownNumber(const char* field, const std::optional<double>& number, Fields& fields) {
    if (number) {
        kestrel::AppendShortNumber(fields.emplace_back(field, "").second, *number);
    }
}

void AddScaling(const sigscale& scaling, Fields& fields) {
    AddKnownNumber("factor", scaling.factor, fields);
    AddKnownNumber("minimum", scaling.minimum, fields);
    AddKnownNumber("maximum", scaling.maximum, fields);
    AddKnownNumber("step", scaling.step, fields);
    if (!scaling.unit.empty()) {
        fields.emplace_back("unit", scaling.unit);
    }
}

void AddAttributes(const kestrel::AttrValues& attributes, kestrel::ValueTexts& values, Fields& fields) {
    for (const auto& entry : attributes.Values()) {
        fields.emplace_back("attribute " + NameText(entry.definition->name), values.Of(entry));
    }
}

/// Finds the fields of a record by their names. Most records have a handful, which are looked at one by one.
class FieldFinder {
  public:
    explicit FieldFinder(const Fields& fields) : fields_(fields) {
        if (fields.size() > kFew) {
            for (const auto& [name, value] : fields) {
                byName_.try_emplace(name, &value);
            }
        }
    }

    /// The value of the field, or null.
    const std::string* Find(const std::string& name) const {
        if (fields_.size() > kFew) {
            const auto found = byName_.find(name);
            return found == byName_.end() ? nullptr : found->second;
        }
        const auto found = std::ranges::find(fields_, name, &Fields::value_type::first);
        return found == fields_.end() ? nullptr : &found->second;
    }

  private:
    static constexpr std::size_t kFew = 16;

    const Fields& fields_;
    kestrel::KeyedMap<std::string_view, const std::string*> byName_;
};

/// The fields of which one record has another value than the other, or none.
std::vector<FieldChange> CompareFields(const Fields& before, const Fields& after) {
    std::vector<FieldChange> changes;
    const FieldFinder beforeFinder(before);
    const FieldFinder afterFinder(after);
    for (const auto& [name, value] : after) {
        const std::string* oldValue = beforeFinder.Find(name);
        if (oldValue == nullptr || *oldValue != value) {
            changes.push_back({name, oldValue == nullptr ? std::string() : *oldValue, value});
        }
    }
    for (const auto& [name, value] : before) {
        if (afterFinder.Find(name) == nullptr) {
            changes.push_back({name, value, ""});
        }
    }
    return changes;
}

/// How the records of one kind are compared.
template <class Record>
struct Kind {
    std::string object;
    /// What a record is found by.
    std::function<std::string(const Record&)> key;
    std::function<std::string(const Record&)> name;
    std::function<Fields(const Record&)> fields;
    std::function<std::vector<Change>(const Record&, const Record&)> parts;
};

/// Records by their keys. Those with equal keys are told apart by their number.
template <class Record>
std::vector<std::pair<std::string, const Record*>> Keyed(const std::vector<const Record*>& records,
                                                         const Kind<Record>& kind) {
    kestrel::KeyedMap<std::string, std::size_t> counts;
    std::vector<std::pair<std::string, const Record*>> keyed;
    keyed.reserve(records.size());
    for (const Record* record : records) {
        std::string key = kind.key(*record);
        const std::size_t number = counts[key]++;
        keyed.emplace_back(key.append("\n").append(std::to_string(number)), record);
    }
    return keyed;
}

template <class Record>
std::vector<Change> CompareLists(const std::vector<const Record*>& before,
                                 const std::vector<const Record*>& after, const Kind<Record>& kind) {
    const auto keyedBefore = Keyed(before, kind);
    const auto keyedAfter = Keyed(after, kind);
    kestrel::KeyedMap<std::string, const Record*> left(keyedBefore.begin(), keyedBefore.end());
    std::vector<Change> changes;
    for (const auto& [key, record] : keyedAfter) {
        const auto found = left.find(key);
        if (found == left.end()) {
            changes.push_back({ChangeKind::Added, kind.object, kind.name(*record), {}, {}});
            continue;
        }
        Change change{ChangeKind::Changed,
                      kind.object,
                      kind.name(*record),
                      CompareFields(kind.fields(*found->second), kind.fields(*record)),
                      {}};
        if (kind.parts) {
            change.parts = kind.parts(*found->second, *record);
        }
        if (!change.fields.empty() || !change.parts.empty()) {
            changes.push_back(std::move(change));
        }
        left.erase(found);
    }
    for (const auto& [key, record] : keyedBefore) {
        if (left.contains(key)) {
            changes.push_back({ChangeKind::Removed, kind.object, kind.name(*record), {}, {}});
        }
    }
    return changes;
}

template <class Records>
auto PointersTo(const Records& records) {
    std::vector<const typename Records::value_type*> pointers;
    pointers.reserve(records.size());
    for (const auto& record : records) {
        pointers.push_back(&record);
    }
    return pointers;
}

const Kind<kestrel::AttrDef>& DefinitionKind() {
    static const Kind<kestrel::AttrDef> kind{
        "attribute definition",
        [](const kestrel::AttrDef& definition) {
            return std::string(kestrel::ObjectName(definition.object_kind)) + " " + NameText(definition.name);
        },
        [](const kestrel::AttrDef& definition) {
            return std::string(kestrel::ObjectName(definition.object_kind)) + " " + NameText(definition.name);
        },
        [](const kestrel::AttrDef& definition) {
            Fields fields{{"type", std::string(kestrel::TypeName(definition.value_type))}};
            if (definition.value_type == AttrType::Integer) {
                fields.emplace_back("minimum", NumberText(definition.minimum));
                fields.emplace_back("maximum", NumberText(definition.maximum));
                fields.emplace_back("default", NumberText(definition.default_number));
                return fields;
            }
            if (definition.value_type == AttrType::Enumeration) {
                std::string choices;
                for (const std::string& choice : kestrel::ChoiceNames(definition)) {
                    choices += (choices.empty() ? "" : ", ") + choice;
                }
                fields.emplace_back("values", choices);
            }
            fields.emplace_back("default", kestrel::Text(definition.default_text));
            return fields;
        },
        nullptr};
    return kind;
}

/// `values` outlives the result.
Kind<kestrel::Node> NodeKind(kestrel::ValueTexts& values) {
    return {"node", [](const kestrel::Node& node) { return NameText(node.name); },
            [](const kestrel::Node& node) { return NameText(node.name); },
            [&values](const kestrel::Node& node) {
                Fields fields;
                AddAttributes(node.attributes, values, fields);
                return fields;
            },
            nullptr};
}

const Kind<valdesc>& ValueKind() {
    static const Kind<valdesc> kind{"value", [](const valdesc& entry) { return std::to_string(entry.value); },
                                    [](const valdesc& entry) { return std::to_string(entry.value); },
                                    [](const valdesc& entry) {
                                        return Fields{{"text", NameText(entry.text)}};
                                    },
                                    nullptr};
    return kind;
}

std::vector<const valdesc*> ValuesOf(const kestrel::Signal& signal) {
    std::vector<const valdesc*> values;
    for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
        values.push_back(entry);
    }
    return values;
}

const Kind<kestrel::Signal>& SignalKind() {
    static const Kind<kestrel::Signal> kind{
        "signal", [](const kestrel::Signal& signal) { return NameText(signal.name); },
        [](const kestrel::Signal& signal) { return NameText(signal.name); },
        [](const kestrel::Signal& signal) {
            const bool isMultiplexed = (signal.flags & kSignalMultiplexed) != 0;
            Fields fields{
                {"start_bit", std::to_string(signal.start_bit)},
                {"length", std::to_string(signal.length)},
                {"byte_order", std::string(kestrel::ByteOrderName(signal))},
                {"signed", YesOrNo((signal.flags & kSignalSigned) != 0)},
                {"multiplexor", YesOrNo((signal.flags & kSignalMultiplexor) != 0)},
                {"multiplexer_value", isMultiplexed ? std::to_string(signal.multiplexer_value) : ""}};
            if (signal.scaling != nullptr) {
                AddScaling(*signal.scaling, fields);
            }
            return fields;
        },
        [](const kestrel::Signal& before, const kestrel::Signal& after) {
            return CompareLists(ValuesOf(before), ValuesOf(after), ValueKind());
        }};
    return kind;
}

std::vector<const kestrel::Signal*> SignalsOf(const kestrel::Message& message) {
    std::vector<const kestrel::Signal*> signals;
    for (const kestrel::Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
        signals.push_back(signal);
    }
    return signals;
}

/// `values` outlives the result.
Kind<kestrel::Message> MessageKind(kestrel::ValueTexts& values) {
    return {"message", [](const kestrel::Message& message) { return std::to_string(message.identifier); },
            [](const kestrel::Message& message) {
                return IdentifierText(message.identifier) + " " + NameText(message.name);
            },
            [&values](const kestrel::Message& message) {
                Fields fields{{"name", NameText(message.name)},
                              {"length", std::to_string(message.length)},
                              {"node", message.node == nullptr ? "" : NameText(message.node->name)}};
                AddAttributes(message.attributes, values, fields);
                return fields;
            },
            [](const kestrel::Message& before, const kestrel::Message& after) {
                return CompareLists(SignalsOf(before), SignalsOf(after), SignalKind());
            }};
}

void Append(std::vector<Change>& changes, std::vector<Change> more) {
    std::ranges::move(more, std::back_inserter(changes));
}

}  // namespace

std::vector<Change> Compare(const kestrel::Database& before, const kestrel::Database& after) {
    kestrel::ValueTexts values;
    std::vector<Change> changes =
        CompareLists(PointersTo(before.AttrDefs()), PointersTo(after.AttrDefs()), DefinitionKind());
    Append(changes, CompareLists(PointersTo(before.Nodes()), PointersTo(after.Nodes()), NodeKind(values)));
    Append(changes,
           CompareLists(PointersTo(before.Messages()), PointersTo(after.Messages()), MessageKind(values)));
    return changes;
}

}  // namespace vorn
