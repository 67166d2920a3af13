/// Pages as a browser sees them.

#pragma once

#include <map>
#include <string>

#include <nlohmann/json.hpp>

#include "support/temp_dir.h"

namespace tarvex::test {

/// The data of a page by their names, unpacked. Fails the test when something can't be unpacked.
std::map<std::string, nlohmann::json> PiecesOf(const std::string& page);

/// The page of a catalog text, whose file is "Cat.xml".
std::string PageOf(const std::string& catalog);

}  // namespace tarvex::test
