/// A catalog as the commands read it: its tree, its elements and everything that is held against it.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "catalog/catalog.h"
#include "import/import_manager.h"
#include "import/text/files.h"
#include "review/progress_bar.h"

namespace tarvex::review {

/// How catalogs are read. Unless told otherwise whatever their version, and without regard to their DTD.
struct ReadingOptions {
    bool areNewerRead = true;
    bool isValidated = false;
    /// Versions, kinds and descriptions are kept, too.
    bool areDescriptionsRead = false;
    /// Makes what reads the document.
    std::function<std::unique_ptr<DocumentReader>(Vocabulary)> makeReader = MakeXercesReader;
};

/// Reads one catalog and keeps tree and elements as long as it lives.
class CatalogReading {
  public:
    /// "-" stands for standard input. That and a pipe are read to their end first; a DTD beside them is not
    /// found. Throws
    /// std::runtime_error when there is no file that could be read.
    CatalogReading(const std::string& path, const ReadingOptions& options);
    CatalogReading(const CatalogReading&) = delete;
    CatalogReading& operator=(const CatalogReading&) = delete;
    ~CatalogReading();

    /// As the user knows the file.
    const std::string& ShownPath() const { return shownPath_; }
    /// The file that a fault stands in, as the user knows it.
    const std::string& FileOf(const Fault& fault) const {
        return fault.file.empty() || fault.file == path_ ? shownPath_ : fault.file;
    }
    /// Null when the catalog could not be imported.
    const ZMTCatalog* Catalog() const { return catalog_; }
    /// Those of the parser first. One of them, fatal or of the parser, tells why there is no catalog.
    const std::vector<Fault>& Faults() const { return faults_.All(); }
    /// There were more than anybody reads; they are not kept.
    bool AreFaultsCut() const { return !faults_.HasRoom(); }
    /// The element "FunctionCatalog"; null when there is none.
    const Element* Root() const { return manager_.Root(); }
    /// The catalog, or a file that it reads.
    bool HasRead(const std::string& path) const { return manager_.HasRead(path); }
    /// Files outside the folder of the catalog that it reads.
    const std::set<std::string>& OutsideFiles() const { return manager_.OutsideFiles(); }

  private:
    std::unique_ptr<DocumentReader> MakeReader(const ReadingOptions& options);

    std::string shownPath_;
    std::string path_;
    File copy_;  // of what can be read only once
    FaultList faults_;
    std::optional<ProgressBar> bar_;  // while it is read
    ZMostFCatManager manager_;
    const ZMTCatalog* catalog_ = nullptr;
};

}  // namespace tarvex::review
