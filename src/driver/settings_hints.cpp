#include "driver/settings_hints.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <sys/stat.h>

#include "export/alias_names.h"
#include "import/text/names.h"
#include "import/text/nearest_name.h"
#include "import/text/parse_value.h"

namespace tarvex {
namespace {

using Names = std::vector<std::string_view>;

std::string AtLine(std::size_t line) {
    return std::string(kIniFileName) + ", line " + std::to_string(line) + ": ";
}

std::string InBrackets(std::string_view section) {
    return "[" + std::string(section) + "]";
}

/// The end of a sentence about a name that is not known.
std::string Suggestion(std::string_view given, const Names& known) {
    const std::string_view nearest = NearestName(given, known);
    return nearest.empty() ? std::string() : "; " + Quoted(nearest) + " is one";
}

const SettingKey* FindKey(std::string_view key) {
    const auto* found =
        std::ranges::find_if(kSettingKeys, [&](const SettingKey& row) { return NamesEqual(row.key, key); });
    return found == std::end(kSettingKeys) ? nullptr : found;
}

bool IsKnownSection(std::string_view section) {
    return std::ranges::any_of(kSettingKeys,
                               [&](const SettingKey& row) { return NamesEqual(row.section, section); });
}

/// All sections or all keys of the table, each once.
Names NamesOfTable(std::string_view SettingKey::*name) {
    Names names;
    for (const SettingKey& row : kSettingKeys) {
        if (names.empty() || names.back() != row.*name) {
            names.push_back(row.*name);
        }
    }
    return names;
}

void HintAtSections(const IniFile& ini, Hints& hints) {
    const Names known = NamesOfTable(&SettingKey::section);
    for (const IniFile::Section& section : ini.Sections()) {
        if (!IsKnownSection(section.name)) {
            hints.Make([&] {
                return AtLine(section.line) + "there is no section " + Quoted(section.name) +
                       ", so that nothing in it counts" + Suggestion(section.name, known);
            });
        }
    }
}

/// The text is this number from its first character to its last, without a sign.
bool IsWholeNumber(std::string_view text, std::uint32_t number) {
    const std::string lower = ToLower(text);
    const int base = lower.starts_with("0x") ? 16 : lower.starts_with("0b") ? 2 : 10;
    const char* const begin = lower.data() + (base == 10 ? 0 : 2);
    const char* const end = lower.data() + lower.size();
    std::uint32_t value = 0;
    const auto read = std::from_chars(begin, end, value, base);
    return read.ec == std::errc() && read.ptr == end && value == number;
}

void HintAtNumber(std::string_view text, const std::string& where, Hints& hints) {
    std::int32_t number = 0;
    if (!ParseInteger(text, number)) {
        hints.Add(where + Quoted(text) + " is no number, and is left out");
    } else if (!IsWholeNumber(text, static_cast<std::uint32_t>(number))) {
        hints.Add(where + Quoted(text) + " is not one number, and counts as " + std::to_string(number));
    }
}

/// What may be wrong with an entry that counts.
void HintAtValue(const IniFile& ini, const SettingKey& setting, const IniFile::Entry& entry, Hints& hints) {
    if (setting.IsFlag()) {
        if (entry.value != "0" && entry.value != "1") {
            hints.Add(AtLine(entry.line) + std::string(setting.key) + " is 1 or 0; " + Quoted(entry.value) +
                      " counts as " + (ini.GetInteger(setting.section, setting.key, 0) == 1 ? "1" : "0"));
        }
        return;
    }
    if (!std::holds_alternative<std::set<std::uint32_t> Settings::*>(setting.field) || entry.value == "-1") {
        return;
    }
    const std::string_view read = entry.value.substr(0, kNumberListBuffer - 1);
    if (read.size() < entry.value.size()) {
        hints.Add(AtLine(entry.line) + "of " + std::string(setting.key) + " only the first " +
                  std::to_string(read.size()) + " characters are read");
    }
    const std::string where = AtLine(entry.line) + "in " + std::string(setting.key) + " ";
    for (const std::string_view token : SplitTokens(read, kListSeparators)) {
        HintAtNumber(token, where, hints);
    }
}

/// Goes through the keys of a file from its first line to its last one.
class KeyCheck {
  public:
    KeyCheck(const IniFile& ini, Hints& hints) : ini_(ini), hints_(hints) {}

