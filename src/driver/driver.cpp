#include "driver/driver.h"

#include <cstdio>
#include <new>
#include <string>

#include "driver/exit_status.h"
#include "driver/overwrite_prompt.h"
#include "driver/settings.h"
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

int ExportCatalog(const std::string& catalogName, const std::string& outputPath, const Settings& settings) {
    ZVornExporter exporter(Manager().FindCatalog(catalogName), outputPath, settings.aliasNamesPath,
                           settings.networkConfigurationPath, settings.include, settings.exclude,
                           settings.exportFlags);
    exporter.MessageSink = [](const std::string& line) { std::printf("%s\n", line.c_str()); };
    try {
        return exporter.Export();
    } catch (const std::bad_alloc&) {
        TellMemoryEnded();
        return kExitFailure;
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
    if (!ini.IsRead()) {
        std::printf("Unable to open file '%s'\n", iniPath.c_str());
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
    std::string catalogName;
    // No log may be written over the files in the list.
    if (!ImportCatalog(catalogName, catalogPath, settings,
                       {outputPath, iniPath, settings.aliasNamesPath, settings.networkConfigurationPath})) {
        std::printf("Failed to import function catalog!\n");
        return kExitFailure;
    }
    Manager().WriteTreeLog(settings.treeLogPath);

    std::printf("Converting to Kestrel...\n");
    // The exporter does not know the settings file and the DTD, which are no place for the output either.
    if (IsSameFile(outputPath, iniPath) || Manager().HasRead(outputPath) ||
        ExportCatalog(catalogName, outputPath, settings) != 0) {
        std::printf("Failed to export to vorn!\n");
        return kExitFailure;
    }
    std::printf("Output file '%s' written\n", outputPath.c_str());
    return kExitSuccess;
}

}  // namespace tarvex
