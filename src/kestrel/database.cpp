#include "kestrel/database.h"

#include <algorithm>
#include <cstring>

#include "kestrel/json_text.h"
#include "kestrel/model_text.h"

namespace kestrel {

namespace {

/// Up to this many signals of a message are searched one by one, which is quicker than an index and takes no
/// memory. Nearly all messages stay below it.
constexpr std::uint32_t kSignalsWithoutIndex = 8;

}  // namespace

std::string_view NameIn(const char (&name)[kNameSize]) {
    return {static_cast<const char*>(name), strnlen(static_cast<const char*>(name), kNameSize)};
}

AttrDef::~AttrDef() {
    if (value_type == AttrType::Enumeration) {
        kestrel_free(value_list);
    }
    if (value_type != AttrType::Integer) {
        kestrel_free(default_text);
    }
}

void AttrValues::Set(const AttrDef& definition, kestrel_attr_value_t value) {
    const auto earlier = std::find_if(values_.begin(), values_.end(),
                                      [&](const Value& entry) { return entry.definition == &definition; });
    if (earlier == values_.end()) {
        values_.push_back({&definition, value});
        return;
    }
    earlier->value = value;
}

Signal::~Signal() {
    while (value_descriptions != nullptr) {
        valdesc* following = value_descriptions->next;
        kestrel_free(value_descriptions);
        value_descriptions = following;
    }
}

void Message::AddSignal(Signal& signal) {
    (lastSignal != nullptr ? lastSignal->next : firstSignal) = &signal;
    lastSignal = &signal;
    ++signalCount;
    if (signalIndex != nullptr) {
        signalIndex->Add(signal);
    } else if (signalCount > kSignalsWithoutIndex) {
        signalIndex = std::make_unique<RecordIndex<Signal>>();
        for (Signal* each = firstSignal; each != nullptr; each = each->next) {
            signalIndex->Add(*each);
        }
    }
}

Signal* Message::FindSignal(std::string_view wanted) const {
    if (signalIndex != nullptr) {
        return signalIndex->Find(wanted);
    }
    for (Signal* each = firstSignal; each != nullptr; each = each->next) {
        if (NameIn(each->name) == wanted) {
            return each;
        }
    }
    return nullptr;
}

Node& Database::CreateNode() {
    Node& node = nodes_.emplace_back(*this);
    nodeIndex_.Add(node);
    return node;
}

Signal& Database::CreateSignal(Message& message) {
    Signal& signal = signals_.emplace_back();
    message.AddSignal(signal);
    return signal;
}

void Database::SetScaling(Signal& signal, sigscale scaling) {
    scaling.unit = Text(scaling.unit.c_str());
    if (scaling.unit.size() > kUnitSize) {
        scaling.unit.resize(kUnitSize);
        scaling.unit = WithoutCutCharacter(scaling.unit, kUnitSize);
    }
    signal.scaling = &*scalings_.insert(std::move(scaling)).first;
}

Message* Database::FindMessage(std::uint32_t identifier) {
    for (; messagesIndexed_ < messages_.size(); ++messagesIndexed_) {
        Message& message = messages_[messagesIndexed_];
        messageIndex_.try_emplace(message.identifier, &message);
    }
    const auto found = messageIndex_.find(identifier);
    return found == messageIndex_.end() ? nullptr : found->second;
}

void Database::SetAttribute(AttrValues& values, AttrObject object, std::string_view attribute,
                            kestrel_attr_value_t value) {
    // There are about ten definitions; their names are read anew because they may be filled in at any time.
    const std::string_view wanted = attribute.substr(0, kNameSize);
    const auto definition = std::find_if(attrDefs_.begin(), attrDefs_.end(), [&](const AttrDef& each) {
        return each.object_kind == object && NameIn(each.name) == wanted;
    });
    if (definition != attrDefs_.end()) {
        SetAttribute(values, *definition, value);
    }
}

void Database::SetAttribute(AttrValues& values, AttrDef& definition, kestrel_attr_value_t value) {
    if (!definition.used) {
        definition.used = true;
        definition.holdsTexts = definition.value_type == AttrType::String;
    }
    if (definition.holdsTexts) {
        value.text = Keep(value.text);
    }
    values.Set(definition, value);
}

char* Database::Keep(char* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const auto known = texts_.find(text);
    if (known == texts_.end()) {
        std::unique_ptr<char, FreeText> kept(text);
        return texts_.emplace(text, std::move(kept)).first->second.get();
    }
    if (known->second.get() != text) {
        kestrel_free(text);
    }
    return known->second.get();
}

}  // namespace kestrel
