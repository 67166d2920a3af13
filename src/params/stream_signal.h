/// The signals of stream cases.

#pragma once

#include "params/param_kind.h"

namespace tarvex {

/// A few bits of a stream case that is made of such, packed one behind the other, most significant bit first.
class ZMTParamStreamSignal : public ZMTParamKind<ZMTParamStreamSignal, ZMTParam, ParamKind::StreamSignal> {
  public:
    static constexpr std::int32_t kMaxBits = 32;

    /// Reads a "StreamSignal" element; raises 206 to 211, false without a usable name, index or length.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// In bits, 1 to kMaxBits.
    std::uint32_t BitLength() const { return bitLength_; }

  private:
    bool ImportIdx(const Element& element, ImportContext& context);
    bool ImportLength(const Element& element, ImportContext& context);

    std::uint32_t bitLength_ = 0;
};

}  // namespace tarvex
