/// The elements of a list, for loops.

#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>

namespace tarvex {

/// The elements of a list in slot order, without its holes: const ones where `T` is const. A view, valid as
/// long as no slot is added.
template <class T>
class ItemRange {
    using Slot = const std::unique_ptr<std::remove_const_t<T>>;

  public:
    class Iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::remove_const_t<T>;
        using difference_type = std::ptrdiff_t;
        using pointer = T*;
        using reference = T&;

        Iterator() = default;
        Iterator(Slot* slot, Slot* end) : slot_(slot), end_(end) { SkipHoles(); }

        T& operator*() const { return **slot_; }
        T* operator->() const { return slot_->get(); }
        Iterator& operator++() {
            ++slot_;
            SkipHoles();
            return *this;
        }
        Iterator operator++(int) {  // NOLINT(cert-dcl21-cpp): as algorithms want it
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return slot_ == other.slot_; }

      private:
        void SkipHoles() {
            while (slot_ != end_ && *slot_ == nullptr) {
                ++slot_;
            }
        }

        Slot* slot_ = nullptr;
        Slot* end_ = nullptr;
    };

    ItemRange(Slot* begin, Slot* end) : begin_(begin), end_(end) {}

    Iterator begin() const { return {begin_, end_}; }
    Iterator end() const { return {end_, end_}; }

  private:
    Slot* begin_;
    Slot* end_;
};

}  // namespace tarvex
