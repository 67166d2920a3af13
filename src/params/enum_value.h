#pragma once

#include "catalog/node.h"

namespace tarvex {

/// One named code, or range of codes, of an enumeration.
class ZMTEnumValue : public ZMTNode {
  public:
    int GetType() const override { return kEnumValue; }
    /// Reads a "TEnumValue" element; raises 75 and 76, false without a usable code.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    bool CopyFrom(const ZMTNode* other) override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }

    /// The codes that the value stands for, both included.
    std::uint32_t CodeMin() const { return codeMin_; }
    std::uint32_t CodeMax() const { return codeMax_; }

  private:
    std::uint32_t codeMin_ = 0;
    std::uint32_t codeMax_ = 0;
};

}  // namespace tarvex
