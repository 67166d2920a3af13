/// Message names: cleaning, dropping vowels, the cut at 32 bytes, and the suffixes of names that are taken.

#include "export/message_names.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tarvex::test::message_names_test {
namespace {

std::string MessageName(std::string_view block, std::string_view function, std::string_view operation,
                        MessageNames& names) {
    return names.Make(NamePart(block), NamePart(function), NamePart(operation));
}

struct CleanCase {
    const char* name;
    const char* clean;
};
constexpr CleanCase kCleanNames[] = {
    {"", ""},
    {"AudioAmp", "AudioAmp"},
    {"Audio Amp", "AudioAmp"},
    {"Audio_Amp-2 (left)[0]", "AudioAmp2left0"},
    {"AZaz09", "AZaz09"},
    {"@[`{/:", ""},  // the neighbours of the letters and digits
    {" \t_-.,;:!", ""},
    {"Gr\xC3\xB6\xC3\x9F"
     "e",
     "Gre"},
    {"\x80\xFF\x01\x7F", ""},
};

TEST(CleanName, OnlyAsciiLettersAndDigitsStay) {
    for (const CleanCase& row : kCleanNames) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(CleanName(row.name), row.clean);
    }
}

struct ShortenCase {
    const char* name;
    const char* shortened;
    std::size_t dropped;
};
constexpr ShortenCase kShortenedNames[] = {
    {"", "", 0},
    {"a", "a", 0},
    {"aei", "aei", 0},
    {"aeio", "aei", 1},
    {"aeiou", "aei", 2},
    {"Get", "Get", 0},
    {"Status", "Stats", 1},
    {"Volume", "Volm", 2},
    {"StartResultAck", "StartRsltAck", 2},  // the first "a" is kept, the second is a capital
    {"AEIOUAEIOU", "AEIOUAEIOU", 0},
    {"Symphony", "Symphny", 1},  // "y" is no vowel
    {"xxxaeiouxaeiou", "xxxx", 10},
    {"a b c d e", "a b c d ", 1},
    {"Gr\xC3\xB6\xC3\x9F"
     "e",
     "Gr\xC3\xB6\xC3\x9F", 1},  // bytes count, not letters
};

TEST(ShortenName, SmallVowelsFromTheFourthCharacterOnAreDroppedAndCounted) {
    for (const ShortenCase& row : kShortenedNames) {
        SCOPED_TRACE(row.name);
        std::string name = row.name;
        EXPECT_EQ(ShortenName(name), row.dropped);
        EXPECT_EQ(name, row.shortened);
    }
}

struct NameCase {
    const char* block;
    const char* function;
    const char* operation;
    const char* message;
};
constexpr NameCase kMessageNames[] = {
    // Short enough, also counting the two "_".
    {"Amp", "Volume", "Status", "Amp_Volume_Status"},
    {"", "", "", "__"},
    {"Amp", "Volume", "", "Amp_Volume_"},
    {"Audio_Amp", "Volume(dB)", "Set-Get", "AudioAmp_VolumedB_SetGet"},
    // 10 + 14 + 6 + 2 = 32
    {"Navigation", "CurrentRouting", "Status", "Navigation_CurrentRouting_Status"},
    // 33: the operation loses one vowel, which is enough
    {"Navigation", "CurrentRouting", "Process", "Navigation_CurrentRouting_Procss"},
    // 35: the operation loses all four, although three would do
    {"Navigation", "CurrentRouting", "OpenAeiou", "Navigation_CurrentRouting_OpenA"},
    // 33: no vowel in the operation, so the function loses three; the block is left alone
    {"TelephoneSystem", "DialedNumber", "GetX", "TelephoneSystem_DialdNmbr_GetX"},
    // 36 - 2 = 34: the function loses three
    {"TelephoneSystem", "DialedNumber", "GetMore", "TelephoneSystem_DialdNmbr_GetMr"},
    // 46 - 2 - 5 = 39: the block loses eight
    {"AudioSourceController", "ActiveSource", "StartResult", "AudSrcCntrllr_ActvSrc_StartRslt"},
    // 34 - 1 = 33 and nothing else to drop: cut
    {"BCDFGHJKLMNPQRST", "BCDFGHJKLM", "Status", "BCDFGHJKLMNPQRST_BCDFGHJKLM_Stat"},
    {"BCDFGHJKLMNPQRSTBCDFGHJKLMNPQRST", "B", "C", "BCDFGHJKLMNPQRSTBCDFGHJKLMNPQRST"},
    {"BCDFGHJKLMNPQRSTBCDFGHJKLMNPQRS", "B", "C", "BCDFGHJKLMNPQRSTBCDFGHJKLMNPQRS_"},
    // 11 + 14 + 6 + 2 = 33 before cleaning, 29 after it: shortened all the same
    {"My Amp No 1", "Channel Volume", "Status", "MyAmpNo1_ChannelVolume_Stats"},
    // 15 + 13 + 3 + 2 = 33 before cleaning, nothing to drop, nothing left to cut
    {"A-B-C-D-E-F-G-H", "T-U-V-W-X-Y-Z", "Get", "ABCDEFGH_TUVWXYZ_Get"},
    // 35 - 1 = 34: the function loses two, a capital "E" stays
    {"TunerStation", "PresetListEntry", "Status", "TunerStation_PrestLstEntry_Stats"},
};

