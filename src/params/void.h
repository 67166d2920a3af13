#pragma once

#include "catalog/param.h"

namespace tarvex {

/// A parameter without data, as every Get has.
class ZMTParamVoid : public ZMTParam {
  public:
    int GetType() const override { return kParamVoid; }
    /// Raises 100 and 101; false without "TVoid" or "TypeRef".
    bool Import(const DOMElement& element, ImportContext& context) override;
    /// A nameless one is called "{Void}"; raises 11 when even the name element is missing. Always true.
    bool ImportParamName(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    bool Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const override;
};

}  // namespace tarvex
