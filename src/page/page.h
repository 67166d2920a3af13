/// A catalog as one file for a browser.

#pragma once

#include <string>

#include "review/catalog_reading.h"

namespace tarvex::page {

/// Writes the page of a catalog, which was read with descriptions and could be imported. What stands at the
/// path is replaced in one step. Equal catalogs of equal file names give equal bytes. Throws
/// std::runtime_error when the page can't be written, or when the path is a file that the catalog was read
/// from; nothing has changed then.
void WritePage(const review::CatalogReading& reading, const std::string& path);

}  // namespace tarvex::page
