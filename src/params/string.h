/// The string parameter.

#pragma once

#include "params/param_kind.h"

namespace tarvex {

/// A text of bounded or unbounded size.
class ZMTParamString : public ZMTParamKind<ZMTParamString, ZMTParam, ParamKind::String> {
  public:
    static constexpr std::uint32_t kUnbounded = 0xFFFFFFFF;

    /// Raises 86 to 88; false without "TString", "MaxSize" or "TypeRef".
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// The largest size in bytes, or kUnbounded.
    std::uint32_t MaxSize() const { return maxSize_; }

  private:
    std::uint32_t maxSize_ = 0;
};

}  // namespace tarvex
