#include "driver/ini_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "import/text/files.h"
#include "import/text/names.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

std::string_view Unquote(std::string_view value) {
    const bool isQuoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

IniFile::IniFile(const std::string& path) {
    const std::optional<std::string> text = ReadFile(path, kMaxSize);
    isRead_ = text.has_value();
    std::string_view rest = isRead_ ? *text : std::string_view();
    TakeByteOrderMark(rest);
    std::string section;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        AddLine(TrimBlanks(rest.substr(0, end)), section);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

void IniFile::AddLine(std::string_view line, std::string& section) {
    if (line.starts_with('[')) {
        section = TrimBlanks(line.substr(1, line.find(']') - 1));
        return;
    }
    const std::size_t equals = line.find('=');
    if (line.starts_with(';') || equals == std::string_view::npos) {
        return;
    }
    entries_.push_back({section, std::string(TrimBlanks(line.substr(0, equals))),
                        std::string(Unquote(TrimBlanks(line.substr(equals + 1))))});
}

const IniFile::Entry* IniFile::Find(std::string_view section, std::string_view key) const {
    const auto found = std::ranges::find_if(entries_, [&](const Entry& entry) {
        return NamesEqual(entry.section, section) && NamesEqual(entry.key, key);
    });
    return found == entries_.end() ? nullptr : &*found;
}

std::string IniFile::GetString(std::string_view section, std::string_view key, std::string_view defaultValue,
                               std::size_t bufferSize) const {
    const Entry* entry = Find(section, key);
    return std::string((entry != nullptr ? entry->value : defaultValue).substr(0, bufferSize - 1));
}

unsigned IniFile::GetInteger(std::string_view section, std::string_view key, unsigned defaultValue) const {
    const Entry* entry = Find(section, key);
    if (entry == nullptr) {
        return defaultValue;
    }
    unsigned value = 0;
    const char* text = entry->value.data();
    if (std::from_chars(text, text + entry->value.size(), value).ec == std::errc::result_out_of_range) {
        value = std::numeric_limits<unsigned>::max();
    }
    return value;
}

}  // namespace tarvex
