/// Decoded strings.

#pragma once

#include "disasm/item.h"
#include "params/string.h"

namespace tarvex {

/// How the characters of a string are encoded, by its first byte. Any other value stands for one byte per
/// character.
enum StringEncoding : std::uint8_t { kUtf16 = 0, kLatin9 = 1, kUtf8 = 2 };

/// The character of a byte in ISO 8859-15, which has eight in other places than Unicode.
char32_t Latin9Character(std::uint8_t byte);

/// A text. Its first byte tells the width of the characters that follow, up to a zero one.
class ZMostParameterString : public ZMostParameter {
  public:
    ZMostParameterString(const ZMTParamString& string, std::span<const std::uint8_t> bytes,
                         std::size_t offset)
        : ZMostParameter(string, bytes, offset), string_(string) {}

    /// The characters, "." for those that can't be printed, and " {NotTerm}" when no zero character ends
    /// them. Of an encoding that is not known here only ASCII is shown.
    void AppendText(std::string& out) const override;

  private:
    const ZMTParamString& string_;
};

}  // namespace tarvex
