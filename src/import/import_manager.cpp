#include "import/import_manager.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "catalog/import_context.h"
#include "import/log/messages.h"
#include "import/log/tree_log.h"
#include "import/text/files.h"
#include "import/text/format_text.h"
#include "import/xml/dom_error_handler.h"
#include "params/catalog_vocabulary.h"
#include "params/factory.h"

namespace tarvex {
namespace {

using enum ImportEvent;

constexpr std::uint16_t kMaxGroup = 4;
constexpr std::uint16_t kAllCatalogs = 0;

constexpr const char* kDefaultCatalogName = "FunctionCatalog";

/// Set while an import runs anywhere in the process.
bool isImporting = false;

struct ImportGuard {
    ImportGuard() { isImporting = true; }
    ImportGuard(const ImportGuard&) = delete;
    ImportGuard& operator=(const ImportGuard&) = delete;
    ~ImportGuard() { isImporting = false; }
};

/// A log leaves half of what a run may write to what comes after it.
Allowance LogRoom(const ZMTCatalog& catalog) {
    return Allowance(std::min(kLogBytes.For(catalog.InputBytes()), catalog.Run().Left().written / 2));
}

/// What a log has used of its room.
void TakeWritten(ZMTCatalog& catalog, const Allowance& room, const Allowance& left) {
    catalog.Run().Take({0, 0, room.Left() - left.Left()});
}

/// A file can be opened to add to it, and closed.
bool CanBeWritten(const std::string& path) {
    File file = OpenForWriting(path, WriteMode::Append);
    return file != nullptr && CloseWritten(std::move(file));
}

std::string AsFolder(std::string path) {
    return path.ends_with('/') ? path : path + '/';
}

bool NamesSchema(const Element& root) {
    std::string value;
    return std::ranges::any_of(
        kSchemaAttributes, [&](std::string_view attribute) { return GetAttribute(root, attribute, value); });
}

std::string Load(Text number) {
    return LoadText(number);
}

template <class... Args>
std::string Format(Text number, const Args&... args) {
    return FormatText(LoadText(number), args...);
}

}  // namespace

/// The log of one import and what it needs to know.
struct ZMostFCatManager::ImportRun {
    const std::string& path;
    ZMostFCatLog log;
    std::string logPath;       // once a log can be written; empty without one
    std::string firstLines;    // of the log, which begins when all that is read is known
    ZDOMErrorHandler handler;  // outlives the parser, which keeps a pointer to it
};

ZMostFCatManager::ZMostFCatManager() : ZMostFCatManager(MakeXercesReader(CatalogVocabulary())) {}

ZMostFCatManager::ZMostFCatManager(std::unique_ptr<DocumentReader> reader)
    : reader_(std::move(reader)), groups_(kMaxGroup + 1) {}

ZMostFCatManager::~ZMostFCatManager() = default;

bool ZMostFCatManager::Import(std::string& catalogName, const std::string& catalogPath, std::uint16_t group,
                              const std::string& importLogPath) {
    if (catalogPath.empty()) {
        return false;
    }
    if (catalogName.empty()) {
        catalogName = BaseName(catalogPath);
    }
    if (catalogName.empty()) {
        catalogName = kDefaultCatalogName;
    }
    if (isImporting) {
        return false;
    }
    const ImportGuard guard;
    return ImportOnce(catalogName, catalogPath, group, importLogPath);
}

bool ZMostFCatManager::ImportOnce(std::string& catalogName, const std::string& catalogPath,
                                  std::uint16_t group, const std::string& importLogPath) {
    const ZMTCatalog* named = FindCatalog(catalogName);
    ZMTCatalog* known = FindCatalogByPath(catalogPath);
    if (named != nullptr && named != known) {
        Remove(named);
    }
    if (known != nullptr) {
        if (known->GetName() == catalogName) {
            Register(*known, group);
            return true;
        }
        Remove(known);
    }
    const FileRecord file{catalogName, FilePath(catalogPath)};
    if (std::ranges::find(failedFiles_, file) != failedFiles_.end()) {
        return false;
    }
    auto catalog = std::make_unique<ZMTCatalog>();
    catalog->SetName(catalogName);
    catalog->SetFile(AbsolutePath(catalogPath), file.path);
    if (!ImportFile(*catalog, catalogPath, importLogPath)) {
        failedFiles_.push_back(file);
        Send(Load(Text::XmlDatabaseNotAvailable), Reading);
        return false;
    }
    catalogs_.push_back(std::move(catalog));
    isChanged_ = true;
    Register(*catalogs_.back(), group);
    return true;
}

bool ZMostFCatManager::ImportFile(ZMTCatalog& catalog, const std::string& catalogPath,
                                  const std::string& importLogPath) {
    ImportRun run{catalogPath, {}, {}, {}, {}};
    findings_ = {};
    root_ = nullptr;
    if (faults != nullptr) {
        faults->SetRoom(Allowance(FaultList::kBytes, FileSize(catalogPath)));
        run.log.SetFaults(faults);
        run.handler.SetFaults(faults);
    }
    bool ok = false;
    if (!OpenForReading(catalogPath)) {
        Send(Format(Text::FileDoesNotExist, catalogPath), Reading);
    } else {
        OpenImportLog(run, importLogPath);
        const Element* document = ParseFile(run);
        catalog.SetInputBytes(NoteFiles(catalogPath));
        BeginImportLog(run);
        if (document != nullptr) {
            // The document, and the tree that is made of it.
            const std::size_t memory = reader_->Memory();
            catalog.Run().TakeUsed(memory);
            const std::size_t taken = catalog.Run().TakeUsed(memory);
            ImportDocument(run, *document, catalog);
            catalog.Run().GiveBack(taken);
            ok = run.log.FatalCount() == 0;
        }
        if (!keepDocument) {
            reader_->Release();
        }
        findings_.errors = run.log.ErrorCount();
        findings_.warnings = run.log.WarningCount();
        findings_.complaints = run.handler.Complaints();
        ReportResult(run);
    }
    run.log.WriteLine("\n");
    run.log.WriteLine(Format(ok ? Text::ImportCompleted : Text::ImportFailed, catalogPath));
    run.log.WriteLine("\n");
    if (!run.log.CloseLog()) {
        Send(Format(Text::LogNotCreated, importLogPath), Reading);
    }
    return ok;
}

/// Remembers what has been read for a catalog, as long as the reader knows it. Returns how many bytes that
/// are.
std::size_t ZMostFCatManager::NoteFiles(const std::string& catalogPath) {
    for (const std::string& path : reader_->Files()) {
        sourcePaths_.insert(FilePath(path));
    }
    // A catalog that is a link has two folders.
    const std::string linkFolder = AsFolder(FilePath(FolderPart(catalogPath) + "."));
    const std::string folder = FolderPart(FilePath(catalogPath));
    std::size_t bytes = FileSize(catalogPath);
    for (const std::string& path : reader_->OpenedFiles()) {
        const std::string file = FilePath(path);
        bytes += IsSameFile(path, catalogPath) ? 0 : FileSize(path);
        if (!file.starts_with(folder) && !file.starts_with(linkFolder)) {
            outsideFiles_.insert(file);
        }
    }
    return bytes;
}

/// Finds out whether a log can be written, if one is wanted, and makes its header. What it held stays until
/// the catalog and its DTD are read: they might be the same file.
void ZMostFCatManager::OpenImportLog(ImportRun& run, const std::string& importLogPath) {
    if (!importLogPath.empty()) {
        if (IsSameFile(importLogPath, run.path) || IsProtected(importLogPath) ||
            !CanBeWritten(importLogPath)) {
            Send(Format(Text::LogNotCreated, importLogPath), Reading);
        } else {
            run.logPath = importLogPath;
        }
    }
    run.firstLines = Load(Text::LogCreatedBy) + "\n" + Load(Text::XmlFile) + "\n" + run.path + "\n \n";
}

/// Writes the log from here on.
void ZMostFCatManager::BeginImportLog(ImportRun& run) {
    if (run.logPath.empty()) {
        return;
    }
    if (HasRead(run.logPath) || !run.log.OpenLog(run.logPath)) {
        Send(Format(Text::LogNotCreated, run.logPath), Reading);
        return;
    }
    importLogPaths_.insert(FilePath(run.logPath));
    run.firstLines.pop_back();  // its line feed
    run.log.WriteLine(run.firstLines);
}

/// Parses the file and reports what the parser says; null when that is an error.
const Element* ZMostFCatManager::ParseFile(ImportRun& run) {
    Send(FormatText("%s'%s'", Load(Text::ParsingXml), run.path), Reading);
    run.firstLines += Load(Text::ParserMessages) + "\n";
    try {
        reader_->StartPlatform();
    } catch (...) {
        const std::optional<std::string> message = ParserExceptionText();
        return Fail(run, Load(Text::InitializationError) + (message ? "\n" + *message : ""));
    }
    const Element* document = ReadDocument(run);
    findings_.missingDtd = reader_->MissingDtd();
    std::string messages = run.handler.Messages();
    if (!messages.empty()) {
        run.firstLines += messages + "\n";
        if (messages.back() == '\n') {
            messages.back() = ' ';
        }
        Send(Load(Text::Parser), Reading);
        Send(messages, Reading);
    }
    if (document != nullptr && !run.handler.Complaints().isFatal) {
        NoteForm(*document);
    }
    return run.handler.HasError() ? nullptr : document;
}

/// Looks at the root, also of a document that is not valid and so is not imported.
void ZMostFCatManager::NoteForm(const Element& document) {
    const Element* root = FindChildElement(&document, "FunctionCatalog");
    findings_.isRootUnknown = root == nullptr;
    findings_.namesSchema = root != nullptr && NamesSchema(*root);
    findings_.hasDefinitions = FindChildElement(root, "Definition") != nullptr;
}

/// Parses the file; null when the parser throws, which ends the XML platform.
const Element* ZMostFCatManager::ReadDocument(ImportRun& run) {
    std::string text = Load(Text::ErrorDuringParsing) + " '" + run.path + "'\n";
    try {
        return reader_->Read(run.path, Validate, run.handler);
    } catch (...) {
        if (const std::optional<std::string> message = ParserExceptionText()) {
            text += Load(Text::ExceptionMessageIs) + ":\n" + *message + "\n";
        }
    }
    NoteFiles(run.path);
    // Exceptions hold memory of the platform, so it ends only now that they are gone.
    reader_->StopPlatform();
    return Fail(run, text);
}

/// Reports that parsing failed; there is no document then.
const Element* ZMostFCatManager::Fail(ImportRun& run, const std::string& text) const {
    Send(text, Reading);
    run.firstLines += text + "\n";
    return nullptr;
}

void ZMostFCatManager::ImportDocument(ImportRun& run, const Element& document, ZMTCatalog& catalog) {
    run.log.WriteLine(Load(Text::ParseDone));
    run.log.WriteLine("\n");
    run.log.SetExclusions(ImportLogExclusions);
    const Allowance room = LogRoom(catalog);
    run.log.SetRoom(room);
    run.log.WriteLine(FormatText("%s (Version %s):", Load(Text::ImporterMessages), kImporterVersion));
    if (const Element* root = FindChildElement(&document, "FunctionCatalog")) {
        root_ = keepDocument ? root : nullptr;
        ImportRoot(run, *root, catalog);
        TakeWritten(catalog, room, run.log.Room());
    } else {
        const Element* other = FirstChildElement(&document);
        run.log.Fatal(FormatText(kNoFunctionCatalog.text.data(), "FunctionCatalog"), "", PlaceOf(other));
    }
}

void ZMostFCatManager::ImportRoot(ImportRun& run, const Element& root, ZMTCatalog& catalog) {
    const CatalogParamFactory factory;
    ImportContext context{run.log, factory, catalog.Run()};
    context.newer = NewerForms(ReadNewer);
    context.copies = CopyBudget(catalog.InputBytes(), context.run);
    try {
        catalog.Import(root, context);
    } catch (const AllowanceSpent& spent) {
        run.log.Fatal(spent.what(), catalog.GetPath(), PlaceOf(&root));
        Send(spent.what(), Reading);
    }
    findings_.newerFormsRefused = context.newer.Refused();
}

void ZMostFCatManager::ReportResult(ImportRun& run) const {
    if (run.log.FatalCount() + run.log.ErrorCount() + run.log.WarningCount() > 0) {
        Send(Load(Text::ImportResult) + run.log.SummaryText(), Result);
    }
    run.log.WriteSummary();
}

ZMTCatalog* ZMostFCatManager::FindCatalog(const std::string& catalogName) const {
    const auto found = std::ranges::find_if(
        catalogs_, [&](const auto& catalog) { return NamesEqual(catalog->GetName(), catalogName); });
    return found == catalogs_.end() ? nullptr : found->get();
}

ZMTCatalog* ZMostFCatManager::FindCatalogByPath(const std::string& catalogPath) const {
    const std::string path = FilePath(catalogPath);
    const auto found =
        std::ranges::find_if(catalogs_, [&](const auto& catalog) { return catalog->FilePath() == path; });
    return found == catalogs_.end() ? nullptr : found->get();
}

std::vector<ZMTCatalog*> ZMostFCatManager::CatalogsOfGroup(std::uint16_t group) const {
    return group <= kMaxGroup ? groups_[group] : std::vector<ZMTCatalog*>();
}

void ZMostFCatManager::Register(ZMTCatalog& catalog, std::uint16_t group) {
    if (group > kMaxGroup) {
        return;
    }
    for (const std::uint16_t number : {group, kAllCatalogs}) {
        std::vector<ZMTCatalog*>& list = groups_[number];
        if (std::ranges::find(list, &catalog) == list.end()) {
            list.push_back(&catalog);
        }
    }
}

void ZMostFCatManager::Remove(const ZMTCatalog* catalog) {
    for (std::vector<ZMTCatalog*>& list : groups_) {
        std::erase(list, catalog);
    }
    std::erase_if(catalogs_, [&](const auto& owned) { return owned.get() == catalog; });
    isChanged_ = true;
}

void ZMostFCatManager::WriteTreeLog(const std::string& treeLogPath) {
    if (treeLogPath.empty()) {
        return;
    }
    const bool isOverLog = std::ranges::any_of(
        importLogPaths_, [&](const std::string& path) { return IsSameFile(treeLogPath, path); });
    bool isRefused = isOverLog || IsProtected(treeLogPath) || HasRead(treeLogPath);
    std::error_code error;
    if (!isRefused && !std::filesystem::is_directory(treeLogPath, error) &&
        (std::filesystem::is_regular_file(treeLogPath, error) ||
         std::filesystem::is_symlink(treeLogPath, error))) {
        // What may not be deleted may still be emptied, or else is not written to.
        if (!std::filesystem::remove(treeLogPath, error) && error) {
            std::filesystem::resize_file(treeLogPath, 0, error);
            isRefused = static_cast<bool>(error);
        }
    }
    for (const auto& catalog : catalogs_) {
        const Allowance room = LogRoom(*catalog);
        ZMostTreeLog log(room);
        if (isRefused || !log.OpenTreeLog(treeLogPath)) {
            Send(Format(Text::LogNotCreated, treeLogPath), Reading);
            continue;
        }
        Send(Load(Text::WritingDataStructure), TreeLog);
        catalog->Dump(log);
        TakeWritten(*catalog, room, log.Room());
        if (!log.CloseTreeLog()) {
            Send(Format(Text::LogNotCreated, treeLogPath), Reading);
        }
    }
}

bool ZMostFCatManager::HasRead(const std::string& path) const {
    return std::ranges::any_of(sourcePaths_,
                               [&](const std::string& source) { return IsSameFile(path, source); });
}

void ZMostFCatManager::Clear() {
    catalogs_.clear();
    root_ = nullptr;
    reader_->Release();
    failedFiles_.clear();
    groups_.assign(kMaxGroup + 1, {});
    isCleared_ = true;
    isChanged_ = true;
}

/// A log at this path would be written over a catalog or over one of the protected files.
bool ZMostFCatManager::IsProtected(const std::string& logPath) const {
    return std::ranges::any_of(
               catalogs_, [&](const auto& catalog) { return IsSameFile(logPath, catalog->FilePath()); }) ||
           std::ranges::any_of(ProtectedPaths,
                               [&](const std::string& path) { return IsSameFile(logPath, path); });
}

void ZMostFCatManager::Send(const std::string& text, ImportEvent event) const {
    if (MessageSink) {
        MessageSink(text, event);
    }
}

}  // namespace tarvex
