/// The boolean parameter: a byte of named bits.

#pragma once

#include "params/bit_field.h"
#include "params/param_kind.h"

namespace tarvex {

/// Up to 8 bits of named booleans in one byte. Bits 8 to 15 may be declared; they find no room in it.
class ZMTParamBool : public ZMTParamKind<ZMTParamBool, ZMTParamBitField, ParamKind::Bool> {
  public:
    /// Raises 93, 95 to 98 and those of the bits; false without "TBool" or "TypeRef" or when a bit fails.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    std::uint32_t MaxLength() const override { return 8; }
};

}  // namespace tarvex
