/// Which operations get signals with StrictExport.

#pragma once

#include "catalog/operation.h"

namespace tarvex {

/// The operation has no array, string or stream, and at most one record: its last parameter, with none of
/// these and no record in it. False for null.
bool PassesStrictCheck(const ZMTOperation* operation);

}  // namespace tarvex
