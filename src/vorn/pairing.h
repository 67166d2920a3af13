/// Which records of two lists belong together.

#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "kestrel/keyed_hash.h"

namespace vorn {

/// Pairs the records of two lists by one key after another. A record is paired once; of several that have
/// equal keys the first belongs to the first.
template <class Record>
class Pairing {
  public:
    using Records = std::vector<const Record*>;

    Pairing(Records before, Records after)
        : before_(std::move(before)),
          after_(std::move(after)),
          isTaken_(before_.size()),
          partners_(after_.size()),
          beforeLeft_(before_.size()),
          afterLeft_(after_.size()) {}

    /// Pairs what is left and has a key in common. A key is a text or a number. `keysOfBefore` and
    /// `keysOfAfter` give an optional, empty for a record without a key, or a list, of which the first that
    /// another record has counts.
    template <class KeysOfBefore, class KeysOfAfter>
    void By(const KeysOfBefore& keysOfBefore, const KeysOfAfter& keysOfAfter) {
        if (beforeLeft_ == 0 || afterLeft_ == 0) {
            return;
        }
        using Key = typename decltype(keysOfBefore(*before_.front()))::value_type;
        Index<Key> index;
        for (std::size_t place = before_.size(); place-- > 0;) {
            if (!isTaken_[place]) {
                ForEachKey(keysOfBefore(*before_[place]), [&](Key& key) {
                    index.Add(std::move(key), place);
                    return true;
                });
            }
        }
        for (std::size_t place = 0; place < after_.size() && beforeLeft_ > 0; ++place) {
            if (partners_[place] == nullptr) {
                ForEachKey(keysOfAfter(*after_[place]),
                           [&](const Key& key) { return !PairWith(place, index.First(key, isTaken_)); });
            }
        }
    }

    /// The same where both lists have keys of the same kind.
    template <class KeysOf>
    void By(const KeysOf& keysOf) {
        By(keysOf, keysOf);
    }

    const Records& After() const { return after_; }
    /// What belongs to the record at a place of the second list; null for a record of that list alone.
    const Record* PartnerOf(std::size_t place) const { return partners_[place]; }
    /// The records of the first list alone.
    Records Rest() const {
        Records rest;
        for (std::size_t place = 0; place < before_.size(); ++place) {
            if (!isTaken_[place]) {
                rest.push_back(before_[place]);
            }
        }
        return rest;
    }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The places of the first list by key, those of one key in their order.
    template <class Key>
    class Index {
      public:
        /// Places are added from the last to the first.
        void Add(Key key, std::size_t place) {
            const auto [entry, isNew] = first_.try_emplace(std::move(key), entries_.size());
            entries_.push_back({place, isNew ? kNone : entry->second});
            entry->second = entries_.size() - 1;
        }

        /// The first place of this key that is not taken. Those that are taken are looked at once.
        std::size_t First(const Key& key, const std::vector<bool>& isTaken) {
            const auto found = first_.find(key);
            if (found == first_.end()) {
                return kNone;
            }
            std::size_t& entry = found->second;
            while (entry != kNone && isTaken[entries_[entry].place]) {
                entry = entries_[entry].next;
            }
            return entry == kNone ? kNone : entries_[entry].place;
        }

      private:
        struct Entry {
            std::size_t place;
            std::size_t next;  // of the same key
        };

        std::vector<Entry> entries_;
        kestrel::KeyedMap<Key, std::size_t> first_;
    };

    /// Until `use` returns false.
    template <class Key, class Use>
    static void ForEachKey(std::optional<Key> key, const Use& use) {
        if (key) {
            use(*key);
        }
    }
    template <class Key, class Use>
    static void ForEachKey(std::vector<Key> keys, const Use& use) {
        for (Key& key : keys) {
            if (!use(key)) {
                return;
            }
        }
    }

    /// Whether there was one to pair with.
    bool PairWith(std::size_t place, std::size_t partner) {
        if (partner == kNone) {
            return false;
        }
        partners_[place] = before_[partner];
        isTaken_[partner] = true;
        --beforeLeft_;
        --afterLeft_;
        return true;
    }

    Records before_;
    Records after_;
    std::vector<bool> isTaken_;
    Records partners_;
    std::size_t beforeLeft_;
    std::size_t afterLeft_;
};

}  // namespace vorn
