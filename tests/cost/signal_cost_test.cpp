/// Very many parameters of one name take work that grows with their number, not with its square.

#include <array>
#include <string>

#include <gtest/gtest.h>

#include "cost/work.h"
#include "export/signal_layout.h"

namespace tarvex::test::signal_cost_test {
namespace {

/// Of OPTypes 0 to 15.
constexpr std::array kOperations = {
    "PCmdSet",       "PCmdGet",          "PCmdSetGet",           "PCmdIncrement",
    "PCmdDecrement", "PCmdGetInterface", "MCmdStartResultAck",   "MCmdAbortAck",
    "MCmdStartAck",  "MReportErrorAck",  "MReportProcessingAck", "MReportProcessing",
    "PReportStatus", "MReportResultAck", "PReportInterface",     "PReportError"};
static_assert(kOperations.size() == 16);

/// Functions with 50 parameters "Temp" each, which all stand in each of its 16 operations.
std::string BlockOfTemps(unsigned functionCount, const std::string& type) {
    std::string params;
    for (unsigned pos = 1; pos <= 50; ++pos) {
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

/// An export, and the messages that come of it.
struct Exported {
    Exported(const std::string& blocks, bool unique) {
        Conversion conversion(blocks);
        conversion.flags.writeSignals = true;
        conversion.flags.uniqueSignalNames = unique;
        work = WorkOf([&] { EXPECT_EQ(conversion.Export(), 0); });
        messages = nlohmann::json::parse(ReadFile(conversion.output), nullptr, false)["messages"];
    }

    const nlohmann::json& Signal(std::size_t message, std::size_t signal) const {
        return messages.at(message).at("signals").at(signal);
    }

    Work work;
    nlohmann::json messages;
};

TEST(SignalCost, ParametersOfOneName) {
    for (const bool unique : {true, false}) {
        const Exported once(BlockOfTemps(1, UByte()), unique);
        const Exported twice(BlockOfTemps(2, UByte()), unique);
        EXPECT_TRUE(GrowsInProportion(once.work, twice.work));
        ASSERT_EQ(twice.messages.size(), 32U);
        ASSERT_EQ(twice.messages.back()["signals"].size(), 50U);
        EXPECT_EQ(twice.Signal(0, 0)["name"], "Temp");
        // 49 is 26 + 23, and 1599 is 2 * 26^2 + 9 * 26 + 13.
        EXPECT_EQ(twice.Signal(0, 49)["name"], "TempBX");
        EXPECT_EQ(twice.Signal(31, 49)["name"], unique ? "TempCJN" : "TempBX");
    }
}

/// Two bits in each of the fields, whose name is cut.
TEST(SignalCost, BitsOfOneLongName) {
    const std::string name = "BcdfghjklmnpqrstBcdfghjklmnpqrst";
    const std::string field = BitField(8, {{0, name}, {7, name}});
    for (const bool unique : {true, false}) {
        const Exported once(BlockOfTemps(1, field), unique);
        const Exported twice(BlockOfTemps(2, field), unique);
        EXPECT_TRUE(GrowsInProportion(once.work, twice.work));
        ASSERT_EQ(twice.messages.size(), 32U);
        ASSERT_EQ(twice.messages.back()["signals"].size(), 100U);
        // 99 is 3 * 26 + 21, and 3199 is 4 * 26^2 + 19 * 26 + 1.
        const std::string room = name.substr(0, unique ? 23 : 26);
        EXPECT_EQ(twice.Signal(0, 99)["name"], room + "DV");
        EXPECT_EQ(twice.Signal(31, 99)["name"], room + (unique ? "ETB" : "DV"));
    }
}

/// Without unique names the numbered ones are too long for their records, and never found again.
TEST(SignalCost, OneMessageOfEqualNames) {
    const std::string name = "BcdfghjklmnpqrstBcdfghjklmnpqrst";
    const auto recordOf = [&](unsigned fields) {
        return BlockOf(PropertyOf("0x400", "Volume", {{"Rec", Record(NamedTypes(fields, {name, UByte()}))}}));
    };
    for (const bool unique : {true, false}) {
        const Exported once(recordOf(512), unique);
        const Exported twice(recordOf(1024), unique);
        EXPECT_TRUE(GrowsInProportion(once.work, twice.work));
        ASSERT_EQ(twice.messages.at(0)["signals"].size(), 2048U);
        // 1023 is 26^2 + 13 * 26 + 9; the record keeps 32 of the 33 characters of the second name.
        EXPECT_EQ(twice.Signal(0, 2046)["name"],
                  unique ? name.substr(0, 26) + "BNJ_M0" : name.substr(0, 29) + "B_M");
        EXPECT_EQ(twice.Signal(0, 2047)["name"], name.substr(0, unique ? 24 : 27) + "_M400");
    }
}

}  // namespace
}  // namespace tarvex::test::signal_cost_test
