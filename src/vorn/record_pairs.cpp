#include "vorn/record_pairs.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "kestrel/model_text.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::NameIn;
using kestrel::NameText;

template <class Records>
auto PointersTo(const Records& records) {
    std::vector<const typename Records::value_type*> pointers;
    pointers.reserve(records.size());
    for (const auto& record : records) {
        pointers.push_back(&record);
    }
    return pointers;
}

/// Block, function and operation of a message that says all three.
std::optional<std::string> MeaningOf(const Message& message, kestrel::ValueTexts& values) {
    std::string meaning;
    int count = 0;
    for (const std::string_view wanted : {"FBlock", "Function", "OpType"}) {
        for (const auto& entry : message.attributes.Values()) {
            if (NameIn(entry.definition->name) == wanted) {
                meaning += values.Of(entry) + "\n";
                ++count;
            }
        }
    }
    return count == 3 ? std::optional(meaning) : std::nullopt;
}

/// The keys that no two messages of one database have.
template <class KeyOf>
auto UniqueKey(const KeyOf& keyOf, const kestrel::Database& before, const kestrel::Database& after) {
    using Key = typename decltype(keyOf(before.Messages().front()))::value_type;
    kestrel::KeyedSet<Key> repeated;
    for (const kestrel::Database* database : {&before, &after}) {
        kestrel::KeyedSet<Key> seen;
        for (const Message& message : database->Messages()) {
            if (auto key = keyOf(message); key && !seen.insert(*key).second) {
                repeated.insert(std::move(*key));
            }
        }
    }
    return [&keyOf, repeated = std::move(repeated)](const Message& message) {
        auto key = keyOf(message);
        return key && repeated.contains(*key) ? decltype(key)() : key;
    };
}

}  // namespace

std::string DefinitionName(const kestrel::AttrDef& definition) {
    return std::string(kestrel::ObjectName(definition.object_kind)) + " " + NameText(definition.name);
}

Pairing<kestrel::AttrDef> PairDefinitions(const kestrel::Database& before, const kestrel::Database& after) {
    Pairing<kestrel::AttrDef> pairing(PointersTo(before.AttrDefs()), PointersTo(after.AttrDefs()));
    pairing.By([](const kestrel::AttrDef& definition) { return std::optional(DefinitionName(definition)); });
    return pairing;
}

Pairing<Message> PairMessages(const kestrel::Database& before, const kestrel::Database& after,
                              Namesakes namesakes) {
    kestrel::ValueTexts values;
    Pairing<Message> pairing(PointersTo(before.Messages()), PointersTo(after.Messages()));
    const auto by = [&](const auto& keyOf) {
        if (namesakes == Namesakes::InOrder) {
            pairing.By(keyOf);
        } else {
            pairing.By(UniqueKey(keyOf, before, after));
        }
    };
    pairing.By([](const Message& message) { return std::optional(message.identifier); });
    by([&](const Message& message) { return MeaningOf(message, values); });
    by([](const Message& message) {
        const std::string_view name = NameIn(message.name);
        return name.empty() ? std::nullopt : std::optional(name);
    });
    return pairing;
}

Pairing<kestrel::Node> PairNodes(const kestrel::Database& before, const kestrel::Database& after,
                                 const RenamedNodes& renamed) {
    Pairing<kestrel::Node> pairing(PointersTo(before.Nodes()), PointersTo(after.Nodes()));
    const auto name = [](const kestrel::Node& node) { return std::optional(NameText(node.name)); };
    pairing.By(name);
    pairing.By(name, [&](const kestrel::Node& node) { return renamed.OldNameOf(node); });
    return pairing;
}

}  // namespace vorn
