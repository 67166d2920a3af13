/// Records: each field stands in the message twice, as part of the whole record (multiplexer value 0) and
/// alone at the record's first bit (multiplexer value 1, 2, 3, ...); and the "Pos" that selects one of these.

#include <string>

#include <gtest/gtest.h>

#include "export/signal_layout.h"

namespace tarvex::test::signals_record_test {
namespace {

TEST(RecordSignals, ArePartsOfTheRecordAndFieldsOnTheirOwn) {
    const LayoutCase kRows[] = {
        // byte    0   1   2   3   4   5
        //        Pos_____ A   B_____  C     value 0
        //                 A                       1
        //                 B_____                  2
        //                 C                       3
        {"behind the switch",
         {{"Pos", UWord()}, {"Data", Record({{"A", UByte()}, {"B", SWord()}, {"C", UByte()}})}},
         6,
         {{"PosX", 0, 16, Switch},
          {"A_M0", 23, 8, Unsigned, 0},
          {"A_M1", 23, 8, Unsigned, 1},
          {"B_M0", 31, 16, Signed, 0},
          {"B_M2", 23, 16, Signed, 2},
          {"C_M0", 47, 8, Unsigned, 0},
          {"C_M3", 23, 8, Unsigned, 3}}},
        // byte    0      1     2      3
        //        Level Mode  State  Sound    value 0
        //        Level                             1
        //        Mode                              2
        //        State                             3    State: - - - - - State_NN_2 - Ready
        //        Sound                             4    Sound: - - - - - - Muted -
        {"of every kind, until the string",
         {{"Rec", Record({{"Level", UByte()},
                          {"Mode", Enumeration(1, {{"0", "Off"}, {"1", "On"}})},
                          {"State", BitField(8, {{0, "Ready"}, {2, ""}})},
                          {"Sound", Boolean({{1, "Muted", "Yes", "No"}})},
                          {"Title", String()},
                          {"Last", UByte()}})},
          {"Behind", UByte()}},
         4,
         {{"Level_M0", 7, 8, Unsigned, 0},
          {"Level_M1", 7, 8, Unsigned, 1},
          {"Mode_M0", 15, 8, Unsigned, 0, {{0, "Off"}, {1, "On"}}},
          {"Mode_M2", 7, 8, Unsigned, 2, {{0, "Off"}, {1, "On"}}},
          {"Ready_M0", 16, 1, Unsigned, 0, kTrueFalse},
          {"State_NN_2_M0", 18, 1, Unsigned, 0, kTrueFalse},
          {"Ready_M3", 0, 1, Unsigned, 3, kTrueFalse},
          {"State_NN_2_M3", 2, 1, Unsigned, 3, kTrueFalse},
          {"Muted_M0", 25, 1, Unsigned, 0, {{1, "Yes"}, {0, "No"}}},
          {"Muted_M4", 1, 1, Unsigned, 4, {{1, "Yes"}, {0, "No"}}}}},
        // byte 0 1: Level   byte 2: State   byte 3: A or B   byte 4: B
        {"behind other parameters",
         {{"Level", UWord()},
          {"State", BitField(8, {{0, "Ready"}})},
          {"Rec", Record({{"A", UByte()}, {"B", UByte()}})}},
         5,
         {{"Level", 7, 16},
          {"Ready", 16, 1, Unsigned, kAlways, kTrueFalse},
          {"A_M0", 31, 8, Unsigned, 0},
          {"A_M1", 31, 8, Unsigned, 1},
          {"B_M0", 39, 8, Unsigned, 0},
          {"B_M2", 31, 8, Unsigned, 2}}},
        {"are the last ones of the message",
         {{"Rec", Record({{"A", UByte()}})}, {"Level", UByte()}, {"Other", Record({{"B", UByte()}})}},
         1,
         {{"A_M0", 7, 8, Unsigned, 0}, {"A_M1", 7, 8, Unsigned, 1}}},
        {"of two fields of one name",
         {{"Rec", Record({{"A", UByte()}, {"A", UByte()}})}},
         2,
         {{"A_M0", 7, 8, Unsigned, 0},
          {"A_M1", 7, 8, Unsigned, 1},
          {"AB_M0", 15, 8, Unsigned, 0},
          {"A_M2", 7, 8, Unsigned, 2}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

TEST(RecordSignals, EndAtAFieldWithoutAFixedLength) {
    for (const std::string& open : {String(), Array(), Void()}) {
        SCOPED_TRACE(open);
        const LayoutCase kRows[] = {
            {"first", {{"Rec", Record({{"Open", open}, {"A", UByte()}})}, {"B", UByte()}}, 0, {}},
            {"in the middle",
             {{"Rec", Record({{"A", UByte()}, {"Open", open}, {"B", UByte()}})}},
             1,
             {{"A_M0", 7, 8, Unsigned, 0}, {"A_M1", 7, 8, Unsigned, 1}}},
            {"last",
             {{"Rec", Record({{"A", UByte()}, {"B", UByte()}, {"Open", open}})}},
             2,
             {{"A_M0", 7, 8, Unsigned, 0},
              {"A_M1", 7, 8, Unsigned, 1},
              {"B_M0", 15, 8, Unsigned, 0},
              {"B_M2", 7, 8, Unsigned, 2}}},
        };
        for (const LayoutCase& row : kRows) {
            ExpectLayout(row);
        }
    }
}

/// An array called "Data" does not survive in a record without "Pos"; the fields left count 1, 2.
TEST(RecordSignals, CountTheFieldsThatAreThere) {
    ExpectLayout({"without the array",
                  {{"Rec", Record({{"A", UByte()}, {"Data", Array()}, {"B", UByte()}})}},
                  2,
                  {{"A_M0", 7, 8, Unsigned, 0},
                   {"A_M1", 7, 8, Unsigned, 1},
                   {"B_M0", 15, 8, Unsigned, 0},
                   {"B_M2", 7, 8, Unsigned, 2}}});
    ExpectLayout({"no field left", {{"Rec", Record({{"Data", Array()}})}}, 0, {}});
}

/// The inner record is written like any field: once in its place, once at the first bit of the outer one. It
/// is multiplexed by its own fields, and it ends the outer one.
TEST(RecordSignals, OfARecordInARecordAreWrittenTwiceAsAGroup) {
    const LayoutCase kRows[] = {
        {"alone",
         {{"Rec", Record({{"Inner", Record({{"A", UByte()}})}})}},
         1,
         {{"A_M0", 7, 8, Unsigned, 0},
          {"A_M1", 7, 8, Unsigned, 1},
          {"AB_M0", 7, 8, Unsigned, 0},
          {"AB_M1", 7, 8, Unsigned, 1}}},
        // byte    0   1   2
        //         A   B   C      the inner record in its place
        //         B   C          at the first bit
        {"between fields",
         {{"Rec",
           Record({{"A", UByte()}, {"Inner", Record({{"B", UByte()}, {"C", UByte()}})}, {"D", UByte()}})}},
         3,
         {{"A_M0", 7, 8, Unsigned, 0},
          {"A_M1", 7, 8, Unsigned, 1},
          {"B_M0", 15, 8, Unsigned, 0},
          {"B_M1", 15, 8, Unsigned, 1},
          {"C_M0", 23, 8, Unsigned, 0},
          {"C_M2", 15, 8, Unsigned, 2},
          {"BB_M0", 7, 8, Unsigned, 0},
          {"BB_M1", 7, 8, Unsigned, 1},
          {"CB_M0", 15, 8, Unsigned, 0},
          {"CB_M2", 7, 8, Unsigned, 2}}},
        {"ending with a string",
         {{"Rec",
           Record(
               {{"A", UByte()}, {"Inner", Record({{"B", UByte()}, {"Open", String()}})}, {"D", UByte()}})}},
         2,
         {{"A_M0", 7, 8, Unsigned, 0},
          {"A_M1", 7, 8, Unsigned, 1},
          {"B_M0", 15, 8, Unsigned, 0},
          {"B_M1", 15, 8, Unsigned, 1},
          {"BB_M0", 7, 8, Unsigned, 0},
          {"BB_M1", 7, 8, Unsigned, 1}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

/// One field behind a "Pos" of two bytes, and behind one of other sizes.
TEST(Pos, OfTwoBytesIsTheSwitchOfARecord) {
    const std::string record = Record({{"A", UByte()}});
    const LayoutCase kRows[] = {
        {"unsigned",
         {{"Pos", UWord()}, {"Data", record}},
         3,
         {{"PosX", 0, 16, Switch}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}},
        {"signed",
         {{"Pos", SWord()}, {"Data", record}},
         3,
         {{"PosX", 0, 16, SignedSwitch}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}},
        {"in small letters",
         {{"pos", UWord()}, {"data", record}},
         3,
         {{"posX", 0, 16, Switch}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}},
        {"whatever the record is called",
         {{"Pos", UWord()}, {"Rec", record}},
         3,
         {{"PosX", 0, 16, Switch}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}},
        {"at start bit 0 wherever it stands",
         {{"Level", UByte()}, {"Pos", UWord()}, {"Data", record}},
         4,
         {{"Level", 7, 8},
          {"PosX", 0, 16, Switch},
          {"A_M0", 31, 8, Unsigned, 0},
          {"A_M1", 31, 8, Unsigned, 1}}},
        {"also of a record that gets no signals",
         {{"Pos", UWord()}, {"Open", String()}, {"Data", record}},
         2,
         {{"PosX", 0, 16, Switch}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

TEST(Pos, IsANumberLikeOthersElsewhere) {
    const std::string record = Record({{"A", UByte()}});
    const LayoutCase kRows[] = {
        {"without a record", {{"Pos", UWord()}, {"Level", UByte()}}, 3, {{"Pos", 7, 16}, {"Level", 23, 8}}},
        {"beside an array", {{"Pos", UWord()}, {"Data", Array()}}, 2, {{"Pos", 7, 16}}},
        {"of one byte",
         {{"Pos", UByte()}, {"Data", record}},
         2,
         {{"Pos", 7, 8}, {"A_M0", 15, 8, Unsigned, 0}, {"A_M1", 15, 8, Unsigned, 1}}},
        {"of four bytes",
         {{"Pos", SLong()}, {"Data", record}},
         5,
         {{"Pos", 7, 32, Signed}, {"A_M0", 39, 8, Unsigned, 0}, {"A_M1", 39, 8, Unsigned, 1}}},
        {"an enumeration of two bytes",
         {{"Pos", Enumeration(256, {})}, {"Data", record}},
         3,
         {{"Pos", 7, 16}, {"A_M0", 23, 8, Unsigned, 0}, {"A_M1", 23, 8, Unsigned, 1}}},
        {"another name",
         {{"PosX", UWord()}, {"Position", UWord()}, {"Rec", record}},
         5,
         {{"PosX", 7, 16}, {"Position", 23, 16}, {"A_M0", 39, 8, Unsigned, 0}, {"A_M1", 39, 8, Unsigned, 1}}},
        // byte    0   1   2
        //        Pos____ Level
        //        Level
        {"a field of the record",
         {{"Rec", Record({{"Pos", UWord()}, {"Level", UByte()}})}},
         3,
         {{"Pos_M0", 7, 16, Unsigned, 0},
          {"Pos_M1", 7, 16, Unsigned, 1},
          {"Level_M0", 23, 8, Unsigned, 0},
          {"Level_M2", 7, 8, Unsigned, 2}}},
        {"a field of a record in the record",
         {{"Rec", Record({{"Inner", Record({{"Pos", UWord()}})}})}},
         2,
         {{"Pos_M0", 7, 16, Unsigned, 0},
          {"Pos_M1", 7, 16, Unsigned, 1},
          {"PosB_M0", 7, 16, Unsigned, 0},
          {"PosB_M1", 7, 16, Unsigned, 1}}},
        {"behind the record",
         {{"Rec", record}, {"Pos", UWord()}},
         1,
         {{"A_M0", 7, 8, Unsigned, 0}, {"A_M1", 7, 8, Unsigned, 1}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

}  // namespace
}  // namespace tarvex::test::signals_record_test
