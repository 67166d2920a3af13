#include "vorn/compare.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "kestrel/keyed_hash.h"
#include "kestrel/model_text.h"
#include "vorn/pairing.h"
#include "vorn/record_fields.h"
#include "vorn/renamed_nodes.h"
#include "vorn/unique_names.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::NameIn;
using kestrel::NameText;
using kestrel::Signal;
using Changes = std::vector<Change>;

/// The entries of a list that are linked by their `next`.
template <class Entry>
std::vector<const Entry*> PointersToList(const Entry* entry) {
    std::vector<const Entry*> pointers;
    for (; entry != nullptr; entry = entry->next) {
        pointers.push_back(entry);
    }
    return pointers;
}

/// What of a record of each kind a change carries.
Change ChangeOf(ChangeKind kind, const kestrel::AttrDef& definition) {
    return {kind, "attribute definition", DefinitionName(definition)};
}

Change ChangeOf(ChangeKind kind, const kestrel::Node& node) {
    return {kind, "node", NameText(node.name)};
}

Change ChangeOf(ChangeKind kind, const Message& message) {
    return {kind, "message", NameText(message.name), message.identifier};
}

Change ChangeOf(ChangeKind kind, const Signal& signal) {
    return {kind, "signal", NameText(signal.name)};
}

Change ChangeOf(ChangeKind kind, const valdesc& entry) {
    return {kind, "value", "", entry.value};
}

/// The changes of paired records. `fill(change, before, after)` adds fields and parts to a change; one that
/// stays without any is none.
template <class Record, class Fill>
Changes ChangesOf(const Pairing<Record>& pairing, const Fill& fill) {
    Changes changes;
    for (std::size_t place = 0; place < pairing.After().size(); ++place) {
        const Record& after = *pairing.After()[place];
        const Record* before = pairing.PartnerOf(place);
        if (before == nullptr) {
            changes.push_back(ChangeOf(ChangeKind::Added, after));
            continue;
        }
        Change change = ChangeOf(ChangeKind::Changed, after);
        fill(change, *before, after);
        if (!change.fields.empty() || !change.parts.empty()) {
            changes.push_back(std::move(change));
        }
    }
    for (const Record* before : pairing.Rest()) {
        changes.push_back(ChangeOf(ChangeKind::Removed, *before));
    }
    return changes;
}

void Append(Changes& changes, Changes more) {
    std::ranges::move(more, std::back_inserter(changes));
}

void Append(std::vector<FieldChange>& fields, std::vector<FieldChange> more) {
    std::ranges::move(more, std::back_inserter(fields));
}

/// Where a signal is, and when: a key for messages that have many signals.
std::string PlaceOf(const Signal& signal) {
    std::string place = std::to_string(signal.start_bit);
    if ((signal.flags & kSignalMultiplexed) != 0) {
        place.append("m").append(std::to_string(signal.multiplexer_value));
    }
    return place;
}

/// Compares two databases, once.
class Comparer {
  public:
    Comparer(const kestrel::Database& before, const kestrel::Database& after, const CompareOptions& options)
        : before_(before), after_(after), options_(options), namesBefore_(before), namesAfter_(after) {}

    Comparison Run() {
        Comparison comparison{Definitions()};
        const Pairing<Message> messages = PairMessages(before_, after_, options_.namesakes);
        const RenamedNodes renamed(before_, after_, messages);
        Append(comparison.changes, Nodes(renamed));
        Append(comparison.changes, Messages(messages, renamed));
        comparison.uniqueNames = uniqueNames_;
        return comparison;
    }

  private:
    Changes Definitions() const {
        return ChangesOf(PairDefinitions(before_, after_),
                         [](Change& change, const auto& before, const auto& after) {
                             change.fields = CompareFields(FieldsOf(before), FieldsOf(after));
                         });
    }

    Changes Nodes(const RenamedNodes& renamed) {
        return ChangesOf(PairNodes(before_, after_, renamed),
                         [this](Change& change, const auto& before, const auto& after) {
                             CompareNames(change, before, NameIn(before.name) == NameIn(after.name));
                             Append(change.fields, CompareFields(FieldsOf(before.attributes, values_),
                                                                 FieldsOf(after.attributes, values_)));
                         });
    }

    Changes Messages(const Pairing<Message>& pairing, const RenamedNodes& renamed) {
        return ChangesOf(pairing, [&](Change& change, const Message& before, const Message& after) {
            CompareIdentifiers(change, before, after);
            CompareNames(change, before, AreNamedAlike(before, namesBefore_, after, namesAfter_));
            Append(change.fields, CompareFields(MessageFields(before), MessageFields(after)));
            std::erase_if(change.fields, [&](const FieldChange& field) {
                return field.field == "node" && renamed.AreSame(before.node, after.node);
            });
            change.parts = Signals(before, after);
        });
    }

