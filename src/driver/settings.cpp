#include "driver/settings.h"

#include "import/text/names.h"

namespace tarvex {
namespace {

/// The value of a text key that is not set.
constexpr const char* kNotSet = "-1";

/// Only the value 1 sets a flag.
bool ReadFlag(const IniFile& ini, std::string_view section, std::string_view key, bool isSetByDefault) {
    return ini.GetInteger(section, key, isSetByDefault ? 1 : 0) == 1;
}

std::string ReadText(const IniFile& ini, std::string_view section, std::string_view key) {
    const std::string value = ini.GetString(section, key, kNotSet, kStringBuffer);
    return value == kNotSet ? std::string() : value;
}

NameSet ReadNames(const IniFile& ini, std::string_view section, std::string_view key) {
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

/// Reads one key into its field.
struct Reader {
    const IniFile& ini;
    const SettingKey& setting;
    Settings& settings;

    void operator()(bool Settings::*field) const { ReadInto(settings.*field); }
    void operator()(bool ExportFlags::*field) const { ReadInto(settings.exportFlags.*field); }
    void operator()(std::string Settings::*field) const {
        settings.*field = ReadText(ini, setting.section, setting.key);
    }
    void operator()(NameSet Settings::*field) const {
        settings.*field = ReadNames(ini, setting.section, setting.key);
    }
    void operator()(std::set<std::uint32_t> Settings::*field) const {
        settings.*field = ReadNumbers(ini, setting.section, setting.key);
    }

  private:
    void ReadInto(bool& flag) const { flag = ReadFlag(ini, setting.section, setting.key, flag); }
};

}  // namespace

Settings ReadSettings(const IniFile& ini) {
    Settings settings;
    for (const SettingKey& setting : kSettingKeys) {
        std::visit(Reader{ini, setting, settings}, setting.field);
    }
    return settings;
}

std::set<std::uint32_t> ReadNumberList(const std::string& iniPath, const std::string& section,
                                       const std::string& key) {
    return ReadNumbers(IniFile(iniPath), section, key);
}

}  // namespace tarvex
