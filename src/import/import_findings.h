/// What an import has met, for those who help people.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "import/xml/parser_complaint.h"

namespace tarvex {

struct ImportFindings {
    /// The importer's errors and warnings.
    std::uint32_t errors = 0;
    std::uint32_t warnings = 0;
    /// What the parser holds against the document.
    ParserComplaints complaints;
    /// The DTD that a document was to be checked against and that can't be opened, as the document names it;
    /// empty without such.
    std::string missingDtd;
    /// The root is another element than that of a catalog.
    bool isRootUnknown = false;
    /// The root has what no catalog can be read without, definitions of types and units.
    bool hasDefinitions = false;
    /// The root names a namespace or a schema, as catalogs do that are described by a schema and not by a
    /// DTD.
    bool namesSchema = false;
    /// How many forms of newer catalogs were met that were not to be read.
    std::size_t newerFormsRefused = 0;
};

}  // namespace tarvex
