/// Reading of initialisation files by section and key.

#include "driver/ini_file.h"

#include <limits>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::ini_file_test {
namespace {

class Ini : public testing::Test {
  protected:
    IniFile Read(std::string_view text) const { return IniFile(dir_.Write("test.ini", text)); }

    /// The value of "Key" in "Section", or "(none)".
    std::string Value(std::string_view text) const {
        return Read(text).GetString("Section", "Key", "(none)", 260);
    }

    TempDir dir_;
};

struct ValueCase {
    const char* what;
    const char* text;
    const char* value;
};

TEST_F(Ini, ValueIsFoundBySectionAndKey) {
    constexpr ValueCase kCases[] = {
        {"plain", "[Section]\nKey=value\n", "value"},
        {"small letters", "[section]\nkey=Value\n", "Value"},
        {"capital letters", "[SECTION]\nKEY=VALUE\n", "VALUE"},
        {"no line feed at the end", "[Section]\nKey=value", "value"},
        {"CR LF", "[Section]\r\nKey=value\r\n", "value"},
        {"byte order mark", "\xEF\xBB\xBF[Section]\nKey=value\n", "value"},
        {"among others", "[A]\nKey=a\n[Section]\nOther=x\nKey=value\nKey2=y\n[B]\nKey=b\n", "value"},
        {"empty lines", "\n\n[Section]\n\n\nKey=value\n\n", "value"},
        {"comment in front", "; Key=x\n[Section]\n;Key=y\n  ; Key=z\nKey=value\n", "value"},
        {"lines without sense", "[Section]\nnothing\n=\n=x\n==\n]\nKey=value\n", "value"},
        {"first one of two", "[Section]\nKey=value\nKey=later\n", "value"},
        {"first one of two, an empty one", "[Section]\nKey=\nKey=later\n", ""},
        {"section begun again", "[Section]\nOther=x\n[A]\nKey=a\n[Section]\nKey=value\n", "value"},
        {"first one of two sections", "[Section]\nKey=value\n[SECTION]\nKey=later\n", "value"},
        {"equals sign in the value", "[Section]\nKey=a=b==c\n", "a=b==c"},
        {"empty value", "[Section]\nKey=\n", ""},
        {"blank value", "[Section]\nKey= \t \n", ""},
        {"semicolon in the value", "[Section]\nKey=a;b\n", "a;b"},
        {"bracket in the value", "[Section]\nKey=[x]\n", "[x]"},
        {"umlaut", "[Section]\nKey=\xC3\xA4\xE4\n", "\xC3\xA4\xE4"},

        {"other section", "[Other]\nKey=value\n", "(none)"},
        {"no section", "Key=value\n", "(none)"},
        {"above every section", "Key=value\n[Section]\n", "(none)"},
        {"other key", "[Section]\nKeys=value\nKe=value\n", "(none)"},
        {"key without equals sign", "[Section]\nKey\n", "(none)"},
        {"comment", "[Section]\n;Key=value\n", "(none)"},
        {"empty file", "", "(none)"},
    };
    for (const auto& [what, text, value] : kCases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Value(text), value);
    }
}

TEST_F(Ini, BlanksAndTabsAroundNamesAndValuesAreDropped) {
    constexpr ValueCase kCases[] = {
        {"around the value", "[Section]\nKey= \t a b \t\n", "a b"},
        {"around the key", "[Section]\n \t Key \t =value\n", "value"},
        {"around the section", "  [ Section\t] \nKey=value\n", "value"},
        {"before CR LF", "[Section] \r\nKey=value \r\n", "value"},
    };
    for (const auto& [what, text, value] : kCases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Value(text), value);
    }
}

