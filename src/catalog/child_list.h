/// Lists of nodes.

#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalog/item_range.h"
#include "catalog/node.h"
#include "catalog/slot_index.h"
#include "import/log/tree_log.h"
#include "import/text/names.h"

namespace tarvex {

/// Owns child nodes in slots whose index carries meaning (function block ID, function ID, OPType, position).
/// A slot may be empty; holes are part of the model.
template <class T>
class ZMTChildList {
  public:
    ZMTChildList() = default;
    ZMTChildList(const ZMTChildList&) = delete;
    virtual ~ZMTChildList() = default;

    /// Adds the element at the end.
    virtual void Append(std::unique_ptr<T> element) {
        slots_.push_back(std::move(element));
        Placed(Size() - 1);
    }

    /// Stores the element in a slot; the list grows by empty slots as needed. What the slot held is deleted,
    /// so callers look first.
    virtual void SetAt(std::unique_ptr<T> element, unsigned pos) {
        if (pos >= slots_.size()) {
            slots_.resize(std::size_t{pos} + 1);
        }
        slots_[pos] = std::move(element);
        Placed(pos);
    }

    /// Makes room for n slots without adding any; returns the size, which stays the same.
    virtual unsigned Reserve(unsigned n) {
        slots_.reserve(n);
        return Size();
    }

    virtual void Clear() {
        slots_.clear();
        byName_.reset();
        Changed();
    }

    /// Deletes the elements in slots first to last, both included, and leaves the slots empty.
    virtual void DeleteRange(unsigned first, unsigned last) {
        for (unsigned pos = first; pos < Size() && pos <= last; ++pos) {
            slots_[pos].reset();
        }
        Changed();
    }

    /// Null for an empty slot and beyond the end.
    virtual T* GetAt(unsigned pos) const { return pos < slots_.size() ? slots_[pos].get() : nullptr; }

    /// Finds the first occupied slot; `pos` is 0 if there is none.
    virtual bool GetFirst(unsigned& pos) const {
        const bool found = GetNext(pos, kBeforeFirst);
        pos = found ? pos : 0;
        return found;
    }

    /// Finds the first occupied slot after `after`; kBeforeFirst means from the beginning.
    virtual bool GetNext(unsigned& pos, unsigned after) const {
        for (unsigned i = after + 1; i < Size(); ++i) {
            if (slots_[i]) {
                pos = i;
                return true;
            }
        }
        return false;
    }
    static constexpr unsigned kBeforeFirst = ~0U;

    /// The element of that name in the lowest slot, without regard to case; null if there is none. When the
    /// name of an element changes after a look-up, NameChanged has to be called.
    virtual T* FindByName(const SoughtName& name) const {
        if (Size() > kFewSlots || !name.IsShort()) {
            return Names().Find(slots_, name, NameOf);
        }
        const auto found = std::ranges::find_if(slots_, [&](const auto& element) {
            return element && NamesEqual(element->GetName(), name.Text());
        });
        return found == slots_.end() ? nullptr : found->get();
    }

    /// Slots, holes included.
    virtual unsigned Size() const { return static_cast<unsigned>(slots_.size()); }

    /// 0 clears; a smaller size deletes the elements beyond it, a larger one appends empty slots.
    virtual void Resize(unsigned n) {
        slots_.resize(n);
        Changed();
    }

    /// An element has another name now.
    void NameChanged(const T& element) {
        if (!byName_) {
            return;
        }
        const auto found = std::ranges::find(slots_, &element, &std::unique_ptr<T>::get);
        if (found != slots_.end()) {
            byName_->Add(element.GetName(), static_cast<unsigned>(found - slots_.begin()));
        }
    }

    /// Occupied slots.
    virtual unsigned Count() const {
        return static_cast<unsigned>(
            std::ranges::count_if(slots_, [](const auto& element) { return element != nullptr; }));
    }

    /// Finds the first occupied slot after `start` whose preceding slot is empty.
    virtual bool FindGap(unsigned& pos, unsigned start) const {
        for (unsigned i = std::max(start + 1, 1U); i < Size(); ++i) {
            if (slots_[i] && !slots_[i - 1]) {
                pos = i;
                return true;
            }
        }
        return false;
    }

    /// Removes the holes and keeps the order of the elements.
    virtual void Compact() {
        std::erase(slots_, nullptr);
        byName_.reset();
        Changed();
    }

    /// The elements in slot order, without the holes.
    ItemRange<const T> Items() const { return {slots_.data(), slots_.data() + slots_.size()}; }
    ItemRange<T> Items() { return {slots_.data(), slots_.data() + slots_.size()}; }

