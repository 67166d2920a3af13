/// Where words stand in catalogs.

#include "review/search.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "review/examples.h"
#include "support/catalog_import.h"
#include "support/temp_dir.h"

namespace tarvex::test::search_test {
namespace {

using namespace review;
using testing::ElementsAre;

/// "Block.Function: what"
std::vector<std::string> Places(const CatalogReading& reading, const char* word) {
    std::vector<std::string> places;
    Search(*reading.Catalog(), word, [&](const FoundPlace& place) {
        const ZMTFunction* function = place.target.function;
        places.push_back(place.target.block->GetName() +
                         (function == nullptr ? "" : "." + function->GetName()) + ": " + place.what);
    });
    return places;
}

std::vector<std::string> InRoadster(const char* word) {
    return Places(Roadster(), word);
}

TEST(ReviewSearch, FindsEveryKindOfName) {
    EXPECT_THAT(InRoadster("AudioAmp"), ElementsAre("AudioAmp: block"));
    EXPECT_THAT(InRoadster("Treble"),
                ElementsAre("AudioAmp.Bass__Treble: function", "AudioAmp.Bass__Treble: parameter Treble"));
    EXPECT_THAT(InRoadster("Gain"), ElementsAre("AudioAmp.SpeakerSetup: parameter Data.Gain"));
    EXPECT_THAT(InRoadster("Own preset"),
                ElementsAre("AudioAmp.EqualizerPreset: value 0x20..0x2F Own preset of Preset"));
    EXPECT_THAT(InRoadster("Main relay"),
                ElementsAre("AudioAmp.RelayFaults: bit 12 of Relays, Main relay: stuck / works"));
    EXPECT_THAT(InRoadster("scratched"),
                ElementsAre("Disc_Player.MediaFlags: bit 9 of Flags, scratched / clean"));
    EXPECT_THAT(Places(Convertible(), "QuarterHours"),
                ElementsAre("Cabin.ClimateProgram: signal Program.QuarterHours"));
    EXPECT_THAT(Places(Convertible(), "°c"),
                testing::Contains("Cabin.ClimateProgram: unit °C of Program.Curve.Degrees"));
}

TEST(ReviewSearch, FindsPartsInAnyCase) {
    EXPECT_THAT(InRoadster("own PRE"),
                ElementsAre("AudioAmp.EqualizerPreset: value 0x20..0x2F Own preset of Preset"));
    EXPECT_THAT(InRoadster("own_pre"), InRoadster("own PRE"));
}

/// Letters that databases do not take are letters all the same.
TEST(ReviewSearch, FindsWhatTheCatalogWrites) {
    EXPECT_THAT(InRoadster("Überblend"), ElementsAre("AudioAmp.berblendzeit: function"));
    EXPECT_THAT(InRoadster("café /"),
                ElementsAre("AudioAmp.EqualizerPreset: value 0x02 Café / Bar of Preset"));
    EXPECT_THAT(InRoadster("k & p"),
                ElementsAre("AudioAmp.EqualizerPreset: value 0x21 Rock & Pop of Preset"));
    EXPECT_THAT(InRoadster("Rock  Pop"), InRoadster("Rock__Pop"));
    const TempDir dir;
    const CatalogReading reading(
        dir.Write("c.xml",
                  CatalogOfParams(
                      Param("Да",
                            "<TBool TypeRef='type_bool'><TBoolField BitPos='0'><BitTrueDesc>&gt;5 V"
                            "</BitTrueDesc><BitFalseDesc>5 V</BitFalseDesc></TBoolField></TBool>") +
                      Param("E",
                            "<TEnum TypeRef='type_enum' TEnumMax='9'><TEnumValue Code='1'>N/A</TEnumValue>"
                            "<TEnumValue Code='2'>Da</TEnumValue><TEnumValue Code='3' SymbolicName='NAN'>Нет"
                            "</TEnumValue></TEnum>",
                            "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>"))),
        {});
    EXPECT_THAT(Places(reading, "Да"), ElementsAre("Amp.Volume: parameter \"Да\""));
    EXPECT_THAT(Places(reading, ">5"), ElementsAre("Amp.Volume: bit 0 of \"Да\", >5 V / 5 V"));
    EXPECT_THAT(Places(reading, "n/a"), ElementsAre("Amp.Volume: value 0x01 N/A of E"));
    EXPECT_THAT(Places(reading, "NA"),
                ElementsAre("Amp.Volume: value 0x01 N/A of E", "Amp.Volume: value 0x03 NAN of E"));
    EXPECT_THAT(Places(reading, "Нет"), ElementsAre());  // a sentence about NAN
}

TEST(ReviewSearch, FindsNothing) {
    for (const char* word :
         {"", " ", "nowhere", "N/A", "Да", "not_defined", "{Void}", "Void", "StreamCase"}) {
        EXPECT_THAT(InRoadster(word), ElementsAre()) << word;
    }
}

TEST(ReviewSearch, FindsAParameterOnceInAFunction) {
    EXPECT_THAT(InRoadster("FadeTime"), ElementsAre("AudioAmp.berblendzeit: parameter FadeTime"));
}

TEST(ReviewSearch, FindsCopiesInEachFunction) {
    EXPECT_THAT(InRoadster("FktIDList"),
                ElementsAre("AudioAmp.FktIDs: parameter FktIDList", "Disc_Player.FktIDs: parameter FktIDList",
                            "Tuner_SdWest.FktIDs: parameter FktIDList"));
}

}  // namespace
}  // namespace tarvex::test::search_test
