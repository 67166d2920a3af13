/// Parameters as the page shows them.

#pragma once

#include <string>

#include "catalog/param.h"

namespace tarvex::page {

/// A parameter in words, with all that it is made of, as an object. Members that would be empty are left out.
std::string ParamData(const ZMTParam& param);

}  // namespace tarvex::page