    void Check(const IniFile::Entry& entry) {
        const SettingKey* setting = FindKey(entry.key);
        if (setting == nullptr) {
            hints_.Make([&] {
                return AtLine(entry.line) + "there is no key " + Quoted(entry.key) +
                       Suggestion(entry.key, keys_);
            });
        } else if (!NamesEqual(setting->section, entry.section)) {
            hints_.Add(AtLine(entry.line) + std::string(setting->key) + " counts in " +
                       InBrackets(setting->section) + " alone, and not " +
                       (entry.section.empty() ? "above all sections" : "here"));
        } else {
            CheckPlaced(*setting, entry);
        }
    }

  private:
    void CheckPlaced(const SettingKey& setting, const IniFile::Entry& entry) {
        std::size_t& first = firstLines_.at(static_cast<std::size_t>(&setting - kSettingKeys));
        if (first != 0) {
            hints_.Add(AtLine(entry.line) + std::string(setting.key) + " stands in line " +
                       std::to_string(first) + " already, which alone counts");
            return;
        }
        first = entry.line;
        HintAtValue(ini_, setting, entry, hints_);
    }

    const IniFile& ini_;
    Hints& hints_;
    const Names keys_ = NamesOfTable(&SettingKey::key);
    std::array<std::size_t, std::size(kSettingKeys)> firstLines_ = {};  // 0 for a key that has not come yet
};

/// The names that a filter setting is compared with: those of the blocks, and their aliases once a name is
/// not among them.
class BlockNames {
  public:
    BlockNames(const ZMTCatalog& catalog, const std::string& aliasNamesPath)
        : catalog_(catalog), aliasNamesPath_(aliasNamesPath) {
        for (const ZMTFBlock& block : catalog.Items()) {
            names_.emplace_back(block.GetName());
        }
    }

    bool Has(const std::string& name) {
        return std::ranges::find(names_, name) != names_.end() || IsAlias(name);
    }
    const Names& All() const { return names_; }

  private:
    bool IsAlias(const std::string& name) {
        if (!aliases_) {
            aliases_.emplace();
            if (!aliasNamesPath_.empty()) {
                aliases_->Read(aliasNamesPath_);
            }
        }
        return std::ranges::any_of(
            catalog_.Items(), [&](const ZMTFBlock& block) { return aliases_->Of(block.GetName()) == name; });
    }

    const ZMTCatalog& catalog_;
    const std::string& aliasNamesPath_;
    Names names_;
    std::optional<AliasNames> aliases_;
};

void HintAtFilter(const IniFile& ini, std::string_view key, const NameSet& names, BlockNames& blocks,
                  Hints& hints) {
    const IniFile::Entry* entry = ini.Find(FindKey(key)->section, key);
    for (const std::string& name : names) {
        if (entry != nullptr && !blocks.Has(name)) {
            hints.Make([&] {
                return AtLine(entry->line) + "no function block is called " + Quoted(name) + ", which " +
                       std::string(key) + " names" + Suggestion(name, blocks.All());
            });
        }
    }
}

}  // namespace

void HintAtMissingSettings(const std::string& iniPath, Hints& hints) {
    struct stat status = {};
    if (::stat(iniPath.c_str(), &status) != 0 && errno == ENOENT) {
        const std::string name(kIniFileName);
        hints.Add(
            "copy recommended.ini, one of the examples of TARVEX (man TARVEX says where), to the working "
            "directory as " +
            name + "; an empty " + name + " does, too: every setting has a default");
    }
}

void HintAtSettings(const IniFile& ini, Hints& hints) {
    if (ini.IsForeign()) {
        return;
    }
    HintAtSections(ini, hints);
    KeyCheck keys(ini, hints);
    for (const IniFile::Entry& entry : ini.Entries()) {
        if (entry.section.empty() || IsKnownSection(entry.section)) {
            keys.Check(entry);
        }
    }
}

void HintAtBlockNames(const IniFile& ini, const Settings& settings, const ZMTCatalog& catalog, Hints& hints) {
    BlockNames blocks(catalog, settings.aliasNamesPath);
    HintAtFilter(ini, "Exclude", settings.exclude, blocks, hints);
    HintAtFilter(ini, "Include", settings.include, blocks, hints);
}

}  // namespace tarvex
