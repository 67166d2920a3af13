/// What the kinds of parameters have in common.

#pragma once

#include <type_traits>

#include "catalog/param.h"
#include "params/collector.h"
#include "params/param_decoder.h"
#include "params/selector.h"

namespace tarvex {

/// Base of a kind of parameters `Self`, which extends `Base` by fields.
template <class Self, class Base, ParamKind kKind>
class ZMTParamKind : public ZMTNodeKind<Self, Base, static_cast<NodeType>(kKind)> {
  public:
    bool Disassemble(ParamDecoder& decoder, std::span<const std::uint8_t> bytes) const override {
        static_assert(std::is_base_of_v<ZMTSelector, Self> == CanSelect(kKind));
        static_assert(std::is_base_of_v<ZMTCollector, Self> == IsCollector(kKind));
        return decoder.Decode(static_cast<const Self&>(*this), bytes);
    }

  protected:
    using ZMTNodeKind<Self, Base, static_cast<NodeType>(kKind)>::ZMTNodeKind;
};

}  // namespace tarvex
