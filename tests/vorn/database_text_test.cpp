/// Databases and lists of messages in words.

#include <gtest/gtest.h>

#include "sample.h"
#include "vorn/describe.h"
#include "vorn/selection.h"

namespace vorn::test {
namespace {

constexpr std::uint32_t kExtended = kExtendedIdentifier;

TEST(DatabaseText, OfAnEmptyDatabase) {
    EXPECT_EQ(DatabaseText(*Build({.name = "empty"}), Style(false)), R"(empty

0 nodes

0 messages
)");
}

TEST(DatabaseText, TellsAttributesNodesAndMessages) {
    const auto database =
        Build({.definitions = {String("database", "BusType", ""), Integer("node", "Address", 0, 65535, 65535),
                               Enumeration("node", "State", {"Off", "On"}, "Unknown"),
                               String("message", "Function", "")},
               .attributes = {{"BusType", "MOST"}},
               .nodes = {{"Amp", {{"State", "Unknown"}, {"Address", 257.0}}}, {"Tuner"}},
               .messages = {{kExtended | 0x22400C,
                             "Amp_Volume_Status",
                             2,
                             {{"Volume", 7, 8, kBig}, {"Mode", 15, 8, kBig}},
                             "Amp",
                             {{"Function", "Volume"}}},
                            {0x1,
                             "S\xC3\xBC"
                             "d",
                             1,
                             {{"On", 0, 1}}}}});
    // Identifiers take 20 columns, names 34, lengths 13 and numbers of signals 14.
    EXPECT_EQ(DatabaseText(*database, Style(false)),
              "cabin\n"
              "  BusType = MOST\n"
              "\n"
              "2 nodes\n"
              "  Amp\n"
              "    State = Unknown\n"
              "    Address = 257\n"
              "  Tuner\n"
              "\n"
              "2 messages\n"
              "  0x22400C extended   Amp_Volume_Status                 2 bytes      2 signals     Amp\n"
              "  0x1                 S\xC3\xBC"
              "d                               1 byte       1 signal\n");
}

TEST(DatabaseText, MarksHeadings) {
    const auto database = Build({.nodes = {{"Amp"}}, .messages = {{0x1, "Ping"}}});
    EXPECT_EQ(DatabaseText(*database, Style(true)),
              "\x1B[1mcabin\x1B[0m\n"
              "\n"
              "\x1B[1m1 node\x1B[0m\n"
              "  Amp\n"
              "\n"
              "\x1B[1m1 message\x1B[0m\n"
              "  0x1                 Ping                              0 bytes      0 signals\n");
}

TEST(DatabaseText, ControlCharactersBecomeDots) {
    const auto database =
        Build({.name = "ca\x1B"
                       "bin",
               .definitions = {String("database", "Bus\nType", ""), String("node", "Sl\tot", "")},
               .attributes = {{"Bus\nType", "a\nb"}},
               .nodes = {{"A\x7Fmp", {{"Sl\tot", "1\n2"}}}},
               .messages = {{0x1, "P\ring", 0, {}, "A\x7Fmp"}}});
    EXPECT_EQ(DatabaseText(*database, Style(false)),
              "ca.bin\n"
              "  Bus.Type = a.b\n"
              "\n"
              "1 node\n"
              "  A.mp\n"
              "    Sl.ot = 1.2\n"
              "\n"
              "1 message\n"
              "  0x1                 P.ing                             0 bytes      0 signals     A.mp\n");
}

TEST(MessageList, IsOneLineForEachMessage) {
    const auto database =
        Build({.nodes = {{"Amp"}},
               .messages = {
                   {0x7FFFFFFF | kExtended, "Thirty-two characters are a name", 65535, {{"On", 0, 1}}, "Amp"},
                   {0x2, "", 0}}});
    EXPECT_EQ(MessageList(Select(*database, {})),
              "0x7FFFFFFF extended Thirty-two characters are a name  65535 bytes  1 signal      Amp\n"
              "0x2                                                   0 bytes      0 signals\n");
}

TEST(MessageList, OfAnEmptyDatabaseIsEmpty) {
    EXPECT_EQ(MessageList({}), "");
}

}  // namespace
}  // namespace vorn::test
