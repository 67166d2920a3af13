/// What the classes of nodes that can be copied have in common.

#pragma once

#include <memory>

#include "catalog/node.h"

namespace tarvex {

/// Base of a class `Self` that extends `Base` by fields. A copy takes over the fields by the assignment of
/// the class, which knows them all; the children of a list are cloned.
template <class Self, class Base, NodeType kType>
class ZMTNodeKind : public Base {
  public:
    using Base::Base;
    using Base::CopyFrom;

    NodeType GetType() const override { return kType; }

    bool CopyFrom(const ZMTNode* other) override {
        if (other == nullptr || !other->IsType(this->GetType())) {
            return false;
        }
        const auto& original = static_cast<const Self&>(*other);
        static_cast<Self&>(*this) = original;
        if constexpr (requires { this->CopyChildren(original); }) {
            return this->CopyChildren(original);
        }
        return true;
    }

    std::unique_ptr<ZMTNode> Clone() const override {
        auto copy = std::make_unique<Self>();
        if (!copy->CopyFrom(this)) {
            return nullptr;
        }
        return copy;
    }
};

}  // namespace tarvex
