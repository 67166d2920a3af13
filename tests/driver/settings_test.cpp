/// The settings that the initialisation file makes.

#include "driver/settings.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::settings_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsFile : public testing::Test {
  protected:
    Settings Read(const std::string& text) const {
        return ReadSettings(IniFile(dir_.Write("TARVEX.ini", text)));
    }
    Settings ReadImport(const std::string& line) const { return Read("[Import]\n" + line + "\n"); }
    Settings ReadConversion(const std::string& line) const { return Read("[Conversion]\n" + line + "\n"); }

    TempDir dir_;
};

struct FlagCase {
    const char* section;
    const char* key;
    bool isSetByDefault;
    bool (*get)(const Settings& settings);
};

constexpr FlagCase kFlags[] = {
    // section      key                      default
    {"Import", "FCatImportValidate", true, [](const Settings& s) { return s.importValidate; }},
    {"Import", "FCatImportLog", false, [](const Settings& s) { return s.importLog; }},
    {"Conversion", "WriteSignals", true, [](const Settings& s) { return s.exportFlags.writeSignals; }},
    {"Conversion", "UniqueSignalNames", true,
     [](const Settings& s) { return s.exportFlags.uniqueSignalNames; }},
    {"Conversion", "StrictExport", false, [](const Settings& s) { return s.exportFlags.strictExport; }},
    {"Conversion", "CreateNetworkNodes", true,
     [](const Settings& s) { return s.exportFlags.createNetworkNodes; }},
    {"Conversion", "AssignMessagesToNodes", true,
     [](const Settings& s) { return s.exportFlags.assignMessagesToNodes; }},
    {"Conversion", "SetMessageLength", true,
     [](const Settings& s) { return s.exportFlags.setMessageLength; }},
    {"Conversion", "MakeExtended", true, [](const Settings& s) { return s.exportFlags.makeExtended; }},
    {"Conversion", "WarnOnOverwrite", true, [](const Settings& s) { return s.warnOnOverwrite; }},
    {"Conversion", "MakeReadOnly", true, [](const Settings& s) { return s.exportFlags.makeReadOnly; }},
};

struct FlagValue {
    const char* value;
    bool isSet;
};

constexpr FlagValue kFlagValues[] = {
    {"1", true},           {" 1 ", true},          {"01", true},     {"\"1\"", true}, {"1abc", true},
    {"0", false},          {"2", false},           {"10", false},    {"-1", false},   {"", false},
    {"yes", false},        {"true", false},        {"x", false},     {"+1", false},   {"0x1", false},
    {"4294967297", false}, {"99999999999", false}, {"65535", false},
};

TEST_F(SettingsFile, FlagsTakeTheirDefaultsWithoutTheKey) {
    for (const char* text : {"", "[Import]\n[Conversion]\n", "nonsense"}) {
        const Settings settings = Read(text);
        for (const auto& [section, key, isSetByDefault, get] : kFlags) {
            SCOPED_TRACE(key);
            EXPECT_EQ(get(settings), isSetByDefault);
        }
    }
}

TEST_F(SettingsFile, FlagsAreSetOnlyByTheValueOne) {
    for (const auto& [section, key, isSetByDefault, get] : kFlags) {
        for (const auto& [value, isSet] : kFlagValues) {
            SCOPED_TRACE(std::string(key) + "=" + value);
            EXPECT_EQ(get(Read("[" + std::string(section) + "]\n" + key + "=" + value + "\n")), isSet);
        }
    }
}

TEST_F(SettingsFile, EveryFlagHasAKeyOfItsOwn) {
    for (const auto& flag : kFlags) {
        const Settings settings = Read("[" + std::string(flag.section) + "]\n" + flag.key + "=" +
                                       (flag.isSetByDefault ? "0" : "1") + "\n");
        for (const auto& other : kFlags) {
            SCOPED_TRACE(std::string(flag.key) + " / " + other.key);
            EXPECT_EQ(other.get(settings), other.isSetByDefault != (flag.key == other.key));
        }
    }
}

