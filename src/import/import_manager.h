/// Imports of catalogs, from the file to the tree.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "catalog/catalog.h"
#include "import/import_findings.h"
#include "import/log/message_log.h"
#include "import/xml/document_reader.h"

namespace tarvex {

/// Written into the header of the importer's messages.
inline constexpr const char* kImporterVersion = "1.0.11";

/// The group of the catalogs that a program is told to read.
inline constexpr std::uint16_t kCatalogGroup = 1;

/// What a text for the message sink is about.
enum class ImportEvent {
    Reading = 1,  ///< Files and the parser, and failures.
    Result = 2,   ///< What an import came to.
    TreeLog = 3,  ///< The tree log.
};

/// Turns catalog files into trees and keeps them. One import runs at a time in the process.
class ZMostFCatManager {
  public:
    /// Receives progress and failure texts.
    using Sink = std::function<void(const std::string& text, ImportEvent event)>;

    ZMostFCatManager();
    explicit ZMostFCatManager(std::unique_ptr<DocumentReader> reader);
    ZMostFCatManager(const ZMostFCatManager&) = delete;
    ZMostFCatManager& operator=(const ZMostFCatManager&) = delete;
    virtual ~ZMostFCatManager();

    // Settings, made before Import.
    bool Validate = true;    ///< Validate documents that declare a document type.
    bool ReadNewer = false;  ///< Read the forms that newer catalogs have.
    Sink MessageSink;
    std::set<std::uint32_t> ImportLogExclusions;  ///< Message numbers left out of the import log.
    std::vector<std::string> ProtectedPaths;      ///< Files that no log may be written over.
    FaultList* faults = nullptr;                  ///< Takes the faults of the next imports; not owned.
    bool keepDocument = false;  ///< Keep the elements of the last import until the next or Clear.

    /// Imports a catalog file. An empty name becomes the file's base name, or "FunctionCatalog". Group
    /// numbers 0 to 4 register the catalog; with an empty log path no import log is written. The same name
    /// and path again do nothing if the first import succeeded, and fail if it failed. False when the file is
    /// missing, the parser reports an error or a fatal error is raised.
    bool Import(std::string& catalogName, const std::string& catalogPath, std::uint16_t group,
                const std::string& importLogPath);

    /// The first catalog of that name, without regard to case, or of that path; null if there is none. The
    /// manager owns it.
    ZMTCatalog* FindCatalog(const std::string& catalogName) const;
    ZMTCatalog* FindCatalogByPath(const std::string& catalogPath) const;

    /// The catalogs of a group in the order in which they were registered; group 0 holds all.
    std::vector<ZMTCatalog*> CatalogsOfGroup(std::uint16_t group) const;

    /// Writes the trees of all catalogs to a file, which is deleted first. An empty path writes nothing.
    void WriteTreeLog(const std::string& treeLogPath);

    /// The file is one that an import has read: a catalog, or the DTD or another entity of one.
    bool HasRead(const std::string& path) const;

    /// The files outside the folder of their catalog that imports have opened, whether they succeeded or not.
    /// Links are resolved.
    const std::set<std::string>& OutsideFiles() const { return outsideFiles_; }

    /// The element "FunctionCatalog" of the last import, if its document is kept; null without one.
    const Element* Root() const { return root_; }

    /// What the last import that read a file has met.
    const ImportFindings& Findings() const { return findings_; }

    /// Deletes all catalogs and forgets the files that failed.
    void Clear();

    /// Clear has been called.
    bool IsCleared() const { return isCleared_; }
    /// The list of catalogs has changed since the manager was made.
    bool IsChanged() const { return isChanged_; }

  private:
    struct FileRecord {
        std::string name;
        std::string path;
        bool operator==(const FileRecord&) const = default;
    };
    struct ImportRun;

    bool ImportOnce(std::string& catalogName, const std::string& catalogPath, std::uint16_t group,
                    const std::string& importLogPath);
    bool ImportFile(ZMTCatalog& catalog, const std::string& catalogPath, const std::string& importLogPath);
    std::size_t NoteFiles(const std::string& catalogPath);
    void OpenImportLog(ImportRun& run, const std::string& importLogPath);
    void BeginImportLog(ImportRun& run);
    const Element* ParseFile(ImportRun& run);
    const Element* ReadDocument(ImportRun& run);
    const Element* Fail(ImportRun& run, const std::string& text) const;
    void ImportDocument(ImportRun& run, const Element& document, ZMTCatalog& catalog);
    void NoteForm(const Element& document);
    void ImportRoot(ImportRun& run, const Element& root, ZMTCatalog& catalog);
    void ReportResult(ImportRun& run) const;
    void Register(ZMTCatalog& catalog, std::uint16_t group);
    void Remove(const ZMTCatalog* catalog);
    bool IsProtected(const std::string& logPath) const;
    void Send(const std::string& text, ImportEvent event) const;

    std::unique_ptr<DocumentReader> reader_;
    bool isCleared_ = false;
    std::vector<std::unique_ptr<ZMTCatalog>> catalogs_;
    std::vector<std::vector<ZMTCatalog*>> groups_;
    std::vector<FileRecord> failedFiles_;
    std::set<std::string> importLogPaths_;  // of the imports so far
    std::set<std::string> sourcePaths_;     // likewise
    std::set<std::string> outsideFiles_;
    ImportFindings findings_;
    const Element* root_ = nullptr;
    bool isChanged_ = false;
};

}  // namespace tarvex
