#include "driver/settings.h"

#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr const char* kImport = "Import";
constexpr const char* kConversion = "Conversion";

/// Sizes of the buffers that values are read into; they hold one character less.
constexpr std::size_t kStringBuffer = 260;
constexpr std::size_t kNumberListBuffer = 3000;

/// The value of a text key that is not set.
constexpr const char* kNotSet = "-1";

/// The default of a number key that is not set.
constexpr unsigned kImportLogNotSet = 65535;

/// Only the value 1 sets a flag.
bool ReadFlag(const IniFile& ini, const char* section, const char* key, bool isSetByDefault) {
    return ini.GetInteger(section, key, isSetByDefault ? 1 : 0) == 1;
}

std::string ReadText(const IniFile& ini, const char* section, const char* key) {
    const std::string value = ini.GetString(section, key, kNotSet, kStringBuffer);
    return value == kNotSet ? std::string() : value;
}

NameSet ReadNames(const IniFile& ini, const char* section, const char* key) {
    const std::string value = ReadText(ini, section, key);
    NameSet names;
    for (const std::string_view name : SplitTokens(value, kListSeparators)) {
        names.emplace(name);
    }
    return names;
}

std::set<std::uint32_t> ReadNumbers(const IniFile& ini, std::string_view section, std::string_view key) {
    const std::string value = ini.GetString(section, key, "", kNumberListBuffer);
    return value == kNotSet ? std::set<std::uint32_t>() : ParseNumberList(value);
}

}  // namespace

Settings ReadSettings(const IniFile& ini) {
    Settings settings;
    settings.importValidate = ReadFlag(ini, kImport, "FCatImportValidate", true);
    settings.importLog = ini.GetInteger(kImport, "FCatImportLog", kImportLogNotSet) == 1;
    settings.importNewer = ReadFlag(ini, kImport, "FCatImportNewer", false);
    settings.treeLogPath = ReadText(ini, kImport, "FCatTreeLog");
    settings.importLogExclusions = ReadNumbers(ini, kImport, "FCatImportLogExclude");
    settings.exclude = ReadNames(ini, kConversion, "Exclude");
    settings.include = ReadNames(ini, kConversion, "Include");
    settings.aliasNamesPath = ReadText(ini, kConversion, "AliasNames");
    settings.networkConfigurationPath = ReadText(ini, kConversion, "NetworkConfiguration");
    ExportFlags& flags = settings.exportFlags;
    flags.writeSignals = ReadFlag(ini, kConversion, "WriteSignals", true);
    flags.uniqueSignalNames = ReadFlag(ini, kConversion, "UniqueSignalNames", true);
    flags.strictExport = ReadFlag(ini, kConversion, "StrictExport", false);
    flags.createNetworkNodes = ReadFlag(ini, kConversion, "CreateNetworkNodes", true);
    flags.assignMessagesToNodes = ReadFlag(ini, kConversion, "AssignMessagesToNodes", true);
    flags.setMessageLength = ReadFlag(ini, kConversion, "SetMessageLength", true);
    flags.makeExtended = ReadFlag(ini, kConversion, "MakeExtended", true);
    flags.safeLayout = ReadFlag(ini, kConversion, "SafeLayout", false);
    flags.writeScaling = ReadFlag(ini, kConversion, "WriteScaling", false);
    settings.warnOnOverwrite = ReadFlag(ini, kConversion, "WarnOnOverwrite", true);
    flags.makeReadOnly = ReadFlag(ini, kConversion, "MakeReadOnly", true);
    return settings;
}

std::set<std::uint32_t> ReadNumberList(const std::string& iniPath, const std::string& section,
                                       const std::string& key) {
    return ReadNumbers(IniFile(iniPath), section, key);
}

}  // namespace tarvex
