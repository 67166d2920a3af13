#include "kestrel/format.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kestrel/kestrel.h"
#include "support.h"

namespace {

using kestrel::Format;

struct FormatCase {
    const char* path;
    Format format;
};

constexpr FormatCase kCases[] = {
    {"a.vorn", Format::Vorn},     {"a", Format::Vorn},           {"", Format::Vorn},
    {"a.sqlite", Format::Sqlite}, {"a.SQLite3", Format::Sqlite}, {"dir/a.b.DB", Format::Sqlite},
    {"a.kcd", Format::Kcd},       {"A.KCD", Format::Kcd},        {".kcd", Format::Kcd},
    {"a.kcd/b", Format::Vorn},    {"a.kcd.txt", Format::Vorn},   {"a.db ", Format::Vorn},
    {"a.csv", Format::Csv},       {"A.Csv", Format::Csv},        {"a.csv2", Format::Vorn},
    {"a.sqlite33", Format::Vorn}, {"kcd", Format::Vorn},         {"a.kcd/", Format::Vorn},
};

TEST(Format, IsChosenByTheExtensionOfTheLastComponent) {
    for (const auto& [path, format] : kCases) {
        EXPECT_EQ(kestrel::FormatOf(path), format) << path;
    }
}

/// Every format. Made with a switch, so that the compiler asks for a new one.
std::vector<Format> AllFormats() {
    constexpr int kEnd = 100;
    std::vector<Format> formats;
    for (int number = 0; number < kEnd; ++number) {
        const auto format = static_cast<Format>(number);
        switch (format) {
            case Format::Vorn:
            case Format::Sqlite:
            case Format::Kcd:
            case Format::Csv:
                formats.push_back(format);
                break;
        }
    }
    return formats;
}

TEST(Format, EachHasAnExtensionAndACaseHere) {
    for (const Format format : AllFormats()) {
        EXPECT_EQ(std::ranges::find(kestrel::kFormats, format, &kestrel::FormatRow::format) !=
                      std::end(kestrel::kFormats),
                  format != Format::Vorn)
            << static_cast<int>(format);
        EXPECT_NE(std::ranges::find(kCases, format, &FormatCase::format), std::end(kCases))
            << static_cast<int>(format);
    }
}

struct BeginningCase {
    const char* name;
    std::string beginning;
};

const BeginningCase kBeginnings[] = {
    {"a.vorn", "{\n\"format\": \"Vorn\""},
    {"a", "{\n\"format\": \"Vorn\""},
    {"a.xml", "{\n\"format\": \"Vorn\""},
    {"a.sqlite", std::string("SQLite format 3\0", 16)},
    {"a.SQLITE3", std::string("SQLite format 3\0", 16)},
    {"a.Db", std::string("SQLite format 3\0", 16)},
    {"a.kcd", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<NetworkDefinition"},
    {"a.KCD", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<NetworkDefinition"},
    {"a.csv", "address,fblock,"},
};

class FormatOfFile : public DatabaseTest {};

TEST_F(FormatOfFile, IsThatOfThePathsExtension) {
    for (const auto& [name, beginning] : kBeginnings) {
        const std::string path = directory_ / name;
        EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelOk) << name;
        EXPECT_EQ(ReadFile(path).substr(0, beginning.size()), beginning) << name;
    }
}

}  // namespace
