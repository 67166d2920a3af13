/// Parameters for programs.

#pragma once

#include <nlohmann/json.hpp>

#include "catalog/param.h"

namespace tarvex::review {

/// A parameter with everything that is known of it, and what it is made of.
nlohmann::ordered_json ParamJson(const ZMTParam& param);

}  // namespace tarvex::review
