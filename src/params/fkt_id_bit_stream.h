/// The parameter that lists the FunctionIDs of a block.

#pragma once

#include "params/param_kind.h"

namespace tarvex {

/// A bit for each FunctionID that the block offers: bit 7 of byte 0 is function 0x000, bit 6 is 0x001, and so
/// on. As long as the message.
class ZMTParamFktIDBitStream
    : public ZMTParamKind<ZMTParamFktIDBitStream, ZMTParam, ParamKind::FktIDBitStream> {
  public:
    /// Raises 36 to 39; false without "TStream" or "TypeRef" and with another number of cases than one.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;
};

/// The element is the parameter of the function 0x000 that lists the functions of its block.
bool IsFktIDBitStream(const Element& element);

}  // namespace tarvex
