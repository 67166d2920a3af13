#pragma once

#include "catalog/param.h"

namespace tarvex {

/// A text of bounded or unbounded size.
class ZMTParamString : public ZMTParam {
  public:
    static constexpr std::uint32_t kUnbounded = 0xFFFFFFFF;

    int GetType() const override { return kParamString; }
    /// Raises 86 to 88; false without "TString", "MaxSize" or "TypeRef".
    bool Import(const DOMElement& element, ImportContext& context) override;
    bool Dump(ZMostFCatLog& treeLog) const override;
    bool CopyFrom(const ZMTNode* other) override;
    std::unique_ptr<ZMTNode> Clone() const override { return CloneByCopy(*this); }
    bool Disassemble(ZMostParameterListBaseInfo& info, std::span<const std::uint8_t> bytes) const override;

    /// The largest size in bytes, or kUnbounded.
    std::uint32_t MaxSize() const { return maxSize_; }

  private:
    std::uint32_t maxSize_ = 0;
};

}  // namespace tarvex
