/// Parameters in lines for people.

#pragma once

#include <string>

#include "catalog/param.h"

namespace tarvex::review {

/// A parameter with everything that is known of it, in lines; what it is made of stands indented below it.
std::string ParamText(const ZMTParam& param);

}  // namespace tarvex::review
