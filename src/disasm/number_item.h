/// Decoded numbers.

#pragma once

#include "disasm/item.h"
#include "params/number.h"

namespace tarvex {

/// A number: its physical value, or both coordinates of a "Pos".
class ZMostParameterNumber : public ZMostParameter {
  public:
    ZMostParameterNumber(const ZMTParamNumber& number, std::span<const std::uint8_t> bytes,
                         std::size_t offset)
        : ZMostParameter(number, bytes, offset), number_(number) {}

    /// Scaled by the number's Exponent, without its unit.
    void AppendText(std::string& out) const override;
    /// The raw value with the number's sign.
    std::int64_t SignedValue() const;
    /// The physical unit as the catalog writes it; empty for none.
    std::string_view UnitText() const;
    /// The number is both coordinates of a "Pos".
    bool IsPosition() const;

  private:
    const ZMTParamNumber& number_;
};

}  // namespace tarvex
