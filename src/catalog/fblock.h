/// Function blocks of the catalog tree.

#pragma once

#include "catalog/function.h"
#include "catalog/lost_ids.h"

namespace tarvex {

/// FBlockIDs lie below this.
inline constexpr std::int32_t kFBlockIDEnd = 256;

/// A function block. The slot of a function is its FunctionID.
class ZMTFBlock : public ZMTListNode<ZMTNode, ZMTFunction> {
  public:
    NodeType GetType() const override { return kFBlock; }
    /// Reads an "FBlock" element. The catalog is asked for blocks of the same ID or name. Raises 139 to 146
    /// and those of the functions; false when the block is of no use.
    bool Import(const Element& element, ImportContext& context) override;
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    std::uint32_t FBlockID() const { return fBlockID_; }
    /// The functions that it has in the catalog and not in the tree.
    const LostIDs& LostFunctions() const { return lostFunctions_; }

  private:
    bool ImportHead(const Element& element, ImportContext& context);
    void NoteLost(const Element& functionElement, const ImportContext& context);

    std::uint32_t fBlockID_ = 0;
    LostIDs lostFunctions_;
};

}  // namespace tarvex
