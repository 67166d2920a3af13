/// Nodes: those of the network configuration, those of function blocks, and which messages they send.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/conversion.h"

namespace tarvex::test::exporter_nodes_test {
namespace {

using nlohmann::json;
using Names = std::vector<std::string>;

/// A message's node as text, "(none)" for a message without one.
Names SendersIn(const json& database) {
    Names senders;
    for (const json& message : database["messages"]) {
        senders.push_back(message["node"].is_null() ? "(none)" : message["node"].get<std::string>());
    }
    return senders;
}

struct FlagsCase {
    bool createNetworkNodes;
    bool assignMessagesToNodes;
    const char* nodes;
    Names senders;
};

TEST(BlockNodes, AreCreatedAndAssignedAsTheFlagsSay) {
    const FlagsCase kFlags[] = {
        {false, false, R"([])", {"(none)", "(none)"}},
        {false, true, R"([])", {"(none)", "(none)"}},
        {true,
         false,
         R"([{"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])",
         {"(none)", "(none)"}},
        {true,
         true,
         R"([{"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])",
         {"Amp", "Tuner"}},
    };
    Conversion conversion(Block("0x40", "Tuner") + Block("0x22", "Amp"));
    for (const FlagsCase& row : kFlags) {
        SCOPED_TRACE(testing::Message() << row.createNetworkNodes << row.assignMessagesToNodes);
        conversion.flags.createNetworkNodes = row.createNetworkNodes;
        conversion.flags.assignMessagesToNodes = row.assignMessagesToNodes;
        const json database = conversion.Database();
        EXPECT_EQ(database["nodes"], json::parse(row.nodes));
        EXPECT_EQ(SendersIn(database), row.senders);
    }
}

TEST(BlockNodes, ThereIsOneForAllMessagesOfABlock) {
    const Conversion conversion(Block(
        "0x22", "Amp", Property("0x100", "Volume", "<PCmdSet/><PCmdGet/>") + Property("0x101", "Mute")));
    const json database = conversion.Database();
    EXPECT_EQ(NamesIn(database["nodes"]), Names{"Amp"});
    EXPECT_EQ(SendersIn(database), (Names{"Amp", "Amp", "Amp"}));
}

TEST(BlockNodes, ThereIsNoneForABlockWithoutMessages) {
    const Conversion conversion(Block("0x22", "Amp", Property("0x100", "Idle", "<XXXnotyetXXX/>")) +
                                Block("0x40", "Tuner"));
    EXPECT_EQ(NamesIn(conversion.Database()["nodes"]), Names{"Tuner"});
}

TEST(BlockNodes, BlocksWhoseCleanedNamesAreEqualShareANode) {
    const Conversion conversion(Block("0x22", "Audio Amp") + Block("0x23", "Audio-Amp") +
                                Block("0x24", "AudioAmp"));
    const json database = conversion.Database();
    EXPECT_EQ(NamesIn(database["nodes"]), Names{"AudioAmp"});
    EXPECT_EQ(SendersIn(database), (Names{"AudioAmp", "AudioAmp", "AudioAmp"}));
}

TEST(BlockNodes, AreNamedAfterTheCatalogNotTheAlias) {
    Conversion conversion(Block("0x22", "Amp"));
    conversion.aliasNames = "Amp,Booster\n";
    conversion.networkConfiguration = "Booster,0x101\n";
    const json database = conversion.Database();
    EXPECT_EQ(database["nodes"], json::parse(R"([{"name": "Booster", "attributes": {"MostNodeAdr": 257}},
                                                 {"name": "Amp", "attributes": {}}])"));
    EXPECT_EQ(SendersIn(database), Names{"Amp"});
}

TEST(BlockNodes, BlockWithoutLettersAndDigitsHasANodeWithoutAName) {
    const Conversion conversion(Block("0x22", "---") + Block("0x23", "Amp") + Block("0x24", "_-_"));
    const json database = conversion.Database();
    EXPECT_EQ(NamesIn(database["nodes"]), (Names{"", "Amp"}));
    EXPECT_EQ(SendersIn(database), (Names{"", "Amp", ""}));
    EXPECT_EQ(NamesIn(database["messages"]), (Names{"_Volume_Get", "Amp_Volume_Get", "_Volume_Get00"}));
}

/// 16 bytes and 32 bytes.
constexpr const char* kHalf = "AbcdefghijklmnoP";
constexpr const char* kWhole = "AbcdefghijklmnoPQrstuvwxyz012345";

TEST(BlockNodes, NamesAreCutAtThirtyTwoBytes) {
    const Conversion conversion(Block("0x22", std::string(kWhole) + "6"));
    const json database = conversion.Database();
    EXPECT_EQ(NamesIn(database["nodes"]), Names{kWhole});
    EXPECT_EQ(SendersIn(database), Names{kWhole});
}

TEST(BlockNodes, CleaningComesBeforeTheCut) {
    const Conversion conversion(Block("0x22", std::string(kHalf) + " - Qrstuvwxyz012345"));
    EXPECT_EQ(NamesIn(conversion.Database()["nodes"]), Names{kWhole});
}

