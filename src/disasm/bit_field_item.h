/// Decoded bit fields and booleans, and their bits.

#pragma once

#include <memory>

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
    std::string_view GetName() const override;
    /// "[bit3]", in long fields "[bit 3]", with the bit's name if it has one.
    void AppendLabel(std::string& out) const override;
    /// The catalog's text for the value, else "1" or "0".
    void AppendText(std::string& out) const override;

    unsigned Bit() const { return bit_; }
    bool Value() const { return value_; }
    /// The catalog says something of the bit.
    bool IsDescribed() const { return boolField_ != nullptr; }

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
                           std::size_t offset)
        : ZMostParameter(field, bytes, offset), field_(field) {}

    /// Made when somebody asks for them.
    const ZMostParameterListBaseInfo* Members() const override;

    unsigned BitCount() const { return field_.Length(); }
    /// The item of a bit below BitCount.
    ZMostParameterBoolField BitAt(unsigned bit) const;
    /// Appends the bits that the catalog says nothing of, from the highest to the lowest, and what they are:
    /// "[bit15..13 8] = 000 1". Nothing when there are none.
    void AppendOtherBits(std::string& out) const;

  private:
    const ZMTParamBitField& field_;
    mutable std::unique_ptr<ZMostParameterListBaseInfo> bits_;
};

}  // namespace tarvex
