/// Decoded classified streams.

#pragma once

#include "disasm/item.h"
#include "params/classified_stream.h"

namespace tarvex {

/// Content with its media type.
class ZMostParameterClassifiedStream : public ZMostParameter {
  public:
    ZMostParameterClassifiedStream(const ZMTParamClassifiedStream& stream,
                                   std::span<const std::uint8_t> bytes, std::size_t offset)
        : ZMostParameter(stream, bytes, offset) {}

    /// The media type that the message tells, "." for what can't be printed.
    std::string MediaType() const;
    /// What stands behind the media type; nothing when no zero byte ends that.
    std::span<const std::uint8_t> Content() const;
    /// The media type, " {NotTerm}" when no zero byte ends it, and the bytes of the content.
    void AppendText(std::string& out) const override;
};

}  // namespace tarvex
