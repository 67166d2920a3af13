/// Hash containers for keys that come from files. Their hashes depend on a secret that every process draws
/// anew, so that nobody can prepare a file whose keys all fall into one bucket.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace kestrel {

/// The hash of texts and of numbers. Throws `std::runtime_error` where the system has no random numbers.
/// Since it may throw, containers keep the hashes of their keys and need not calculate them again when they
/// grow.
class KeyedHash {
  public:
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const;
    std::size_t operator()(std::uint32_t number) const;
};

template <class Key, class Value>
using KeyedMap = std::unordered_map<Key, Value, KeyedHash, std::equal_to<>>;
template <class Key>
using KeyedSet = std::unordered_set<Key, KeyedHash, std::equal_to<>>;

}  // namespace kestrel
