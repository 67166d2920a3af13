/// Faults and texts for programs.

#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "review/catalog_reading.h"

namespace tarvex::review {

/// A fault with file, place, kind, number, text, element and path; null for what it does not have.
nlohmann::ordered_json FaultJson(const CatalogReading& reading, const Fault& fault);

/// Null for an empty text.
nlohmann::ordered_json OrNull(const std::string& text);

/// A value in one line. Bytes that are no UTF-8 are replaced.
std::string DumpJson(const nlohmann::ordered_json& json);

}  // namespace tarvex::review
