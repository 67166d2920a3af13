/// Lines of the alias-names and network-configuration files.

#include "export/config_lines.h"

#include <optional>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::config_lines_test {
namespace {

using Entry = std::pair<std::string, std::string>;
using Entries = std::vector<Entry>;

std::optional<Entries> ReadEntries(const std::string& path) {
    Entries entries;
    const ConfigFile file = ReadConfigLines(
        path, [&](std::string_view name, std::string_view value) { entries.emplace_back(name, value); });
    return file == ConfigFile::Whole ? std::optional(entries) : std::nullopt;
}

struct FileCase {
    const char* what;
    std::string content;
    Entries entries;
};

void ExpectEntries(const std::vector<FileCase>& rows) {
    for (const FileCase& row : rows) {
        SCOPED_TRACE(row.what);
        const TempDir dir;
        EXPECT_EQ(ReadEntries(dir.Write("lines.txt", row.content)), row.entries);
    }
}

TEST(ConfigLines, NameAndValueStandAroundTheFirstComma) {
    ExpectEntries({
        {"empty file", "", {}},
        {"one line", "Amp,Booster\n", {{"Amp", "Booster"}}},
        {"order is kept, repeats too", "b,1\na,2\nb,3\n", {{"b", "1"}, {"a", "2"}, {"b", "3"}}},
        {"further commas belong to the value", "a,b,c,\n", {{"a", "b,c,"}}},
        {"blanks and tabs are kept", " a , b \n\tc\t,\td\t\n", {{" a ", " b "}, {"\tc\t", "\td\t"}}},
        {"empty name", ",b\n", {{"", "b"}}},
        {"empty value", "a,\n", {{"a", ""}}},
        {"only a comma", ",\n", {{"", ""}}},
        {"lines without a comma are ignored", "a\n\n  \na;b\nc,d\n", {{"c", "d"}}},
        {"quotes and comment signs mean nothing", "\"a,b\"\n#c,d\n", {{"\"a", "b\""}, {"#c", "d"}}},
        {"bytes beyond ASCII", "\xC3\x84mp,\xFF\n", {{"\xC3\x84mp", "\xFF"}}},
    });
}

TEST(ConfigLines, LinesEndWithLineFeedOrCarriageReturnAndLineFeed) {
    ExpectEntries({
        {"CR LF", "a,b\r\nc,d\r\n", {{"a", "b"}, {"c", "d"}}},
        {"both", "a,b\nc,d\r\ne,f\n", {{"a", "b"}, {"c", "d"}, {"e", "f"}}},
        {"no final line feed", "a,b\nc,d", {{"a", "b"}, {"c", "d"}}},
        {"no final line feed after a comma", "a,", {{"a", ""}}},
        {"empty value before CR LF", "a,\r\n", {{"a", ""}}},
        {"only line ends", "\n\r\n\n", {}},
        {"a carriage return alone is no line end", "a,b\rc,d\n", {{"a", "b\rc,d"}}},
        {"only the last carriage return belongs to the line end", "a,b\r\r\n", {{"a", "b\r"}}},
    });
}

std::string Xs(std::size_t count) {
    return std::string(count, 'x');
}

TEST(ConfigLines, LongLinesComeInPiecesOfNinetyNineCharacters) {
    ExpectEntries({
        {"98 characters", "a," + Xs(96) + "\nb,c\n", {{"a", Xs(96)}, {"b", "c"}}},
        {"99 characters", "a," + Xs(97) + "\nb,c\n", {{"a", Xs(97)}, {"b", "c"}}},
        {"99 characters and CR LF", "a," + Xs(97) + "\r\nb,c\r\n", {{"a", Xs(97)}, {"b", "c"}}},
        {"100 characters: the last one is a line without a comma",
         "a," + Xs(98) + "\nb,c\n",
         {{"a", Xs(97)}, {"b", "c"}}},
        {"100 characters and no line feed", "a," + Xs(98), {{"a", Xs(97)}}},
        {"100 characters: the last one is the only comma", Xs(99) + ",\n", {{"", ""}}},
        {"a comma in the second piece", Xs(99) + "b,c\n", {{"b", "c"}}},
        {"a name cut in two", "a,b" + Xs(94) + "Na" + "me,v\n", {{"a", "b" + Xs(94) + "Na"}, {"me", "v"}}},
        {"250 characters: 99, 99 and 52",
         "a," + Xs(97) + "b," + Xs(97) + "c," + Xs(50) + "\nd,e\n",
         {{"a", Xs(97)}, {"b", Xs(97)}, {"c", Xs(50)}, {"d", "e"}}},
        {"250 characters with a comma in the first piece only", "a," + Xs(248) + "\n", {{"a", Xs(97)}}},
        {"198 characters: no third piece",
         "a," + Xs(97) + "b," + Xs(97) + "\n",
         {{"a", Xs(97)}, {"b", Xs(97)}}},
    });
}

TEST(ConfigLines, FileLargerThanAnyBufferIsReadWhole) {
    std::string content;
    Entries expected;
    for (int i = 0; i < 20'000; ++i) {
        const Entry entry("name" + std::to_string(i), "value" + std::to_string(i));
        content += entry.first + "," + entry.second + "\n";
        expected.push_back(entry);
    }
    const TempDir dir;
    EXPECT_EQ(ReadEntries(dir.Write("lines.txt", content)), expected);
}

struct CountCase {
    const char* what;
    std::string content;
    ConfigFile file;
    std::size_t lines;
};

TEST(ConfigLines, OnlySoManyLinesWithACommaCount) {
    std::string commas;
    for (std::size_t line = 0; line < kMaxConfigLines; ++line) {
        commas += ",\n";
    }
    const CountCase cases[] = {
        {"as many as there may be", commas, ConfigFile::Whole, kMaxConfigLines},
        {"lines without a comma behind them", commas + "\nend\nend", ConfigFile::Whole, kMaxConfigLines},
        {"one more at the end", commas + ",", ConfigFile::Cut, kMaxConfigLines},
        {"two more lines", commas + "a,b\nc,d\n", ConfigFile::Cut, kMaxConfigLines},
        {"lines without a comma", std::string(kMaxConfigLines, '\n') + ",\n", ConfigFile::Whole, 1},
    };
    for (const CountCase& row : cases) {
        SCOPED_TRACE(row.what);
        const TempDir dir;
        std::size_t lines = 0;
        EXPECT_EQ(ReadConfigLines(dir.Write("lines.txt", row.content), [&](auto, auto) { ++lines; }),
                  row.file);
        EXPECT_EQ(lines, row.lines);
    }
}

TEST(ConfigLines, OnlyRegularFilesCanBeOpened) {
    const TempDir dir;
    ASSERT_EQ(::mkfifo(dir.File("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadEntries(dir.File("missing.txt")), std::nullopt);
    EXPECT_EQ(ReadEntries(dir.File("missing/lines.txt")), std::nullopt);
    EXPECT_EQ(ReadEntries(dir.Path()), std::nullopt);
    EXPECT_EQ(ReadEntries(dir.File("pipe")), std::nullopt);
    EXPECT_EQ(ReadEntries(""), std::nullopt);
}

}  // namespace
}  // namespace tarvex::test::config_lines_test
