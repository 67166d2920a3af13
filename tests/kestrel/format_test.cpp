#include "kestrel/format.h"

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
    {"a.sqlite33", Format::Vorn}, {"kcd", Format::Vorn},         {"a.kcd/", Format::Vorn},
};

TEST(Format, IsChosenByTheExtensionOfTheLastComponent) {
    for (const auto& [path, format] : kCases) {
        EXPECT_EQ(kestrel::FormatOf(path), format) << path;
    }
}

}  // namespace
