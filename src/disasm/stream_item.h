/// Decoded streams.

#pragma once

#include "disasm/container_item.h"
#include "params/stream.h"

namespace tarvex {

/// The parameters of one case of a stream.
class ZMostParameterStream : public ContainerItem {
  public:
    ZMostParameterStream(const ZMTParamStream& stream, const ZMTParamStreamCase& streamCase,
                         ZMostParameterListBaseInfo& info)
        : ContainerItem(stream, info), streamCase_(streamCase) {}

    /// The name of the case: the selector and its values.
    std::string GetText() const override { return streamCase_.GetName(); }

  private:
    const ZMTParamStreamCase& streamCase_;
};

}  // namespace tarvex
