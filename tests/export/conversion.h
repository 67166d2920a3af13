/// Conversions of small catalogs, and the databases that come of them.

#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "export/exporter.h"
#include "support/catalog_import.h"

namespace tarvex::test {

/// A property and a method whose only parameter, a void one, has these operation elements.
std::string Property(std::string_view fktID, std::string_view name,
                     std::string_view operations = "<PCmdGet/>");
std::string Method(std::string_view fktID, std::string_view name,
                   std::string_view operations = "<MCmdStart/>");

/// A function block with these functions; without any it has the property "Volume" (0x400) with a Get.
std::string Block(std::string_view fBlockID, std::string_view name, std::string_view functions = "");

/// A catalog and what a conversion of it needs. Each Export is the run of a new exporter.
class Conversion {
  public:
    /// Imports a catalog with these blocks.
    explicit Conversion(std::string_view blocks);

    /// A new exporter for the settings below. Writes the alias-names and network-configuration files.
    std::unique_ptr<ZVornExporter> Exporter() const;
    int Export() const { return Exporter()->Export(); }
    /// Exports, and reads the output file. Fails the test when the export does.
    nlohmann::json Database() const;

    ZMTCatalog& Catalog() const { return *imported_->catalog; }
    /// The directory of the catalog, which is "Cat.xml" there.
    const TempDir& Dir() const { return imported_->dir; }

    std::string aliasNames;            ///< Content of the alias-names file; none when empty.
    std::string networkConfiguration;  ///< Content of the network-configuration file; none when empty.
    NameSet include;
    NameSet exclude;
    /// No signals and no write protection unless a test wants them.
    ExportFlags flags{.writeSignals = false, .makeReadOnly = false};
    std::string output;  ///< "out.vorn" beside the catalog unless a test changes it.

  private:
    std::string FileOf(std::string_view name, const std::string& content) const;

    std::unique_ptr<Imported> imported_;
};

/// The names of the nodes or messages of a database, in order.
std::vector<std::string> NamesIn(const nlohmann::json& list);

/// The message of that name; fails the test when there is none.
nlohmann::json MessageNamed(const nlohmann::json& database, std::string_view name);

}  // namespace tarvex::test
