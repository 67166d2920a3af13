#pragma once

#include "import/xml/vocabulary.h"

namespace tarvex {

/// All that the import of catalogs reads. Versions, descriptions and the definitions of classes, commands,
/// reports and errors are not among it.
const Vocabulary& CatalogVocabulary();

}  // namespace tarvex
