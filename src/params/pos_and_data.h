/// "Pos" and "Data": how a message says which part of an array or record it carries.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "catalog/param.h"

namespace tarvex {

/// The coordinate parameter of a record or array: x in the high byte, y in the low one.
inline constexpr const char* kPosName = "Pos";
inline constexpr std::int32_t kPosBytes = 2;
/// The record or array that "Pos" points into.
inline constexpr const char* kDataName = "Data";

/// The parameter is a number called "Pos" with room for both coordinates.
bool HasCoordinates(const ZMTParam& param);

/// The parameter is a record called "Pos" of two fields, x and y, that have a byte each.
bool IsPositionRecord(const ZMTParam& param);

/// The node is an array or a record, whose parts "Pos" may name.
bool IsContainer(const ZMTNode& node);

/// The node as a parameter if it is of a kind that can select; else null.
const ZMTParam* AsSelector(const ZMTNode* node);

/// The selector of an array or record: for one called "Data" its sibling "Pos" if that is of a kind that can
/// select, for another one the array or record that it stands in. Null if there is none; nothing if "Data"
/// has no sibling "Pos" at all. Names are compared without regard to case.
std::optional<const ZMTParam*> FindSelector(const ZMTParam& param);

/// The name of a selector for the tree log; empty for none.
std::string SelectorName(const ZMTParam* selector);

}  // namespace tarvex
