/// Decoded parameters without data.

#pragma once

#include "disasm/item.h"
#include "params/void.h"

namespace tarvex {

/// A parameter without data.
class ZMostParameterVoid : public ZMostParameter {
  public:
    ZMostParameterVoid(const ZMTParamVoid& parameter, std::span<const std::uint8_t> bytes, std::size_t offset)
        : ZMostParameter(parameter, bytes, offset) {}
};

}  // namespace tarvex
