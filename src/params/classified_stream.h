/// The classified stream parameter.

#pragma once

#include <string>

#include "params/max_length.h"
#include "params/param_kind.h"

namespace tarvex {

/// Content of a media type: two bytes with the length of what follows, then the media type as ASCII text that
/// ends with a zero byte, then the content.
class ZMTParamClassifiedStream
    : public ZMTParamKind<ZMTParamClassifiedStream, ZMTParam, ParamKind::ClassifiedStream> {
  public:
    /// Raises 203 to 205; false without "TCStream" or "TypeRef".
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;
    std::size_t CopySize() const override { return ZMTParamKind::CopySize() + mediaType_.size(); }

    /// The largest number of bytes that follow the length, or kNoMaxLength.
    std::uint32_t MaxLength() const { return maxLength_; }
    /// The media type that the catalog gives; empty when messages alone tell it.
    const std::string& MediaType() const { return mediaType_; }

  private:
    std::uint32_t maxLength_ = kNoMaxLength;
    std::string mediaType_;
};

}  // namespace tarvex