TEST_F(SettingsFile, KeysInTheOtherSectionDoNotCount) {
    for (const auto& [section, key, isSetByDefault, get] : kFlags) {
        SCOPED_TRACE(key);
        const std::string other = std::string(section) == "Import" ? "Conversion" : "Import";
        EXPECT_EQ(get(Read("[" + other + "]\n" + key + "=" + (isSetByDefault ? "0" : "1") + "\n")),
                  isSetByDefault);
    }
}

struct TextCase {
    const char* section;
    const char* key;
    std::string (*get)(const Settings& settings);
};

constexpr TextCase kPaths[] = {
    {"Import", "FCatTreeLog", [](const Settings& s) { return s.treeLogPath; }},
    {"Conversion", "AliasNames", [](const Settings& s) { return s.aliasNamesPath; }},
    {"Conversion", "NetworkConfiguration", [](const Settings& s) { return s.networkConfigurationPath; }},
};

struct PathValue {
    std::string value;
    std::string path;
};

TEST_F(SettingsFile, PathsAreTakenUnchangedAndMinusOneMeansNone) {
    const PathValue kValues[] = {
        {"tree.log", "tree.log"},
        {"  logs/a b.log ", "logs/a b.log"},
        {"\" a.log \"", " a.log "},
        {"../x;y,z.log", "../x;y,z.log"},
        {"", ""},
        {"-1", ""},
        {" -1 ", ""},
        {"\"-1\"", ""},
        {"-10", "-10"},
        {"-1.log", "-1.log"},
        {"0", "0"},
        {std::string(259, 'x'), std::string(259, 'x')},
        {std::string(260, 'x'), std::string(259, 'x')},
    };
    for (const auto& [section, key, get] : kPaths) {
        EXPECT_EQ(get(Read("")), "") << key;
        for (const auto& [value, path] : kValues) {
            SCOPED_TRACE(std::string(key) + "=" + value);
            EXPECT_EQ(get(Read("[" + std::string(section) + "]\n" + key + "=" + value + "\n")), path);
        }
    }
}

struct NamesCase {
    const char* value;
    NameSet names;
};

TEST_F(SettingsFile, NameListsAreSplitAtSeparatorsAndKeepCase) {
    const NamesCase kCases[] = {
        {"A.B", {"A", "B"}},
        {"Amp, Tuner;Disk:Phone Radio\tTV", {"Amp", "Tuner", "Disk", "Phone", "Radio", "TV"}},
        {"amp,Amp,amp", {"amp", "Amp"}},
        {",,Amp;; .", {"Amp"}},
        {"-1", {}},
        {"", {}},
        {",;:. \t", {}},
        {"-1,Amp", {"-1", "Amp"}},
        {"A_B[1]", {"A_B[1]"}},
    };
    for (const auto& [value, names] : kCases) {
        SCOPED_TRACE(value);
        const Settings exclude = ReadConversion("Exclude=" + std::string(value));
        EXPECT_EQ(exclude.exclude, names);
        EXPECT_THAT(exclude.include, IsEmpty());
        const Settings include = ReadConversion("Include=" + std::string(value));
        EXPECT_EQ(include.include, names);
        EXPECT_THAT(include.exclude, IsEmpty());
    }
    EXPECT_THAT(Read("").include, IsEmpty());
    EXPECT_THAT(Read("").exclude, IsEmpty());
}

TEST_F(SettingsFile, NameListIsCutAt259Characters) {
    EXPECT_THAT(ReadConversion("Exclude=" + std::string(256, 'x') + ",ab,cd").exclude,
                ElementsAre("ab", std::string(256, 'x')));
    EXPECT_THAT(ReadConversion("Exclude=" + std::string(257, 'x') + ",ab").exclude,
                ElementsAre("a", std::string(257, 'x')));
}

