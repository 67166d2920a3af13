#include "export/scaling.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "import/text/names.h"
#include "import/text/utf8.h"
#include "params/pos_and_data.h"

namespace tarvex {
namespace {

/// Read as a text, since that gives the nearest double; a power need not.
double PowerOfTen(std::int32_t exponent) {
    using Limits = std::numeric_limits<double>;
    const std::string text =
        "1e" + std::to_string(std::clamp(exponent, Limits::min_exponent10, Limits::max_exponent10));
    double power = 1;
    std::from_chars(text.data(), text.data() + text.size(), power);
    return power;
}

std::string UnitOf(const ZMTParamNumber& number) {
    constexpr std::string_view kNone = "none";
    if (!number.HasPhysicalUnit() || HasCoordinates(number) || NamesEqual(number.UnitText(), kNone)) {
        return {};
    }
    // Every signal of the number gets a copy.
    return std::string(CutAtCharacter(number.UnitText(), kUnitSize));
}

}  // namespace

sigscale ScalingOf(const ZMTParamNumber& number) {
    sigscale scaling;
    scaling.factor = PowerOfTen(number.Exponent());
    if (number.HasRange() && std::isfinite(number.RangeMin()) && std::isfinite(number.RangeMax())) {
        scaling.minimum = number.RangeMin();
        scaling.maximum = number.RangeMax();
    }
    if (number.Step() != 0 && std::isfinite(number.Step())) {
        scaling.step = number.Step();
    }
    scaling.unit = UnitOf(number);
    return scaling;
}

Cost CostOf(const sigscale& scaling) {
    constexpr std::size_t kBytesPerLetter = 6;  // a quotation mark in XML
    const std::size_t unitSize = scaling.unit.size();
    Cost cost = kScalingCost;
    cost.steps += unitSize;
    cost.memory += unitSize;
    cost.written += kBytesPerLetter * unitSize;
    return cost;
}

}  // namespace tarvex
