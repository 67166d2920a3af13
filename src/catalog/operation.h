#pragma once

#include "catalog/child_list.h"
#include "catalog/op_types.h"
#include "catalog/param.h"

namespace tarvex {

/// One operation of a function. The slot of a parameter is its position in the message, with holes until
/// Resolve; the slot of the operation in its function is its OPType.
class ZMTOperation : public ZMTNode, public ZMTChildList<ZMTParam> {
  public:
    ZMTOperation() = default;
    /// An operation of a function of that kind, named after its OPType (0 to 15).
    ZMTOperation(ClassKind kind, unsigned opType);

    int GetType() const override { return kOperation; }
    unsigned GetPosition() const override { return opType_; }
    /// Always false: operations have no element of their own.
    bool Import(const DOMElement& element, ImportContext& context) override;
    /// Resolves the parameters, closes the gaps between them and renumbers them. Raises 102 and 103; false
    /// only when a parameter fails.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }
    using ZMTChildList<ZMTParam>::CopyFrom;
    bool CopyFrom(const ZMTNode* other) override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    std::size_t CopySize() const override { return ZMTNode::CopySize() + CopySizeOfAll(); }

    unsigned OpType() const { return opType_; }

  private:
    bool BelongsToErrorFunction() const;

    unsigned opType_ = 0;
};

}  // namespace tarvex
