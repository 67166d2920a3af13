/// The stream parameter.

#pragma once

#include "params/case_stream.h"

namespace tarvex {

/// Content whose layout is chosen by a selector parameter, up to the end of the message at most.
class ZMTParamStream : public ZMTParamKind<ZMTParamStream, ZMTParamCaseStream, ParamKind::Stream> {
  public:
    static constexpr std::uint32_t kOpen = 0xFFFFFFFF;

    /// Raises 28 to 33 and 35; false without "TStream", "Length" or "TypeRef", and, without a message of its
    /// own, when arrays, records and streams are nested too deep. A case that fails is left out.
    bool Import(const Element& element, ImportContext& context) override;
    bool Dump(ZMostTreeLog& treeLog) const override;

    /// Declared length in bytes; kOpen where a newer catalog gives none.
    std::uint32_t Length() const { return length_; }

  private:
    std::uint32_t length_ = 0;
};

}  // namespace tarvex
