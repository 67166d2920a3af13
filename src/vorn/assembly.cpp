#include "vorn/assembly.h"

#include <algorithm>

namespace vorn {

using kestrel::NameText;

void Assembly::Add(const kestrel::AttrDef& definition) {
    kestrel::DefinitionRecord record;
    record.object = kestrel::ObjectName(definition.object_kind);
    record.name = NameText(definition.name);
    record.type = kestrel::TypeName(definition.value_type);
    if (definition.value_type == AttrType::Integer) {
        record.minimum = kestrel::Finite(definition.minimum);
        record.maximum = kestrel::Finite(definition.maximum);
        record.defaultNumber = kestrel::Finite(definition.default_number);
    } else {
        record.defaultText = kestrel::Text(definition.default_text);
        record.choices = kestrel::ChoiceNames(definition);
    }
    builder_.AddDefinition(record);
}

void Assembly::SetAttributes(const kestrel::AttrValues& attributes) {
    Copy(attributes, AttrObject::Database, builder_.Built().Attributes());
}

void Assembly::SetMissingAttributes(const kestrel::AttrValues& attributes) {
    kestrel::AttrValues missing;
    for (const auto& entry : attributes.Values()) {
        const auto isThere = [&](const auto& set) {
            return kestrel::NameIn(set.definition->name) == kestrel::NameIn(entry.definition->name);
        };
        if (std::ranges::none_of(builder_.Built().Attributes().Values(), isThere)) {
            missing.Set(*entry.definition, entry.value);
        }
    }
    SetAttributes(missing);
}

void Assembly::Add(const kestrel::Node& node) {
    Copy(node.attributes, AttrObject::Node, builder_.AddNode(NameText(node.name)).attributes);
}

void Assembly::Add(const kestrel::Message& message, const std::optional<std::string>& node) {
    kestrel::Message& copy = builder_.AddMessage({.identifier = message.identifier & ~kExtendedIdentifier,
                                                  .extended = (message.identifier & kExtendedIdentifier) != 0,
                                                  .name = NameText(message.name),
                                                  .length = message.length,
                                                  .node = node ? &builder_.FindNode(*node) : nullptr});
    Copy(message.attributes, AttrObject::Message, copy.attributes);
    for (const kestrel::Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
        Copy(*signal, copy);
    }
}

void Assembly::Copy(const kestrel::AttrValues& from, AttrObject object, kestrel::AttrValues& to) {
    for (const auto& entry : from.Values()) {
        const std::string name = NameText(entry.definition->name);
        if (entry.definition->value_type == AttrType::Integer) {
            builder_.SetAttribute(to, object, name, kestrel::Finite(entry.value.number));
        } else {
            builder_.SetAttribute(to, object, name, values_.Of(entry));
        }
    }
}

void Assembly::Copy(const kestrel::Signal& signal, kestrel::Message& message) {
    kestrel::SignalRecord record;
    record.name = NameText(signal.name);
    record.startBit = signal.start_bit;
    record.length = signal.length;
    record.byteOrder = kestrel::ByteOrderName(signal);
    record.isSigned = (signal.flags & kSignalSigned) != 0;
    record.isMultiplexor = (signal.flags & kSignalMultiplexor) != 0;
    if ((signal.flags & kSignalMultiplexed) != 0) {
        record.multiplexerValue = signal.multiplexer_value;
    }
    kestrel::Signal& copy = builder_.AddSignal(message, record);
    for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
        builder_.AddValue(copy, entry->value, NameText(entry->text));
    }
    if (signal.scaling != nullptr) {
        builder_.SetScaling(copy, *signal.scaling);
    }
}

std::optional<std::string> SenderOf(const kestrel::Message& message) {
    return message.node == nullptr ? std::nullopt : std::optional(NameText(message.node->name));
}

}  // namespace vorn
