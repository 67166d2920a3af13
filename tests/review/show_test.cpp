/// What of catalogs is shown to people.

#include "review/show.h"

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "review/examples.h"
#include "support/catalog_import.h"
#include "support/temp_dir.h"

namespace tarvex::test::show_test {
namespace {

using namespace review;

std::string Shown(const CatalogReading& reading, const std::vector<std::string>& words) {
    const auto report = MakeShowText(reading, vorn::Style(false));
    return words.empty() ? report->Of(ViewOf(reading)) : report->Of(Shower(reading).AnswersTo(words));
}

const CatalogReading& Example(std::string_view name) {
    return name == "roadster.xml" ? Roadster() : Convertible();
}

/// A function of an example in three spellings, and the file with what is shown of it.
struct Function {
    const char* catalog;
    const char* address;
    const char* name;
    const char* otherSpelling;
    const char* file;
};

class ShowFunction : public testing::TestWithParam<Function> {};

TEST_P(ShowFunction, IsTheTextWorkedOut) {
    const CatalogReading& reading = Example(GetParam().catalog);
    const std::string expected = ReadFile(std::string(TARVEX_SHOWN) + "/" + GetParam().file);
    EXPECT_EQ(Shown(reading, {GetParam().address}), expected);
}

TEST_P(ShowFunction, IsFoundInEachSpelling) {
    const CatalogReading& reading = Example(GetParam().catalog);
    const std::string byAddress = Shown(reading, {GetParam().address});
    EXPECT_EQ(Shown(reading, {GetParam().name}), byAddress);
    EXPECT_EQ(Shown(reading, {GetParam().otherSpelling}), byAddress);
}

constexpr Function kFunctions[] = {
    {"roadster.xml", "22.402", "AudioAmp.Bass & Treble", "audioamp.bass*", "bass_and_treble.txt"},
    {"roadster.xml", "22.404", "AudioAmp.EqualizerPreset", "AUDIOAMP.EQ*PRESET", "equalizer_preset.txt"},
    {"roadster.xml", "0x22.0x406", "AudioAmp.SpeakerMask", "*.Speaker?ask", "speaker_mask.txt"},
    {"roadster.xml", "22.01.408", "AudioAmp.ChannelTrim", "audioAmp.channelTrim", "channel_trim.txt"},
    {"roadster.xml", "22.409", "AudioAmp.SpeakerSetup", "*.SpeakerSetup", "speaker_setup.txt"},
    {"roadster.xml", "22.101", "AudioAmp.Allocate", "Audio*.Allocate", "allocate.txt"},
    {"roadster.xml", "31.000", "Disc Player.FktIDs", "disc_player.fktids", "function_ids.txt"},
    {"roadster.xml", "31.209", "Disc Player.DiscInfo", "Disc_Player.*Info", "disc_info.txt"},
    {"roadster.xml", "31.20b", "Disc Player.Bookmarks", "*.Bookmarks", "bookmarks.txt"},
    {"convertible.xml", "52.200", "Navigation.Guidance", "navigation.guid*", "guidance.txt"},
    {"convertible.xml", "71.203", "Cabin.RoofSensors", "cabin.roofs?nsors", "roof_sensors.txt"},
    {"convertible.xml", "71.205", "Cabin.ClimateProgram", "*.climateprogram", "climate_program.txt"},
};
INSTANTIATE_TEST_SUITE_P(Examples, ShowFunction, testing::ValuesIn(kFunctions),
                         [](const auto& function) { return "Function" + std::to_string(function.index); });

TEST(ReviewShow, AllBlocks) {
    EXPECT_EQ(Shown(Roadster(), {}), R"(roadster.xml  release 3.1 of 2024-06-03

ID  Block         Kind   Version            Functions  Faults
06  Diagnosis     Slave  1.2 of 2024-05-17  4          0
22  AudioAmp      Slave  1.2 of 2024-05-17  14         4
31  Disc_Player   Slave  2.0 of 2024-05-17  14         6
40  Tuner_SdWest  Slave  1.2 of 2024-05-17  14         5
50  Phone         Slave  1.2 of 2024-05-17  11         15
60  Gateway       Slave  1.0 of 2024-05-31  6          5

Outside of these: 5 faults
)");
}

TEST(ReviewShow, ABlock) {
    const std::string expected = R"(52  Navigation
  Slave, version 4.1 of 2025-02-11, 0 faults
  Finds the way, and what lies beside it.

ID   Function      Class                Operations
200  Guidance      property PSequence   Get, Status
201  RouteList     property PSequence   Set, Status
202  TrafficAhead  property PContainer  Status
203  PoiSearch     method MSequence     StartResultAck, AbortAck, ErrorAck, ProcessingAck, ResultAck
204  TripData      property PContainer  Get, Status
)";
    EXPECT_EQ(Shown(Convertible(), {"52"}), expected);
    EXPECT_EQ(Shown(Convertible(), {"navigation"}), Shown(Convertible(), {"0x52"}));
}

TEST(ReviewShow, AnOperationAlone) {
    EXPECT_EQ(Shown(Roadster(), {"AudioAmp.Volume.increment"}), R"(22.400.3  AudioAmp.Volume.Increment
  property PNumber, section Unique
  Loudness of all channels. Steps follow the ear, not the power: 0 is silence, 100 is full.

OPType       NSteps  Bytes  Layout    Identifier  Message
3 Increment  1       1      complete  0x224003    AudioAmp_Volume_Increment

NSteps  unsigned number, 1 byte
  range 1..10, step 1

3 Increment
         7 6 5 4 3 2 1 0
0        A A A A A A A A
A NSteps
)");
}

TEST(ReviewShow, AnOperationThatIsLost) {
    EXPECT_THAT(Shown(Roadster(), {"50.306.2"}), testing::HasSubstr(R"(
OPType    Bytes  Layout  Identifier  Message
2 SetGet  0?     lost    0x503062    Phone_SpeedDial_SetGet

2 SetGet
         7 6 5 4 3 2 1 0
0-       ? ? ? ? ? ? ? ?   the parameter at an unknown position could not be imported (message 122)
)"));
}

TEST(ReviewShow, WhatIsNotSureIsDrawnSo) {
    EXPECT_THAT(Shown(Roadster(), {"50.307.C"}), testing::HasSubstr(R"(
4        . . . . . . . B
5        C C C C C C C C
6-       ? ? ? ? ? ? ? ?   Network has another number of fields than it says (message 55)
)"));
}

TEST(ReviewShow, SeveralAreListed) {
    EXPECT_EQ(Shown(Roadster(), {"AudioAmp.Volume.S*", "*.*cate"}), R"(22.400.0  AudioAmp.Volume.Set
22.400.2  AudioAmp.Volume.SetGet
22.400.C  AudioAmp.Volume.Status

22.101  AudioAmp.Allocate
50.101  Phone.Allocate
)");
}

TEST(ReviewShow, PlacesOfAWord) {
    EXPECT_EQ(Shown(Roadster(), {"muted", "volume"}), R"(22.113  AudioAmp.Mute  bit 0 of Mute, muted / audible

22.400  AudioAmp.Volume  function
22.400  AudioAmp.Volume  parameter Volume
)");
}

TEST(ReviewShow, ManyParametersHaveNumbersInTheTable) {
    std::string params;
    for (int i = 1; i <= 8; ++i) {
        const std::string position = std::to_string(i);
        params += "<PUParam><ParamName>Temperature" + position +
                  "</ParamName><PUParamOPType><PReportStatus>" + "<ParamPos>" + position +
                  "</ParamPos></PReportStatus></PUParamOPType><PUParamType>" +
                  "<TBool TypeRef='type_bool'/></PUParamType></PUParam>";
    }
    const TempDir dir;
    const CatalogReading reading(dir.Write("many.xml", CatalogOfParams(params)), {});
    const std::string shown = Shown(reading, {"22.400"});
    EXPECT_THAT(shown, testing::HasSubstr(R"(
OPType    [1]  [2]  [3]  [4]  [5]  [6]  [7]  [8]  Bytes  Layout    Identifier  Message
C Status  1    2    3    4    5    6    7    8    8      complete  0x22400C    Amp_Volume_Status

[1] Temperature1  boolean, 1 byte, 8 bits used
[2] Temperature2  boolean, 1 byte, 8 bits used
)"));
}

/// The table has the positions that stand in the catalog.
TEST(ReviewShow, PositionsAreThoseOfTheCatalog) {
    const auto param = [](const char* name, int set, int status) {
        return Param(name, "<TBool TypeRef='type_bool'/>",
                     "<PCmdSet><ParamPos>" + std::to_string(set) +
                         "</ParamPos></PCmdSet><PReportStatus><ParamPos>" + std::to_string(status) +
                         "</ParamPos></PReportStatus>");
    };
    const TempDir dir;
    const CatalogReading reading(dir.Write("gap.xml", CatalogOfParams(param("A", 0, 1) + param("B", 1, 3))),
                                 {});
    EXPECT_THAT(Shown(reading, {"22.400"}), testing::HasSubstr(R"(
OPType    A  B  Bytes  Layout      Identifier  Message
0 Set     0  1  2      complete    0x224000    Amp_Volume_Set
C Status  1  3  1?     incomplete  0x22400C    Amp_Volume_Status
)"));
}

TEST(ReviewShow, NothingFound) {
    Shower shower(Roadster());
    const std::vector<Answer> answers = shower.AnswersTo({"AudioAmp.Volum"});
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_FALSE(answers.front().IsFound());
    EXPECT_THAT(NotFoundText(Roadster(), answers.front()),
                testing::StartsWith(
                    "nothing in roadster.xml is 'AudioAmp.Volum'; the nearest names: AudioAmp.Volume, "));
    EXPECT_EQ(Shown(Roadster(), {"AudioAmp.Volum"}), "");
}

TEST(ReviewShow, NamesHideWhatATerminalObeys) {
    const TempDir dir;
    const std::string catalog = CatalogOf(
        BlockOf("<Function><FunctionID "
                "FunctionSection='\xC2\x9B'>0x200</FunctionID><FunctionName>F\xC2\x9B</FunctionName>"
                "<FunctionDescription>a\xC2\x9B"
                "b</FunctionDescription>"
                "<FunctionClass ClassRef='c'><Property><PUnclassified>" +
                Param("P", "<TBool TypeRef='type_bool'/>") +
                "</PUnclassified></Property></FunctionClass></Function>"));
    ReadingOptions options;
    options.areDescriptionsRead = true;
    const CatalogReading reading(dir.Write("controls.xml", catalog), options);
    for (const char* what : {"22", "22.200", "P"}) {
        EXPECT_THAT(Shown(reading, {what}), testing::Not(testing::HasSubstr("\xC2\x9B"))) << what;
    }
}

}  // namespace
}  // namespace tarvex::test::show_test
