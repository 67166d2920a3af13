/// The elements, texts and attributes that the import reads of a catalog. Who reads a new one adds it here.

#pragma once

#include "import/xml/vocabulary.h"

namespace tarvex {

/// All that the import of catalogs reads. Versions, descriptions and the definitions of classes, commands,
/// reports and errors are not among it.
const Vocabulary& CatalogVocabulary();

}  // namespace tarvex
