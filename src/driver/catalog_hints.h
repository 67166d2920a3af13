/// Hints about the catalog: what its import has met, and which setting helps.

#pragma once

#include <string>

#include "catalog/catalog.h"
#include "driver/hints.h"
#include "driver/settings.h"
#include "import/import_findings.h"

namespace tarvex {

/// `catalog` is null after an import that failed.
void HintAtImport(const std::string& catalogPath, const ZMTCatalog* catalog, const ImportFindings& findings,
                  const Settings& settings, Hints& hints);

}  // namespace tarvex
