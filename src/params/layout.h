/// How far the bytes of an operation's message are known without a message.

#pragma once

#include <optional>

#include "catalog/operation.h"

namespace tarvex {

class ZMTParamRecord;

enum class Layout : unsigned {
    Complete,   ///< Each parameter has its place.
    Open,       ///< From some parameter on the message alone tells where things are.
    Incomplete  ///< A parameter is missing, or its place is not sure.
};

/// The verdict on an operation once it is resolved. Incomplete goes before Open.
Layout LayoutOf(const ZMTOperation& operation);

/// The parameter is of a kind whose length a message alone tells: a string, an array, any stream.
bool HasOpenLength(const ZMTParam& param);

/// What a parameter of an array, record or stream case lacks, of those that should stand directly in it, or
/// has twice: the first of them. Nothing for other parameters.
std::optional<Hole> MissingMember(const ZMTParam& container);

/// Why the place of a parameter's end is not sure, though nothing is missing inside: a number whose type has
/// no size, an enumeration whose codes do not tell one, a record with another number of fields than it says.
std::optional<Hole> UnsureEnd(const ZMTParam& param);

/// The number, a parameter of an operation, chooses what stands in the operation's record.
bool IsSwitch(const ZMTParam& number);

/// A selector beside the record chooses which of its fields stand in a message.
bool HasChosenFields(const ZMTParamRecord& record);

}  // namespace tarvex
