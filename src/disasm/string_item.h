/// Decoded strings.

#pragma once

#include "disasm/item.h"
#include "params/string.h"

namespace tarvex {

/// A text. Its first byte tells the width of the characters that follow, up to a zero one.
class ZMostParameterString : public ZMostParameter {
  public:
    ZMostParameterString(const ZMTParamString& string, std::span<const std::uint8_t> bytes,
                         std::size_t offset)
        : ZMostParameter(string, bytes, offset), string_(string) {}

    /// The characters, "." for those that can't be printed, and " {NotTerm}" when no zero character ends
    /// them.
    std::string GetText() const override;

  private:
    const ZMTParamString& string_;
};

}  // namespace tarvex
