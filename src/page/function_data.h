/// Functions as the page shows them.

#pragma once

#include <functional>
#include <string>

#include "catalog/param.h"
#include "page/function_piece.h"
#include "page/json_text.h"
#include "review/catalog_reading.h"

namespace tarvex::page {

/// A fault with its line. The file is named where it is not the catalog.
void AddFault(const review::CatalogReading& reading, const Fault& fault, JsonText& json);

/// A function as an object, with its operations, messages, signals and faults. `numberOf` gives a parameter
/// the number that it has in the same piece of the page.
std::string FunctionData(const review::CatalogReading& reading, const FunctionPart& part,
                         const std::function<std::size_t(const ZMTParam& param)>& numberOf);

}  // namespace tarvex::page
