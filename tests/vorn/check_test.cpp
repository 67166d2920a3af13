/// Faults of databases.

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample.h"
#include "vorn/check_report.h"

namespace vorn::test {
namespace {

using testing::ElementsAre;

using Faults = std::vector<std::string>;

/// The lines that tell the faults.
Faults Check(const kestrel::Database& database) {
    Faults lines;
    std::istringstream text(FaultsText(FaultsOf(database)));
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

struct MessageFaultCase {
    const char* what;
    std::uint16_t length;
    std::vector<SignalRow> signals;
    Faults faults;  // behind "message Msg: "
};

const MessageFaultCase kSignalFaults[] = {
    {"no signals", 0, {}, {}},
    {"side by side", 1, {{"A", 7, 4, kBig}, {"B", 3, 4, kBig}}, {}},
    {"side by side in both byte orders", 2, {{"A", 7, 12, kBig}, {"B", 8, 4}}, {}},
    {"one bit of both", 1, {{"A", 7, 4, kBig}, {"B", 4, 4, kBig}}, {"signals A and B overlap"}},
    {"all bits of both are told in one line",
     2,
     {{"A", 7, 16, kBig}, {"B", 0, 16}},
     {"signals A and B overlap"}},
    {"one within the other", 2, {{"A", 7, 16, kBig}, {"B", 3, 1, kBig}}, {"signals A and B overlap"}},
    {"in the order of the signals", 1, {{"B", 3, 1}, {"A", 3, 1}}, {"signals B and A overlap"}},
    {"two pairs",
     2,
     {{"A", 7, 8, kBig}, {"B", 15, 8, kBig}, {"C", 0, 1}, {"D", 8, 1}},
     {"2 pairs of signals overlap: A and C, B and D"}},
    {"one with two others",
     2,
     {{"A", 7, 8, kBig}, {"B", 15, 8, kBig}, {"C", 7, 16, kBig}},
     {"2 pairs of signals overlap: A and C, B and C"}},
    {"multiplexed for different values",
     1,
     {{"A", 7, 8, kBig | kSelected, 0}, {"B", 7, 8, kBig | kSelected, 1}, {"C", 0, 8, kSelected, 2}},
     {"3 signals are multiplexed, but there is no multiplexor: A, B, C"}},
    {"multiplexed for one value",
     1,
     {{"A", 7, 8, kBig | kSelected, 5},
      {"B", 0, 1, kSelected, 6},
      {"C", 0, 1, kSelected, 5},
      {"D", 0, 0, kSelector}},
     {"signals A and C overlap"}},
    {"plain and multiplexed",
     1,
     {{"A", 7, 8, kBig}, {"B", 0, 1, kSelected, 6}},
     {"signal B is multiplexed, but there is no multiplexor", "signals A and B overlap"}},
    {"multiplexed and plain",
     1,
     {{"A", 0, 1, kSelected, 6}, {"B", 7, 8, kBig}},
     {"signal A is multiplexed, but there is no multiplexor", "signals A and B overlap"}},
    {"more than are told",
     1,
     {{"A", 0, 1, kSelected, 1},
      {"B", 0, 1, kSelected, 2},
      {"C", 0, 1, kSelected, 3},
      {"D", 0, 1, kSelected, 4},
      {"E", 0, 1, kSelected, 5}},
     {"5 signals are multiplexed, but there is no multiplexor: A, B, C and 2 more"}},
    {"multiplexor and multiplexed",
     1,
     {{"A", 7, 8, kBig | kSelector}, {"B", 0, 1, kSelected, 0}},
     {"signals A and B overlap"}},
    {"values of signals that are not multiplexed mean nothing",
     1,
     {{"A", 7, 8, kBig, 1}, {"B", 7, 8, kBig, 2}},
     {"signals A and B overlap"}},
    {"up to the end of the message", 3, {{"A", 7, 8, kBig}, {"B", 15, 16, kBig}}, {}},
    {"beyond_the_message",
     1,
     {{"A", 3, 5, kBig}, {"B", 16, 1}},
     {"2 signals end behind the message: A (2 bytes), B (3 bytes)"}},
    {"in a message without bytes", 0, {{"A", 0, 1}}, {"signal A needs 1 byte, the message has 0"}},
    {"a name twice", 1, {{"A", 0, 1}, {"B", 1, 1}, {"A", 2, 1}}, {"the name of signal A occurs twice"}},
    {"a name twice for different values of the multiplexor",
     1,
     {{"A", 0, 1, kSelected, 1}, {"A", 0, 1, kSelected, 2}, {"B", 1, 1, kSelector}},
     {"the name of signal A occurs twice"}},
    {"names more than once",
     1,
     {{"A", 0, 1}, {"B", 1, 1}, {"A", 2, 1}, {"B", 3, 1}, {"A", 4, 1}, {"A", 5, 1}},
     {"4 signals have the name of another: A, B, A and 1 more"}},
    {"names that differ in case", 1, {{"A", 0, 1}, {"a", 1, 1}}, {}},
    {"a minimum above the maximum",
     2,
     {{"A", 0, 8, kLittle, 0, {}, sigscale{1, 0.5, -3}}, {"B", 8, 8, kLittle, 0, {}, sigscale{1, 7, 7}}},
     {"the minimum of signal A, 0.5, is above its maximum, -3"}},
    {"two of them",
     2,
     {{"A", 0, 8, kLittle, 0, {}, sigscale{1, 0.5, -3}}, {"B", 8, 8, kLittle, 0, {}, sigscale{1, 7, 6}}},
     {"2 signals have a minimum above their maximum: A, B"}},
    {"a minimum or a maximum alone",
     2,
     {{"A", 0, 8, kLittle, 0, {}, sigscale{1, 9}}, {"B", 8, 8, kLittle, 0, {}, sigscale{1, {}, -9}}},
     {}},
    {"everything at once",
     1,
     {{"A", 7, 8, kBig}, {"A", 0, 9}},
     {"the name of signal A occurs twice", "signal A needs 2 bytes, the message has 1",
      "signals A and A overlap"}},
};

TEST(Check, SignalsOfAMessage) {
    for (const auto& [what, length, signals, faults] : kSignalFaults) {
        Faults lines;
        for (const std::string& fault : faults) {
            lines.push_back("message Msg: " + fault);
        }
        EXPECT_EQ(Check(*BuildMessage(length, signals)), lines) << what;
    }
}

/// In reading order C runs through A (bits 7 to 4), B (3 to 0, 15 to 12) and A again (11 to 8).
TEST(Check, PairThatMeetsInTwoPlacesIsToldOnce) {
    EXPECT_THAT(Check(*BuildMessage(2, {{"A", 4, 8}, {"B", 3, 8, kBig}, {"C", 7, 16, kBig}})),
                ElementsAre("message Msg: 2 pairs of signals overlap: A and C, B and C"));
}

TEST(Check, EveryPairOfThreeSignalsOnOneBitIsTold) {
    EXPECT_THAT(Check(*BuildMessage(1, {{"A", 0, 1}, {"B", 0, 1}, {"C", 0, 1}})),
                ElementsAre("message Msg: 3 pairs of signals overlap: A and B, A and C, B and C"));
}

TEST(Check, MultiplexedSignalMeetsPlainOnesAlsoWhereAnotherLies) {
    EXPECT_THAT(
        Check(*BuildMessage(
            1, {{"A", 0, 1}, {"B", 0, 1, kSelected, 1}, {"C", 0, 1, kSelected, 1}, {"D", 0, 0, kSelector}})),
        ElementsAre("message Msg: 3 pairs of signals overlap: A and B, A and C, B and C"));
}

struct DatabaseFaultCase {
    const char* what;
    Sample sample;
    Faults faults;
};

const DatabaseFaultCase kDatabases[] = {
    {"nothing", {}, {}},
    {"a node and a message of one name",
     {.nodes = {{"A"}}, .messages = {{1, "A", 1, {{"A", 0, 1}}, "A"}}},
     {}},
    {"nodes", {.nodes = {{"A"}, {"B"}, {"A"}}}, {"node A: the name occurs twice"}},
    {"messages",
     {.messages = {{1, "A"}, {2, "B"}, {3, "A"}}},
     {"message A: the name occurs twice: 0x1, 0x3"}},
    {"messages of one name are told apart in other lines",
     {.messages = {{1 | kExtendedIdentifier, "A", 0, {{"S", 0, 1}}}, {2, "A", 0, {{"S", 0, 1}}}}},
     {"message A (0x1 extended): signal S needs 1 byte, the message has 0",
      "message A: the name occurs twice: 0x1 extended, 0x2",
      "message A (0x2): signal S needs 1 byte, the message has 0"}},
    {"four messages",
     {.messages = {{1, "A"}, {2, "A"}, {3, "A"}, {4, "A"}}},
     {"message A: the name occurs 4 times: 0x1, 0x2, 0x3 and 1 more"}},
    {"a node and messages of one name",
     {.nodes = {{"A"}, {"A"}}, .messages = {{1, "A", 0, {{"S", 0, 1}}}}},
     {"node A: the name occurs twice", "message A: signal S needs 1 byte, the message has 0"}},
    {"more than twice", {.nodes = {{"A"}, {"A"}, {"B"}, {"A"}}}, {"node A: the name occurs 3 times"}},
    {"names that differ in case", {.nodes = {{"A"}, {"a"}}, .messages = {{1, "B"}, {2, "b"}}}, {}},
    {"identifiers",
     {.messages = {{0x22400C | kExtendedIdentifier, "A"}, {2, "B"}, {0x22400C | kExtendedIdentifier, "C"}}},
     {"message C: has the identifier 0x22400C extended of A"}},
    {"an identifier plain and extended", {.messages = {{2, "A"}, {2 | kExtendedIdentifier, "B"}}}, {}},
    {"one message twice",
     {.messages = {{2, "A"}, {2, "A"}}},
     {"message A: the name occurs twice: 0x2, 0x2", "message A (0x2): has the identifier 0x2 of A"}},
    {"one signal name in two messages",
     {.messages = {{1, "A", 1, {{"S", 0, 1}}}, {2, "B", 1, {{"S", 0, 1}}}}},
     {}},
    {"nodes first, then message by message",
     {.nodes = {{"N"}, {"N"}},
      .messages = {{1, "A", 0, {{"S", 0, 1}}}, {1, "B", 1, {{"S", 0, 1}, {"T", 0, 1}}}}},
     {"node N: the name occurs twice", "message A: signal S needs 1 byte, the message has 0",
      "message B: has the identifier 0x1 of A", "message B: signals S and T overlap"}},
    {"control characters in names",
     {.nodes = {{"N\n"}, {"N\n"}}, .messages = {{1, "M\x1B", 0, {{"S\r", 0, 1}}}}},
     {"node N.: the name occurs twice", "message M.: signal S. needs 1 byte, the message has 0"}},
};

TEST(Check, NamesAndIdentifiersOfADatabase) {
    for (const auto& [what, sample, faults] : kDatabases) {
        EXPECT_EQ(Check(*Build(sample)), faults) << what;
    }
}

TEST(Check, VeryManyOverlapsAreNotAllTold) {
    std::vector<SignalRow> rows;
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i) {
        names.push_back("S" + std::to_string(i));
    }
    for (const std::string& name : names) {
        rows.push_back({name.c_str(), 0, 1});
    }
    const Faults faults = Check(*BuildMessage(1, rows));  // of 4,950 pairs
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_THAT(faults[0],
                testing::MatchesRegex("message Msg: at least 1[0-9]+ pairs of signals overlap: S0 and S1, "
                                      "S0 and S2, S1 and S2 and 1[0-9]+ more"));
}

/// Each has a value of the multiplexor of its own, but for the last, which has that of the first.
TEST(Check, VeryManyMultiplexedSignalsAtOnePlace) {
    constexpr unsigned kSignals = 20'000;
    std::vector<SignalRow> rows{{"Page", 8, 8, kSelector}};
    for (unsigned value = 0; value < kSignals; ++value) {
        rows.push_back({"S" + std::to_string(value), 0, 1, kSelected, value});
    }
    EXPECT_THAT(Check(*BuildMessage(2, rows)), testing::IsEmpty());
    rows.push_back({"Last", 0, 1, kSelected, 0});
    EXPECT_THAT(Check(*BuildMessage(2, rows)), ElementsAre("message Msg: signals S0 and Last overlap"));
}

TEST(Check, AsJson) {
    const auto database =
        Build({.nodes = {{"N"}, {"N"}},
               .messages = {{1 | kExtendedIdentifier, "A\n", 0, {{"S", 0, 1}, {"T", 1, 1}}},
                            {1 | kExtendedIdentifier, "B", 1, {{"U", 0, 1, kSelected, 2}}}}});
    EXPECT_EQ(FaultsJson(FaultsOf(*database)), R"json([
  {"cause": "name_twice", "object": "node", "name": "N", "count": 1, "is_at_least": false, "examples": []},
  {"cause": "beyond_the_message", "object": "message", "identifier": 1, "extended": true, "name": "A\n", "count": 2, "is_at_least": false, "examples": ["S (1 byte)", "T (1 byte)"]},
  {"cause": "identifier_twice", "object": "message", "identifier": 1, "extended": true, "name": "B", "count": 1, "is_at_least": false, "examples": ["A\n"]},
  {"cause": "no_multiplexor", "object": "message", "identifier": 1, "extended": true, "name": "B", "count": 1, "is_at_least": false, "examples": ["U"]}
]
)json");
    EXPECT_EQ(FaultsJson({}), "[]\n");
}

}  // namespace
}  // namespace vorn::test
