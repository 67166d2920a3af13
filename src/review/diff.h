/// What differs between two catalogs, for those who implement or test them.

#pragma once

#include <vector>

#include "catalog/catalog.h"
#include "review/diff_change.h"
#include "review/diff_options.h"

namespace tarvex::review {

/// The differences by block and function, in the order of their numbers. What the trees hold is compared: the
/// order, form and encoding of the catalogs make no difference, nor what could not be read in either. The
/// documents of both have to be kept: names, texts and descriptions are looked up in their elements.
std::vector<Change> CompareCatalogs(const ZMTCatalog& before, const ZMTCatalog& after,
                                    const DiffOptions& options);

}  // namespace tarvex::review
