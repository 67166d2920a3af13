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
        {"WriteSingals", "WriteSignals"},   // two changed
        {"xWxiteSxgnals", "WriteSignals"},  // three in all
        {"xWxxteSxgnals", ""},              // four
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

}  // namespace
}  // namespace tarvex::test::nearest_name_test
