#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "import/import_manager.h"
#include "support/temp_dir.h"

namespace tarvex::test {

/// The type and unit definitions that test catalogs use: type_unsigned_byte/word/long (1, 2, 4 bytes), their
/// signed partners, type_enum, type_string, type_bool, type_bitfield, type_void, type_record, type_array,
/// type_stream; unit_none ("none") and unit_km_h ("km/h", so "kmh").
extern const char* const kDefinitions;

/// A catalog with these blocks in front of the definitions.
std::string CatalogOf(std::string_view blocks, std::string_view definitions = kDefinitions);

/// A block "Amp" with FBlockID 0x22 and these "Function" elements.
std::string BlockOf(std::string_view functions);

/// A catalog whose block "Amp" has one property "Volume" (0x400) of class "PUnclassified" with these
/// "PUParam" elements.
std::string CatalogOfParams(std::string_view params);

/// A "PUParam" of that name and type element, with position 1 in OPType 12 (Status) unless other operation
/// elements are given.
std::string Param(std::string_view name, std::string_view type,
                  std::string_view operations = "<PReportStatus><ParamPos>1</ParamPos></PReportStatus>");

/// What came of an import. The catalog belongs to the manager kept here.
struct Imported {
    bool ok = false;
    ZMTCatalog* catalog = nullptr;
    /// The entries of the import log: from the line after "Importer messages" to the line before the summary.
    std::string messages;
    /// The whole import log.
    std::string log;
    /// The tree log, with the directory of the catalog as "@DIR@".
    std::string tree;
    /// What went to the message sink, one text per entry.
    std::vector<std::string> console;

    TempDir dir;
    std::unique_ptr<ZMostFCatManager> manager;
};

/// Imports a catalog text, written as "Cat.xml", with import log and tree log. Paths begin with "/Cat". Forms
/// of newer catalogs are read only with `readNewer`.
std::unique_ptr<Imported> ImportText(std::string_view xml, bool validate = false, bool readNewer = false);

}  // namespace tarvex::test
