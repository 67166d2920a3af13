/// Catalogs as the page shows them.

#pragma once

#include <string>

#include "kestrel/atomic_file.h"
#include "review/catalog_reading.h"

namespace tarvex::page {

/// Writes all data of a page. The pieces are
/// - "overview": the catalog, its blocks, what was lost, and where everything else is;
/// - "functions": what every list of functions needs, block by block;
/// - "functions-0", "functions-1", ...: functions of one block each, with their parameters;
/// - "faults-0", ...: for each block that has any, the faults that are about none of its functions; the last
///   has those about no block;
/// - "descriptions-0", ...: the beginnings of those of a block's functions;
/// - "search-0", ...: what is searched (search_index.h).
void WriteCatalog(const review::CatalogReading& reading, kestrel::AtomicFile& file);

/// What people call the catalog: the name of its file, without its path.
std::string CatalogName(const review::CatalogReading& reading);

}  // namespace tarvex::page
