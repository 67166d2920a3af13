/// The settings that TARVEX.ini has, with their defaults.

#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <variant>

#include "driver/ini_file.h"
#include "export/exporter.h"

namespace tarvex {

/// The initialisation file, looked for in the working directory.
inline constexpr const char* kIniFileName = "TARVEX.ini";

/// Everything that the initialisation file says. A path or list that is not set is empty.
struct Settings {
    bool importValidate = true;
    bool importLog = false;
    bool importNewer = false;
    std::string treeLogPath;
    std::set<std::uint32_t> importLogExclusions;
    NameSet exclude;
    NameSet include;
    std::string aliasNamesPath;
    std::string networkConfigurationPath;
    ExportFlags exportFlags;
    bool warnOnOverwrite = true;
};

/// Where a setting is kept, and so what kind of value it has: flags, paths, lists of names and of numbers.
using SettingField = std::variant<bool Settings::*, bool ExportFlags::*, std::string Settings::*,
                                  NameSet Settings::*, std::set<std::uint32_t> Settings::*>;

struct SettingKey {
    std::string_view section;
    std::string_view key;
    SettingField field;  ///< Its default is the field's own.

    constexpr bool IsFlag() const {
        return std::holds_alternative<bool Settings::*>(field) ||
               std::holds_alternative<bool ExportFlags::*>(field);
    }
};

/// Every key there is. Who needs a new setting adds a field and a row here.
inline constexpr SettingKey kSettingKeys[] = {
    {"Import", "FCatImportValidate", &Settings::importValidate},
    {"Import", "FCatImportLog", &Settings::importLog},
    {"Import", "FCatImportNewer", &Settings::importNewer},
    {"Import", "FCatTreeLog", &Settings::treeLogPath},
    {"Import", "FCatImportLogExclude", &Settings::importLogExclusions},
    {"Conversion", "Exclude", &Settings::exclude},
    {"Conversion", "Include", &Settings::include},
    {"Conversion", "AliasNames", &Settings::aliasNamesPath},
    {"Conversion", "NetworkConfiguration", &Settings::networkConfigurationPath},
    {"Conversion", "WriteSignals", &ExportFlags::writeSignals},
    {"Conversion", "UniqueSignalNames", &ExportFlags::uniqueSignalNames},
    {"Conversion", "StrictExport", &ExportFlags::strictExport},
    {"Conversion", "CreateNetworkNodes", &ExportFlags::createNetworkNodes},
    {"Conversion", "AssignMessagesToNodes", &ExportFlags::assignMessagesToNodes},
    {"Conversion", "SetMessageLength", &ExportFlags::setMessageLength},
    {"Conversion", "MakeExtended", &ExportFlags::makeExtended},
    {"Conversion", "SafeLayout", &ExportFlags::safeLayout},
    {"Conversion", "WriteScaling", &ExportFlags::writeScaling},
    {"Conversion", "WarnOnOverwrite", &Settings::warnOnOverwrite},
    {"Conversion", "MakeReadOnly", &ExportFlags::makeReadOnly},
};

/// Sizes of the buffers that values are read into; they hold one character less.
inline constexpr std::size_t kStringBuffer = 260;
inline constexpr std::size_t kNumberListBuffer = 3000;

/// Reads every key once. Missing keys take their defaults; nothing is reported.
Settings ReadSettings(const IniFile& ini);

/// The numbers listed under a key; no numbers for a missing key. At most 2999 characters of the value count.
std::set<std::uint32_t> ReadNumberList(const std::string& iniPath, const std::string& section,
                                       const std::string& key);

}  // namespace tarvex
