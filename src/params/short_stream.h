/// The short stream parameter.

#pragma once

#include "params/case_stream.h"
#include "params/max_length.h"

namespace tarvex {

/// A stream that begins with a byte that says how many bytes follow. Without cases, these are just bytes.
class ZMTParamShortStream
    : public ZMTParamKind<ZMTParamShortStream, ZMTParamCaseStream, ParamKind::ShortStream> {
  public:
    /// Raises 201 to 203 and those of the cases; false without "TShortStream" or "TypeRef", and, without a
    /// message of its own, when arrays, records and streams are nested too deep.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// The largest number of bytes that follow, or kNoMaxLength.
    std::uint32_t MaxLength() const { return maxLength_; }

  private:
    std::uint32_t maxLength_ = kNoMaxLength;
};

}  // namespace tarvex
