/// Functions of the catalog tree.

#pragma once

#include "catalog/hole.h"
#include "catalog/op_types.h"
#include "catalog/operation.h"

namespace tarvex {

/// FunctionIDs lie below this.
inline constexpr std::int32_t kFunctionIDEnd = 0x1000;

/// A function of a function block. The slot of an operation is its OPType.
class ZMTFunction : public ZMTNodeKind<ZMTFunction, ZMTListNode<ZMTNode, ZMTOperation>, kFunction> {
  public:
    ZMTFunction() = default;
    /// An error function: a template that other functions merge in.
    ZMTFunction(const std::string& paramDefId, std::uint32_t index);

    /// Reads a "Function" element, or copies the function that its "FktDefRef" names. The parent block is
    /// asked for functions of the same ID or name. Raises 106 to 120, 124 to 135, 138 and 150; false when the
    /// function is of no use.
    bool Import(const Element& element, ImportContext& context) override;
    /// Builds an error function from its "ERParam" element; raises 128 to 135.
    bool ImportErrorFunction(const Element& element, ImportContext& context);
    /// Deletes operations that fail (122); raises 123 when none is left. Always true.
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    std::uint32_t FunctionID() const { return functionID_; }
    ClassKind Class() const { return classKind_; }
    void SetClass(ClassKind kind) { classKind_ = kind; }

    /// The element that the function was made of, of a copy the one that refers to the original. It belongs
    /// to the document.
    const Element* GetElement() const { return element_; }

    /// The operation of an OPType, created on demand with the name that the class gives it.
    ZMTOperation& OperationAt(unsigned opType);
    /// Removes all parameters from all operations; the operations stay.
    void WithdrawParameters();

    /// The parameters that its operations have lost, also those of operations that lost all of them and are
    /// not there.
    const Losses& LostParams() const { return losses_; }
    /// Takes memory of the run; ends the import with AllowanceSpent when there is none left.
    void NoteLoss(unsigned opType, const Hole& hole, ImportContext& context);

    std::size_t CopySize() const override { return ZMTNodeKind::CopySize() + losses_.MemorySize(); }

  private:
    bool ImportCopy(const Element& element, const std::string& fktDefRef, ImportContext& context);
    bool ImportHead(const Element& element, ImportContext& context);
    bool ImportClass(const Element& functionClass, ImportContext& context);

    std::uint32_t functionID_ = 0;
    ClassKind classKind_ = ClassKind::Unknown;
    Losses losses_;
    const Element* element_ = nullptr;
};

}  // namespace tarvex
