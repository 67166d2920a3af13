/// The format of TARVEX.ini: sections, keys and values.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// An initialisation file: "[Section]" lines, "key=value" lines, ";" comments. Sections and keys are found
/// without regard to case; of several equal keys in sections of one name the first counts. Blanks and tabs
/// around key and value are dropped, and one pair of quotes around the value.
class IniFile {
  public:
    /// Files are read to this many bytes.
    static constexpr std::size_t kMaxSize = std::size_t{1} << 20;

    /// A file that cannot be opened, or not be read to its end, counts as empty.
    explicit IniFile(const std::string& path);
    IniFile(const IniFile&) = delete;
    IniFile& operator=(const IniFile&) = delete;
    ~IniFile() = default;

    /// The file could be opened and read.
    bool IsRead() const { return isRead_; }
    /// The bytes of the file are no lines of text: UTF-16 or UTF-32, by its mark or a zero among the first
    /// four bytes, or lines that end with carriage returns alone. No setting is found then.
    bool IsForeign() const;

    /// The value, or the default without the key, cut to what a buffer of `bufferSize` holds with its zero.
    std::string GetString(std::string_view section, std::string_view key, std::string_view defaultValue,
                          std::size_t bufferSize) const;

    /// The decimal digits at the start of the value as a number, 0 if there are none, or the default without
    /// the key. A number too large is the largest.
    unsigned GetInteger(std::string_view section, std::string_view key, unsigned defaultValue) const;

    /// A "key=value" line. Lines are counted from 1.
    struct Entry {
        std::string_view section;  ///< Empty above all sections.
        std::string_view key;
        std::string_view value;
        std::size_t line;
    };
    /// All of them, also those that nobody asks for and those that do not count.
    const std::vector<Entry>& Entries() const { return entries_; }
    /// The first entry of that name, which counts; null for none.
    const Entry* Find(std::string_view section, std::string_view key) const;

    /// A "[Section]" line.
    struct Section {
        std::string_view name;
        std::size_t line;
    };
    const std::vector<Section>& Sections() const { return sections_; }

  private:
    void AddLine(std::string_view line, std::size_t number);

    std::string text_;
    std::vector<Section> sections_;  // parts of the text
    std::vector<Entry> entries_;     // parts of the text
    bool isRead_ = false;
};

}  // namespace tarvex
