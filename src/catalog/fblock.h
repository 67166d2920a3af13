#pragma once

#include "catalog/child_list.h"
#include "catalog/function.h"

namespace tarvex {

/// FBlockIDs lie below this.
inline constexpr std::int32_t kFBlockIDEnd = 256;

/// A function block. The slot of a function is its FunctionID.
class ZMTFBlock : public ZMTNode, public ZMTChildList<ZMTFunction> {
  public:
    int GetType() const override { return kFBlock; }
    /// Reads an "FBlock" element. The catalog is asked for blocks of the same ID or name. Raises 139 to 146
    /// and those of the functions; false when the block is of no use.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Resolve(ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    ZMTNode* FindChild(const std::string& name) const override { return FindByName(name); }
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }

    std::uint32_t FBlockID() const { return fBlockID_; }

  private:
    bool ImportHead(const DOMElement& element, ImportContext& context);

    std::uint32_t fBlockID_ = 0;
};

}  // namespace tarvex
