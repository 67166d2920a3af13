/// Messages: one per operation, with its name, length and attributes; and what aliases change in them.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/conversion.h"

namespace tarvex::test::exporter_messages_test {
namespace {

using nlohmann::json;
using Names = std::vector<std::string>;

TEST(ExportedMessage, HasTheseFields) {
    Conversion conversion(Block("0x22", "Amp", Property("0x400", "Volume", "<PReportStatus/>")));
    EXPECT_EQ(conversion.Database()["messages"], json::parse(R"([
      {"identifier": 2244620, "extended": true, "name": "Amp_Volume_Status", "length": 12, "node": "Amp",
       "attributes": {"FBlock": "Amp", "Function": "Volume", "OpType": "Status", "FunctionClass": "Property"},
       "signals": []}])"));
}

struct OpTypeCase {
    const char* element;
    const char* name;   // in the message's name
    const char* value;  // of "OpType"
};
using OpTypeTable = OpTypeCase[16];

/// The index is the OPType. Where a kind of function has no element of its own for an OPType, that of the
/// other kind selects it.
constexpr OpTypeTable kProperties = {
    /*  0 */ {"PCmdSet", "Set", "Set"},
    /*  1 */ {"PCmdGet", "Get", "Get"},
    /*  2 */ {"PCmdSetGet", "SetGet", "SetGet"},
    /*  3 */ {"PCmdIncrement", "Increment", "Increment"},
    /*  4 */ {"PCmdDecrement", "Decrement", "Decrement"},
    /*  5 */ {"PCmdGetInterface", "GetInterface", "GetInterface"},
    /*  6 */ {"MCmdStartResultAck", "Reserved", "Reserved"},
    /*  7 */ {"MCmdAbortAck", "OpType7", "NDef"},
    /*  8 */ {"MCmdStartAck", "OpType8", "NDef"},
    /*  9 */ {"MReportErrorAck", "OpType9", "NDef"},
    /* 10 */ {"MReportProcessingAck", "OpTypeA", "NDef"},
    /* 11 */ {"MReportProcessing", "OpTypeB", "NDef"},
    /* 12 */ {"PReportStatus", "Status", "Status"},
    /* 13 */ {"MReportResultAck", "OpTypeD", "NDef"},
    /* 14 */ {"PReportInterface", "Interface", "Interface"},
    /* 15 */ {"PReportError", "Error", "Error"},
};
constexpr OpTypeTable kMethods = {
    /*  0 */ {"MCmdStart", "Start", "Start"},
    /*  1 */ {"MCmdAbort", "Abort", "Abort"},
    /*  2 */ {"MCmdStartResult", "StartResult", "StartResult"},
    /*  3 */ {"PCmdIncrement", "OpType3", "NDef"},
    /*  4 */ {"PCmdDecrement", "OpType4", "NDef"},
    /*  5 */ {"MCmdGetInterface", "GetInterface", "GetInterface"},
    /*  6 */ {"MCmdStartResultAck", "StartResultAck", "StartResultAck"},
    /*  7 */ {"MCmdAbortAck", "AbortAck", "AbortAck"},
    /*  8 */ {"MCmdStartAck", "StartAck", "StartAck"},
    /*  9 */ {"MReportErrorAck", "ErrorAck", "ErrorAck"},
    /* 10 */ {"MReportProcessingAck", "ProcessingAck", "ProcessingAck"},
    /* 11 */ {"MReportProcessing", "Processing", "Processing"},
    /* 12 */ {"MReportResult", "Result", "Result"},
    /* 13 */ {"MReportResultAck", "ResultAck", "ResultAck"},
    /* 14 */ {"MReportInterface", "Interface", "Interface"},
    /* 15 */ {"MReportError", "Error", "Error"},
};

std::string AllElements(const OpTypeTable& table) {
    std::string xml;
    for (const OpTypeCase& row : table) {
        xml.append("<").append(row.element).append("/>");
    }
    return xml;
}

/// The messages of the block "Amp" (0x22) with one function "Fkt" (0x100).
void ExpectOpTypes(const json& messages, const OpTypeTable& table, const char* functionClass) {
    ASSERT_EQ(messages.size(), 16U);
    for (std::size_t opType = 0; opType < messages.size(); ++opType) {
        SCOPED_TRACE(opType);
        const json& message = messages[opType];
        EXPECT_EQ(message["identifier"], 0x221000 + opType);
        EXPECT_EQ(message["name"], std::string("Amp_Fkt_") + table[opType].name);
        EXPECT_EQ(message["length"], 12);
        EXPECT_EQ(message["attributes"], (json{{"FBlock", "Amp"},
                                               {"Function", "Fkt"},
                                               {"OpType", table[opType].value},
                                               {"FunctionClass", functionClass}}));
    }
}

TEST(ExportedMessage, OfAPropertyIsNamedAndClassifiedByItsOpType) {
    const Conversion conversion(Block("0x22", "Amp", Property("0x100", "Fkt", AllElements(kProperties))));
    ExpectOpTypes(conversion.Database()["messages"], kProperties, "Property");
}

/// Three of them take 3 * 300 steps, 3 * 600 bytes of memory and of files; signals may have three quarters of
/// all. The 203 bytes of the names in the attributes of each come on top; they may have a quarter of the
/// rest.
TEST(ExportedMessage, IsLeftOutWhenTheRunHasNoRoomForIt) {
    struct Row {
        const char* what;
        Cost left;
        std::size_t messages;
        std::vector<std::string> told;
    };
    const char* const kMessages = "The catalog asks for too many messages, some are left out!";
    const char* const kTexts = "The catalog asks for too many texts of attributes, some are left out!";
    const Row rows[] = {
        {"enough", {4000, 12'000, 12'000}, 3, {}},
        {"steps for two", {2800, 12'000, 12'000}, 2, {kMessages}},
        {"memory for one", {4000, 4400, 12'000}, 1, {kMessages}},
        {"files for one", {4000, 12'000, 4400}, 1, {kMessages}},
        {"nothing", {0, 0, 0}, 0, {kMessages}},
        {"no room for the third texts", {4000, 9600, 12'000}, 3, {kTexts}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Conversion conversion(Block(
            "0x22", "Amp", Property("0x100", std::string(200, 'F'), "<PCmdSet/><PCmdGet/><PReportStatus/>")));
        conversion.Catalog().Run() = RunAllowance(row.left);
        std::vector<std::string> told;
        const auto exporter = conversion.Exporter();
        exporter->MessageSink = [&](const std::string& line) { told.push_back(line); };
        ASSERT_EQ(exporter->Export(), 0);
        EXPECT_EQ(json::parse(ReadFile(conversion.Dir().File("out.vorn")))["messages"].size(), row.messages);
        EXPECT_EQ(told, row.told);
    }
}

TEST(ExportedMessage, OfAMethodIsNamedAndClassifiedByItsOpType) {
    const Conversion conversion(Block("0x22", "Amp", Method("0x100", "Fkt", AllElements(kMethods))));
    ExpectOpTypes(conversion.Database()["messages"], kMethods, "Method");
}

TEST(ExportedMessage, OfAnotherKindOfFunctionIsAPropertyWithoutDefinedOpType) {
    const Conversion conversion(Block("0x22", "Amp", Method("0x100", "Fkt", AllElements(kMethods))));
    ZMTFunction& function = *conversion.Catalog().GetAt(0x22)->GetAt(0x100);
    for (const ClassKind kind : {ClassKind::Unknown, ClassKind::ErrorFunction}) {
        function.SetClass(kind);
        const json messages = conversion.Database()["messages"];
        EXPECT_EQ(messages.size(), 16U);
        for (const json& message : messages) {
            SCOPED_TRACE(message["name"]);
            EXPECT_EQ(message["attributes"]["OpType"], "NDef");
            EXPECT_EQ(message["attributes"]["FunctionClass"], "Property");
        }
    }
}

TEST(ExportedMessage, IsNotThereForAFunctionWithoutOperations) {
    const Conversion conversion(
        Block("0x22", "Amp", Property("0x100", "Idle", "<XXXnotyetXXX/>") + Property("0x101", "Volume")));
    EXPECT_EQ(NamesIn(conversion.Database()["messages"]), Names{"Amp_Volume_Get"});
}

TEST(ExportedMessage, NameBeginsWithTheCleanedBlockName) {
    const Conversion conversion(Block("0x22", "Audio Amp", Property("0x100", "Set Volume (dB)")));
    const json message = conversion.Database()["messages"][0];
    EXPECT_EQ(message["name"], "AudioAmp_SetVolumedB_Get");
    EXPECT_EQ(message["node"], "AudioAmp");
    EXPECT_EQ(message["attributes"]["FBlock"], "Audio_Amp");
    EXPECT_EQ(message["attributes"]["Function"], "Set_Volume_(dB)");
}

TEST(ExportedMessage, LongNameLosesTheVowelsOfTheOperationFirst) {
    // 10 + 14 + 6 + 2 = 32 for the status, 35 for the increment: 33 without its vowels
    const Conversion conversion(
        Block("0x22", "Navigation", Property("0x100", "CurrentRouting", "<PCmdIncrement/><PReportStatus/>")));
    EXPECT_EQ(NamesIn(conversion.Database()["messages"]),
              (Names{"Navigation_CurrntRtng_Incrmnt", "Navigation_CurrentRouting_Status"}));
}

TEST(ExportedMessage, AttributesKeepNamesThatAreTooLongForRecords) {
    const std::string block = "Bcdfghjklmnpqrstbcdfghjklmnpqrst_0123456789";
    const std::string function = "Fktfghjklmnpqrstbcdfghjklmnpqrst_0123456789";
    const Conversion conversion(Block("0x22", block, Property("0x100", function)));
    const json message = conversion.Database()["messages"][0];
    EXPECT_EQ(message["name"], "Bcdfghjklmnpqrstbcdfghjklmnpqrst");
    EXPECT_EQ(message["attributes"]["FBlock"], block);
    EXPECT_EQ(message["attributes"]["Function"], function);
}

TEST(ExportedMessage, RepeatedNamesAreNumberedThroughTheWholeDatabase) {
    const Conversion conversion(
        Block("0x22", "Audio Amp", Property("0x100", "Volume") + Property("0x101", "Vol-ume")) +
        Block("0x23", "AudioAmp", Property("0x100", "Volume")));
    EXPECT_EQ(NamesIn(conversion.Database()["messages"]),
              (Names{"AudioAmp_Volume_Get", "AudioAmp_Volume_Get00", "AudioAmp_Volume_Get01"}));
}

TEST(Alias, StandsInTheMessageNameButNotInTheAttributes) {
    Conversion conversion(Block("0x22", "Amp", Property("0x400", "Volume", "<PCmdGet/><PReportStatus/>")));
    conversion.aliasNames = "Amp,Booster\nVolume,Gain\nGet,Read\n";
    const json messages = conversion.Database()["messages"];
    EXPECT_EQ(NamesIn(messages), (Names{"Booster_Gain_Read", "Booster_Gain_Status"}));
    EXPECT_EQ(messages[0]["node"], "Amp");
    EXPECT_EQ(messages[0]["attributes"], json::parse(R"({"FBlock": "Amp", "Function": "Volume",
        "OpType": "Get", "FunctionClass": "Property"})"));
}

struct AliasCase {
    const char* what;
    const char* file;
    const char* message;
};
constexpr AliasCase kAliases[] = {
    {"cleaned in the name", "Volume, Gain (dB)_1 \n", "AudioAmp_GaindB1_Get"},
    {"empty", "Get,\n", "AudioAmp_Volume_"},
    {"for the name in the tree", "Audio_Amp,Booster\n", "Booster_Volume_Get"},
    {"not for the name as the catalog writes it", "Audio Amp,Booster\n", "AudioAmp_Volume_Get"},
    {"not for the cleaned name", "AudioAmp,Booster\n", "AudioAmp_Volume_Get"},
    {"the last of several", "Get,One\nGet,Two\n", "AudioAmp_Volume_Two"},
    {"one for all three", "Audio_Amp,X\nVolume,X\nGet,X\n", "X_X_X"},
    // 9 + 18 + 3 + 2 = 32 fits; with one blank more the function loses its vowels behind the third character
    {"blanks count, 32", "Volume,Gain Control      \n", "AudioAmp_GainControl_Get"},
    {"blanks count, 33", "Volume,Gain Control       \n", "AudioAmp_GainCntrl_Get"},
};

TEST(Alias, IsLookedUpExactlyAndCountsInTheNameAsItStands) {
    for (const AliasCase& row : kAliases) {
        SCOPED_TRACE(row.what);
        Conversion conversion(Block("0x22", "Audio Amp"));
        conversion.aliasNames = row.file;
        EXPECT_EQ(NamesIn(conversion.Database()["messages"]), Names{row.message});
    }
}

TEST(PreviewedMessage, HasTheNameOfTheDatabaseAndSignalsWhereTheyAreWanted) {
    Conversion conversion(Block("0x22", "Amp", Property("0x400", "Vol ume") + Property("0x401", "Volume")));
    conversion.flags.writeSignals = true;
    const auto exporter = conversion.Exporter();
    const ZMTNode* wanted = conversion.Catalog().GetAt(0x22)->GetAt(0x401);
    std::size_t asked = 0;
    exporter->Preview([&](const ZMTOperation& operation) {
        ++asked;
        return operation.GetParent() == wanted;
    });
    EXPECT_EQ(asked, 2U);
    const Names names = NamesIn(conversion.Database()["messages"]);
    EXPECT_EQ(names, (Names{"Amp_Volume_Get", "Amp_Volume_Get00"}));
    const msgblk* first = exporter->MessageOf(0x22, 0x400, 1);
    const msgblk* second = exporter->MessageOf(0x22, 0x401, 1);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(std::string(first->name), names[0]);
    EXPECT_EQ(std::string(second->name), names[1]);
    EXPECT_EQ(second->identifier, kExtendedIdentifier | 0x224011U);
    EXPECT_EQ(first->length, 12);  // that of a message whose signals nobody knows
    EXPECT_EQ(second->length, 0);
    EXPECT_EQ(exporter->MessageOf(0x22, 0x401, 12), nullptr);
    EXPECT_EQ(exporter->Export(), -1);  // an exporter runs once
}

}  // namespace
}  // namespace tarvex::test::exporter_messages_test
