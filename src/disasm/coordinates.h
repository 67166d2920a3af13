/// What the decoded "Pos" and other selectors say about the data behind them.

#pragma once

#include <cstdint>
#include <optional>

#include "catalog/param.h"
#include "disasm/item_list.h"

namespace tarvex {

/// Which entry or field of an array or record stands in a message, counted from 1, and which one of that
/// entry or field; 0 means all.
struct Coordinates {
    unsigned x = 0;
    unsigned y = 0;
};

/// The selector is a "Pos" of two bytes, x and y: a number, or a record of two fields.
bool HasBothCoordinates(const ZMTParam& selector);

/// The coordinates of an array or record: those of its "Pos", or the one that the container around it leaves.
/// The selector is the container's own, null for none.
Coordinates CoordinatesOf(const ZMTParam& container, const ZMTParam* selector,
                          const ZMostParameterListBaseInfo& info);

/// The decoded value of a selector: of a "Pos" with both coordinates y, the second byte. Nothing for a
/// selector that is null, comes later, or has no single value.
std::optional<std::int64_t> SelectorValue(const ZMTParam* selector, const ZMostParameterListBaseInfo& info);

}  // namespace tarvex
