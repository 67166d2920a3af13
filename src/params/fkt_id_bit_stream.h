#pragma once

#include "catalog/param.h"

namespace tarvex {

/// A bit for each FunctionID that the block offers: bit 7 of byte 0 is function 0x000, bit 6 is 0x001, and so
/// on. As long as the message.
class ZMTParamFktIDBitStream : public ZMTParam {
  public:
    int GetType() const override { return kParamFktIDBitStream; }
    /// Raises 36 to 39; false without "TStream" or "TypeRef" and with another number of cases than one.
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    bool Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const override;
};

/// The element is the parameter of the function 0x000 that lists the functions of its block.
bool IsFktIDBitStream(const DOMElement& element);

}  // namespace tarvex
