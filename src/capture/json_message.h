/// Messages that are JSON objects.

#pragma once

#include <string>
#include <string_view>

#include "capture/address_names.h"

namespace tarvex {

/// Reads the text of one object. Keys may be written in any case: fBlockID, instanceID, fktID, opType, data,
/// and what else ColumnOf knows; sourceAddrHigh and sourceAddrLow, targetAddrHigh and targetAddrLow. Numbers
/// are numbers, texts hexadecimal; the data may be an array of either, or an object with such a one as
/// "data". Empty on success, else what is wrong.
std::string ParseJsonMessage(std::string_view text, CapturedMessage& out, const AddressNames& names);

}  // namespace tarvex
