#pragma once

#include "review/catalog_reading.h"

namespace tarvex::test {

/// The examples, with descriptions, each read once in the program. Their paths are "roadster.xml" and
/// "convertible.xml".
const review::CatalogReading& Roadster();
const review::CatalogReading& Convertible();

}  // namespace tarvex::test
