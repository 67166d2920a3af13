/// What the nodes that have children have in common.

#pragma once

#include "catalog/child_list.h"

namespace tarvex {

/// A node with a list: its children are the elements of the list.
template <class Base, class T, class List = ZMTChildList<T>>
class ZMTListNode : public Base, public List {
  public:
    using Base::Base;
    using Base::CopyFrom;
    using List::CopyFrom;

    ZMTNode* FindChild(const SoughtName& name) const override { return List::FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return List::GetAt(pos); }
    std::size_t CopySize() const override { return Base::CopySize() + List::CopySizeOfAll(); }

  protected:
    /// Clones the children of another node; false, and none are left, when one cannot be cloned.
    bool CopyChildren(const ZMTListNode& original) { return List::CopyFrom(&original, this); }
};

}  // namespace tarvex
