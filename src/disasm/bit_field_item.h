/// Decoded bit fields and booleans, and their bits.

#pragma once

#include "disasm/item_list.h"
#include "params/bit_field.h"

namespace tarvex {

/// One bit of a bit field or boolean.
class ZMostParameterBoolField : public ZMostParameter {
  public:
    /// A bit of the field. `boolField` is its description, null for a bit that has none.
    ZMostParameterBoolField(const ZMTParamBitField& field, const ZMTParamBoolField* boolField, unsigned bit,
                            bool value, std::size_t offset)
        : ZMostParameter(field, {}, offset), field_(field), boolField_(boolField), bit_(bit), value_(value) {}

    NodeType GetType() const override { return kParamBoolField; }
    /// Empty for a bit without a name.
    std::string GetName() const override;
    /// "[bit3]", in long fields "[bit 3]", with the bit's name if it has one.
    std::string GetLabel() const override;
    /// The catalog's text for the value, else "1" or "0".
    std::string GetText() const override;

    unsigned Bit() const { return bit_; }
    bool Value() const { return value_; }

  private:
    const ZMTParamBitField& field_;
    const ZMTParamBoolField* boolField_;
    unsigned bit_;
    bool value_;
};

/// A bit field or boolean: an item for each of its bits, from bit 0 on.
class ZMostParameterBitField : public ZMostParameter {
  public:
    ZMostParameterBitField(const ZMTParamBitField& field, std::span<const std::uint8_t> bytes,
                           std::size_t offset);

    const ZMostParameterListBaseInfo* Members() const override { return &bits_; }

  private:
    ZMostParameterListBaseInfo bits_;
};

}  // namespace tarvex
