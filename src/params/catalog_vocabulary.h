/// The elements, texts and attributes that the import reads of a catalog. Who reads a new one adds it here.

#pragma once

#include <string_view>

#include "import/xml/vocabulary.h"

namespace tarvex {

/// Attributes of a root that names a namespace or a schema, as no catalog does that a DTD describes.
inline constexpr std::string_view kSchemaAttributes[] = {
    "xmlns", "xmlns:xsi", "schemaLocation", "xsi:schemaLocation", "xsi:noNamespaceSchemaLocation",
};

/// All that the import of catalogs reads. Versions, descriptions and the definitions of classes, commands,
/// reports and errors are not among it.
const Vocabulary& CatalogVocabulary();

/// The same for programs that show faults: other elements are kept by name, so that one which nobody knows
/// can be pointed at.
Vocabulary FaultVocabulary();
/// The same for programs that show what stands in a catalog: versions, kinds and descriptions besides.
Vocabulary DescriptionVocabulary();

}  // namespace tarvex
