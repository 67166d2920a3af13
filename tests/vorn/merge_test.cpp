/// Two databases as one.

#include "vorn/merge.h"

#include <cstring>

#include <gtest/gtest.h>

#include "cabin.h"
#include "kestrel/model_text.h"
#include "vorn/compare_report.h"
#include "vorn/selection.h"
#include "vorn/subset.h"

namespace vorn::test {
namespace {

/// What a database has, in its order.
std::string Contents(const kestrel::Database& database) {
    std::string text = database.Name() + ":";
    for (const kestrel::AttrDef& definition : database.AttrDefs()) {
        text.append(" ").append(kestrel::NameIn(definition.name));
    }
    for (const kestrel::Node& node : database.Nodes()) {
        text.append(" ").append(kestrel::NameIn(node.name));
    }
    for (const kestrel::Message& message : database.Messages()) {
        text.append(" ").append(kestrel::NameIn(message.name));
    }
    return text;
}

struct ConflictCase {
    const char* what;
    void (*change)(Sample& sample);
    const char* conflicts;  // empty: none
};

const ConflictCase kConflicts[] = {
    {"nothing", [](Sample&) {}, ""},
    {"the name and own attributes of the databases",
     [](Sample& s) {
         s.name = "truck";
         s.attributes = {{"Author", "Ada"}};
     },
     ""},
    {"what only one of them has",
     [](Sample& s) {
         s.definitions.push_back(String("node", "Rack", ""));
         s.nodes[1].name = "Phone";
         s.messages[1] = {0x20, "Pong", 0};
     },
     ""},
    {"letters that make a name unique",
     [](Sample& s) {
         s.messages.insert(s.messages.begin(), {0x1, "First", 1, {{"Volume", 0, 8}}});
         s.messages[1].signals[0].name = "VolumeB";
     },
     ""},
    {"messages that share a name",
     [](Sample& s) {
         s.messages[1] = {0x11, "Ping"}, s.messages.push_back({0x12, "Ping"});
     },
     ""},
    {"a definition of one of them that no object of the other alone is without",
     [](Sample& s) {
         s.definitions.push_back(Integer("node", "Rack", 0, 9, 5));
         s.definitions.push_back(Integer("database", "Rack", 0, 9, 5));
         s.messages[1] = {0x20, "Pong", 0};
     },
     ""},
    {"a definition of the second whose default would hold for a message of the first",
     [](Sample& s) {
         s.definitions.push_back(Enumeration("message", "Layout", {"Complete", "Unknown"}, "Complete"));
         s.messages[1] = {0x20, "Pong", 0};
     },
     "+ attribute definition message Layout\n"},
    {"a definition of the first whose default would hold for a message of the second",
     [](Sample& s) {
         s.definitions.erase(s.definitions.begin() + 2);
         s.messages = {{0x20, "Pong", 0}};
     },
     "- attribute definition message Kind\n"},
    {"a definition of the second whose default would hold for a node of the first",
     [](Sample& s) {
         s.definitions.push_back(Integer("node", "Rack", 0, 9, 0));
         s.nodes[1].name = "Phone";
     },
     "+ attribute definition node Rack\n"},
    {"a definition", [](Sample& s) { s.definitions[0].maximum = 15; },
     "~ attribute definition node Slot\n    maximum: \"255\" -> \"15\"\n"},
    {"a node",
     [](Sample& s) {
         s.nodes[0].attributes = {{"Slot", 2.0}};
     },
     "~ node Amp\n    attribute Slot: \"1\" -> \"2\"\n"},
    {"a node that has another name", [](Sample& s) { s.nodes[0].name = s.messages[0].node = "Booster"; },
     "~ node Booster\n    name: \"Amp\" -> \"Booster\"\n"},
    {"a message", [](Sample& s) { s.messages[1].length = 1; },
     "~ message 0x10 Ping\n    length: \"0\" -> \"1\"\n"},
    {"a message with another identifier", [](Sample& s) { s.messages[1].identifier = 0x11; },
     "> message 0x11 Ping\n    identifier: \"0x10\" -> \"0x11\"\n"},
    {"signals and their values",
     [](Sample& s) {
         s.messages[0].signals.pop_back();
         s.messages[0].signals[0].values[0].second = "Mute";
     },
     "~ message 0x22400C extended Amp_Volume_Status\n  ~ signal Volume\n    ~ value 0\n"
     "        text: \"Off\" -> \"Mute\"\n  - signal Low\n"},
};

std::string ConflictText(const kestrel::Database& first, const kestrel::Database& second) {
    const std::string text = ChangesText(ConflictsOf(first, second), Style(false));
    return text.empty() ? text : text.substr(0, text.rfind('\n', text.size() - 2) + 1);  // less the summary
}

TEST(Merge, ConflictsOfEveryKindAreFoundAndOneSideIsTaken) {
    for (const auto& [what, change, conflicts] : kConflicts) {
        Sample other = Cabin();
        change(other);
        const auto first = Build(Cabin());
        const auto second = Build(other);
        EXPECT_EQ(ConflictText(*first, *second), conflicts) << what;
        // Of what is in both, all is as the preferred database has it.
        EXPECT_EQ(ConflictText(*first, *Merge(*first, *second, Preference::First)), "") << what;
        EXPECT_EQ(ConflictText(*second, *Merge(*first, *second, Preference::Second)), "") << what;
    }
}

TEST(Merge, WhatIsInBothIsThereOnce) {
    Sample other = Cabin();
    other.name = "truck";
    other.definitions.insert(other.definitions.begin(), String("node", "Rack", ""));
    other.nodes.insert(other.nodes.begin(), {"Phone"});
    other.messages = {{0x8, "Early", 0}, {0x10, "Ping", 0}, {0x20, "Late", 0, {}, "Phone"}};
    const auto merged = Merge(*Build(Cabin()), *Build(other), Preference::First);
    // The messages of the first are in no order: 0x22400C stands in front of 0x10.
    EXPECT_EQ(Contents(*merged),
              "cabin: Slot Function Kind Author Rack Amp Tuner Phone Early Late Amp_Volume_Status Ping");
    EXPECT_EQ(kestrel::NameIn(merged->Messages()[1].node->name), "Phone");
}

TEST(Merge, MessagesInTheOrderOfTheirIdentifiersStayInIt) {
    const auto even = Build({.messages = {{2, "M2"}, {4, "M4"}, {kExtendedIdentifier | 4, "X4"}, {8, "M8"}}});
    const auto odd = Build({.messages = {{1, "M1"}, {kExtendedIdentifier | 3, "X3"}, {4, "M4"}, {9, "M9"}}});
    for (const Preference preference : {Preference::First, Preference::Second}) {
        EXPECT_EQ(Contents(*Merge(*even, *odd, preference)), "cabin: M1 M2 X3 M4 X4 M8 M9");
        EXPECT_EQ(Contents(*Merge(*odd, *even, preference)), "cabin: M1 M2 X3 M4 X4 M8 M9");
    }
}

TEST(Merge, MessagesThatShareANameOrAMeaningStayApart) {
    const AttributeRows meaning = {{"FBlock", "Amp"}, {"Function", "Volume"}, {"OpType", "Get"}};
    const Sample whole{.definitions = {String("message", "FBlock", ""), String("message", "Function", ""),
                                       String("message", "OpType", "")},
                       .messages = {{1, "A"},
                                    {2, "A"},
                                    {3, "A"},
                                    {4, "D", 0, {}, "", meaning},
                                    {5, "E", 0, {}, "", meaning},
                                    {6, "F", 0, {}, "", meaning}}};
    const auto database = Build(whole);
    const auto part = SubsetOf(*database, Select(*database, {.messages = {"2", "3", "4"}}));
    const auto rest = SubsetOf(*database, Select(*database, {.messages = {"1", "5", "6"}}));
    EXPECT_EQ(ConflictText(*part, *rest), "");
    EXPECT_EQ(Contents(*Merge(*part, *rest, Preference::First)), Contents(*database));
    EXPECT_EQ(Contents(*Merge(*rest, *part, Preference::First)), Contents(*database));
}

TEST(Merge, NodeWithoutANameIsANode) {
    Sample sample = Cabin();
    const auto database = Build(sample);
    database->FindMessage(0x10)->node = database->FindNode("Amp");
    std::memset(database->FindNode("Amp")->name, 0, kNameSize);
    const auto merged = Merge(*database, *database, Preference::First);
    EXPECT_EQ(merged->Messages()[1].node, &merged->Nodes()[0]);
}

TEST(Merge, OwnAttributesOfTheFirstAreKeptAndOthersAdded) {
    Sample first = Cabin();
    first.definitions.push_back(String("database", "Stage", ""));
    first.attributes = {{"Author", "Ada"}};
    Sample second = first;
    second.attributes = {{"Author", "Bea"}, {"Stage", "Final"}};
    const auto merged = Merge(*Build(first), *Build(second), Preference::Second);
    kestrel::ValueTexts values;
    std::string texts;
    for (const auto& entry : merged->Attributes().Values()) {
        texts += values.Of(entry) + ";";
    }
    EXPECT_EQ(texts, "Ada;Final;");
}

TEST(Merge, ValuesThatAPreferredDefinitionDoesNotAllowAreRefused) {
    Sample other = Cabin();
    other.definitions[2] = Enumeration("message", "Kind", {"Get", "Set"}, "Get");
    other.messages[0].attributes = {{"Function", "Volume"}, {"Kind", "Set"}};
    other.messages.push_back({0x11, "Pong", 0, {}, "", {{"Kind", "Set"}}});
    EXPECT_THROW(Merge(*Build(Cabin()), *Build(other), Preference::First), kestrel::BadRecord);
}

TEST(Subset, KeepsEverythingButMessages) {
    const auto database = Build(Cabin());
    const auto subset = SubsetOf(*database, Select(*database, {.messages = {"Ping"}}));
    EXPECT_EQ(Contents(*subset), "cabin: Slot Function Kind Author Amp Tuner Ping");
    const Comparison comparison = Compare(*database, *subset);
    EXPECT_EQ(Summary(comparison), "messages: 1 removed");
}

}  // namespace
}  // namespace vorn::test
