#include "kestrel/database_builder.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "kestrel/excerpt.h"
#include "kestrel/model_text.h"

namespace kestrel {

namespace {

/// Databases have about ten; setting a value goes through all that the object has.
constexpr std::size_t kMaxDefinitions = 1000;

void CopyName(char (&name)[kNameSize], const std::string& text) {
    if (text.size() > kNameSize) {
        throw BadRecord("the name '" + Excerpt(text) + "' is longer than 32 bytes");
    }
    if (text.find('\0') != std::string::npos) {
        throw BadRecord("a name has a zero character");
    }
    std::memcpy(static_cast<char*>(name), text.data(), text.size());
}

/// A copy that a record can own.
char* Duplicate(const std::string& text) {
    if (text.find('\0') != std::string::npos) {
        throw BadRecord("a text has a zero character");
    }
    auto* copy = static_cast<char*>(kestrel_malloc(text.size() + 1));
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

std::string Joined(const std::vector<std::string>& names) {
    if (names.size() == 1 && names.front().empty()) {
        throw BadRecord("an enumeration has one value without a name");
    }
    std::string joined;
    for (const std::string& name : names) {
        if (name.find('\n') != std::string::npos) {
            throw BadRecord("the name of a value has a line feed");
        }
        if (&name != &names.front()) {
            joined += '\n';
        }
        joined += name;
    }
    return joined;
}

template <class Kind, std::size_t kCount>
Kind KindNamed(const std::array<Kind, kCount>& kinds, std::string_view (*nameOf)(Kind),
               const std::string& name, const char* what) {
    const auto found = std::ranges::find(kinds, name, nameOf);
    if (found == kinds.end()) {
        throw BadRecord("'" + Excerpt(name) + "' is no " + what);
    }
    return *found;
}

}  // namespace

void DatabaseBuilder::SetName(const std::string& name) {
    if (name.find('\0') != std::string::npos) {
        throw BadRecord("the database's name has a zero character");
    }
    database_->SetName(name);
}

void DatabaseBuilder::AddDefinition(const DefinitionRecord& record) {
    constexpr std::array kObjects = {AttrObject::Database, AttrObject::Node, AttrObject::Message};
    constexpr std::array kTypes = {AttrType::Integer, AttrType::String, AttrType::Enumeration};
    const AttrObject object = KindNamed(kObjects, &ObjectName, record.object, "kind of object");
    const AttrType type = KindNamed(kTypes, &TypeName, record.type, "type of attribute");
    if (database_->AttrDefs().size() == kMaxDefinitions) {
        throw BadRecord("there are too many definitions");
    }
    const auto [place, isNew] = definitions_[object].try_emplace(record.name);
    if (!isNew) {
        throw BadRecord("the attribute '" + Excerpt(record.name) + "' is defined twice");
    }
    AttrDef& definition = database_->CreateAttrDef();
    place->second = &definition;
    definition.object_kind = object;
    CopyName(definition.name, record.name);
    Choices& choices = choices_.emplace_back();
    choices.count = record.choices.size();
    if (type == AttrType::Integer) {
        definition.minimum = record.minimum;
        definition.maximum = record.maximum;
        definition.default_number = record.defaultNumber;
        return;
    }
    // The type decides who frees the texts: it is set when they are all there.
    const std::string joined = type == AttrType::Enumeration ? Joined(record.choices) : std::string();
    definition.default_text = Duplicate(record.defaultText);
    definition.value_type = AttrType::String;
    if (type == AttrType::String) {
        return;
    }
    definition.value_list = nullptr;
    definition.value_type = AttrType::Enumeration;
    definition.value_list = Duplicate(joined);
    for (std::size_t index = 0; index < record.choices.size(); ++index) {
        choices.indexes.try_emplace(record.choices[index], index);
    }
}

Node& DatabaseBuilder::AddNode(const std::string& name) {
    Node& node = database_->CreateNode();
    CopyName(node.name, name);
    nodes_.try_emplace(name, &node);
    return node;
}

Node& DatabaseBuilder::FindNode(const std::string& name) {
    const auto found = nodes_.find(name);
    if (found == nodes_.end()) {
        throw BadRecord("there is no node '" + Excerpt(name) + "'");
    }
    return *found->second;
}

Message& DatabaseBuilder::AddMessage(const MessageRecord& record) {
    if ((record.identifier & kExtendedIdentifier) != 0) {
        throw BadRecord("the identifier is out of range");
    }
    Message& message = database_->CreateMessage(static_cast<std::uint32_t>(database_->Messages().size()));
    CopyName(message.name, record.name);
    message.identifier = record.identifier | (record.extended ? kExtendedIdentifier : 0);
    message.length = record.length;
    message.node = record.node;
    return message;
}

Signal& DatabaseBuilder::AddSignal(Message& message, const SignalRecord& record) {
    Signal& signal = database_->CreateSignal(message);
    CopyName(signal.name, record.name);
    signal.start_bit = record.startBit;
    signal.length = record.length;
    if (record.byteOrder == "big_endian") {
        signal.flags |= kSignalBigEndian;
    } else if (record.byteOrder != "little_endian") {
        throw BadRecord("'" + Excerpt(record.byteOrder) + "' is no byte order");
    }
    if (record.isSigned) {
        signal.flags |= kSignalSigned;
    }
    if (record.isMultiplexor) {
        signal.flags |= kSignalMultiplexor;
    }
    if (record.multiplexerValue) {
        signal.flags |= kSignalMultiplexed;
        signal.multiplexer_value = *record.multiplexerValue;
    }
    return signal;
}

void DatabaseBuilder::AddValue(Signal& signal, std::uint32_t value, const std::string& text) {
    if (&signal != lastSignal_) {
        lastSignal_ = &signal;
        lastValue_ = nullptr;
        // An index that is damaged can give the rows of a table in any order.
        if (signal.value_descriptions != nullptr) {
            throw BadRecord("the value descriptions of a signal stand in two places");
        }
    }
    auto* entry = static_cast<valdesc*>(kestrel_malloc(sizeof(valdesc)));
    *entry = {};
    (lastValue_ == nullptr ? signal.value_descriptions : lastValue_->next) = entry;
    lastValue_ = entry;
    entry->value = value;
    CopyName(entry->text, text);
}

void DatabaseBuilder::SetScaling(Signal& signal, const sigscale& scaling) {
    if (signal.scaling != nullptr) {
        throw BadRecord("the scaling of a signal stands twice");
    }
    if (scaling.factor <= 0) {
        throw BadRecord("the factor of a signal is not above 0");
    }
    if (scaling.unit.size() > kUnitSize) {
        throw BadRecord("the unit '" + Excerpt(scaling.unit) + "' is longer than 200 bytes");
    }
    if (scaling.unit.find('\0') != std::string::npos) {
        throw BadRecord("a unit has a zero character");
    }
    database_->SetScaling(signal, scaling);
}

void DatabaseBuilder::SetAttribute(AttrValues& values, AttrObject object, const std::string& name,
                                   const AttributeText& value) {
    AttrDef& definition = FindDefinition(object, name);
    const bool isNumber = std::holds_alternative<double>(value);
    if (isNumber != (definition.value_type == AttrType::Integer)) {
        throw BadRecord("the attribute '" + Excerpt(name) + "' is " + (isNumber ? "no number" : "a number"));
    }
    kestrel_attr_value_t stored{};
    if (isNumber) {
        stored.number = std::get<double>(value);
    } else if (definition.value_type == AttrType::String) {
        stored.text = Duplicate(std::get<std::string>(value));
    } else {
        const auto& [indexes, count] = choices_[definition.position];
        const auto found = indexes.find(std::get<std::string>(value));
        if (found == indexes.end() && std::get<std::string>(value) != Text(definition.default_text)) {
            throw BadRecord("the attribute '" + Excerpt(name) + "' has no value '" +
                            Excerpt(std::get<std::string>(value)) + "'");
        }
        // The default need not be one of the values; an index behind them stands for it.
        stored.number = static_cast<double>(found == indexes.end() ? count : found->second);
    }
    database_->SetAttribute(values, definition, stored);
}

AttrDef& DatabaseBuilder::FindDefinition(AttrObject object, const std::string& name) const {
    if (const auto kind = definitions_.find(object); kind != definitions_.end()) {
        if (const auto found = kind->second.find(name); found != kind->second.end()) {
            return *found->second;
        }
    }
    throw BadRecord("the attribute '" + Excerpt(name) + "' is not defined");
}

}  // namespace kestrel
