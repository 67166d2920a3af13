/// Very many parameters of one name take time that grows with their number, not with its square. The bound is
/// far above what the export needs even under sanitizers, and far below what trying every number would take.

#include <array>
#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "export/signal_layout.h"

namespace tarvex::test {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kBound{20};

/// Of OPTypes 0 to 15.
constexpr std::array kOperations = {
    "PCmdSet",       "PCmdGet",          "PCmdSetGet",           "PCmdIncrement",
    "PCmdDecrement", "PCmdGetInterface", "MCmdStartResultAck",   "MCmdAbortAck",
    "MCmdStartAck",  "MReportErrorAck",  "MReportProcessingAck", "MReportProcessing",
    "PReportStatus", "MReportResultAck", "PReportInterface",     "PReportError"};
static_assert(kOperations.size() == 16);

/// Functions with 200 parameters "Temp" each, which all stand in each of its 16 operations.
std::string BlockOfTemps(unsigned functionCount, const std::string& type) {
    std::string params;
    for (unsigned pos = 1; pos <= 200; ++pos) {
        std::string operations;
        for (const std::string operation : kOperations) {
            operations +=
                "<" + operation + "><ParamPos>" + std::to_string(pos) + "</ParamPos></" + operation + ">";
        }
        params += Param("Temp", type, operations);
    }
    std::string functions;
    for (unsigned fktID = 0; fktID < functionCount; ++fktID) {
        const std::string text = std::to_string(fktID);
        functions += "<Function><FunctionID>" + text + "</FunctionID><FunctionName>F" + text +
                     "</FunctionName><FunctionClass><Property><PUnclassified>" + params +
                     "</PUnclassified></Property></FunctionClass></Function>";
    }
    return BlockOf(functions);
}

/// The messages of an export in bounded time.
nlohmann::json MessagesWithin(Conversion& conversion, bool unique) {
    conversion.flags.writeSignals = true;
    conversion.flags.uniqueSignalNames = unique;
    const auto start = Clock::now();
    EXPECT_EQ(conversion.Export(), 0);
    EXPECT_LT(Clock::now() - start, kBound);
    return nlohmann::json::parse(ReadFile(conversion.output), nullptr, false)["messages"];
}

TEST(SignalCost, FiftyThousandParametersOfOneName) {
    Conversion conversion(BlockOfTemps(16, UByte()));
    for (const bool unique : {true, false}) {
        const nlohmann::json messages = MessagesWithin(conversion, unique);
        ASSERT_EQ(messages.size(), 256U);
        const nlohmann::json& last = messages.back();
        EXPECT_EQ(last["length"], 200);
        ASSERT_EQ(last["signals"].size(), 200U);
        EXPECT_EQ(messages.front()["signals"].front()["name"], "Temp");
        // 199 is 7 * 26 + 17, and 51,199 is 2 * 26^3 + 23 * 26^2 + 19 * 26 + 5.
        EXPECT_EQ(messages.front()["signals"].back()["name"], "TempHR");
        EXPECT_EQ(last["signals"].back()["name"], unique ? "TempCXTF" : "TempHR");
    }
}

/// Two bits in each of 12,800 fields, whose name is cut.
TEST(SignalCost, TwentyFiveThousandBitsOfOneLongName) {
    const std::string name = "BcdfghjklmnpqrstBcdfghjklmnpqrst";
    Conversion conversion(BlockOfTemps(4, BitField(8, {{0, name}, {7, name}})));
    for (const bool unique : {true, false}) {
        const nlohmann::json messages = MessagesWithin(conversion, unique);
        ASSERT_EQ(messages.size(), 64U);
        ASSERT_EQ(messages.back()["signals"].size(), 400U);
        // 399 is 15 * 26 + 9, and 25,599 is 26^3 + 11 * 26^2 + 22 * 26 + 15.
        const std::string room = name.substr(0, unique ? 23 : 26);
        EXPECT_EQ(messages.front()["signals"].back()["name"], room + "PJ");
        EXPECT_EQ(messages.back()["signals"].back()["name"], room + (unique ? "BLWP" : "PJ"));
    }
}

/// Without unique names the numbered ones are too long for their records, and never found again.
TEST(SignalCost, OneMessageOfVeryManyEqualNames) {
    const std::string name = "BcdfghjklmnpqrstBcdfghjklmnpqrst";
    Conversion conversion(
        BlockOf(PropertyOf("0x400", "Volume", {{"Rec", Record(NamedTypes(2048, {name, UByte()}))}})));
    for (const bool unique : {true, false}) {
        const nlohmann::json messages = MessagesWithin(conversion, unique);
        const nlohmann::json& signals = messages.at(0)["signals"];
        ASSERT_EQ(signals.size(), 4096U);
        // 2047 is 3 * 26^2 + 0 * 26 + 19; the record keeps 32 of the 33 characters of the second name.
        EXPECT_EQ(signals[4094]["name"], unique ? name.substr(0, 26) + "DAT_M0" : name.substr(0, 29) + "B_M");
        EXPECT_EQ(signals[4095]["name"], name.substr(0, unique ? 24 : 27) + "_M800");
    }
}

}  // namespace
}  // namespace tarvex::test
