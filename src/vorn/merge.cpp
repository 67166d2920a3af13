#include "vorn/merge.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kestrel/keyed_hash.h"
#include "kestrel/model_text.h"
#include "vorn/assembly.h"
#include "vorn/record_pairs.h"
#include "vorn/renamed_nodes.h"

namespace vorn {
namespace {

using kestrel::Database;
using kestrel::Message;
using kestrel::NameText;

/// The records of the first database, each the preferred one of its pair, and those that only the second has.
template <class Record>
struct Chosen {
    std::vector<const Record*> ofFirst;
    std::vector<const Record*> ofSecond;
};

template <class Record, class Records>
Chosen<Record> Choose(const Records& first, const Pairing<Record>& pairing, Preference preference) {
    std::unordered_map<const Record*, const Record*> others;
    Chosen<Record> chosen;
    for (std::size_t place = 0; place < pairing.After().size(); ++place) {
        if (const Record* partner = pairing.PartnerOf(place)) {
            others.emplace(partner, pairing.After()[place]);
        } else {
            chosen.ofSecond.push_back(pairing.After()[place]);
        }
    }
    for (const Record& record : first) {
        const auto other = others.find(&record);
        const bool isFirst = preference == Preference::First || other == others.end();
        chosen.ofFirst.push_back(isFirst ? &record : other->second);
    }
    return chosen;
}

/// The order of messages: by identifier, extended ones behind the others.
std::uint64_t RankOf(const Message& message) {
    return std::uint64_t{message.identifier & ~kExtendedIdentifier} << 1U |
           ((message.identifier & kExtendedIdentifier) != 0 ? 1U : 0U);
}

/// Takes the lower of the two that stand in front until both lists are empty.
std::vector<const Message*> Together(const Chosen<Message>& chosen) {
    std::vector<const Message*> messages;
    auto second = chosen.ofSecond.begin();
    for (const Message* message : chosen.ofFirst) {
        for (; second != chosen.ofSecond.end() && RankOf(**second) < RankOf(*message); ++second) {
            messages.push_back(*second);
        }
        messages.push_back(message);
    }
    messages.insert(messages.end(), second, chosen.ofSecond.end());
    return messages;
}

/// The names of nodes that are called otherwise in the database that is not preferred.
kestrel::KeyedMap<std::string, std::string> NewNames(const Pairing<kestrel::Node>& nodes,
                                                     Preference preference) {
    kestrel::KeyedMap<std::string, std::string> names;
    for (std::size_t place = 0; place < nodes.After().size(); ++place) {
        if (const kestrel::Node* partner = nodes.PartnerOf(place)) {
            std::string first = NameText(partner->name);
            std::string second = NameText(nodes.After()[place]->name);
            if (preference == Preference::Second) {
                std::swap(first, second);
            }
            if (first != second) {
                names.emplace(std::move(second), std::move(first));
            }
        }
    }
    return names;
}

constexpr std::string_view kDefinition = "attribute definition";

/// The definitions whose defaults say something of objects that have no value of their own.
kestrel::KeyedSet<std::string> TellingDefinitions(const Database& database) {
    kestrel::KeyedSet<std::string> names;
    for (const kestrel::AttrDef& definition : database.AttrDefs()) {
        if (definition.value_type == AttrType::Integer || !kestrel::Text(definition.default_text).empty()) {
            names.insert(DefinitionName(definition));
        }
    }
    return names;
}

/// The definitions that one database has alone, and which would give their defaults to objects that the other
/// has alone. `ofOne` and `ofOther`: what becomes of records of either.
kestrel::KeyedSet<std::string> Imposed(const Comparison& comparison, const Database& one, ChangeKind ofOne,
                                       ChangeKind ofOther) {
    const auto telling = TellingDefinitions(one);
    const auto hasOther = [&](std::string_view object) {
        return std::ranges::any_of(comparison.changes, [&](const Change& change) {
            return change.kind == ofOther && change.object == object;
        });
    };
    kestrel::KeyedSet<std::string> names;
    for (const Change& change : comparison.changes) {
        if (change.kind == ofOne && change.object == kDefinition && telling.contains(change.name) &&
            hasOther(std::string_view(change.name).substr(0, change.name.find(' ')))) {
            names.insert(change.name);
        }
    }
    return names;
}

}  // namespace

Comparison ConflictsOf(const Database& first, const Database& second) {
    Comparison conflicts = Compare(first, second, {.namesakes = Namesakes::Apart});
    const auto ofFirst = Imposed(conflicts, first, ChangeKind::Removed, ChangeKind::Added);
    const auto ofSecond = Imposed(conflicts, second, ChangeKind::Added, ChangeKind::Removed);
    std::erase_if(conflicts.changes, [&](const Change& change) {
        const bool isOfOne = change.kind == ChangeKind::Added || change.kind == ChangeKind::Removed;
        const auto& imposed = change.kind == ChangeKind::Added ? ofSecond : ofFirst;
        return isOfOne && !(change.object == kDefinition && imposed.contains(change.name));
    });
    conflicts.uniqueNames = 0;  // those of the first are taken
    return conflicts;
}

std::unique_ptr<Database> Merge(const Database& first, const Database& second, Preference preference) {
    const auto definitions = Choose(first.AttrDefs(), PairDefinitions(first, second), preference);
    const auto messagePairs = PairMessages(first, second, Namesakes::Apart);
    const auto nodePairs = PairNodes(first, second, RenamedNodes(first, second, messagePairs));
    const auto nodes = Choose(first.Nodes(), nodePairs, preference);
    const auto newNames = NewNames(nodePairs, preference);

    Assembly merged;
    merged.SetName(first.Name());
    for (const auto* list : {&definitions.ofFirst, &definitions.ofSecond}) {
        for (const kestrel::AttrDef* definition : *list) {
            merged.Add(*definition);
        }
    }
    merged.SetAttributes(first.Attributes());
    merged.SetMissingAttributes(second.Attributes());
    for (const auto* list : {&nodes.ofFirst, &nodes.ofSecond}) {
        for (const kestrel::Node* node : *list) {
            merged.Add(*node);
        }
    }
    for (const Message* message : Together(Choose(first.Messages(), messagePairs, preference))) {
        std::optional<std::string> node = SenderOf(*message);
        const auto newName = node ? newNames.find(*node) : newNames.end();
        if (newName != newNames.end()) {
            node = newName->second;
        }
        merged.Add(*message, node);
    }
    return merged.Take();
}

}  // namespace vorn
