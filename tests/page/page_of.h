/// Pages of small catalogs.

#pragma once

#include <string>

namespace tarvex::test {

/// The page of a catalog text, whose file is "Cat.xml".
std::string PageOf(const std::string& catalog);

}  // namespace tarvex::test
