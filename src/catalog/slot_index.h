/// Finds elements of a list by their names.

#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "import/text/names.h"

namespace tarvex {

/// Where a list has its names, without regard to case. A slot given here is where a search begins: no element
/// of that name stands in a lower one. So elements may go, or be replaced, without the index knowing.
class SlotIndex {
  public:
    /// To be called for every element that comes into the list, moves to a lower slot or changes its name.
    void Add(const std::string& name, unsigned slot) {
        unsigned& first = firstSlots_.try_emplace(name, slot).first->second;
        first = std::min(first, slot);
    }

    /// The element in the lowest slot that has the name; null if there is none.
    template <class T, class NameOf>
    T* Find(const std::vector<std::unique_ptr<T>>& slots, const SoughtName& name, const NameOf& nameOf) {
        const auto found = firstSlots_.find(name);
        if (found == firstSlots_.end()) {
            return nullptr;
        }
        for (unsigned& slot = found->second; slot < slots.size(); ++slot) {
            if (T* element = slots[slot].get();
                element != nullptr && NamesEqual(nameOf(*element), name.Text())) {
                return element;
            }
        }
        firstSlots_.erase(found);
        return nullptr;
    }

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const std::string& name) const { return NameHash()(name); }
        std::size_t operator()(const SoughtName& name) const { return name.Hash(); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const std::string& a, const std::string& b) const { return NamesEqual(a, b); }
        bool operator()(const SoughtName& a, const std::string& b) const { return NamesEqual(a.Text(), b); }
        bool operator()(const std::string& a, const SoughtName& b) const { return NamesEqual(a, b.Text()); }
    };

    std::unordered_map<std::string, unsigned, Hash, Equal> firstSlots_;
};

}  // namespace tarvex
