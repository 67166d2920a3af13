/// The named codes of an enumeration.

#pragma once

#include "catalog/node_kind.h"

namespace tarvex {

/// One named code, or range of codes, of an enumeration.
class ZMTEnumValue : public ZMTNodeKind<ZMTEnumValue, ZMTNode, kEnumValue> {
  public:
    /// Reads a "TEnumValue" element; raises 75 and 76, false without a usable code.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// The codes that the value stands for, both included.
    std::uint32_t CodeMin() const { return codeMin_; }
    std::uint32_t CodeMax() const { return codeMax_; }

  private:
    std::uint32_t codeMin_ = 0;
    std::uint32_t codeMax_ = 0;
};

}  // namespace tarvex
