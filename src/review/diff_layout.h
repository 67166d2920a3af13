/// Differences in how far the bytes of messages are known.

#pragma once

#include "catalog/operation.h"
#include "review/diff_function.h"

namespace tarvex::review {

/// Tells what is missing or not sure in one version of the operation alone, and where else the part that is
/// known ends at another place; if no change of the operation's parameters says so. To be called behind
/// those.
void CompareLayouts(const ZMTOperation& before, const ZMTOperation& after, FunctionChanges& changes);

}  // namespace tarvex::review
