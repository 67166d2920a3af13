#include "disasm/coordinates.h"

#include "disasm/number_item.h"
#include "params/pos_and_data.h"

namespace tarvex {

bool HasBothCoordinates(const ZMTParam& selector) {
    return HasCoordinates(selector) || IsPositionRecord(selector);
}

Coordinates CoordinatesOf(const ZMTParam& container, const ZMTParam* selector,
                          const ZMostParameterListBaseInfo& info) {
    if (selector == nullptr) {
        return {};
    }
    if (selector == container.GetParent()) {
        return {info.MemberNumber(), 0};
    }
    const ZMostParameter* item = info.Find(*selector);
    if (item == nullptr || (item->Members() != nullptr && !IsPositionRecord(*selector))) {
        return {};
    }
    if (HasBothCoordinates(*selector)) {
        return {item->RawValue(0, 1), item->RawValue(1, 1)};
    }
    return {item->RawValue(), 0};
}

std::optional<std::int64_t> SelectorValue(const ZMTParam* selector, const ZMostParameterListBaseInfo& info) {
    const ZMostParameter* item = selector == nullptr ? nullptr : info.Find(*selector);
    if (item == nullptr || (item->Members() != nullptr && !IsPositionRecord(*selector))) {
        return std::nullopt;
    }
    if (HasBothCoordinates(*selector)) {
        return item->RawValue(1, 1);
    }
    return item->IsType(kParamNumber) ? static_cast<const ZMostParameterNumber&>(*item).SignedValue()
                                      : item->RawValue();
}

}  // namespace tarvex
