#include "disasm/number_item.h"

#include <cmath>

#include "disasm/item_list.h"
#include "import/text/format_text.h"
#include "import/text/wording.h"
#include "params/layout.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

/// Exponents of so much at most are written in full, others with six digits or in powers of ten.
constexpr std::int32_t kFullExponent = 5;

/// A number that is not 0, with its point moved to the left or to the right.
void AppendScaled(std::string& out, std::int64_t raw, std::int32_t exponent) {
    const std::size_t begin = out.size() + (raw < 0 ? 1 : 0);
    AppendNumber(out, raw);
    if (exponent >= 0) {
        out.append(static_cast<std::size_t>(exponent), '0');
        return;
    }
    const auto decimals = static_cast<std::size_t>(-exponent);
    if (const std::size_t digits = out.size() - begin; digits <= decimals) {
        out.insert(begin, decimals + 1 - digits, '0');
    }
    out.insert(out.size() - decimals, 1, '.');
}

std::string PowerText(double raw, std::int32_t exponent) {
    const double value = raw * std::pow(10.0, exponent);
    const double magnitude = std::fabs(value);
    return FormatText(magnitude > 0.1 && magnitude < 10 ? "%f" : "%e", value);
}

}  // namespace

bool ZMostParameterListBaseInfo::Decode(const ZMTParamNumber& number, Bytes message) {
    if (const auto hole = UnsureEnd(number)) {
        return FaultAtHole(number, *hole);
    }
    const std::size_t offset = Offset();
    if (!TakeItem<ZMostParameterNumber>(*this, number, number.GetBytesInMsg(), message)) {
        return false;
    }
    constexpr std::size_t kMaxValueBytes = 4;
    if (const std::size_t bytes = Offset() - offset; bytes > kMaxValueBytes) {
        Fault(number, offset, "has " + ByteCount(bytes) + ", too many for a value");
    }
    return true;
}

std::int64_t ZMostParameterNumber::SignedValue() const {
    const std::uint32_t raw = RawValue();
    if (!number_.IsSigned()) {
        return raw;
    }
    switch (Bytes().size()) {
        case 1:
            return static_cast<std::int8_t>(raw);
        case 2:
            return static_cast<std::int16_t>(raw);
        case 4:
            return static_cast<std::int32_t>(raw);
        default:
            return raw;
    }
}

void ZMostParameterNumber::AppendText(std::string& out) const {
    if (IsPosition()) {
        out += "PosX=";
        AppendNumber(out, RawValue(0, 1));
        out += " PosY=";
        AppendNumber(out, RawValue(1, 1));
        return;
    }
    const std::int64_t value = SignedValue();
    const std::int32_t exponent = number_.Exponent();
    if (value == 0) {
        out += '0';
    } else if (-kFullExponent <= exponent && exponent <= kFullExponent) {
        AppendScaled(out, value, exponent);
    } else {
        out += PowerText(static_cast<double>(value), exponent);
    }
}

bool ZMostParameterNumber::IsPosition() const {
    return HasCoordinates(number_);
}

std::string_view ZMostParameterNumber::UnitText() const {
    return number_.HasPhysicalUnit() && !IsPosition() ? std::string_view(number_.UnitText())
                                                      : std::string_view();
}

}  // namespace tarvex
