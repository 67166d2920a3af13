/// What kinds of parameters are called.

#pragma once

#include "catalog/node_types.h"

namespace tarvex {

/// In the JSON of all programs: "number", "bit_field".
const char* KindName(ParamKind kind);

}  // namespace tarvex
