/// Decoded enumerations.

#pragma once

#include "disasm/item.h"
#include "params/enumeration.h"

namespace tarvex {

/// A code with its name.
class ZMostParameterEnum : public ZMostParameter {
  public:
    ZMostParameterEnum(const ZMTParamEnum& enumeration, std::span<const std::uint8_t> bytes,
                       std::size_t offset)
        : ZMostParameter(enumeration, bytes, offset), enumeration_(enumeration) {}

    /// The name and the code, "Play (0x00)", or the code alone.
    void AppendText(std::string& out) const override;
    /// The name of the first value that has the code; empty if none has.
    std::string_view ValueName() const;

  private:
    const ZMTParamEnum& enumeration_;
};

}  // namespace tarvex
