/// Node addresses out of a network-configuration file.

#include "export/network_nodes.h"

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace tarvex::test::network_nodes_test {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

NodeAddresses AddressesIn(const std::string& content) {
    const TempDir dir;
    NodeAddresses nodes;
    EXPECT_EQ(ReadNodeAddresses(dir.Write("network.txt", content), nodes), ConfigFile::Whole);
    return nodes;
}

struct AddressCase {
    const char* text;
    std::int32_t address;
};
constexpr AddressCase kAddresses[] = {
    // Hexadecimal
    {"0x101", 257},
    {"0x0", 0},
    {"0xffFF", 65535},
    {"0x10000", 65536},
    {"0x101h", 257},
    {"0x101 # rear", 257},
    {"0x 101", 257},
    {"0x0x101", 257},
    {"0x-1", -1},
    {"0x7FFFFFFF", kMax},
    {"0x80000000", kMin},
    {"0xFFFFFFFF", -1},
    // Decimal
    {"257", 257},
    {"0", 0},
    {"0101", 101},
    {"+7", 7},
    {"-5", -5},
    {" 257", 257},
    {"\t257 ", 257},
    {"12.5", 12},
    {"257,0x101", 257},
    {"101h", 101},
    {"2147483647", kMax},
    {"-2147483648", kMin},
    // The "0" of what is no hexadecimal number
    {" 0x101", 0},
    {"\t0x101", 0},
    {"0X101", 0},
    {"0xZZ", 0},
    {"0x", 0},
    {"-0x101", 0},
    // Beyond 32 bits: the nearest value
    {"2147483648", kMax},
    {"99999999999999999999", kMax},
    {"-2147483649", kMin},
    {"0x100000000", -1},
    {"0x1FFFFFFFF", -1},
    {"0xFFFFFFFFFFFFFFFFFF", -1},
};

TEST(NodeAddresses, AddressIsHexadecimalRightBehindItsPrefixAndElseDecimal) {
    for (const AddressCase& row : kAddresses) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(AddressesIn(std::string("Amp,") + row.text + "\n"), (NodeAddresses{{row.address, "Amp"}}));
    }
}

constexpr const char* kIgnoredLines[] = {
    "",      "Amp",      "Amp,",     "Amp, ",  "Amp,\t",   "Amp,one", "Amp,-",
    "Amp,+", "Amp,x101", "Amp,$101", "Amp,,5", "Amp,h101", "Amp,- 5", "Amp;5",
};

TEST(NodeAddresses, LineWithoutAReadableAddressIsIgnored) {
    for (const char* line : kIgnoredLines) {
        SCOPED_TRACE(line);
        EXPECT_EQ(AddressesIn("Tuner,1\n" + std::string(line) + "\nPhone,2\n"),
                  (NodeAddresses{{1, "Tuner"}, {2, "Phone"}}));
    }
}

struct ConfigurationCase {
    const char* what;
    std::string content;
    NodeAddresses nodes;
};

TEST(NodeAddresses, EachAddressHasTheNameOfItsLastLine) {
    const ConfigurationCase kConfigurations[] = {
        {"empty file", "", {}},
        {"any order", "C,0x103\nA,-1\nB,2\n", {{-1, "A"}, {2, "B"}, {0x103, "C"}}},
        {"same address twice", "Amp,0x101\nTuner,5\nBooster,257\n", {{5, "Tuner"}, {257, "Booster"}}},
        {"same name twice", "Amp,2\nAmp,1\n", {{1, "Amp"}, {2, "Amp"}}},
        {"an unreadable line replaces nothing", "Amp,1\nAmp,one\n", {{1, "Amp"}}},
        {"names as they stand", " Rear Display ,1\n,2\n", {{1, " Rear Display "}, {2, ""}}},
        {"CR LF", "Amp,0x101\r\nTuner,2\r\n", {{2, "Tuner"}, {257, "Amp"}}},
        {"no final line feed", "Amp,0x101", {{257, "Amp"}}},
        {"an address cut at 99 characters", std::string(96, 'n') + ",123\n", {{12, std::string(96, 'n')}}},
        {"pieces of 99 characters", "A,1" + std::string(96, ' ') + "B,2\n", {{1, "A"}, {2, "B"}}},
    };
    for (const ConfigurationCase& row : kConfigurations) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(AddressesIn(row.content), row.nodes);
    }
}

TEST(NodeAddresses, OnlySoManyNodesCount) {
    std::string content;
    for (std::size_t address = 0; address < kMaxNetworkNodes; ++address) {
        content += "A," + std::to_string(address) + "\n";
    }
    const TempDir dir;
    NodeAddresses nodes;
    EXPECT_EQ(ReadNodeAddresses(dir.Write("network.txt", content), nodes), ConfigFile::Whole);
    EXPECT_EQ(nodes.size(), kMaxNetworkNodes);

    content += "New,-1\nRenamed,7\nNothing,x\n";
    EXPECT_EQ(ReadNodeAddresses(dir.Write("network.txt", content), nodes), ConfigFile::Cut);
    EXPECT_EQ(nodes.size(), kMaxNetworkNodes);
    EXPECT_FALSE(nodes.contains(-1));
    EXPECT_EQ(nodes[7], "Renamed") << "a known address needs no room";
}

TEST(NodeAddresses, FileThatCannotBeOpenedGivesNone) {
    const TempDir dir;
    NodeAddresses nodes{{1, "Amp"}};
    EXPECT_EQ(ReadNodeAddresses(dir.File("missing.txt"), nodes), ConfigFile::Missing);
    EXPECT_EQ(ReadNodeAddresses(dir.Path(), nodes), ConfigFile::Missing);
    EXPECT_EQ(nodes, (NodeAddresses{{1, "Amp"}}));
}

}  // namespace
}  // namespace tarvex::test::network_nodes_test
