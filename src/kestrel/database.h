/// How the library keeps a database. The records here extend the public ones by what the library has to know
/// about them, so that a public record converts to its extension by a cast. A large database has a million
/// messages and several million signals: what a record carries is kept small, and a message gets an index of
/// its signals only when it has many.

#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kestrel/keyed_hash.h"
#include "kestrel/records.h"

namespace kestrel {

class Database;

/// The text in a record's name array, without the unused bytes.
std::string_view NameIn(const char (&name)[kNameSize]);

/// An attribute definition with what the library notes about it. Owns the texts of its record.
struct AttrDef : attr_def {
    explicit AttrDef(std::size_t definitionPosition) : attr_def(), position(definitionPosition) {}
    AttrDef(const AttrDef&) = delete;
    AttrDef(AttrDef&&) = delete;
    AttrDef& operator=(const AttrDef&) = delete;
    AttrDef& operator=(AttrDef&&) = delete;
    ~AttrDef();

    /// Number of the definition in its database, counted from 0 in the order of creation.
    std::size_t position;
    /// Whether a value was set already.
    bool used = false;
    /// Whether the values are texts; settled by the first value, since texts are taken over.
    bool holdsTexts = false;
};

/// The attribute values of one object, in the order in which they were first set.
class AttrValues {
  public:
    struct Value {
        /// The definition that the value belongs to; it and a text are owned by the database.
        const AttrDef* definition;
        kestrel_attr_value_t value;
    };

    /// Sets the value of the attribute, in the place of an earlier one if there is one.
    void Set(const AttrDef& definition, kestrel_attr_value_t value);

    const std::vector<Value>& Values() const { return values_; }

  private:
    std::vector<Value> values_;
};

/// Finds records by the names that stand in them. A record is added when it is created, usually without a
/// name; each look-up reads again the names that were empty until then.
template <class Record>
class RecordIndex {
  public:
    /// Adds a record. Its name is not read yet.
    void Add(Record& record) { unnamed_.push_back({added_++, &record}); }

    /// The record that was added first among those with this name, or null. The empty name finds a record
    /// without a name.
    Record* Find(std::string_view name) {
        TakeNewNames();
        if (name.empty()) {
            return unnamed_.empty() ? nullptr : unnamed_.front().record;
        }
        const auto found = named_.find(name);
        return found == named_.end() ? nullptr : found->second.record;
    }

  private:
    struct Entry {
        std::size_t order;
        Record* record;
    };

    void TakeNewNames() {
        auto kept = unnamed_.begin();
        for (const Entry& entry : unnamed_) {
            const std::string_view name = NameIn(entry.record->name);
            if (name.empty()) {
                *kept++ = entry;
                continue;
            }
            const auto [place, isNew] = named_.try_emplace(std::string(name), entry);
            // A record that was named late may be older than the one that has the name already.
            if (!isNew && entry.order < place->second.order) {
                place->second = entry;
            }
        }
        unnamed_.erase(kept, unnamed_.end());
    }

    std::size_t added_ = 0;
    /// Records whose name was empty at the last look-up, in the order of adding.
    std::vector<Entry> unnamed_;
    KeyedMap<std::string, Entry> named_;
};

/// A node with its attribute values.
struct Node : symblk {
    explicit Node(Database& owner) : database(&owner) {}

    /// The database (or holding area) that owns the node.
    Database* database;
    AttrValues attributes;
};

/// A signal as an entry of its message's list of signals. Owns its value descriptions.
struct Signal : sigblk {
    Signal() = default;
    Signal(const Signal&) = delete;
    Signal(Signal&&) = delete;
    Signal& operator=(const Signal&) = delete;
    Signal& operator=(Signal&&) = delete;
    ~Signal();

    /// The next signal of the message, or null. Owned by the database.
    Signal* next = nullptr;
    /// Null without one. Owned by the database, which has it once for all signals that share it.
    const sigscale* scaling = nullptr;
};

/// A message with its attribute values and the list of its signals.
struct Message : msgblk {
    Message(Database& owner, std::uint32_t messageSerial) : database(&owner), serial(messageSerial) {}

    /// Appends a new signal, which the database owns, to the list.
    void AddSignal(Signal& signal);

    /// The first signal of this name, or null; the empty name finds a signal without a name.
    Signal* FindSignal(std::string_view wanted) const;

    /// The database (or holding area) that owns the message.
    Database* database;
    AttrValues attributes;
    /// First and last signal, or null. Owned by the database.
    Signal* firstSignal = nullptr;
    Signal* lastSignal = nullptr;
    std::uint32_t signalCount = 0;
    /// Number of the message among all that the manager has created.
    std::uint32_t serial;
    /// The signals by name; null as long as there are few enough to look at each.
    std::unique_ptr<RecordIndex<Signal>> signalIndex;
};

/// A database: owns its definitions, nodes, messages and signals, each in the order of creation.
class Database {
  public:
    explicit Database(std::string name) : name_(std::move(name)) {}

    AttrDef& CreateAttrDef() { return attrDefs_.emplace_back(attrDefs_.size()); }
    Node& CreateNode();
    Message& CreateMessage(std::uint32_t serial) { return messages_.emplace_back(*this, serial); }
    Signal& CreateSignal(Message& message);
    /// Sets the scaling of a signal of this database; its numbers are finite. The unit is kept as valid
    /// UTF-8, up to a zero character and `kUnitSize` bytes.
    void SetScaling(Signal& signal, sigscale scaling);
    /// Whether any signal has a scaling.
    bool HasScalings() const { return !scalings_.empty(); }

    /// The first node whose name is the first 32 bytes of `name`, or null.
    Node* FindNode(std::string_view name) { return nodeIndex_.Find(name.substr(0, kNameSize)); }
    /// The first message with this identifier, or null.
    Message* FindMessage(std::uint32_t identifier);

    /// Sets a value among `values`, those of an object of the given kind in this database. Does nothing when
    /// the attribute is not defined.
    void SetAttribute(AttrValues& values, AttrObject object, std::string_view attribute,
                      kestrel_attr_value_t value);
    /// Sets a value of a definition of this database.
    void SetAttribute(AttrValues& values, AttrDef& definition, kestrel_attr_value_t value);

    const std::string& Name() const { return name_; }
    void SetName(std::string name) { name_ = std::move(name); }
    AttrValues& Attributes() { return attributes_; }
    const AttrValues& Attributes() const { return attributes_; }
    const std::deque<AttrDef>& AttrDefs() const { return attrDefs_; }
    const std::deque<Node>& Nodes() const { return nodes_; }
    const std::deque<Message>& Messages() const { return messages_; }

  private:
    struct FreeText {
        void operator()(char* text) const { kestrel_free(text); }
    };

    /// Takes a text over and returns the one of its content that is kept.
    char* Keep(char* text);

    std::string name_;
    /// The texts of attribute values, each once: most messages share theirs with many others.
    KeyedMap<std::string_view, std::unique_ptr<char, FreeText>> texts_;
    /// Declared before everything that has attribute values, which need the definitions until they are gone.
    std::deque<AttrDef> attrDefs_;
    AttrValues attributes_;
    std::deque<Node> nodes_;
    RecordIndex<Node> nodeIndex_;
    std::deque<Signal> signals_;
    /// Each once: a database has a few dozen of them, whatever the number of its signals.
    std::set<sigscale> scalings_;
    std::deque<Message> messages_;
    /// The first `messages_indexed_` messages by identifier; a look-up adds the rest.
    KeyedMap<std::uint32_t, Message*> messageIndex_;
    std::size_t messagesIndexed_ = 0;
};

}  // namespace kestrel
