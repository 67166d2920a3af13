/// Which records of two lists belong together.

#pragma once

#include <cstddef>
#include <unordered_map>
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

    /// Pairs what is left and has equal keys. A key is a text or a number that `keyOfBefore` and `keyOfAfter`
    /// put into an optional, empty for a record that has none.
    template <class KeyOfBefore, class KeyOfAfter>
    void By(const KeyOfBefore& keyOfBefore, const KeyOfAfter& keyOfAfter) {
        if (beforeLeft_ == 0 || afterLeft_ == 0) {
            return;
        }
        using Key = typename decltype(keyOfBefore(*before_.front()))::value_type;
        // The first record of each key, and behind each record the next of the same key.
        kestrel::KeyedMap<Key, std::size_t> first;
        std::vector<std::size_t> next(before_.size(), kNone);
        for (std::size_t place = before_.size(); place-- > 0;) {
            if (isTaken_[place]) {
                continue;
            }
            if (auto key = keyOfBefore(*before_[place])) {
                const auto [entry, isNew] = first.try_emplace(std::move(*key), place);
                if (!isNew) {
                    next[place] = entry->second;
                    entry->second = place;
                }
            }
        }
        for (std::size_t place = 0; place < after_.size() && beforeLeft_ > 0; ++place) {
            if (partners_[place] == nullptr) {
                PairWithFirst(place, keyOfAfter(*after_[place]), first, next);
            }
        }
    }

    /// The same where both lists have keys of the same kind.
    template <class KeyOf>
    void By(const KeyOf& keyOf) {
        By(keyOf, keyOf);
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

    template <class Key, class First>
    void PairWithFirst(std::size_t place, const Key& key, First& first,
                       const std::vector<std::size_t>& next) {
        const auto found = key ? first.find(*key) : first.end();
        if (found == first.end() || found->second == kNone) {
            return;
        }
        partners_[place] = before_[found->second];
        isTaken_[found->second] = true;
        found->second = next[found->second];
        --beforeLeft_;
        --afterLeft_;
    }

    Records before_;
    Records after_;
    std::vector<bool> isTaken_;
    Records partners_;
    std::size_t beforeLeft_;
    std::size_t afterLeft_;
};

}  // namespace vorn
