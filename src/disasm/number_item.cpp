#include "disasm/number_item.h"

#include <cmath>

#include "disasm/item_list.h"
#include "disasm/wording.h"
#include "import/text/format_text.h"
#include "params/layout.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

struct Scale {
    std::int32_t exponent;
    double factor;
    const char* format;
};
constexpr Scale kScales[] = {
    {0, 1, "%.0f"},      {1, 10, "%.0f"},      {2, 100, "%.0f"},      {3, 1'000, "%.0f"},
    {4, 10'000, "%.0f"}, {5, 100'000, "%.0f"}, {-1, 0.1, "%.1f"},     {-2, 0.01, "%.2f"},
    {-3, 0.001, "%.3f"}, {-4, 0.0001, "%.4f"}, {-5, 0.00001, "%.5f"},
};

std::string ScaledText(double raw, std::int32_t exponent) {
    for (const Scale& scale : kScales) {
        if (scale.exponent == exponent) {
            return FormatText(scale.format, raw * scale.factor);
        }
    }
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

std::string ZMostParameterNumber::GetText() const {
    if (HasCoordinates(number_)) {
        return FormatText("PosX=%u PosY=%u", RawValue(0, 1), RawValue(1, 1));
    }
    const std::int64_t value = SignedValue();
    return value == 0 ? "0" : ScaledText(static_cast<double>(value), number_.Exponent());
}

std::string ZMostParameterNumber::UnitText() const {
    return number_.HasPhysicalUnit() && !HasCoordinates(number_) ? number_.UnitText() : std::string();
}

}  // namespace tarvex
