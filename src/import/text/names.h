/// Names of catalogs and of the settings: cleaning, comparing and listing them.

#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// What separates the entries of a list setting.
inline constexpr std::string_view kListSeparators = ",;:. \t";

/// An ASCII letter made small; every other byte as it is.
constexpr char FoldCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A name as the database takes it: brackets, parentheses, "_", "-", ASCII letters and digits are kept, a
/// blank becomes "_", everything else is dropped. May come out empty.
std::string SanitizeName(std::string_view text);

/// The same for descriptive texts: a blank stays a blank.
std::string SanitizeText(std::string_view text);

/// Compares names of catalog objects: without regard to the case of ASCII letters unless asked otherwise.
bool NamesEqual(std::string_view a, std::string_view b, bool caseSensitive = false);

/// The text without the blanks, tabs and carriage returns at its ends.
std::string_view TrimBlanks(std::string_view text);

/// The runs of characters that are no separators, in order; there are no empty tokens.
std::vector<std::string_view> SplitTokens(std::string_view text, std::string_view separators);

/// The numbers among the entries of a list; other entries are skipped.
std::set<std::uint32_t> ParseNumberList(std::string_view text);

/// A name that is looked for in one list after another. Its hash is made once, when the first of them asks.
class SoughtName {
  public:
    // Made of a name wherever one is looked for. The name outlives this object.
    SoughtName(std::string_view name) : name_(name) {}
    SoughtName(const std::string& name) : name_(name) {}
    SoughtName(const char* name) : name_(name) {}

    std::string_view Text() const { return name_; }
    /// Comparing it with others letter by letter is no slower than hashing it.
    bool IsShort() const { return name_.size() <= 64; }
    /// As NameHash makes it.
    std::size_t Hash() const;

  private:
    std::string_view name_;
    mutable std::optional<std::size_t> hash_;
};

/// For hash maps whose keys are names: equal names hash alike, others in a way that nobody can foresee.
struct NameHash {
    std::size_t operator()(std::string_view name) const;
};

}  // namespace tarvex