    Fields MessageFields(const Message& message) {
        Fields fields{{"length", static_cast<double>(message.length)}, {"node", std::monostate()}};
        if (message.node != nullptr) {
            fields.back().second = NameText(message.node->name);
        }
        Fields attributes = FieldsOf(message.attributes, values_);
        std::ranges::move(attributes, std::back_inserter(fields));
        return fields;
    }

    static void CompareIdentifiers(Change& change, const Message& before, const Message& after) {
        if (before.identifier == after.identifier) {
            return;
        }
        change.kind = ChangeKind::Moved;
        const auto numberOf = [](const Message& message) {
            return Identifier{message.identifier & ~kExtendedIdentifier};
        };
        const auto isExtended = [](const Message& message) {
            return (message.identifier & kExtendedIdentifier) != 0;
        };
        change.fields = CompareFields({{"identifier", numberOf(before)}, {"extended", isExtended(before)}},
                                      {{"identifier", numberOf(after)}, {"extended", isExtended(after)}});
    }

    template <class Record>
    void CompareNames(Change& change, const Record& before, bool areAlike) {
        std::string oldName = NameText(before.name);
        if (oldName == change.name) {
            return;
        }
        uniqueNames_ += areAlike ? 1 : 0;
        if (!areAlike || options_.withUniqueNames) {
            change.fields.push_back({"name", std::move(oldName), change.name, areAlike});
        }
    }

    /// Most messages are as they were: nothing of them is written down.
    bool HaveEqualSignals(const Message& before, const Message& after) {
        if (before.signalCount != after.signalCount) {
            return false;
        }
        const Signal* old = before.firstSignal;
        for (const Signal* signal = after.firstSignal; signal != nullptr;
             signal = signal->next, old = old->next) {
            if (NameIn(old->name) != NameIn(signal->name) || !AreSurelyEqual(*old, *signal)) {
                return false;
            }
        }
        return true;
    }

    Changes Signals(const Message& before, const Message& after) {
        if (HaveEqualSignals(before, after)) {
            return {};
        }
        return ChangesOf(PairSignals(before, after),
                         [this](Change& change, const Signal& old, const Signal& signal) {
                             CompareNames(change, old, AreNamedAlike(old, namesBefore_, signal, namesAfter_));
                             if (!AreSurelyEqual(old, signal)) {
                                 Append(change.fields, CompareFields(FieldsOf(old), FieldsOf(signal)));
                                 change.parts = Values(old, signal);
                             }
                         });
    }

    Pairing<Signal> PairSignals(const Message& before, const Message& after) {
        Pairing<Signal> pairing(PointersToList(before.firstSignal), PointersToList(after.firstSignal));
        const auto by = [&](const auto& keysOf) {
            pairing.By([&](const Signal& signal) { return keysOf(signal, namesBefore_); },
                       [&](const Signal& signal) { return keysOf(signal, namesAfter_); });
        };
        const auto name = [](const Signal& signal) { return NameText(signal.name); };
        by([](const Signal& signal, UniqueNames& names) {
            std::vector<std::string> stems = names.StemsOf(signal);
            for (std::string& stem : stems) {
                stem.insert(0, PlaceOf(signal) + " ");
            }
            return stems;
        });
        // A signal that has become a multiplexor may be named as if it had been one.
        by([&](const Signal& signal, UniqueNames&) {
            return std::optional(PlaceOf(signal) + " " + name(signal));
        });
        by([](const Signal& signal, UniqueNames& names) { return names.StemsOf(signal); });
        by([&](const Signal& signal, UniqueNames&) { return std::optional(name(signal)); });
        by([](const Signal& signal, UniqueNames&) { return std::optional(PlaceOf(signal)); });
        return pairing;
    }

    static Changes Values(const Signal& before, const Signal& after) {
        Pairing<valdesc> pairing(PointersToList<valdesc>(before.value_descriptions),
                                 PointersToList<valdesc>(after.value_descriptions));
        pairing.By([](const valdesc& entry) { return std::optional(entry.value); });
        return ChangesOf(pairing, [](Change& change, const valdesc& old, const valdesc& entry) {
            if (NameIn(old.text) != NameIn(entry.text)) {
                change.fields =
                    CompareFields({{"text", NameText(old.text)}}, {{"text", NameText(entry.text)}});
            }
        });
    }

    const kestrel::Database& before_;
    const kestrel::Database& after_;
    const CompareOptions options_;
    UniqueNames namesBefore_;
    UniqueNames namesAfter_;
    kestrel::ValueTexts values_;
    std::size_t uniqueNames_ = 0;
};

}  // namespace

Comparison Compare(const kestrel::Database& before, const kestrel::Database& after,
                   const CompareOptions& options) {
    return Comparer(before, after, options).Run();
}

}  // namespace vorn