    /// The elements in slot order, still owned by the list; empty slots as null entries if asked for.
    virtual std::vector<T*> GetItems(bool withHoles) const {
        std::vector<T*> items;
        items.reserve(slots_.size());
        for (const auto& element : slots_) {
            if (element || withHoles) {
                items.push_back(element.get());
            }
        }
        return items;
    }

    /// Replaces the elements by clones of another list's, slot by slot, with `newParent` as their parent.
    /// When a clone fails the list is left empty and the result is false.
    virtual bool CopyFrom(const ZMTChildList<T>* other, ZMTNode* newParent) {
        Clear();
        if (other == nullptr) {
            return false;
        }
        slots_.resize(other->slots_.size());
        for (std::size_t pos = 0; pos < slots_.size(); ++pos) {
            if (!other->slots_[pos]) {
                continue;
            }
            std::unique_ptr<ZMTNode> clone = other->slots_[pos]->Clone();
            if (!clone) {
                Clear();
                return false;
            }
            clone->SetParent(newParent);
            slots_[pos].reset(static_cast<T*>(clone.release()));
        }
        Changed();
        return true;
    }

    /// Bytes of memory that copies of all elements take, and their slots.
    std::size_t CopySizeOfAll() const {
        std::size_t size = slots_.size() * sizeof(slots_.front());
        for (const auto& element : slots_) {
            size += element ? element->CopySize() : 0;
        }
        return size;
    }

    virtual void DumpAll(ZMostTreeLog& treeLog) const {
        for (const auto& element : slots_) {
            if (element && !treeLog.IsFull()) {
                element->Dump(treeLog);
            }
        }
    }

    /// Resolves the elements in order and stops with false at the first that fails.
    virtual bool ResolveAll(ImportContext& context) {
        const bool areAllGood = std::ranges::all_of(
            slots_, [&](const auto& element) { return !element || element->Resolve(context); });
        byName_.reset();  // this was when names are looked for
        return areAllGood;
    }

    /// Resolves the elements in order and deletes those that fail; their slots become empty.
    void ResolveOrDelete(ImportContext& context) {
        for (auto& element : slots_) {
            if (element && !element->Resolve(context)) {
                element.reset();
                Changed();
            }
        }
        byName_.reset();
    }

  protected:
    /// Assigning a node takes over its fields alone. Its children are cloned by CopyFrom, which may fail.
    ZMTChildList& operator=(const ZMTChildList& /*other*/) {  // NOLINT(cert-oop54-cpp)
        return *this;
    }

    const std::vector<std::unique_ptr<T>>& Slots() const { return slots_; }
    /// Called after every change of the slots.
    virtual void Changed() {}

  private:
    /// So many slots are looked through faster than an index is made.
    static constexpr unsigned kFewSlots = 16;

    static const std::string& NameOf(const T& element) { return element.GetName(); }

    void Placed(unsigned pos) {
        if (byName_ && slots_[pos]) {
            byName_->Add(slots_[pos]->GetName(), pos);
        }
        Changed();
    }

    /// Made at the first look-up.
    SlotIndex& Names() const {
        if (!byName_) {
            byName_ = std::make_unique<SlotIndex>();
            for (unsigned pos = 0; pos < Size(); ++pos) {
                if (slots_[pos]) {
                    byName_->Add(slots_[pos]->GetName(), pos);
                }
            }
        }
        return *byName_;
    }

    std::vector<std::unique_ptr<T>> slots_;
    mutable std::unique_ptr<SlotIndex> byName_;  // of longer lists that are searched
};

/// A list of definitions, which parameters look up by identifier.
template <class T>
class ZMTDefList : public ZMTChildList<T> {
  public:
    /// The element of that identifier in the lowest slot, without regard to case; null if there is none. An
    /// element keeps its identifier once it has been looked for.
    virtual T* FindByDefName(const std::string& defName) const {
        const auto& slots = this->Slots();
        if (!byDefName_) {
            byDefName_ = std::make_unique<SlotIndex>();
            for (unsigned pos = 0; pos < slots.size(); ++pos) {
                if (slots[pos]) {
                    byDefName_->Add(slots[pos]->GetDefName(), pos);
                }
            }
        }
        return byDefName_->Find(slots, defName,
                                [](const T& element) -> const std::string& { return element.GetDefName(); });
    }

  protected:
    void Changed() override { byDefName_.reset(); }

  private:
    // Made at the first look-up after a change: catalogs look up once per parameter.
    mutable std::unique_ptr<SlotIndex> byDefName_;
};

}  // namespace tarvex
