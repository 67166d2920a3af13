#pragma once

#include "disasm/item.h"
#include "params/void.h"

namespace tarvex {

/// A parameter without data.
class ZMostParameterVoid : public ZMostParameter {
  public:
    ZMostParameterVoid(const ZMTParamVoid& parameter, std::size_t offset)
        : ZMostParameter(parameter, {}, offset) {}
};

}  // namespace tarvex
