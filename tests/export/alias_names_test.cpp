/// Alias names: what an alias-names file makes of a name.

#include "export/alias_names.h"

#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::alias_names_test {
namespace {

struct AliasCase {
    const char* what;
    const char* file;
    const char* name;
    const char* alias;
};
constexpr AliasCase kAliases[] = {
    {"no entry", "", "Amp", "Amp"},
    {"other entries", "Tuner,Radio\n", "Amp", "Amp"},
    {"one entry", "Amp,Booster\n", "Amp", "Booster"},
    {"an alias has no alias", "Amp,Booster\nBooster,Power\n", "Amp", "Booster"},
    {"the alias is no name", "Amp,Booster\n", "Booster", "Booster"},
    {"a later line replaces an earlier one", "Amp,One\nTuner,X\nAmp,Two\n", "Amp", "Two"},
    {"a later line without a comma replaces nothing", "Amp,One\nAmp\n", "Amp", "One"},
    {"case counts", "amp,Booster\nAMP,Power\n", "Amp", "Amp"},
    {"blanks in the alias are kept", "Amp, My  Amp \n", "Amp", " My  Amp "},
    {"blanks in the name are kept", "Amp ,Booster\n Amp,Power\n", "Amp", "Amp"},
    {"a name with blanks", "Audio Amp,Booster\n", "Audio Amp", "Booster"},
    {"everything after the first comma", "Amp,a,b\n", "Amp", "a,b"},
    {"an empty alias", "Amp,\n", "Amp", ""},
    {"an alias for the empty name", ",Nobody\n", "", "Nobody"},
    {"the empty name without an alias", "Amp,Booster\n", "", ""},
    {"CR LF", "Amp,Booster\r\nTuner,Radio\r\n", "Amp", "Booster"},
    {"no final line feed", "Tuner,Radio\nAmp,Booster", "Amp", "Booster"},
};

TEST(AliasNames, NameInTheFileHasItsAliasAndAnyOtherStandsForItself) {
    for (const AliasCase& row : kAliases) {
        SCOPED_TRACE(row.what);
        const TempDir dir;
        AliasNames aliases;
        EXPECT_EQ(aliases.Read(dir.Write("aliases.txt", row.file)), ConfigFile::Whole);
        EXPECT_EQ(aliases.Of(row.name), row.alias);
    }
}

TEST(AliasNames, EachPieceOfALongLineIsALine) {
    const std::string alias(97, 'x');
    const TempDir dir;
    AliasNames aliases;
    ASSERT_EQ(aliases.Read(dir.Write("aliases.txt", "A," + alias + "B,Booster\n")), ConfigFile::Whole);
    EXPECT_EQ(aliases.Of("A"), alias);
    EXPECT_EQ(aliases.Of("B"), "Booster");
}

TEST(AliasNames, FileThatCannotBeOpenedLeavesNamesAsTheyAre) {
    const TempDir dir;
    AliasNames aliases;
    EXPECT_EQ(aliases.Read(dir.File("missing.txt")), ConfigFile::Missing);
    EXPECT_EQ(aliases.Read(dir.Path()), ConfigFile::Missing);
    EXPECT_EQ(aliases.Of("Amp"), "Amp");
}

}  // namespace
}  // namespace tarvex::test::alias_names_test