TEST(MessageName, IsBlockFunctionAndOperationShortenedToFit) {
    for (const NameCase& row : kMessageNames) {
        SCOPED_TRACE(row.message);
        MessageNames used;
        EXPECT_EQ(MessageName(row.block, row.function, row.operation, used), row.message);
        EXPECT_EQ(used.Used(), kestrel::KeyedSet<std::string>{row.message});
    }
}

struct RepeatCase {
    int call;  // counted from 0
    const char* message;
};
constexpr RepeatCase kRepeats[] = {
    {0, "Amp_Volume_Get"},     {1, "Amp_Volume_Get00"},   {2, "Amp_Volume_Get01"},   {10, "Amp_Volume_Get09"},
    {11, "Amp_Volume_Get0A"},  {16, "Amp_Volume_Get0F"},  {17, "Amp_Volume_Get10"},  {99, "Amp_Volume_Get62"},
    {100, "Amp_Volume_Get63"}, {101, "Amp_Volume_Get63"}, {102, "Amp_Volume_Get63"},
};

TEST(MessageName, RepeatsAreNumberedInHexadecimalUntilTheLastNumberRepeats) {
    MessageNames used;
    std::vector<std::string> names;
    for (int call = 0; call <= 102; ++call) {
        names.push_back(MessageName("Amp", "Volume", "Get", used));
    }
    for (const RepeatCase& row : kRepeats) {
        SCOPED_TRACE(row.call);
        EXPECT_EQ(names.at(static_cast<std::size_t>(row.call)), row.message);
    }
    EXPECT_EQ(used.Used().size(), 101U);
}

struct TakenCase {
    const char* what;
    const char* operation;
    kestrel::KeyedSet<std::string> used;
    const char* message;
};

/// The block is always "Navigation" and the function "CurrentRouting", which makes 26 bytes with both "_".
TEST(MessageName, TakenNameIsCutToThirtyBytesInFrontOfItsNumber) {
    const TakenCase kTakenNames[] = {
        {"free", "Status", {"Navigation_CurrentRouting_Statut"}, "Navigation_CurrentRouting_Status"},
        {"case counts", "Get", {"NAVIGATION_CurrentRouting_Get"}, "Navigation_CurrentRouting_Get"},
        {"29 bytes", "Get", {"Navigation_CurrentRouting_Get"}, "Navigation_CurrentRouting_Get00"},
        {"30 bytes", "Stat", {"Navigation_CurrentRouting_Stat"}, "Navigation_CurrentRouting_Stat00"},
        {"31 bytes", "State", {"Navigation_CurrentRouting_State"}, "Navigation_CurrentRouting_Stat00"},
        {"32 bytes", "Status", {"Navigation_CurrentRouting_Status"}, "Navigation_CurrentRouting_Stat00"},
        {"number taken by another name that was cut",
         "Status",
         {"Navigation_CurrentRouting_Status", "Navigation_CurrentRouting_Stat00"},
         "Navigation_CurrentRouting_Stat01"},
        {"number taken by a natural name",
         "Get",
         {"Navigation_CurrentRouting_Get", "Navigation_CurrentRouting_Get00",
          "Navigation_CurrentRouting_Get02"},
         "Navigation_CurrentRouting_Get01"},
        {"the cut name itself need not be free",
         "Status",
         {"Navigation_CurrentRouting_Status", "Navigation_CurrentRouting_Stat"},
         "Navigation_CurrentRouting_Stat00"},
    };
    for (const TakenCase& row : kTakenNames) {
        SCOPED_TRACE(row.what);
        MessageNames used(row.used);
        EXPECT_EQ(MessageName("Navigation", "CurrentRouting", row.operation, used), row.message);
        EXPECT_EQ(used.Used().size(), row.used.size() + 1);
        EXPECT_TRUE(used.Used().contains(row.message));
    }
}

TEST(MessageName, DifferentNamesMayCleanToTheSame) {
    MessageNames used;
    EXPECT_EQ(MessageName("Audio_Amp", "Volume", "Get", used), "AudioAmp_Volume_Get");
    EXPECT_EQ(MessageName("AudioAmp", "Volume", "Get", used), "AudioAmp_Volume_Get00");
    EXPECT_EQ(MessageName("Audio-Amp", "Volume", "Get", used), "AudioAmp_Volume_Get01");
}

}  // namespace
}  // namespace tarvex::test::message_names_test
