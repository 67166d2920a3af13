/// The settings that TARVEX.ini has, with their defaults.

#pragma once

#include <cstdint>
#include <set>
#include <string>

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

/// Reads every key once. Missing keys take their defaults; nothing is reported.
Settings ReadSettings(const IniFile& ini);

/// The numbers listed under a key; no numbers for a missing key. At most 2999 characters of the value count.
std::set<std::uint32_t> ReadNumberList(const std::string& iniPath, const std::string& section,
                                       const std::string& key);

}  // namespace tarvex
