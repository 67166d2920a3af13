#include "disasm/bit_field_item.h"

#include "import/text/wording.h"

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

ZMostParameterBoolField ZMostParameterBitField::BitAt(unsigned bit) const {
    return {field_, field_.FindBit(bit), bit, (RawValue() >> bit & 1U) != 0, Offset()};
}

const ZMostParameterListBaseInfo* ZMostParameterBitField::Members() const {
    if (!bits_) {
        bits_ = std::make_unique<ZMostParameterListBaseInfo>();
        const std::uint32_t value = RawValue();
        for (unsigned bit = 0; bit < BitCount(); ++bit) {
            bits_->Append(std::make_unique<ZMostParameterBoolField>(field_, field_.FindBit(bit), bit,
                                                                    (value >> bit & 1U) != 0, Offset()));
        }
    }
    return bits_.get();
}

void ZMostParameterBitField::AppendOtherBits(std::string& out) const {
    const std::uint32_t value = RawValue();
    std::string values;
    for (unsigned end = BitCount(); end > 0; --end) {
        unsigned first = end;
        for (; first > 0 && field_.FindBit(first - 1) == nullptr; --first) {
        }
        if (first == end) {
            continue;
        }
        out += values.empty() ? "[bit" : " ";
        values += values.empty() ? "" : " ";
        AppendNumber(out, end - 1);
        if (end - first > 1) {
            out += "..";
            AppendNumber(out, first);
        }
        for (; end > first; --end) {
            values += (value >> (end - 1) & 1U) != 0 ? '1' : '0';
        }
        ++end;  // the loop goes on below the run
    }
    out.append(values.empty() ? "" : "] = ").append(values);
}

std::string_view ZMostParameterBoolField::GetName() const {
    return boolField_ == nullptr ? std::string_view() : std::string_view(boolField_->GetName());
}

void ZMostParameterBoolField::AppendLabel(std::string& out) const {
    constexpr unsigned kTwoDigits = 10;
    out += field_.Length() >= kLongField && bit_ < kTwoDigits ? "[bit " : "[bit";
    AppendNumber(out, bit_);
    out += GetName().empty() ? "]" : "] ";
    AppendShownName(out, GetName());
}

void ZMostParameterBoolField::AppendText(std::string& out) const {
    if (boolField_ == nullptr) {
        out += value_ ? '1' : '0';
    } else {
        AppendShownName(out, value_ ? boolField_->TrueDesc() : boolField_->FalseDesc());
    }
}

}  // namespace tarvex
