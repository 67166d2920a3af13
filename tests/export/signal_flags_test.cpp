/// What the settings of a conversion change in signals and message lengths.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "export/signal_layout.h"

namespace tarvex::test::signal_flags_test {
namespace {

using Names = std::vector<std::string>;

struct Outcome {
    Names signals;
    int length;
};

struct FlagsCase {
    bool writeSignals;
    bool uniqueSignalNames;
    bool strictExport;
    bool setMessageLength;
    Outcome volume;  ///< A byte "Temp" and a string, so it fails the strict check.
    Outcome bass;    ///< A word "Temp".
};

TEST(SignalFlags, EachHasItsOwnEffect) {
    const FlagsCase kRows[] = {
        // write, unique, strict, length
        {true, true, false, true, {{"Temp"}, 1}, {{"TempB"}, 2}},
        {true, true, false, false, {{"Temp"}, 12}, {{"TempB"}, 12}},
        {true, false, false, true, {{"Temp"}, 1}, {{"Temp"}, 2}},
        {true, false, false, false, {{"Temp"}, 12}, {{"Temp"}, 12}},
        // a message without signals takes no names from others
        {true, true, true, true, {{}, 12}, {{"Temp"}, 2}},
        {true, true, true, false, {{}, 12}, {{"Temp"}, 12}},
        {true, false, true, true, {{}, 12}, {{"Temp"}, 2}},
        {true, false, true, false, {{}, 12}, {{"Temp"}, 12}},
        {false, true, false, true, {{}, 12}, {{}, 12}},
        {false, true, false, false, {{}, 12}, {{}, 12}},
        {false, false, false, true, {{}, 12}, {{}, 12}},
        {false, false, false, false, {{}, 12}, {{}, 12}},
        {false, true, true, true, {{}, 12}, {{}, 12}},
        {false, true, true, false, {{}, 12}, {{}, 12}},
        {false, false, true, true, {{}, 12}, {{}, 12}},
        {false, false, true, false, {{}, 12}, {{}, 12}},
    };
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", {{"Temp", UByte()}, {"Text", String()}}) +
                                  PropertyOf("0x401", "Bass", {{"Temp", UWord()}})));
    for (const FlagsCase& row : kRows) {
        SCOPED_TRACE(::testing::Message() << row.writeSignals << row.uniqueSignalNames << row.strictExport
                                          << row.setMessageLength);
        conversion.flags.writeSignals = row.writeSignals;
        conversion.flags.uniqueSignalNames = row.uniqueSignalNames;
        conversion.flags.strictExport = row.strictExport;
        conversion.flags.setMessageLength = row.setMessageLength;
        const nlohmann::json database = conversion.Database();
        const nlohmann::json volume = MessageNamed(database, "Amp_Volume_Status");
        EXPECT_EQ(NamesIn(volume["signals"]), row.volume.signals);
        EXPECT_EQ(volume["length"], row.volume.length);
        const nlohmann::json bass = MessageNamed(database, "Amp_Bass_Status");
        EXPECT_EQ(NamesIn(bass["signals"]), row.bass.signals);
        EXPECT_EQ(bass["length"], row.bass.length);
    }
}

struct LengthCase {
    const char* what;
    NamedTypes params;
    int length;
};

TEST(MessageLength, CoversTheParametersInFrontOfTheFirstOpenOne) {
    const LengthCase kRows[] = {
        {"nothing", {{"Text", String()}}, 0},
        {"void", {{"None", Void()}}, 0},
        {"more than twelve bytes", {{"A", ULong()}, {"B", ULong()}, {"C", ULong()}, {"D", ULong()}}, 16},
        {"one bit", {{"A", BitField(1, {{0, "On"}})}}, 1},
        {"nine bits", {{"A", BitField(9, {{8, "On"}})}}, 2},
        {"a switch", {{"Pos", UWord()}, {"Data", Record({{"A", ULong()}, {"B", UByte()}})}}, 7},
        {"whole record, not its longest field", {{"Rec", Record({{"A", UByte()}, {"B", ULong()}})}}, 5},
    };
    for (const LengthCase& row : kRows) {
        SCOPED_TRACE(row.what);
        Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", row.params)));
        conversion.flags.writeSignals = true;
        EXPECT_EQ(MessageNamed(conversion.Database(), "Amp_Volume_Status")["length"], row.length);
        conversion.flags.setMessageLength = false;
        EXPECT_EQ(MessageNamed(conversion.Database(), "Amp_Volume_Status")["length"], 12);
    }
}

/// Of two operations with one identifier only the first is a message; the other one's signals are nowhere.
TEST(Signals, OfAnOperationThatIsNoMessageTakeNoNames) {
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", {{"Temp", UByte()}}) +
                                  PropertyOf("0x401", "Bass", {{"Temp", UWord()}}) +
                                  PropertyOf("0x402", "Treble", {{"Temp", ULong()}})));
    conversion.flags.writeSignals = true;
    ZMTFBlock& block = *conversion.Catalog().GetAt(0x22);
    auto copy = std::make_unique<ZMTFunction>("", 0x1400);
    copy->SetName("Bass");
    copy->SetClass(ClassKind::Property);
    copy->SetParent(&block);
    ASSERT_TRUE(copy->CopyFrom(block.GetAt(0x401), copy.get()));
    block.SetAt(std::move(copy), 0x401);
    const nlohmann::json messages = conversion.Database()["messages"];
    ASSERT_EQ(NamesIn(messages), (Names{"Amp_Volume_Status", "Amp_Treble_Status"}));
    EXPECT_EQ(messages[0]["signals"], SignalsOf({{"Temp", 7, 8}}));
    EXPECT_EQ(messages[1]["signals"], SignalsOf({{"TempB", 7, 32}}));
}

TEST(Signals, AreTheSameAtEveryExport) {
    Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", {{"Pos", UWord()}, {"Data", Record({{"A", UByte()}})}}) +
                PropertyOf("0x401", "Bass", {{"A", UByte()}, {"A", BitField(8, {{0, ""}})}})));
    conversion.flags.writeSignals = true;
    const nlohmann::json first = conversion.Database();
    EXPECT_EQ(MessageNamed(first, "Amp_Bass_Status")["signals"].size(), 2U);
    EXPECT_EQ(conversion.Database(), first);
}

}  // namespace
}  // namespace tarvex::test::signal_flags_test