TEST_F(Ini, OneMatchingPairOfQuotesIsDropped) {
    constexpr ValueCase kCases[] = {
        {"double", "[Section]\nKey=\"a b\"\n", "a b"},
        {"single", "[Section]\nKey='a b'\n", "a b"},
        {"blanks inside stay", "[Section]\nKey= \" a \" \n", " a "},
        {"one pair only", "[Section]\nKey=\"\"a\"\"\n", "\"a\""},
        {"other pair inside", "[Section]\nKey=\"'a'\"\n", "'a'"},
        {"empty", "[Section]\nKey=\"\"\n", ""},
        {"no match", "[Section]\nKey=\"a'\n", "\"a'"},
        {"only in front", "[Section]\nKey=\"a\n", "\"a"},
        {"only behind", "[Section]\nKey=a\"\n", "a\""},
        {"a single one", "[Section]\nKey=\"\n", "\""},
        {"in the middle", "[Section]\nKey=a\"b\"c\n", "a\"b\"c"},
    };
    for (const auto& [what, text, value] : kCases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Value(text), value);
    }
}

TEST_F(Ini, SectionWithoutClosingBracketBeginsAllTheSame) {
    EXPECT_EQ(Value("[Section\nKey=value\n"), "value");
    EXPECT_EQ(Value("[Section]\n[Other\nKey=value\n"), "(none)");
}

TEST_F(Ini, ZeroBytesDoNotEndTheFile) {
    using std::string_view_literals::operator""sv;
    EXPECT_EQ(Value("[Section]\n\0\nA=\0x\nB\0=\n\0Key=no\nKey=value\n"sv), "value");
    EXPECT_EQ(Value("[Sec\0tion]\nKey=no\n[Section]\nKey=value\n"sv), "value");
}

