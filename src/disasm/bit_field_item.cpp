#include "disasm/bit_field_item.h"

#include "disasm/wording.h"
#include "import/text/format_text.h"

namespace tarvex {
namespace {

/// Fields of so many bits or more have bit numbers of two digits.
constexpr std::uint32_t kLongField = 10;

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamBitField& field, Bytes message) {
    return TakeItem<ZMostParameterBitField>(*this, field, field.GetBytesInMsg(), message, 1 + field.Length());
}

bool ZMostParameterListBaseInfo::Decode(const ZMTParamBoolField& /*bit*/, Bytes /*message*/) {
    return false;
}

ZMostParameterBitField::ZMostParameterBitField(const ZMTParamBitField& field,
                                               std::span<const std::uint8_t> bytes, std::size_t offset)
    : ZMostParameter(field, bytes, offset) {
    const std::uint32_t value = RawValue();
    for (unsigned bit = 0; bit < field.Length(); ++bit) {
        bits_.Append(std::make_unique<ZMostParameterBoolField>(field, field.FindBit(bit), bit,
                                                               (value >> bit & 1U) != 0, offset));
    }
}

std::string ZMostParameterBoolField::GetName() const {
    return boolField_ == nullptr ? std::string() : boolField_->GetName();
}

std::string ZMostParameterBoolField::GetLabel() const {
    const std::string number = FormatText(field_.Length() >= kLongField ? "[bit%2d]" : "[bit%d]", bit_);
    const std::string name = GetName();
    return name.empty() ? number : number + " " + name;
}

std::string ZMostParameterBoolField::GetText() const {
    if (boolField_ == nullptr) {
        return value_ ? "1" : "0";
    }
    return ShownName(value_ ? boolField_->TrueDesc() : boolField_->FalseDesc());
}

}  // namespace tarvex
