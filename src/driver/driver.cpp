#include "driver/driver.h"

#include <cerrno>
#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "driver/catalog_hints.h"
#include "driver/exit_status.h"
#include "driver/hints.h"
#include "driver/output_hints.h"
#include "driver/overwrite_prompt.h"
#include "driver/settings.h"
#include "driver/settings_hints.h"
#include "import/import_manager.h"
#include "import/text/files.h"
#include "import/text/format_text.h"
#include "import/text/shown_text.h"
#include "versions.h"

namespace tarvex {
namespace {

/// Longest full path of the initialisation file, its terminating zero included.
constexpr std::size_t kFullPathBuffer = 260;

/// The one import manager; it lives as long as the process and keeps the catalogs for it.
ZMostFCatManager& Manager() {
    static ZMostFCatManager manager;
    return manager;
}

/// The full path of the initialisation file in the working directory; the bare name when there is none.
std::string ResolveIniPath() {
    std::string path = AbsolutePath(kIniFileName);
    if (!path.starts_with('/') || path.size() >= kFullPathBuffer) {
        std::printf("Cannot find file!\n");
        return kIniFileName;
    }
    return path;
}

/// Texts of the import are themselves used as the format, without any argument.
void PrintMessage(const std::string& text, ImportEvent /*event*/) {
    const std::string line = RenderAsFormat(text) + "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
}

/// A foreign catalog may bring in what its author wants to see in the database.
void TellOutsideFiles() {
    for (const std::string& path : Manager().OutsideFiles()) {
        std::fprintf(stderr, "TARVEX: the catalog reads '%s', which is outside its folder\n",
                     Shown(path).c_str());
    }
}

bool ImportCatalog(std::string& catalogName, const std::string& catalogPath, const Settings& settings,
                   std::vector<std::string> protectedPaths) {
    Manager().MessageSink = PrintMessage;
    Manager().Validate = settings.importValidate;
    Manager().ReadNewer = settings.importNewer;
    Manager().ProtectedPaths = std::move(protectedPaths);
    try {
        const bool isImported =
            Manager().Import(catalogName, catalogPath, kCatalogGroup,
                             settings.importLog ? ReplaceExtension(catalogPath, ".log") : std::string());
        TellOutsideFiles();
        return isImported;
    } catch (const std::bad_alloc&) {
        TellMemoryEnded();
        return false;
    }
}

/// How an export ended.
struct ExportResult {
    bool isWritten = false;
    bool hasHint = true;  ///< Why it failed has not been told.
    int error = 0;        ///< Of the system, as it was left behind; it may be of no meaning.
};

ExportResult ExportCatalog(const std::string& catalogName, const std::string& outputPath,
                           const Settings& settings) {
    ZVornExporter exporter(Manager().FindCatalog(catalogName), outputPath, settings.aliasNamesPath,
                           settings.networkConfigurationPath, settings.include, settings.exclude,
                           settings.exportFlags);
    exporter.MessageSink = [](const std::string& line) { std::printf("%s\n", line.c_str()); };
    try {
        errno = 0;
        const bool isWritten = exporter.Export() == 0;
        return {isWritten, true, errno};
    } catch (const std::bad_alloc&) {
        TellMemoryEnded();
        return {false, false, 0};
    }
}

/// The files of a run. The settings name more.
struct Paths {
    const std::string& catalog;
    const std::string& output;
    const std::string& ini;
};

void HintAtFailure(const Paths& paths, const Settings& settings, int error, Hints& hints) {
    std::vector<InputFile> inputs = {
        {paths.catalog, "the catalog itself"},
        {paths.ini, "the file of the settings"},
        {settings.aliasNamesPath, "the file of AliasNames"},
        {settings.networkConfigurationPath, "the file of NetworkConfiguration"},
    };
    if (Manager().HasRead(paths.output)) {
        inputs.push_back({paths.output, "the DTD of the catalog, or another file that it reads"});
    }
    HintAtFailedOutput(paths.output, inputs, error, hints);
}

/// Everything from the import to the output.
int Convert(const Paths& paths, const Settings& settings, Hints& hints) {
    std::string catalogName;
    // No log may be written over the files in the list.
    const bool isImported =
        ImportCatalog(catalogName, paths.catalog, settings,
                      {paths.output, paths.ini, settings.aliasNamesPath, settings.networkConfigurationPath});
    LookForHints([&] {
        HintAtImport(paths.catalog, isImported ? Manager().FindCatalog(catalogName) : nullptr,
                     Manager().Findings(), settings, hints);
    });
    if (!isImported) {
        std::printf("Failed to import function catalog!\n");
        return kExitFailure;
    }
    Manager().WriteTreeLog(settings.treeLogPath);

    std::printf("Converting to Kestrel...\n");
    // The exporter does not know the settings file and the DTD, which are no place for the output either.
    const bool isInput = IsSameFile(paths.output, paths.ini) || Manager().HasRead(paths.output);
    const ExportResult result = isInput ? ExportResult() : ExportCatalog(catalogName, paths.output, settings);
    if (!result.isWritten) {
        std::printf("Failed to export to vorn!\n");
        if (result.hasHint) {
            LookForHints([&] { HintAtFailure(paths, settings, result.error, hints); });
        }
        return kExitFailure;
    }
    std::printf("Output file '%s' written\n", paths.output.c_str());
    LookForHints([&] { HintAtExtension(paths.output, hints); });
    return kExitSuccess;
}

/// What the settings file says and nobody hears.
void HintAtIni(const IniFile& ini, const Settings& settings, const std::string& catalogPath, Hints& hints) {
    HintAtSettings(ini, hints);
    if (const ZMTCatalog* catalog = Manager().FindCatalogByPath(catalogPath)) {
        HintAtBlockNames(ini, settings, *catalog, hints);
    }
}

}  // namespace

void TellMemoryEnded() {
    std::fprintf(stderr, "TARVEX: not enough memory\n");
}

int Run(std::span<const char* const> arguments) {
    std::printf("TARVEX V%s (Importer V%s)\n", kProgramVersion, kImporterVersion);
    if (arguments.size() != 3) {
        std::printf("Usage:\n");
        std::printf("  TARVEX <XMLfile> <VORNfile>\n");
        return kExitFailure;
    }
    const std::string catalogPath = arguments[1];
    const std::string outputPath = arguments[2];

    const std::string iniPath = ResolveIniPath();
    const IniFile ini(iniPath);
    Hints hints;
    if (!ini.IsRead()) {
        std::printf("Unable to open file '%s'\n", iniPath.c_str());
        LookForHints([&] { HintAtMissingSettings(iniPath, hints); });
        hints.Tell();
        return kExitFailure;
    }
    if (ini.IsForeign()) {
        std::fprintf(stderr,
                     "TARVEX: '%s' is no text in ASCII or UTF-8 with line feeds; no setting is read\n",
                     iniPath.c_str());
    }
    const Settings settings = ReadSettings(ini);
    Manager().ImportLogExclusions = settings.importLogExclusions;

    WritePermission permission;  // for the old file, until the end
    if (settings.warnOnOverwrite && !MayOverwrite(outputPath, permission)) {
        return kExitFailure;
    }
    const int status = Convert({catalogPath, outputPath, iniPath}, settings, hints);
    LookForHints([&] { HintAtIni(ini, settings, catalogPath, hints); });
    hints.Tell();
    return status;
}

}  // namespace tarvex
