/// Names of signals: the cut to the room that suffix and numbering letters leave, and names that are taken.

#include "export/signal_names.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/signal_namer.h"

namespace tarvex::test::signal_names_test {
namespace {

using Names = std::vector<std::string>;

constexpr bool kUnique = true;
constexpr bool kRepeatable = false;  // in another message

struct CutCase {
    const char* base;
    const char* suffix;
    std::size_t maxLength;
    const char* repeatable;
    const char* unique;  // three characters less, for the letters
};
constexpr CutCase kCuts[] = {
    {"Temp", "", 32, "Temp", "Temp"},
    {"Temp", "X", 32, "TempX", "TempX"},
    {"T_1", "_M1f", 26, "T_1_M1f", "T_1_M1f"},
    // 23, 24, 26 and 27 without vowels
    {"BcdfghjklmnpqrstBcdfghj", "", 26, "BcdfghjklmnpqrstBcdfghj", "BcdfghjklmnpqrstBcdfghj"},
    {"BcdfghjklmnpqrstBcdfghjk", "", 26, "BcdfghjklmnpqrstBcdfghjk", "BcdfghjklmnpqrstBcdfghj"},
    {"BcdfghjklmnpqrstBcdfghjklm", "", 26, "BcdfghjklmnpqrstBcdfghjklm", "BcdfghjklmnpqrstBcdfghj"},
    {"BcdfghjklmnpqrstBcdfghjklmn", "", 26, "BcdfghjklmnpqrstBcdfghjklm", "BcdfghjklmnpqrstBcdfghj"},
    // 29, 30, 32 and 33 without vowels
    {"BcdfghjklmnpqrstBcdfghjklmnpq", "", 32, "BcdfghjklmnpqrstBcdfghjklmnpq",
     "BcdfghjklmnpqrstBcdfghjklmnpq"},
    {"BcdfghjklmnpqrstBcdfghjklmnpqr", "", 32, "BcdfghjklmnpqrstBcdfghjklmnpqr",
     "BcdfghjklmnpqrstBcdfghjklmnpq"},
    {"BcdfghjklmnpqrstBcdfghjklmnpqrst", "", 32, "BcdfghjklmnpqrstBcdfghjklmnpqrst",
     "BcdfghjklmnpqrstBcdfghjklmnpq"},
    {"BcdfghjklmnpqrstBcdfghjklmnpqrstB", "", 32, "BcdfghjklmnpqrstBcdfghjklmnpqrst",
     "BcdfghjklmnpqrstBcdfghjklmnpq"},
    // The suffix takes its room first: 32 - 3 = 29 and 26, 26 - 4 = 22 and 19.
    {"BcdfghjklmnpqrstBcdfghjklmnpqrst", "_M0", 32, "BcdfghjklmnpqrstBcdfghjklmnpq_M0",
     "BcdfghjklmnpqrstBcdfghjklm_M0"},
    {"BcdfghjklmnpqrstBcdfghjklmnpqrst", "_M1f", 26, "BcdfghjklmnpqrstBcdfgh_M1f", "BcdfghjklmnpqrstBcd_M1f"},
    // 32 characters; without the vowels behind the third 21
    {"TemperatureOfTheOutsideAirSensor", "", 32, "TemperatureOfTheOutsideAirSensor", "TemprtrOfThOtsdArSnsr"},
    {"TemperatureOfTheOutsideAirSensor", "X", 32, "TemprtrOfThOtsdArSnsrX", "TemprtrOfThOtsdArSnsrX"},
    // 27 and 24 characters: one too many costs all of the vowels
    {"AmplificationOfLoudspeakers", "", 26, "AmplfctnOfLdspkrs", "AmplfctnOfLdspkrs"},
    {"AmplificationOfLoudspeak", "", 26, "AmplificationOfLoudspeak", "AmplfctnOfLdspk"},
    // 37 characters, 28 without "aeiouaeio", which is still too long for 26
    {"aeiBcdfghjklmnpqrstBcdfghjklaeiouaeio", "", 26, "aeiBcdfghjklmnpqrstBcdfghj",
     "aeiBcdfghjklmnpqrstBcdf"},
    // capital vowels stay
    {"AEIOUAEIOUAEIOUAEIOUAEIOUAEIOU", "", 26, "AEIOUAEIOUAEIOUAEIOUAEIOUA", "AEIOUAEIOUAEIOUAEIOUAEI"},
    // A suffix keeps four characters free: 4 and 1 for the base.
    {"Temp", "_M1f", 8, "Temp_M1f", "T_M1f"},
    {"Temp", "_M12f", 8, "Temp_M12", "T_M12"},
    {"Temperature", "_M123456789", 8, "Temp_M12", "T_M12"},
    {"aeiou", "_M123456789", 8, "aei_M12", "a_M12"},
    {"Temp", "_aaaaaaaaaaaaaaaaaaaaaaaaaaaaa", 26, "Temp_aaaaaaaaaaaaaaaaaaaaa", "T_aaaaaaaaaaaaaaaaaaaaa"},
    {"", "X", 32, "X", "X"},
    {"", "_M0", 26, "_M0", "_M0"},
};

TEST(SignalName, IsCutToTheRoomThatIsLeft) {
    for (const CutCase& row : kCuts) {
        SCOPED_TRACE(row.base);
        EXPECT_EQ(SignalNamer(kRepeatable).Add(row.base, row.suffix, row.maxLength), row.repeatable);
        EXPECT_EQ(SignalNamer(kUnique).Add(row.base, row.suffix, row.maxLength), row.unique);
    }
}

struct RepeatCase {
    std::size_t call;  // counted from 0
    const char* letters;
};
constexpr RepeatCase kRepeats[] = {
    {0, ""},    {1, "B"},   {2, "C"},    {24, "Y"},    {25, "Z"},    {26, "BA"},    {27, "BB"},
    {51, "BZ"}, {52, "CA"}, {675, "ZZ"}, {676, "BAA"}, {677, "BAB"}, {1351, "BZZ"}, {1352, "CAA"},
};

TEST(SignalName, ThatIsTakenGetsLettersInFrontOfTheSuffix) {
    for (const bool unique : {kUnique, kRepeatable}) {
        for (const std::string suffix : {"", "X", "_M1f"}) {
            SignalNamer namer(unique);
            Names names;
            for (int call = 0; call <= 1352; ++call) {
                names.push_back(namer.Add("Temp", suffix, 32));
            }
            for (const RepeatCase& row : kRepeats) {
                SCOPED_TRACE(row.call);
                EXPECT_EQ(names.at(row.call), std::string("Temp") + row.letters + suffix);
            }
        }
    }
}

struct Stem {
    const char* base;
    const char* suffix;
};
struct MeetingCase {
    const char* what;
    std::vector<Stem> stems;
    Names names;
};

TEST(SignalName, GoesToTheOneThatComesFirst) {
    const MeetingCase kRows[] = {
        {"a base that looks numbered, first",
         {{"TempB", ""}, {"Temp", ""}, {"Temp", ""}},
         {"TempB", "Temp", "TempC"}},
        {"between", {{"Temp", ""}, {"TempB", ""}, {"Temp", ""}}, {"Temp", "TempB", "TempC"}},
        {"last", {{"Temp", ""}, {"Temp", ""}, {"TempB", ""}}, {"Temp", "TempB", "TempBB"}},
        {"both again",
         {{"Temp", ""}, {"Temp", ""}, {"TempB", ""}, {"Temp", ""}, {"TempB", ""}},
         {"Temp", "TempB", "TempBB", "TempC", "TempBC"}},
        {"letters of two bases meet",
         {{"TempB", ""}, {"TempBA", ""}, {"TempB", ""}, {"TempB", ""}, {"TempBA", ""}},
         {"TempB", "TempBA", "TempBB", "TempBC", "TempBAB"}},
        {"a base that looks like base and suffix",
         {{"TempX", ""}, {"Temp", "X"}, {"TempBX", ""}, {"Temp", "X"}},
         {"TempX", "TempBX", "TempBXB", "TempCX"}},
        {"the letters stand in front of the suffix",
         {{"A", "X"}, {"A", "X"}, {"AB", "X"}, {"AB", "X"}, {"A", "X"}},
         {"AX", "ABX", "ABBX", "ABCX", "ACX"}},
        {"another suffix is another name",
         {{"Temp", "_M0"}, {"Temp", "_M1"}, {"Temp", "_M0"}, {"Temp", "_M1"}, {"Temp", ""}},
         {"Temp_M0", "Temp_M1", "TempB_M0", "TempB_M1", "Temp"}},
        {"case counts", {{"Temp", ""}, {"temp", ""}, {"TEMP", ""}}, {"Temp", "temp", "TEMP"}},
    };
    for (const MeetingCase& row : kRows) {
        SCOPED_TRACE(row.what);
        for (const bool unique : {kUnique, kRepeatable}) {
            SignalNamer namer(unique);
            Names names;
            for (const Stem& stem : row.stems) {
                names.push_back(namer.Add(stem.base, stem.suffix, 32));
            }
            EXPECT_EQ(names, row.names);
        }
    }
}

/// The signal that is to be named has no name yet, so the empty one is its own.
TEST(SignalName, IsNeverEmpty) {
    SignalNamer repeatable(kRepeatable);
    EXPECT_EQ(repeatable.Add("", "", 32), "B");
    EXPECT_EQ(repeatable.Add("", "", 32), "C");
    EXPECT_EQ(repeatable.Add("B", "", 32), "BB");
    repeatable.StartMessage();
    EXPECT_EQ(repeatable.Add("", "", 32), "B");

    SignalNamer unique(kUnique);
    EXPECT_EQ(unique.Add("", "", 32), "B");
    EXPECT_EQ(unique.Add("", "", 32), "C");
    unique.StartMessage();
    EXPECT_EQ(unique.Add("", "", 32), "D");
    EXPECT_EQ(unique.Add("B", "", 32), "BB");
}

TEST(SignalName, OccursOnceInTheDatabaseOrOnceInEachMessage) {
    const Stem kStems[] = {{"Temp", ""}, {"Temp", ""}, {"Level", ""}, {"Pos", "X"}, {"Pos", "X"}};
    SignalNamer repeatable(kRepeatable);
    SignalNamer unique(kUnique);
    std::vector<Names> repeatableNames;
    std::vector<Names> uniqueNames;
    for (int message = 0; message < 3; ++message) {
        repeatable.StartMessage();
        unique.StartMessage();
        repeatableNames.emplace_back();
        uniqueNames.emplace_back();
        for (const Stem& stem : kStems) {
            repeatableNames.back().push_back(repeatable.Add(stem.base, stem.suffix, 32));
            uniqueNames.back().push_back(unique.Add(stem.base, stem.suffix, 32));
        }
    }
    const Names first{"Temp", "TempB", "Level", "PosX", "PosBX"};
    EXPECT_EQ(repeatableNames, (std::vector<Names>{first, first, first}));
    EXPECT_EQ(uniqueNames, (std::vector<Names>{first,
                                               {"TempC", "TempD", "LevelB", "PosCX", "PosDX"},
                                               {"TempE", "TempF", "LevelC", "PosEX", "PosFX"}}));
}

/// Names are compared whole, but a record keeps 32 bytes: a longer name is never found again.
TEST(SignalName, OfMoreThan32CharactersRepeats) {
    const std::string base = "BcdfghjklmnpqrstBcdfghjklmnpqrst";
    SignalNamer plain(kRepeatable);
    EXPECT_EQ(plain.Add(base, "", 32), base);
    EXPECT_EQ(plain.Add(base, "", 32), base + "B");
    EXPECT_EQ(plain.Add(base, "", 32), base + "B");
    EXPECT_EQ(plain.RecordNames(), (Names{base, base, base}));

    const std::string room = "BcdfghjklmnpqrstBcdfghjklmnpq";  // 29
    SignalNamer multiplexed(kRepeatable);
    EXPECT_EQ(multiplexed.Add(base, "_M0", 32), room + "_M0");
    EXPECT_EQ(multiplexed.Add(base, "_M0", 32), room + "B_M0");
    EXPECT_EQ(multiplexed.Add(base, "_M0", 32), room + "B_M0");
    EXPECT_EQ(multiplexed.RecordNames(), (Names{room + "_M0", room + "B_M", room + "B_M"}));
    // What the record holds is what counts for others.
    EXPECT_EQ(multiplexed.Add(room + "B_M", "", 32), room + "B_MB");

    SignalNamer shorter(kRepeatable);  // 26 and one letter fit
    EXPECT_EQ(shorter.Add(base, "", 26), "BcdfghjklmnpqrstBcdfghjklm");
    EXPECT_EQ(shorter.Add(base, "", 26), "BcdfghjklmnpqrstBcdfghjklmB");
    EXPECT_EQ(shorter.Add(base, "", 26), "BcdfghjklmnpqrstBcdfghjklmC");

    SignalNamer unique(kUnique);  // room for three letters
    EXPECT_EQ(unique.Add(base, "", 32), room);
    EXPECT_EQ(unique.Add(base, "", 32), room + "B");
    EXPECT_EQ(unique.Add(base, "", 32), room + "C");
}

/// Three letters make 17,576 names of one base; then they take more than their room.
TEST(SignalName, ThatIsUniqueOutgrowsTheRecordWithTheFourthLetter) {
    const std::string base = "BcdfghjklmnpqrstBcdfghjklmnpq";  // 29
    SignalNamer namer(kUnique);
    Names names;
    for (int call = 0; call < 17'579; ++call) {
        if (call % 200 == 0) {
            namer.StartMessage();
        }
        names.push_back(namer.Add(base, "", 32));
    }
    EXPECT_EQ(names[17'575], base + "ZZZ");
    EXPECT_EQ(names[17'576], base + "BAAA");
    EXPECT_EQ(names[17'578], base + "BAAC");
    EXPECT_EQ(namer.RecordNames().back(), base + "BAA");
}

/// Cut, different bases are equal.
TEST(SignalName, ThatIsTakenAfterTheCutIsNumbered) {
    SignalNamer namer(kUnique);
    EXPECT_EQ(namer.Add("TemperatureOfTheOutsideAirSensor", "", 32), "TemprtrOfThOtsdArSnsr");
    EXPECT_EQ(namer.Add("TemprtrOfThOtsdArSnsr", "", 32), "TemprtrOfThOtsdArSnsrB");
    EXPECT_EQ(namer.Add("TemperetareOfTheOutsideAirSensor", "", 32), "TemprtrOfThOtsdArSnsrC");
    EXPECT_EQ(namer.Add("TemperatureOfTheOutsideAir", "", 32), "TemperatureOfTheOutsideAir");
}

}  // namespace
}  // namespace tarvex::test::signal_names_test
