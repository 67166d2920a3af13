/// Names that a conversion gives to signals: within a message, and across messages and function blocks.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/signal_layout.h"

namespace tarvex::test::signal_naming_test {
namespace {

using Names = std::vector<std::string>;

struct NamingCase {
    const char* what;
    NamedTypes params;
    Names repeatable;
    Names unique;
};

TEST(SignalNaming, InOneMessage) {
    const NamingCase kRows[] = {
        {"twice the same name", {{"Temp", UByte()}, {"Temp", UByte()}}, {"Temp", "TempB"}, {"Temp", "TempB"}},
        {"a name that looks numbered",
         {{"Temp", UByte()}, {"TempB", UByte()}, {"Temp", UWord()}},
         {"Temp", "TempB", "TempC"},
         {"Temp", "TempB", "TempC"}},
        {"special characters",
         {{"Level(dB)[0]-x_y", UByte()}, {"Level dB 0", UByte()}},
         {"LeveldB0x_y", "Level_dB_0"},
         {"LeveldB0x_y", "Level_dB_0"}},
        {"nothing but special characters", {{"(-)", UByte()}, {"[]", UByte()}}, {"B", "C"}, {"B", "C"}},
        {"32 characters, and one more",
         {{"BcdfghjklmnpqrstBcdfghjklmnpqrst", UByte()}, {"TcdfghjklmnpqrstBcdfghjklmnpqrstB", UByte()}},
         {"BcdfghjklmnpqrstBcdfghjklmnpqrst", "TcdfghjklmnpqrstBcdfghjklmnpqrst"},
         {"BcdfghjklmnpqrstBcdfghjklmnpq", "TcdfghjklmnpqrstBcdfghjklmnpq"}},
        // the second is one character longer than a record has room for
        {"32 characters twice",
         {{"BcdfghjklmnpqrstBcdfghjklmnpqrst", UByte()}, {"BcdfghjklmnpqrstBcdfghjklmnpqrst", UByte()}},
         {"BcdfghjklmnpqrstBcdfghjklmnpqrst", "BcdfghjklmnpqrstBcdfghjklmnpqrst"},
         {"BcdfghjklmnpqrstBcdfghjklmnpq", "BcdfghjklmnpqrstBcdfghjklmnpqB"}},
        {"enumerations have room for 26",
         {{"BcdfghjklmnpqrstBcdfghjklmnpqrst", Enumeration(1, {})}, {"AmplificationOfLoudspeakers", UByte()}},
         {"BcdfghjklmnpqrstBcdfghjklm", "AmplificationOfLoudspeakers"},
         {"BcdfghjklmnpqrstBcdfghj", "AmplificationOfLoudspeakers"}},
        {"bits too, the number included",
         {{"AmplificationOfLoudspeakers", BitField(16, {{0, "AmplificationOfLoudspeakers"}, {12, ""}})},
          {"BcdfghjklmnpqrstBcdfghj", Boolean({{0, ""}})}},
         {"AmplfctnOfLdspkrs", "AmplfctnOfLdspkrs_NN_12", "BcdfghjklmnpqrstBcdfghj_NN"},
         {"AmplfctnOfLdspkrs", "AmplfctnOfLdspkrs_NN_12", "BcdfghjklmnpqrstBcdfghj"}},
        {"the switch",
         {{"Pos", UWord()}, {"Rec", Record({{"PosX", UByte()}})}},
         {"PosX", "PosX_M0", "PosX_M1"},
         {"PosX", "PosX_M0", "PosX_M1"}},
        {"a name like that of the switch",
         {{"PosX", UByte()}, {"Pos", UWord()}, {"Rec", Record({{"A", UByte()}})}},
         {"PosX", "PosBX", "A_M0", "A_M1"},
         {"PosX", "PosBX", "A_M0", "A_M1"}},
        {"a name like that of a field",
         {{"A_M1", UByte()}, {"Rec", Record({{"A", UByte()}})}},
         {"A_M1", "A_M0", "AB_M1"},
         {"A_M1", "A_M0", "AB_M1"}},
        {"the suffix takes its room",
         {{"Rec", Record({{"BcdfghjklmnpqrstBcdfghjklmnpqrst", UByte()},
                          {"BcdfghjklmnpqrstBcdfghjklmnpqrst", Enumeration(1, {})}})}},
         {"BcdfghjklmnpqrstBcdfghjklmnpq_M0", "BcdfghjklmnpqrstBcdfghjklmnpq_M1",
          "BcdfghjklmnpqrstBcdfghj_M0", "BcdfghjklmnpqrstBcdfghj_M2"},
         {"BcdfghjklmnpqrstBcdfghjklm_M0", "BcdfghjklmnpqrstBcdfghjklm_M1", "BcdfghjklmnpqrstBcdf_M0",
          "BcdfghjklmnpqrstBcdf_M2"}},
        // 33 characters, of which the record keeps "..._M" without the digit
        {"two fields of 32 characters",
         {{"Rec", Record({{"BcdfghjklmnpqrstBcdfghjklmnpqrst", UByte()},
                          {"BcdfghjklmnpqrstBcdfghjklmnpqrst", UByte()}})}},
         {"BcdfghjklmnpqrstBcdfghjklmnpq_M0", "BcdfghjklmnpqrstBcdfghjklmnpq_M1",
          "BcdfghjklmnpqrstBcdfghjklmnpqB_M", "BcdfghjklmnpqrstBcdfghjklmnpq_M2"},
         {"BcdfghjklmnpqrstBcdfghjklm_M0", "BcdfghjklmnpqrstBcdfghjklm_M1", "BcdfghjklmnpqrstBcdfghjklmB_M0",
          "BcdfghjklmnpqrstBcdfghjklm_M2"}},
    };
    for (const NamingCase& row : kRows) {
        SCOPED_TRACE(row.what);
        const std::string block = BlockOf(PropertyOf("0x400", "Volume", row.params));
        EXPECT_EQ(SignalNamesOf(block, false), std::vector<Names>{row.repeatable});
        EXPECT_EQ(SignalNamesOf(block, true), std::vector<Names>{row.unique});
    }
}

TEST(SignalNaming, TheTwentySeventhOfOneNameHasTwoLetters) {
    for (const bool unique : {true, false}) {
        const Names names =
            SignalNamesOf(BlockOf(PropertyOf("1", "Volume", NamedTypes(28, {"Temp", UByte()}))), unique)
                .at(0);
        ASSERT_EQ(names.size(), 28U);
        EXPECT_EQ(names[0], "Temp");
        EXPECT_EQ(names[1], "TempB");
        EXPECT_EQ(names[25], "TempZ");
        EXPECT_EQ(names[26], "TempBA");
        EXPECT_EQ(names[27], "TempBB");
    }
}

TEST(SignalNaming, MultiplexerValuesAreHexadecimal) {
    NamedTypes fields;
    for (int k = 1; k <= 31; ++k) {
        fields.push_back({"F", UByte()});
    }
    const Names names =
        SignalNamesOf(BlockOf(PropertyOf("1", "Volume", {{"Rec", Record(fields)}})), false).at(0);
    ASSERT_EQ(names.size(), 62U);
    EXPECT_EQ(names[0], "F_M0");
    EXPECT_EQ(names[1], "F_M1");
    EXPECT_EQ(names[2], "FB_M0");
    EXPECT_EQ(names[3], "F_M2");
    EXPECT_EQ(names[19], "F_Ma");
    EXPECT_EQ(names[31], "F_M10");
    EXPECT_EQ(names[60], "FBE_M0");
    EXPECT_EQ(names[61], "F_M1f");
}

/// Two blocks; the first has two functions, one of them with two operations.
TEST(SignalNaming, AcrossMessagesAndFunctionBlocks) {
    const NamedTypes params{{"Temp", UByte()}, {"Pos", UWord()}, {"Rec", Record({{"Temp", UByte()}})}};
    const std::string blocks = "<FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>" +
                               PropertyOf("0x400", "Volume", params) +
                               PropertyOf("0x401", "Bass", {{"TempB", UByte()}, {"Temp", UByte()}}) +
                               "</FBlock><FBlock><FBlockID>0x23</FBlockID><FBlockName>Tuner</FBlockName>" +
                               PropertyOf("0x400", "Volume", params) + "</FBlock>";
    const Names first{"Temp", "PosX", "Temp_M0", "Temp_M1"};
    EXPECT_EQ(SignalNamesOf(blocks, false), (std::vector<Names>{first, {"TempB", "Temp"}, first}));
    EXPECT_EQ(SignalNamesOf(blocks, true),
              (std::vector<Names>{first, {"TempB", "TempC"}, {"TempD", "PosBX", "TempB_M0", "TempB_M1"}}));
}

TEST(SignalNaming, OfASecondMessageGoesOnOnlyWhenUnique) {
    const std::string block = BlockOf(PropertyOf("1", "Volume", {{"Temp", UByte()}}) +
                                      PropertyOf("2", "Bass", {{"Temp", UByte()}}));
    EXPECT_EQ(SignalNamesOf(block, true), (std::vector<Names>{{"Temp"}, {"TempB"}}));
    EXPECT_EQ(SignalNamesOf(block, false), (std::vector<Names>{{"Temp"}, {"Temp"}}));
}

}  // namespace
}  // namespace tarvex::test::signal_naming_test
