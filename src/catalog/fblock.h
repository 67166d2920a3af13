#pragma once

#include <unordered_map>

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
    ZMTNode* FindChild(const std::string& name) const override;
    ZMTNode* GetChild(unsigned pos) const override { return GetAt(pos); }

    std::uint32_t FBlockID() const { return fBlockID_; }

  private:
    bool ImportHead(const DOMElement& element, ImportContext& context);
    void Add(std::unique_ptr<ZMTFunction> function);

    std::uint32_t fBlockID_ = 0;
    // The functions by name while they come in: each new one is checked against all that are there. Valid as
    // long as the list has not been changed past Add.
    std::unordered_map<std::string, ZMTFunction*, NameHash, NameEqual> byName_;
    std::uint64_t indexedRevision_ = 0;
};

}  // namespace tarvex
