/// Which blocks, functions and operations are meant.

#include "review/find.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/text/format_text.h"
#include "review/examples.h"
#include "support/temp_dir.h"

namespace tarvex::test::find_test {
namespace {

using namespace review;
using testing::ElementsAre;
using testing::SizeIs;

/// "22.402.C"; empty for none.
std::string TextOf(const std::optional<Target>& target) {
    if (!target) {
        return "";
    }
    std::string text = FormatText("%02X", target->block->FBlockID());
    if (target->function != nullptr) {
        text += FormatText(".%03X", target->function->FunctionID());
    }
    return target->opType ? text + FormatText(".%X", *target->opType) : text;
}

std::string ByAddress(const char* what) {
    return TextOf(FindByAddress(*Roadster().Catalog(), what));
}

std::vector<std::string> ByName(const char* what) {
    std::vector<std::string> texts;
    for (const Target& target : FindByName(*Roadster().Catalog(), what)) {
        texts.push_back(TextOf(target));
    }
    return texts;
}

TEST(ReviewFind, Addresses) {
    struct Row {
        const char* what;
        const char* found;
    };
    constexpr Row kRows[] = {
        {"22", "22"},
        {"0x22", "22"},
        {" 22 ", "22"},
        {"6", "06"},
        {"22.402", "22.402"},
        {"0X22.0x402", "22.402"},
        {"22.1", "22.001"},
        {"22.402.C", "22.402.C"},
        {"22.402.c", "22.402.C"},
        {"22.0x402.0xC", "22.402.C"},
        {"22.1.C", "22.001.C"},
        // An instance says nothing.
        {"22.01.402", "22.402"},
        {"22.01.402.C", "22.402.C"},
        {"22.FF.402.C", "22.402.C"},
        // All of their parameters are lost.
        {"50.306.0", "50.306.0"},
        // The catalog has nothing there.
        {"23", ""},
        {"22.999", ""},
        {"22.402.F", ""},
        // These are none.
        {"", ""},
        {".", ""},
        {"22.", ""},
        {".402", ""},
        {"122", ""},
        {"22.1402", ""},
        {"22.402.1C", ""},
        {"22.100.402.C", ""},
        {"22.01.402.C.0", ""},
        {"22.4O2", ""},
        {"-22", ""},
        {"AudioAmp", ""},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(ByAddress(row.what), row.found) << row.what;
    }
}

TEST(ReviewFind, NamesInAnyCase) {
    EXPECT_THAT(ByName("AudioAmp"), ElementsAre("22"));
    EXPECT_THAT(ByName("audioAMP"), ElementsAre("22"));
    EXPECT_THAT(ByName("AudioAmp.Volume"), ElementsAre("22.400"));
    EXPECT_THAT(ByName("AudioAmp.Volume.Status"), ElementsAre("22.400.C"));
    EXPECT_THAT(ByName("audioamp . volume . status"), ElementsAre("22.400.C"));
}

TEST(ReviewFind, NamesAsTheCatalogAndAsDatabasesHaveThem) {
    EXPECT_THAT(ByName("Disc Player"), ElementsAre("31"));
    EXPECT_THAT(ByName("Disc_Player"), ElementsAre("31"));
    EXPECT_THAT(ByName("AudioAmp.Bass & Treble"), ElementsAre("22.402"));
    EXPECT_THAT(ByName("AudioAmp.Bass__Treble"), ElementsAre("22.402"));
    EXPECT_THAT(ByName("AudioAmp.Überblendzeit"), ElementsAre("22.405"));
    EXPECT_THAT(ByName("AudioAmp.berblendzeit"), ElementsAre("22.405"));
    EXPECT_THAT(ByName("AudioAmp.Öberblendzeit"), ElementsAre());
    EXPECT_THAT(ByName("AudioAmp.Über*zeit"), ElementsAre("22.405"));
}

TEST(ReviewFind, Patterns) {
    EXPECT_THAT(ByName("*"), SizeIs(6 + 63));  // all blocks and functions
    EXPECT_THAT(ByName("V?lume"), ElementsAre("22.400"));
    EXPECT_THAT(ByName("audio*"), ElementsAre("22"));
    EXPECT_THAT(ByName("?udio???"), ElementsAre("22"));
    EXPECT_THAT(ByName("?udio??"), ElementsAre());
    EXPECT_THAT(ByName("*.Volume"), ElementsAre("22.400"));
    EXPECT_THAT(ByName("*.*cate"), ElementsAre("22.101", "50.101"));
    EXPECT_THAT(ByName("AudioAmp.Volume.S*t*"), ElementsAre("22.400.0", "22.400.2", "22.400.C"));
    EXPECT_THAT(ByName("AudioAmp.*o*u*e*"), ElementsAre("22.400", "22.403"));
    EXPECT_THAT(ByName("AudioAmp.**Volume**"), ElementsAre("22.400"));
}

TEST(ReviewFind, NoNames) {
    for (const char* what : {"", ".", "AudioAmp.", ".Volume", "Volume", "AudioAmp.Volume.Status.C", "Audio",
                             "AudioAmp.[V]olume", "&"}) {
        EXPECT_THAT(ByName(what), ElementsAre()) << what;
    }
}

TEST(ReviewFind, TellsWhatIsLost) {
    const TempDir dir;
    const CatalogReading reading(dir.Write("lost.xml", R"(<FunctionCatalog>
  <FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>
    <Function><FunctionID>0x200</FunctionID><FunctionName>Reset</FunctionName>
      <FunctionClass ClassRef="c"><Method><MTrigger><MTParam><ParamName/>
        <MTParamOPType><MCmdStart/></MTParamOPType>
        <MTParamType><TVoid TypeRef="t"/></MTParamType></MTParam></MTrigger></Method></FunctionClass></Function>
    <Function><FunctionID>0x201</FunctionID><FunctionName>NoClass</FunctionName></Function></FBlock>
  <FBlock><FBlockID>0x23</FBlockID><FBlockName>Empty</FBlockName></FBlock>
  <Definition/></FunctionCatalog>)"),
                                 {});
    ASSERT_NE(reading.Catalog(), nullptr);
    struct Row {
        const char* what;
        const char* why;
    };
    constexpr Row kRows[] = {
        {"22.200", ""},
        {"22.202", ""},
        {"24", ""},
        {"Amp", ""},
        {"22.201", "the function could not be imported (message 117)"},
        {"22.201.C", "the function could not be imported (message 117)"},
        {"23", "the block could not be imported (message 146)"},
        {"23.100", "the block could not be imported (message 146)"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(WhyLost(*reading.Catalog(), row.what), row.why) << row.what;
    }
}

TEST(ReviewFind, NamesTheNearest) {
    const ZMTCatalog& catalog = *Roadster().Catalog();
    EXPECT_EQ(NearestTo(catalog, "AudioAmp.Volum").front(), "AudioAmp.Volume");
    EXPECT_EQ(NearestTo(catalog, "Trebel").front(), "Treble");
    EXPECT_EQ(NearestTo(catalog, "AudioAmp.Volume.Sttus").front(), "AudioAmp.Volume.Status");
    EXPECT_EQ(NearestTo(catalog, "Trebel").size(), 3U);
}

}  // namespace
}  // namespace tarvex::test::find_test
