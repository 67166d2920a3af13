/// What aliases change in signals: the names of parameters and bits, and the texts of values.

#include <string>

#include <gtest/gtest.h>

#include "export/signal_layout.h"

namespace tarvex::test::signals_alias_test {
namespace {

struct AliasedLayout {
    const char* aliases;
    LayoutCase layout;
};

void Expect(const AliasedLayout& row) {
    ExpectLayout(row.layout, row.aliases);
}

TEST(SignalAlias, StandsInTheNameWithoutItsSpecialCharacters) {
    const AliasedLayout kRows[] = {
        {"Level,Gain\n", {"number", {{"Level", UByte()}}, 1, {{"Gain", 7, 8}}}},
        {"Level, Gain (dB)_1\n",
         {"letters, digits and _ stay", {{"Level", UByte()}}, 1, {{"GaindB_1", 7, 8}}}},
        {"level,Gain\n", {"case counts", {{"Level", UByte()}}, 1, {{"Level", 7, 8}}}},
        {"Level(dB),Gain\n", {"for the name in the tree", {{"Level(dB)", UByte()}}, 1, {{"Gain", 7, 8}}}},
        {"LeveldB,Gain\n",
         {"not for the name of the signal", {{"Level(dB)", UByte()}}, 1, {{"LeveldB", 7, 8}}}},
        {"A,Same\nB,Same\n",
         {"two with one alias", {{"A", UByte()}, {"B", UByte()}}, 2, {{"Same", 7, 8}, {"SameB", 15, 8}}}},
        {"Level,()\n", {"nothing is left", {{"Level", UByte()}}, 1, {{"B", 7, 8}}}},
        {"Pos,Place\n",
         {"the switch stays one",
          {{"Pos", UWord()}, {"Data", Record({{"A", UByte()}})}},
          3,
          {{"PlaceX", 0, 16, Switch}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}}},
        {"Place,Pos\n",
         {"an alias makes no switch",
          {{"Place", UWord()}, {"Rec", Record({{"A", UByte()}})}},
          3,
          {{"Pos", 7, 16}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}}},
        {"A,First\nRec,Unused\n",
         {"field of a record",
          {{"Rec", Record({{"A", UByte()}})}},
          1,
          {{"First_M0", 7, 8, Unsigned, 0}, {"First_M1", 7, 8, Unsigned, 1}}}},
    };
    for (const AliasedLayout& row : kRows) {
        Expect(row);
    }
}

TEST(SignalAlias, StandsAsItIsInTheTextOfAValue) {
    const std::string mode = Enumeration(3, {{"0", "Off"}, {"1..2", "On"}, {"3", "Not set"}});
    const AliasedLayout kRows[] = {
        {"Off,Aus (ganz)\nNot set,?!\n",
         {"codes",
          {{"Mode", mode}},
          1,
          {{"Mode", 7, 8, Unsigned, kAlways, {{0, "Aus (ganz)"}, {1, "On"}, {2, "On"}, {3, "?!"}}}}}},
        {"On,Ein\nMode,Art\n",
         {"range, and the parameter",
          {{"Mode", mode}},
          1,
          {{"Art", 7, 8, Unsigned, kAlways, {{0, "Off"}, {1, "Ein"}, {2, "Ein"}, {3, "Not set"}}}}}},
        {"Off,0123456789012345678901234567890\xC3\xB6\n",
         {"no half of a letter",
          {{"Mode", Enumeration(1, {{"0", "Off"}})}},
          1,
          {{"Mode", 7, 8, Unsigned, kAlways, {{0, "0123456789012345678901234567890"}}}}}},
        {"Off,0123456789012345678901234567890123\nNot set,\n",
         {"at most 32 characters",
          {{"Mode", mode}},
          1,
          {{"Mode",
            7,
            8,
            Unsigned,
            kAlways,
            {{0, "01234567890123456789012345678901"}, {1, "On"}, {2, "On"}, {3, ""}}}}}},
    };
    for (const AliasedLayout& row : kRows) {
        Expect(row);
    }
}

TEST(SignalAlias, OfABitItsTextsAndItsField) {
    const NamedTypes params{{"State", BitField(8, {{0, "Ready", "Yes", "No"}, {3, ""}})}};
    const AliasedLayout kRows[] = {
        {"Ready,Set-up_1\n",
         {"bit",
          params,
          1,
          {{"Setup_1", 0, 1, Unsigned, kAlways, {{1, "Yes"}, {0, "No"}}},
           {"State_NN_3", 3, 1, Unsigned, kAlways, kTrueFalse}}}},
        {"Yes,Yes!\nFalse,not so\n",
         {"texts",
          params,
          1,
          {{"Ready", 0, 1, Unsigned, kAlways, {{1, "Yes!"}, {0, "No"}}},
           {"State_NN_3", 3, 1, Unsigned, kAlways, {{1, "True"}, {0, "not so"}}}}}},
        {"State,Sta-te\n",
         {"field, in bits without a name only",
          params,
          1,
          {{"Ready", 0, 1, Unsigned, kAlways, {{1, "Yes"}, {0, "No"}}},
           {"State_NN_3", 3, 1, Unsigned, kAlways, kTrueFalse}}}},
        {"State,Flags\nState_NN_3,Wrong\n,Wrong\n",
         {"not for a bit without a name",
          params,
          1,
          {{"Ready", 0, 1, Unsigned, kAlways, {{1, "Yes"}, {0, "No"}}},
           {"Flags_NN_3", 3, 1, Unsigned, kAlways, kTrueFalse}}}},
        {"Ready,\n",
         {"an empty alias is no missing name",
          params,
          1,
          {{"B", 0, 1, Unsigned, kAlways, {{1, "Yes"}, {0, "No"}}},
           {"State_NN_3", 3, 1, Unsigned, kAlways, kTrueFalse}}}},
    };
    for (const AliasedLayout& row : kRows) {
        Expect(row);
    }
}

}  // namespace
}  // namespace tarvex::test::signals_alias_test
