#include "vorn/record_fields.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "kestrel/keyed_hash.h"

namespace vorn {
namespace {

using kestrel::NameIn;
using kestrel::NameText;

void AddKnownNumber(const char* field, const std::optional<double>& number, Fields& fields) {
    if (number) {
        fields.emplace_back(field, *number);
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
    const FieldValue* Find(const std::string& name) const {
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
    kestrel::KeyedMap<std::string_view, const FieldValue*> byName_;
};

bool AreEqual(const valdesc* before, const valdesc* after) {
    for (; before != nullptr && after != nullptr; before = before->next, after = after->next) {
        if (before->value != after->value || NameIn(before->text) != NameIn(after->text)) {
            return false;
        }
    }
    return before == after;  // both are at their end
}

bool AreEqual(const sigscale* before, const sigscale* after) {
    return before == nullptr || after == nullptr ? before == after : *before == *after;
}

}  // namespace

Fields FieldsOf(const kestrel::AttrDef& definition) {
    Fields fields{{"type", std::string(kestrel::TypeName(definition.value_type))}};
    if (definition.value_type == AttrType::Integer) {
        fields.emplace_back("minimum", definition.minimum);
        fields.emplace_back("maximum", definition.maximum);
        fields.emplace_back("default", definition.default_number);
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
}

Fields FieldsOf(const kestrel::Signal& signal) {
    Fields fields{{"start_bit", static_cast<double>(signal.start_bit)},
                  {"length", static_cast<double>(signal.length)},
                  {"byte_order", std::string(kestrel::ByteOrderName(signal))},
                  {"signed", (signal.flags & kSignalSigned) != 0},
                  {"multiplexor", (signal.flags & kSignalMultiplexor) != 0},
                  {"multiplexer_value", std::monostate()}};
    if ((signal.flags & kSignalMultiplexed) != 0) {
        fields.back().second = static_cast<double>(signal.multiplexer_value);
    }
    if (signal.scaling != nullptr) {
        AddScaling(*signal.scaling, fields);
    }
    return fields;
}

Fields FieldsOf(const kestrel::AttrValues& attributes, kestrel::ValueTexts& values) {
    Fields fields;
    for (const auto& entry : attributes.Values()) {
        std::string name = "attribute " + NameText(entry.definition->name);
        if (entry.definition->value_type == AttrType::Integer) {
            fields.emplace_back(std::move(name), kestrel::Finite(entry.value.number));
        } else {
            fields.emplace_back(std::move(name), values.Of(entry));
        }
    }
    return fields;
}

std::vector<FieldChange> CompareFields(const Fields& before, const Fields& after) {
    std::vector<FieldChange> changes;
    if (before == after) {
        return changes;
    }
    const FieldFinder beforeFinder(before);
    const FieldFinder afterFinder(after);
    for (const auto& [name, value] : after) {
        const FieldValue* oldValue = beforeFinder.Find(name);
        if (oldValue == nullptr || *oldValue != value) {
            changes.push_back({name, oldValue == nullptr ? FieldValue() : *oldValue, value});
        }
    }
    for (const auto& [name, value] : before) {
        if (afterFinder.Find(name) == nullptr) {
            changes.push_back({name, value, {}});
        }
    }
    return changes;
}

bool AreSurelyEqual(const kestrel::Signal& before, const kestrel::Signal& after) {
    constexpr std::uint16_t kFlags =
        kSignalBigEndian | kSignalSigned | kSignalMultiplexor | kSignalMultiplexed;
    return before.start_bit == after.start_bit && before.length == after.length &&
           (before.flags & kFlags) == (after.flags & kFlags) &&
           before.multiplexer_value == after.multiplexer_value && AreEqual(before.scaling, after.scaling) &&
           AreEqual(before.value_descriptions, after.value_descriptions);
}

}  // namespace vorn
