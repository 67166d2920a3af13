#pragma once

#include "params/bit_field.h"

namespace tarvex {

/// Up to 8 bits of named booleans in one byte. Bits 8 to 15 may be declared; they find no room in it.
class ZMTParamBool : public ZMTParamBitField {
  public:
    int GetType() const override { return kParamBool; }
    /// Raises 93, 95 to 98 and those of the bits; false without "TBool" or "TypeRef" or when a bit fails.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }

    std::uint32_t MaxLength() const override { return 8; }
};

}  // namespace tarvex