struct ConfigurationCase {
    const char* what;
    const char* file;
    const char* nodes;
};
constexpr ConfigurationCase kConfigurations[] = {
    {"in front of the blocks, by address", "Zeta,0x103\nGateway,-1\nAlpha,257\n",
     R"([{"name": "Gateway", "attributes": {"MostNodeAdr": -1}},
         {"name": "Alpha", "attributes": {"MostNodeAdr": 257}},
         {"name": "Zeta", "attributes": {"MostNodeAdr": 259}},
         {"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])"},
    {"shared with a block", "Tuner,0x101\nGateway,0x102\n",
     R"([{"name": "Tuner", "attributes": {"MostNodeAdr": 257}},
         {"name": "Gateway", "attributes": {"MostNodeAdr": 258}},
         {"name": "Amp", "attributes": {}}])"},
    {"shared with a block after cleaning", " A-m_p ,0x101\n",
     R"([{"name": "Amp", "attributes": {"MostNodeAdr": 257}}, {"name": "Tuner", "attributes": {}}])"},
    {"case counts", "AMP,1\n",
     R"([{"name": "AMP", "attributes": {"MostNodeAdr": 1}},
         {"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])"},
    {"two addresses: the higher one stays", "Gateway,7\nGateway,3\nGate way,5\n",
     R"([{"name": "Gateway", "attributes": {"MostNodeAdr": 7}},
         {"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])"},
    {"same address: the later name stays", "Gateway,7\nDisplay,0x7\n",
     R"([{"name": "Display", "attributes": {"MostNodeAdr": 7}},
         {"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])"},
    {"a blank in front of 0x101: address 0", "Amp, 0x101\n",
     R"([{"name": "Amp", "attributes": {"MostNodeAdr": 0}}, {"name": "Tuner", "attributes": {}}])"},
    {"the default, given", "Amp,65535\n",
     R"([{"name": "Amp", "attributes": {"MostNodeAdr": 65535}}, {"name": "Tuner", "attributes": {}}])"},
    {"addresses as they stand", "Amp,0x12345\nTuner,-2\n",
     R"([{"name": "Tuner", "attributes": {"MostNodeAdr": -2}},
         {"name": "Amp", "attributes": {"MostNodeAdr": 74565}}])"},
    {"nothing readable", "Gateway,one\nDisplay\n",
     R"([{"name": "Amp", "attributes": {}}, {"name": "Tuner", "attributes": {}}])"},
};

TEST(NetworkNodes, HaveTheirAddressesAndAreSharedWithBlocks) {
    Conversion conversion(Block("0x22", "Amp") + Block("0x40", "Tuner"));
    for (const ConfigurationCase& row : kConfigurations) {
        SCOPED_TRACE(row.what);
        conversion.networkConfiguration = row.file;
        const json database = conversion.Database();
        EXPECT_EQ(database["nodes"], json::parse(row.nodes));
        EXPECT_EQ(SendersIn(database), (Names{"Amp", "Tuner"}));
    }
}

TEST(NetworkNodes, AreCreatedWhateverTheFlagsAndFiltersSay) {
    Conversion conversion(Block("0x22", "Amp") + Block("0x40", "Tuner"));
    conversion.networkConfiguration = "Amp,0x101\nPhone,0x102\n";
    conversion.exclude = {"Amp", "Phone"};
    conversion.flags.createNetworkNodes = false;
    const json database = conversion.Database();
    EXPECT_EQ(database["nodes"], json::parse(R"([{"name": "Amp", "attributes": {"MostNodeAdr": 257}},
                                                 {"name": "Phone", "attributes": {"MostNodeAdr": 258}}])"));
    EXPECT_EQ(SendersIn(database), Names{"(none)"});
}

TEST(NetworkNodes, LongNameSharesItsNodeWithTheBlockOfThatName) {
    const std::string name = std::string(kWhole) + "6789";
    Conversion conversion(Block("0x22", name));
    conversion.networkConfiguration = name + ",0x101\n";
    const json database = conversion.Database();
    EXPECT_EQ(
        database["nodes"],
        json::parse(R"([{"name": "AbcdefghijklmnoPQrstuvwxyz012345", "attributes": {"MostNodeAdr": 257}}])"));
    EXPECT_EQ(SendersIn(database), Names{kWhole});
}

TEST(NetworkNodes, NamesThatDifferBehindTheCutAreTwoNodesOfWhichTheFirstIsFound) {
    Conversion conversion(Block("0x22", std::string(kWhole) + "X"));
    conversion.networkConfiguration = std::string(kWhole) + "Y,1\n" + kWhole + "Z,2\n";
    const json database = conversion.Database();
    EXPECT_EQ(database["nodes"],
              json::parse(R"([{"name": "AbcdefghijklmnoPQrstuvwxyz012345", "attributes": {"MostNodeAdr": 2}},
                              {"name": "AbcdefghijklmnoPQrstuvwxyz012345", "attributes": {}},
                              {"name": "AbcdefghijklmnoPQrstuvwxyz012345", "attributes": {}}])"));
    EXPECT_EQ(SendersIn(database), Names{kWhole});
}

}  // namespace
}  // namespace tarvex::test::exporter_nodes_test
