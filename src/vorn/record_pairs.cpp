#include "vorn/record_pairs.h"

#include <optional>
#include <string>
#include <string_view>

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

}  // namespace

Pairing<kestrel::AttrDef> PairDefinitions(const kestrel::Database& before, const kestrel::Database& after) {
    Pairing<kestrel::AttrDef> pairing(PointersTo(before.AttrDefs()), PointersTo(after.AttrDefs()));
    pairing.By([](const kestrel::AttrDef& definition) {
        return std::optional(std::string(kestrel::ObjectName(definition.object_kind)) + " " +
                             NameText(definition.name));
    });
    return pairing;
}

Pairing<Message> PairMessages(const kestrel::Database& before, const kestrel::Database& after) {
    kestrel::ValueTexts values;
    Pairing<Message> pairing(PointersTo(before.Messages()), PointersTo(after.Messages()));
    pairing.By([](const Message& message) { return std::optional(message.identifier); });
    pairing.By([&](const Message& message) { return MeaningOf(message, values); });
    pairing.By([](const Message& message) {
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
