/// Which name somebody may have meant.

#include "import/text/nearest_name.h"

#include <string>

#include <gtest/gtest.h>

namespace tarvex::test::nearest_name_test {
namespace {

constexpr std::string_view kNames[] = {"Amp", "Tuner", "Include", "Exclude", "WriteSignals"};

struct NearestCase {
    std::string given;
    std::string_view nearest;
};

TEST(NearestName, AtMostThreeLettersAndLessThanHalfOfTheName) {
    const NearestCase kCases[] = {
        {"Include", "Include"},
        {"INCLUDE", "Include"},
        {"WriteSignal", "WriteSignals"},    // one is missing
        {"WriteeSignals", "WriteSignals"},  // one too many
        {"WritxSiynals", "WriteSignals"},   // two changed
        {"xWxiteSxgnals", "WriteSignals"},  // three in all
        {"xWxxteSxgnals", ""},              // four
        {"rWtieSingasl", ""},               // four neighbours in each other's place
        {"rWtieSingals", "WriteSignals"},   // three
        {"mAp", "Amp"},                     // one of three letters
        {"pmA", ""},                        // these are no neighbours
        {"AB", ""},                         // two of "Amp"
        {"Am", "Amp"},
        {"Anq", ""},
        {"Tunxx", "Tuner"},
        {"Tuxxx", ""},
        {"Inxlude", "Include"},
        {"Excxude", "Exclude"},
        {"yyclude", "Include"},  // two from both: the first
        {"xxclude", "Exclude"},
        {"", ""},
        {std::string(65, 'x'), ""},
    };
    for (const auto& [given, nearest] : kCases) {
        EXPECT_EQ(NearestName(given, kNames), nearest) << given;
    }
}

TEST(NearestName, NamesThatAreLookedForAreNotLong) {
    const std::string name(64, 'x');
    const std::string_view names[] = {name};
    EXPECT_EQ(NearestName(name, names), name);
    EXPECT_EQ(NearestName(name + "x", names), "");
}

TEST(NearestName, NoNamesHaveNoNearest) {
    EXPECT_EQ(NearestName("Amp", {}), "");
}

struct NearestThreeCase {
    std::string given;
    std::vector<std::string_view> nearest;
};

TEST(NearestNames, MostOfTheGivenNameThenTheLength) {
    constexpr std::string_view kMessages[] = {"Amp_Volume_Set",     "Amp_Volume_Get", "Amp_Mute_Set",
                                              "Tuner_Station_Stat", "Amp_Volume_Set", ""};
    const NearestThreeCase kCases[] = {
        {"volme",
         {"Amp_Volume_Set", "Amp_Volume_Get", "Amp_Mute_Set"}},  // one letter is missing; of "Mute", three
        {"Mute_Set", {"Amp_Mute_Set", "Amp_Volume_Set", "Amp_Volume_Get"}},  // found; "e_Set"; "e_" and "et"
        {"Amp_Volume_Gets", {"Amp_Volume_Get", "Amp_Volume_Set", "Amp_Mute_Set"}},
        {"Station", {"Tuner_Station_Stat", "Amp_Mute_Set", "Amp_Volume_Set"}},
        {std::string(65, 'x'), {}},
    };
    for (const auto& [given, nearest] : kCases) {
        EXPECT_EQ(NearestNames(given, kMessages, 3), nearest) << given;
    }
    EXPECT_EQ(NearestNames("Mute", kMessages, 1).size(), 1U);
    EXPECT_EQ(NearestNames("Mute", kMessages, 9).size(), 5U);  // one is there twice
    EXPECT_EQ(NearestNames("Mute", {}, 3).size(), 0U);
}

}  // namespace
}  // namespace tarvex::test::nearest_name_test
