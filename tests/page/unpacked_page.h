/// Pages as a browser sees them.

#pragma once

#include <map>
#include <string>

#include <nlohmann/json.hpp>

namespace tarvex::test {

/// The data of a page by their names, unpacked. Throws when something can't be unpacked.
std::map<std::string, nlohmann::json> PiecesOf(const std::string& page);

}  // namespace tarvex::test
