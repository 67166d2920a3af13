/// Signals of parameters outside records. Bytes are drawn with their highest bit on the left: bit 7 of byte 0
/// is the first bit of a message, bit 15 the ninth.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "export/signal_layout.h"
#include "export/stand_in_param.h"

namespace tarvex::test::signals_test {
namespace {

TEST(Signals, OfNumbersFollowEachOther) {
    const LayoutCase kRows[] = {
        {"one word", {{"Speed", UWord()}}, 2, {{"Speed", 7, 16}}},
        // byte  0   1   2 3  4 5  6 ... 9  10 ... 13
        //       A   B    C    D      E         F
        {"all sizes",
         {{"A", UByte()}, {"B", SByte()}, {"C", UWord()}, {"D", SWord()}, {"E", ULong()}, {"F", SLong()}},
         14,
         {{"A", 7, 8},
          {"B", 15, 8, Signed},
          {"C", 23, 16},
          {"D", 39, 16, Signed},
          {"E", 55, 32},
          {"F", 87, 32, Signed}}},
        {"words between bytes",
         {{"A", UByte()}, {"B", UWord()}, {"C", UByte()}, {"D", ULong()}, {"E", UByte()}},
         9,
         {{"A", 7, 8}, {"B", 15, 16}, {"C", 31, 8}, {"D", 39, 32}, {"E", 71, 8}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

TEST(Signals, OfEnumerationsDescribeEveryCode) {
    const LayoutCase kRows[] = {
        {"one byte, codes and ranges",
         {{"Mode", Enumeration(16, {{"0x00", "Off"}, {"0x01..0x03", "On"}, {"0x10", "Fault"}})}},
         1,
         {{"Mode", 7, 8, Unsigned, kAlways, {{0, "Off"}, {1, "On"}, {2, "On"}, {3, "On"}, {16, "Fault"}}}}},
        {"two bytes behind one",
         {{"Level", UByte()},
          {"Mode", Enumeration(256, {{"0", "Off"}, {"0xFF..0x101", "On"}})},
          {"Last", UByte()}},
         4,
         {{"Level", 7, 8},
          {"Mode", 15, 16, Unsigned, kAlways, {{0, "Off"}, {255, "On"}, {256, "On"}, {257, "On"}}},
          {"Last", 31, 8}}},
        {"255 is the last one-byte maximum",
         {{"Mode", Enumeration(255, {})}, {"Last", UByte()}},
         2,
         {{"Mode", 7, 8}, {"Last", 15, 8}}},
        {"in the order of the list, with codes that overlap",
         {{"Mode", Enumeration(9, {{"7..8", "High"}, {"1", "Low"}, {"8..9", "Top"}})}},
         1,
         {{"Mode", 7, 8, Unsigned, kAlways, {{7, "High"}, {8, "High"}, {1, "Low"}, {8, "Top"}, {9, "Top"}}}}},
        {"codes above the declared maximum, and beyond the byte",
         {{"Mode", Enumeration(3, {{"2", "On"}, {"20", "Far"}, {"254..300", "Up"}, {"300", "Out"}})}},
         1,
         {{"Mode", 7, 8, Unsigned, kAlways, {{2, "On"}, {20, "Far"}, {254, "Up"}, {255, "Up"}}}}},
        {"a range from high to low is empty",
         {{"Mode", Enumeration(9, {{"5..2", "None"}, {"6", "Some"}})}},
         1,
         {{"Mode", 7, 8, Unsigned, kAlways, {{6, "Some"}}}}},
        {"names of 32 and of 33 characters",
         {{"Mode", Enumeration(1, {{"0", "Thirty-two characters with texts"},
                                   {"1", "Thirty three characters of text 3"}})}},
         1,
         {{"Mode",
           7,
           8,
           Unsigned,
           kAlways,
           {{0, "Thirty-two characters with texts"}, {1, "Thirty three characters of text "}}}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

/// Bit 0 is the lowest bit of the field's last byte.
TEST(Signals, OfBitFieldsAreSingleBits) {
    const LayoutCase kRows[] = {
        // byte 1: Error . . . Spare . . Ready
        {"eight bits behind a byte",
         {{"Level", UByte()}, {"State", BitField(8, {{0, "Ready"}, {3, ""}, {7, "Error"}})}},
         2,
         {{"Level", 7, 8},
          {"Ready", 8, 1, Unsigned, kAlways, kTrueFalse},
          {"State_NN_3", 11, 1, Unsigned, kAlways, kTrueFalse},
          {"Error", 15, 1, Unsigned, kAlways, kTrueFalse}}},
        // byte 0: - - - - - - J I   byte 1: H . . . . . . A
        {"ten bits take two bytes",
         {{"State", BitField(10, {{0, "A"}, {7, "H"}, {8, "I"}, {9, "J"}})}, {"Level", UByte()}},
         3,
         {{"A", 8, 1, Unsigned, kAlways, kTrueFalse},
          {"H", 15, 1, Unsigned, kAlways, kTrueFalse},
          {"I", 0, 1, Unsigned, kAlways, kTrueFalse},
          {"J", 1, 1, Unsigned, kAlways, kTrueFalse},
          {"Level", 23, 8}}},
        // byte 1: Top . . . . . . Bit8   byte 2: Bit7 . . . . . . Low
        {"sixteen bits behind a byte",
         {{"Level", UByte()}, {"State", BitField(16, {{0, "Low"}, {7, ""}, {8, ""}, {15, "Top"}})}},
         3,
         {{"Level", 7, 8},
          {"Low", 16, 1, Unsigned, kAlways, kTrueFalse},
          {"State_NN_7", 23, 1, Unsigned, kAlways, kTrueFalse},
          {"State_NN_8", 8, 1, Unsigned, kAlways, kTrueFalse},
          {"Top", 15, 1, Unsigned, kAlways, kTrueFalse}}},
        // byte 0: - - - - D . . A
        {"four bits stand in the low half of a byte",
         {{"State", BitField(4, {{0, "A"}, {3, "D"}})}},
         1,
         {{"A", 0, 1, Unsigned, kAlways, kTrueFalse}, {"D", 3, 1, Unsigned, kAlways, kTrueFalse}}},
        {"by position, whatever the order in the catalog",
         {{"State", BitField(8, {{5, "F"}, {1, "B", "Yes", "No"}, {10, "K", "Open", "Shut"}})}},
         2,
         {{"B", 9, 1, Unsigned, kAlways, {{1, "Yes"}, {0, "No"}}},
          {"F", 13, 1, Unsigned, kAlways, kTrueFalse},
          {"K", 2, 1, Unsigned, kAlways, {{1, "Open"}, {0, "Shut"}}}}},
        {"none at all, but the room for them",
         {{"Small", BitField(8, {})}, {"Large", BitField(16, {})}, {"Level", UByte()}},
         4,
         {{"Level", 31, 8}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

TEST(Signals, OfBooleansAreTheBitsOfOneByte) {
    const LayoutCase kRows[] = {
        // byte 0: . . . . . . Sound_NN_1 Mute   byte 1: On . . . . . . .
        {"two booleans",
         {{"Sound", Boolean({{0, "Mute", "Silent", "Loud"}, {1, ""}})}, {"Power", Boolean({{7, "On"}})}},
         2,
         {{"Mute", 0, 1, Unsigned, kAlways, {{1, "Silent"}, {0, "Loud"}}},
          {"Sound_NN_1", 1, 1, Unsigned, kAlways, kTrueFalse},
          {"On", 15, 1, Unsigned, kAlways, kTrueFalse}}},
        {"bits above 7 find no room",
         {{"Sound", Boolean({{0, "Mute"}, {7, "Top"}, {8, "Over"}, {11, ""}, {15, "Far"}})},
          {"Level", UByte()}},
         2,
         {{"Mute", 0, 1, Unsigned, kAlways, kTrueFalse},
          {"Top", 7, 1, Unsigned, kAlways, kTrueFalse},
          {"Level", 15, 8}}},
    };
    for (const LayoutCase& row : kRows) {
        ExpectLayout(row);
    }
}

TEST(Signals, EndAtTheFirstParameterWithoutAFixedLength) {
    struct KindCase {
        const char* what;
        std::string type;
    };
    const KindCase kKinds[] = {{"string", String()}, {"array", Array()}, {"void", Void()}};
    for (const auto& [what, type] : kKinds) {
        SCOPED_TRACE(what);
        const LayoutCase kRows[] = {
            {"alone", {{"Open", type}}, 0, {}},
            {"first", {{"Open", type}, {"A", UByte()}, {"B", UWord()}}, 0, {}},
            {"in the middle", {{"A", UByte()}, {"Open", type}, {"B", UWord()}}, 1, {{"A", 7, 8}}},
            {"last", {{"A", UByte()}, {"B", UWord()}, {"Open", type}}, 3, {{"A", 7, 8}, {"B", 15, 16}}},
        };
        for (const LayoutCase& row : kRows) {
            ExpectLayout(row);
        }
    }
}

/// Every operation starts anew at bit 0.
TEST(Signals, OfTheOperationsOfAFunctionAreLaidOutSeparately) {
    const std::string params =
        Param("Level", UByte(),
              "<PCmdSet><ParamPos>2</ParamPos></PCmdSet><PReportStatus><ParamPos>1</ParamPos></"
              "PReportStatus>") +
        Param(
            "Speed", UWord(),
            "<PCmdSet><ParamPos>1</ParamPos></PCmdSet><PReportStatus><ParamPos>2</ParamPos></PReportStatus>");
    Conversion conversion(
        BlockOf("<Function><FunctionID>0x400</FunctionID><FunctionName>Volume</FunctionName><FunctionClass>"
                "<Property><PUnclassified>" +
                params + "</PUnclassified></Property></FunctionClass></Function>"));
    conversion.flags.writeSignals = true;
    conversion.flags.uniqueSignalNames = false;
    const nlohmann::json database = conversion.Database();
    EXPECT_EQ(MessageNamed(database, "Amp_Volume_Set")["signals"],
              SignalsOf({{"Speed", 7, 16}, {"Level", 23, 8}}));
    EXPECT_EQ(MessageNamed(database, "Amp_Volume_Status")["signals"],
              SignalsOf({{"Level", 7, 8}, {"Speed", 15, 16}}));
}

/// The "Status" of the only function of a catalog made with `PropertyOf("0x400", ...)`.
ZMTOperation& StatusIn(const Conversion& conversion) {
    return *conversion.Catalog().GetAt(0x22)->GetAt(0x400)->GetAt(12);
}

TEST(Signals, EndAtAStream) {
    const std::vector<SignalRow> signals{{"A", 7, 8}, {"B", 15, 16}, {"C", 31, 8}};
    const int lengths[] = {0, 1, 3};  // with the stream in place of A, B and C
    for (const NodeType kind : {kParamStream, kParamFktIDBitStream, kParam}) {
        for (unsigned pos = 0; pos < 3; ++pos) {
            SCOPED_TRACE(testing::Message() << "kind " << kind << " at " << pos);
            Conversion conversion(
                BlockOf(PropertyOf("0x400", "Volume", {{"A", UByte()}, {"B", UWord()}, {"C", UByte()}})));
            conversion.flags.writeSignals = true;
            ZMTOperation& status = StatusIn(conversion);
            auto standIn = std::make_unique<StandInParam>(kind);
            standIn->SetParent(&status);
            standIn->SetParamPos(pos);
            status.SetAt(std::move(standIn), pos);
            const nlohmann::json message = MessageNamed(conversion.Database(), "Amp_Volume_Status");
            EXPECT_EQ(message["length"], lengths[pos]);
            EXPECT_EQ(message["signals"], SignalsOf({signals.begin(), signals.begin() + pos}));
        }
    }
}

struct SizeCase {
    std::int32_t bytes;
    int signalLength;
    int nextStartBit;
    int messageLength;
};

/// Signals have 16 bits for their length: of 8,192 bytes nothing is left.
TEST(Signals, OfVeryLongNumbersKeep16BitsOfTheirLength) {
    const SizeCase kRows[] = {
        {255, 2040, 2047, 256}, {4096, 32768, 32775, 4097}, {8191, 65528, 65535, 8192},
        {8192, 0, 7, 1},        {8193, 8, 15, 2},
    };
    for (const SizeCase& row : kRows) {
        SCOPED_TRACE(row.bytes);
        Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", {{"A", UByte()}, {"B", SByte()}})));
        conversion.flags.writeSignals = true;
        StatusIn(conversion).FindByName("A")->SetBytesInMsg(row.bytes);
        const nlohmann::json message = MessageNamed(conversion.Database(), "Amp_Volume_Status");
        EXPECT_EQ(message["length"], row.messageLength);
        EXPECT_EQ(message["signals"],
                  SignalsOf({{"A", 7, row.signalLength}, {"B", row.nextStartBit, 8, Signed}}));
    }
}

TEST(Signals, EndAtABitFieldWithoutAByte) {
    for (const std::string& type : {BitField(8, {}), Boolean({})}) {
        Conversion conversion(
            BlockOf(PropertyOf("0x400", "Volume", {{"A", UByte()}, {"Bits", type}, {"B", UWord()}})));
        conversion.flags.writeSignals = true;
        StatusIn(conversion).FindByName("Bits")->SetBytesInMsg(0);
        const nlohmann::json message = MessageNamed(conversion.Database(), "Amp_Volume_Status");
        EXPECT_EQ(message["length"], 1);
        EXPECT_EQ(message["signals"], SignalsOf({{"A", 7, 8}}));
    }
}

TEST(Signals, AreNotThereInAMessageWithoutParameters) {
    Conversion conversion(BlockOf(PropertyOf("0x400", "Volume", {{"A", UByte()}})));
    conversion.flags.writeSignals = true;
    StatusIn(conversion).Clear();
    const nlohmann::json message = MessageNamed(conversion.Database(), "Amp_Volume_Status");
    EXPECT_EQ(message["length"], 0);
    EXPECT_EQ(message["signals"], nlohmann::json::array());
}

}  // namespace
}  // namespace tarvex::test::signals_test