struct NumbersCase {
    const char* value;
    std::set<std::uint32_t> numbers;
};

TEST_F(SettingsFile, NumberListTakesNumbersAndSkipsTheRest) {
    const NumbersCase kCases[] = {
        {"10, 0x20;junk", {10, 32}},
        {"5, 0x10; abc", {5, 16}},
        {"0b101 7.8:9", {5, 7, 8, 9}},
        {"68,68", {68}},
        {"-1", {}},
        {"", {}},
        {"junk", {}},
    };
    for (const auto& [value, numbers] : kCases) {
        SCOPED_TRACE(value);
        EXPECT_EQ(ReadImport("FCatImportLogExclude=" + std::string(value)).importLogExclusions, numbers);
    }
    EXPECT_THAT(Read("").importLogExclusions, IsEmpty());
}

TEST_F(SettingsFile, NumberListIsCutAt2999Characters) {
    const std::string blanks(2995, ' ');
    EXPECT_THAT(ReadImport("FCatImportLogExclude=1" + blanks + "150,7").importLogExclusions,
                ElementsAre(1U, 150U));
    EXPECT_THAT(ReadImport("FCatImportLogExclude=1" + blanks + "1500").importLogExclusions,
                ElementsAre(1U, 150U));
}

TEST_F(SettingsFile, ReadNumberListReadsAnyKey) {
    const std::string path = dir_.Write("other.ini", "[Sizes]\nList = 5, 0x10; abc\nEmpty=\n");
    EXPECT_THAT(ReadNumberList(path, "Sizes", "List"), ElementsAre(5U, 16U));
    EXPECT_THAT(ReadNumberList(path, "sizes", "LIST"), ElementsAre(5U, 16U));
    EXPECT_THAT(ReadNumberList(path, "Sizes", "Empty"), IsEmpty());
    EXPECT_THAT(ReadNumberList(path, "Sizes", "Missing"), IsEmpty());
    EXPECT_THAT(ReadNumberList(dir_.File("missing.ini"), "Sizes", "List"), IsEmpty());
}

TEST_F(SettingsFile, AWholeFileIsRead) {
    const Settings settings = Read(R"(; settings of the test
[Import]
FCatImportValidate = 0
FCatImportLog = 1
FCatTreeLog = Cat.tree
FCatImportLogExclude = 67, 68

[Conversion]
Exclude = Phone
Include = Amp, Tuner
AliasNames = aliases.txt
NetworkConfiguration = network.txt
WriteSignals = 0
UniqueSignalNames = 0
StrictExport = 1
CreateNetworkNodes = 0
AssignMessagesToNodes = 0
SetMessageLength = 0
MakeExtended = 0
WarnOnOverwrite = 0
MakeReadOnly = 0
Unknown = 1
)");
    EXPECT_EQ(settings.treeLogPath, "Cat.tree");
    EXPECT_THAT(settings.importLogExclusions, ElementsAre(67U, 68U));
    EXPECT_THAT(settings.exclude, ElementsAre("Phone"));
    EXPECT_THAT(settings.include, ElementsAre("Amp", "Tuner"));
    EXPECT_EQ(settings.aliasNamesPath, "aliases.txt");
    EXPECT_EQ(settings.networkConfigurationPath, "network.txt");
    for (const auto& [section, key, isSetByDefault, get] : kFlags) {
        EXPECT_NE(get(settings), isSetByDefault) << key;
    }
}

TEST_F(SettingsFile, MissingFileGivesTheDefaults) {
    const Settings settings = ReadSettings(IniFile(dir_.File("missing.ini")));
    for (const auto& [section, key, isSetByDefault, get] : kFlags) {
        EXPECT_EQ(get(settings), isSetByDefault) << key;
    }
}

TEST_F(SettingsFile, FileIsCalledTarvexIni) {
    EXPECT_STREQ(kIniFileName, "TARVEX.ini");
}

}  // namespace
}  // namespace tarvex::test::settings_test
