/// Which operations the elements of a catalog select.

#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "catalog/op_types.h"

namespace tarvex {

/// An operation element, and where it counts.
struct OpTypeSelection {
    std::string_view name;
    unsigned opType = 0;
    ClassKind kind = ClassKind::Unknown;
};

/// Every element that selects an operation, by name.
inline constexpr auto kOpTypeSelections = [] {
    std::array<OpTypeSelection, 2 * std::size(kOpTypes)> rows{};
    for (unsigned opType = 0; opType < std::size(kOpTypes); ++opType) {
        const OpTypeRow& row = kOpTypes[opType];
        rows[opType] = {row.propertyElement, opType, ClassKind::Property};
        rows[std::size(kOpTypes) + opType] = {row.methodElement, opType, ClassKind::Method};
    }
    std::ranges::sort(rows, {}, &OpTypeSelection::name);
    return rows;
}();

/// The operation that the element of this name selects; null for any other.
inline const OpTypeSelection* FindOpTypeSelection(std::string_view name) {
    const auto* found = std::ranges::lower_bound(kOpTypeSelections, name, {}, &OpTypeSelection::name);
    return found != kOpTypeSelections.end() && found->name == name && name != kNotYet ? found : nullptr;
}

}  // namespace tarvex
