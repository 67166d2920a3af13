#include "driver/ini_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

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
    std::optional<std::string> text = ReadFile(path, kMaxSize);
    isRead_ = text.has_value();
    text_ = std::move(text).value_or("");
    std::string_view rest = text_;
    TakeByteOrderMark(rest);
    for (std::size_t number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        AddLine(TrimBlanks(rest.substr(0, end)), number);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

bool IniFile::IsForeign() const {
    // A zero further behind does no harm to the lines around it.
    const std::string_view start = std::string_view(text_).substr(0, 4);
    const bool isWide = start.find('\0') != std::string_view::npos || start.starts_with("\xFF\xFE") ||
                        start.starts_with("\xFE\xFF");
    return isWide || (text_.find('\r') != std::string::npos && text_.find('\n') == std::string::npos);
}

void IniFile::AddLine(std::string_view line, std::size_t number) {
    if (line.starts_with('[')) {
        sections_.push_back({TrimBlanks(line.substr(1, line.find(']') - 1)), number});
        return;
    }
    const std::size_t equals = line.find('=');
    if (line.starts_with(';') || equals == std::string_view::npos) {
        return;
    }
    const std::string_view section = sections_.empty() ? std::string_view() : sections_.back().name;
    entries_.push_back(
        {section, TrimBlanks(line.substr(0, equals)), Unquote(TrimBlanks(line.substr(equals + 1))), number});
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
    const std::string_view text = entry->value;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range) {
        value = std::numeric_limits<unsigned>::max();
    }
    return value;
}

}  // namespace tarvex
