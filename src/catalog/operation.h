/// Operations of the catalog tree: a function and an OPType, with the parameters of the message.

#pragma once

#include <optional>

#include "catalog/hole.h"
#include "catalog/list_node.h"
#include "catalog/node_kind.h"
#include "catalog/op_types.h"
#include "catalog/param.h"

namespace tarvex {

/// One operation of a function. The slot of a parameter is its position in the message, with holes until
/// Resolve; the slot of the operation in its function is its OPType.
class ZMTOperation : public ZMTNodeKind<ZMTOperation, ZMTListNode<ZMTNode, ZMTParam>, kOperation> {
  public:
    ZMTOperation() = default;
    /// An operation of a function of that kind, named after its OPType (0 to 15).
    ZMTOperation(ClassKind kind, unsigned opType);

    unsigned GetPosition() const override { return opType_; }
    /// Always false: operations have no element of their own.
    bool Import(const Element& element, ImportContext& context) override;
    /// Resolves the parameters, finds the first hole among them, closes the gaps and renumbers them. Raises
    /// 102 and 103; false only when a parameter fails.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    unsigned OpType() const { return opType_; }

    /// The first place at which a parameter is missing. What stands inside the parameters is not looked at.
    const std::optional<Hole>& MissingAt() const { return hole_; }
    /// How many parameters stand in front of that place; all of them when nothing is missing.
    unsigned SoundCount() const { return hole_ ? soundCount_ : Count(); }

  private:
    bool BelongsToErrorFunction() const;
    bool IsInFunction() const;
    const Element* FunctionElement() const;
    void FindHole(std::optional<unsigned> behindGap);

    unsigned opType_ = 0;
    unsigned soundCount_ = 0;
    std::optional<Hole> hole_;
};

}  // namespace tarvex
