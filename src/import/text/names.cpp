#include "import/text/names.h"

#include <algorithm>
#include <array>

#include "import/text/keyed_hash.h"
#include "import/text/parse_value.h"

namespace tarvex {
namespace {

/// Whether a name keeps it, for every byte.
constexpr auto kIsKept = [] {
    std::array<bool, 256> isKept{};
    for (const char c :
         std::string_view("[]()_-ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789")) {
        isKept[static_cast<unsigned char>(c)] = true;
    }
    return isKept;
}();

std::string Sanitize(std::string_view text, char blank) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (c == ' ') {
            result += blank;
        } else if (kIsKept[static_cast<unsigned char>(c)]) {
            result += c;
        }
    }
    return result;
}

}  // namespace

std::string SanitizeName(std::string_view text) {
    return Sanitize(text, '_');
}

std::string SanitizeText(std::string_view text) {
    return Sanitize(text, ' ');
}

bool NamesEqual(std::string_view a, std::string_view b, bool caseSensitive) {
    if (a == b) {
        return true;
    }
    return !caseSensitive && std::ranges::equal(a, b, {}, FoldCase, FoldCase);
}

std::string_view TrimBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> SplitTokens(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> tokens;
    while (true) {
        const std::size_t start = text.find_first_not_of(separators);
        if (start == std::string_view::npos) {
            return tokens;
        }
        text.remove_prefix(start);
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        tokens.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

std::set<std::uint32_t> ParseNumberList(std::string_view text) {
    std::set<std::uint32_t> numbers;
    for (const std::string_view token : SplitTokens(text, kListSeparators)) {
        std::int32_t number = 0;
        if (ParseInteger(token, number)) {
            numbers.insert(static_cast<std::uint32_t>(number));
        }
    }
    return numbers;
}

std::size_t NameHash::operator()(std::string_view name) const {
    KeyedHash hash;
    for (const char c : name) {
        hash.Add(static_cast<unsigned char>(FoldCase(c)));
    }
    return hash.Value();
}

std::size_t SoughtName::Hash() const {
    if (!hash_) {
        hash_ = NameHash()(name_);
    }
    return *hash_;
}

}  // namespace tarvex