TEST_F(Ini, ValueIsCutToWhatTheBufferHolds) {
    struct Case {
        std::size_t length;
        std::size_t buffer;
        std::size_t kept;
    };
    constexpr Case kCases[] = {{258, 260, 258},    {259, 260, 259},    {260, 260, 259},      {5000, 260, 259},
                               {2999, 3000, 2999}, {3000, 3000, 2999}, {50'000, 3000, 2999}, {3, 1, 0}};
    for (const auto& [length, buffer, kept] : kCases) {
        SCOPED_TRACE(length);
        const IniFile ini = Read("[Section]\nKey=" + std::string(length, 'x') + "\nNext=y\n");
        EXPECT_EQ(ini.GetString("Section", "Key", "", buffer), std::string(kept, 'x'));
        EXPECT_EQ(ini.GetString("Section", "Next", "", 260), "y");
    }
}

struct IntegerCase {
    const char* value;
    unsigned number;
};

TEST_F(Ini, IntegerIsTheDigitsAtTheStart) {
    constexpr unsigned kLargest = std::numeric_limits<unsigned>::max();
    constexpr IntegerCase kCases[] = {
        {"1", 1},
        {"0", 0},
        {"2", 2},
        {"01", 1},
        {" 1 ", 1},
        {"\t1\t", 1},
        {"\"1\"", 1},
        {"'1'", 1},
        {"1abc", 1},
        {"1 2", 1},
        {"1.9", 1},
        {"1;2", 1},
        {"65535", 65535},
        {"", 0},
        {" ", 0},
        {"x", 0},
        {"yes", 0},
        {"-1", 0},
        {"+1", 0},
        {"0x1", 0},
        {"=1", 0},
        {"4294967295", kLargest},
        {"4294967297", kLargest},
        {"99999999999", kLargest},
        {"99999999999999999999999999", kLargest},
    };
    for (const auto& [value, number] : kCases) {
        SCOPED_TRACE(value);
        const IniFile ini = Read("[Section]\nKey=" + std::string(value) + "\n");
        EXPECT_EQ(ini.GetInteger("Section", "Key", 7), number);
        EXPECT_EQ(ini.GetInteger("SECTION", "KEY", 7), number);
    }
}

TEST_F(Ini, MissingIntegerIsTheDefault) {
    const IniFile ini = Read("[Section]\nKey=1\n");
    EXPECT_EQ(ini.GetInteger("Section", "Other", 65535), 65535U);
    EXPECT_EQ(ini.GetInteger("Other", "Key", 0), 0U);
}

TEST_F(Ini, DefaultTextIsCutAsWell) {
    const IniFile ini = Read("");
    EXPECT_EQ(ini.GetString("Section", "Key", "-1", 260), "-1");
    EXPECT_EQ(ini.GetString("Section", "Key", "default", 4), "def");
}

TEST_F(Ini, LargeFileIsReadToItsBound) {
    const std::string filler(1999, 'x');
    std::string text = "[Section]\nKey=value\n";
    for (int i = 0; i < 1000; ++i) {
        text += ";" + filler + "\n";
    }
    text += "[Late]\nKey=late\n";
    ASSERT_GT(text.size(), 2'000'000U);
    const IniFile ini = Read(text);
    EXPECT_EQ(ini.GetString("Section", "Key", "(none)", 260), "value");
    EXPECT_EQ(ini.GetString("Late", "Key", "(none)", 260), "(none)");
}

TEST_F(Ini, EndlessLineDoesNoHarm) {
    EXPECT_EQ(Value("[Section]\nKey=value\n" + std::string(2'000'000, '=')), "value");
    EXPECT_EQ(Value("[Section]\nKey=" + std::string(2'000'000, 'x')), std::string(259, 'x'));
}

TEST_F(Ini, BytesThatAreNoLinesAreTold) {
    struct Case {
        const char* what;
        std::string bytes;
        bool isForeign;
    };
    const Case cases[] = {
        {"text", "[Section]\nKey=value\n", false},
        {"CR LF", "[Section]\r\nKey=value\r\n", false},
        {"UTF-8 with a mark", "\xEF\xBB\xBF[Section]\n", false},
        {"one line without an end", "[Section]", false},
        {"nothing", "", false},
        {"CR", "[Section]\rKey=value\r", true},
        {"UTF-16", {"\xFF\xFE[\0S\0]\0\n\0", 10}, true},
        {"UTF-16, large end first", {"\xFE\xFF\0[\0S\0]\0\n", 10}, true},
        {"UTF-16 of no ASCII letter", "\xFF\xFE\x16\x04\x17\x04", true},
        {"UTF-16 without a mark", {"[\0S\0", 4}, true},
        {"UTF-16 without a mark, large end first", {"\0[\0S", 4}, true},
        {"UTF-32", {"[\0\0\0", 4}, true},
        {"UTF-32 with a mark", {"\xFF\xFE\0\0[\0\0\0", 8}, true},
        {"UTF-32 with a mark, large end first", {"\0\0\xFE\xFF\0\0\0[", 8}, true},
        {"zero in the fourth byte", {"[Se\0\n", 5}, true},
        {"zero behind it", {"[Sec\0tion]\nKey=value\n", 21}, false},
        {"zero in a value", {"[Section]\nKey=a\0b\n", 18}, false},
        {"zeros at the end", {"[Section]\nKey=value\n\0\0", 22}, false},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(Read(row.bytes).IsForeign(), row.isForeign) << row.what;
    }
}

TEST_F(Ini, SectionsAndEntriesAreToldWithTheirLines) {
    const IniFile ini = Read(
        "\xEF\xBB\xBF"
        "a=1\n\n[ One ]\r\n; b=2\nb = '3'\ntext\n[one]\nb=4\n[]\nc=");
    std::string sections;
    for (const auto& [name, line] : ini.Sections()) {
        sections += std::to_string(line) + ":" + std::string(name) + " ";
    }
    EXPECT_EQ(sections, "3:One 7:one 9: ");
    std::string entries;
    for (const auto& [section, key, value, line] : ini.Entries()) {
        entries += std::to_string(line) + ":" + std::string(section) + "/" + std::string(key) + "=" +
                   std::string(value) + " ";
    }
    EXPECT_EQ(entries, "1:/a=1 5:One/b=3 8:one/b=4 10:/c= ");
    ASSERT_NE(ini.Find("ONE", "B"), nullptr);
    EXPECT_EQ(ini.Find("ONE", "B")->line, 5U) << "the first counts";
    EXPECT_EQ(ini.Find("One", "a"), nullptr);
}

TEST_F(Ini, FileThatCannotBeReadIsEmpty) {
    ::alarm(60);
    const std::string fifo = dir_.File("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {dir_.Path(), dir_.File("missing"), fifo, std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(IniFile(path).GetString("Section", "Key", "(none)", 260), "(none)");
    }
    ::alarm(0);
}

}  // namespace
}  // namespace tarvex::test::ini_file_test
