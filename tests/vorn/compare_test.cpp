/// Differences as text.

#include "vorn/compare.h"

#include <gtest/gtest.h>

#include "cabin.h"
#include "vorn/compare_report.h"

namespace vorn::test {
namespace {

/// Without the summary at its end.
std::string Difference(const Sample& before, const Sample& after) {
    const Comparison comparison = Compare(*Build(before), *Build(after));
    std::string text = ChangesText(comparison, Style(false));
    if (const std::string summary = Summary(comparison); !summary.empty()) {
        text.resize(text.size() - summary.size() - 1);
    }
    return text;
}

struct CompareCase {
    const char* what;
    void (*change)(Sample& sample);
    const char* forth;  // from the cabin to the changed one
    const char* back;
};

void ExpectDifference(const CompareCase& row) {
    Sample changed = Cabin();
    row.change(changed);
    EXPECT_EQ(Difference(Cabin(), changed), row.forth) << row.what;
    EXPECT_EQ(Difference(changed, Cabin()), row.back) << row.what << ", back";
}

const CompareCase kNothing[] = {
    {"equal databases", [](Sample&) {}, "", ""},
    {"the database's own name and attributes",
     [](Sample& s) {
         s.name = "truck";
         s.attributes = {{"Author", "Ada"}};
     },
     "", ""},
    {"the order of definitions", [](Sample& s) { std::swap(s.definitions[0], s.definitions[2]); }, "", ""},
    {"the order of nodes", [](Sample& s) { std::swap(s.nodes[0], s.nodes[1]); }, "", ""},
    {"the order of messages", [](Sample& s) { std::swap(s.messages[0], s.messages[1]); }, "", ""},
    {"the order of attributes",
     [](Sample& s) { std::swap(s.messages[0].attributes[0], s.messages[0].attributes[1]); }, "", ""},
    {"the order of signals", [](Sample& s) { std::swap(s.messages[0].signals[0], s.messages[0].signals[2]); },
     "", ""},
    {"the order of values",
     [](Sample& s) {
         auto& values = s.messages[0].signals[0].values;
         std::swap(values[0], values[1]);
     },
     "", ""},
};

TEST(Compare, FindsNothing) {
    for (const CompareCase& row : kNothing) {
        ExpectDifference(row);
    }
    EXPECT_EQ(Difference({}, {}), "");
}

const CompareCase kDefinitions[] = {
    {"a definition more", [](Sample& s) { s.definitions.push_back(String("node", "Rack", "")); },
     "+ attribute definition node Rack\n", "- attribute definition node Rack\n"},
    {"a definition for another kind of object", [](Sample& s) { s.definitions[3].object = "node"; },
     "+ attribute definition node Author\n- attribute definition database Author\n",
     "+ attribute definition database Author\n- attribute definition node Author\n"},
    {"every number of an integer", [](Sample& s) { s.definitions[0] = Integer("node", "Slot", -1.5, 15, 2); },
     R"(~ attribute definition node Slot
    minimum: "0" -> "-1.5"
    maximum: "255" -> "15"
    default: "0" -> "2"
)",
     R"(~ attribute definition node Slot
    minimum: "-1.5" -> "0"
    maximum: "15" -> "255"
    default: "2" -> "0"
)"},
    {"the names of values and the default",
     [](Sample& s) {
         s.definitions[2] = Enumeration("message", "Kind", {"Status", "Get", "Set"}, "Set");
     },
     R"(~ attribute definition message Kind
    values: "Get, Status" -> "Status, Get, Set"
    default: "Get" -> "Set"
)",
     R"(~ attribute definition message Kind
    values: "Status, Get, Set" -> "Get, Status"
    default: "Set" -> "Get"
)"},
    {"the type", [](Sample& s) { s.definitions[3] = Integer("database", "Author", 1, 9, 3); },
     R"(~ attribute definition database Author
    type: "string" -> "integer"
    minimum: "" -> "1"
    maximum: "" -> "9"
    default: "nobody" -> "3"
)",
     R"(~ attribute definition database Author
    type: "integer" -> "string"
    default: "3" -> "nobody"
    minimum: "1" -> ""
    maximum: "9" -> ""
)"},
};

TEST(Compare, AttributeDefinitions) {
    for (const CompareCase& row : kDefinitions) {
        ExpectDifference(row);
    }
}

const CompareCase kNodes[] = {
    {"a node more",
     [](Sample& s) {
         s.nodes.push_back({"Phone", {{"Slot", 3.0}}});
     },
     "+ node Phone\n", "- node Phone\n"},
    {"a node renamed", [](Sample& s) { s.nodes[1].name = "Radio"; }, "+ node Radio\n- node Tuner\n",
     "+ node Tuner\n- node Radio\n"},
    {"an attribute changed",
     [](Sample& s) {
         s.nodes[0].attributes = {{"Slot", 2.0}};
     },
     "~ node Amp\n    attribute Slot: \"1\" -> \"2\"\n", "~ node Amp\n    attribute Slot: \"2\" -> \"1\"\n"},
    {"an attribute more",
     [](Sample& s) {
         s.nodes[1].attributes = {{"Slot", 4.0}};
     },
     "~ node Tuner\n    attribute Slot: \"\" -> \"4\"\n",
     "~ node Tuner\n    attribute Slot: \"4\" -> \"\"\n"},
};

TEST(Compare, Nodes) {
    for (const CompareCase& row : kNodes) {
        ExpectDifference(row);
    }
}

const CompareCase kMessages[] = {
    {"a message in front of the others",
     [](Sample& s) {
         s.messages.insert(s.messages.begin(), {0x7FF, "Pong", 1, {{"On", 0, 1}}});
     },
     "+ message 0x7FF Pong\n", "- message 0x7FF Pong\n"},
    {"another identifier", [](Sample& s) { s.messages[1].identifier = 0x11; },
     "> message 0x11 Ping\n    identifier: \"0x10\" -> \"0x11\"\n",
     "> message 0x10 Ping\n    identifier: \"0x11\" -> \"0x10\"\n"},
    {"an identifier that is extended now",
     [](Sample& s) { s.messages[1].identifier = 0x10 | kExtendedIdentifier; },
     "> message 0x10 extended Ping\n    extended: \"no\" -> \"yes\"\n",
     "> message 0x10 Ping\n    extended: \"yes\" -> \"no\"\n"},
    {"every field",
     [](Sample& s) {
         s.messages[0].name = "Amp_Loud_Status";
         s.messages[0].length = 3;
         s.messages[0].node = "Tuner";
         s.messages[0].attributes = {{"Function", "Loud"}, {"Kind", "Get"}};
     },
     R"(~ message 0x22400C extended Amp_Loud_Status
    name: "Amp_Volume_Status" -> "Amp_Loud_Status"
    length: "2" -> "3"
    node: "Amp" -> "Tuner"
    attribute Function: "Volume" -> "Loud"
    attribute Kind: "Status" -> "Get"
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
    name: "Amp_Loud_Status" -> "Amp_Volume_Status"
    length: "3" -> "2"
    node: "Tuner" -> "Amp"
    attribute Function: "Loud" -> "Volume"
    attribute Kind: "Get" -> "Status"
)"},
    {"no node, attributes gone",
     [](Sample& s) {
         s.messages[0].node = "";
         s.messages[0].attributes = {{"Kind", "Status"}};
     },
     R"(~ message 0x22400C extended Amp_Volume_Status
    node: "Amp" -> ""
    attribute Function: "Volume" -> ""
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
    node: "" -> "Amp"
    attribute Function: "" -> "Volume"
)"},
    {"a node renamed that sends messages",
     [](Sample& s) { s.nodes[0].name = s.messages[0].node = "Booster"; },
     "~ node Booster\n    name: \"Amp\" -> \"Booster\"\n", "~ node Amp\n    name: \"Booster\" -> \"Amp\"\n"},
};

TEST(Compare, Messages) {
    for (const CompareCase& row : kMessages) {
        ExpectDifference(row);
    }
}

const CompareCase kSignals[] = {
    {"a signal more",
     [](Sample& s) {
         s.messages[1].signals = {{"On", 0, 1, kLittle, 0, {{0, "No"}}}};
     },
     "~ message 0x10 Ping\n  + signal On\n", "~ message 0x10 Ping\n  - signal On\n"},
    {"a signal renamed, told in the order of the new message",
     [](Sample& s) {
         s.messages[0].signals[0].name = "Loud";
         s.messages[0].signals[1].length = 3;
     },
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Loud
      name: "Volume" -> "Loud"
  ~ signal Case
      length: "2" -> "3"
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
      name: "Loud" -> "Volume"
  ~ signal Case
      length: "3" -> "2"
)"},
    {"every field",
     [](Sample& s) {
         s.messages[0].signals[0] = {
             "Volume", 6, 7, kSigned | kSelector | kSelected, 5, {{0, "Off"}, {1, "On"}}};
     },
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
      start_bit: "7" -> "6"
      length: "8" -> "7"
      byte_order: "big_endian" -> "little_endian"
      signed: "no" -> "yes"
      multiplexor: "no" -> "yes"
      multiplexer_value: "" -> "5"
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
      start_bit: "6" -> "7"
      length: "7" -> "8"
      byte_order: "little_endian" -> "big_endian"
      signed: "yes" -> "no"
      multiplexor: "yes" -> "no"
      multiplexer_value: "5" -> ""
)"},
    {"the multiplexor's value zero differs from none",
     [](Sample& s) { s.messages[0].signals[1].flags = kSelector | kSelected; },
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Case
      multiplexer_value: "" -> "0"
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Case
      multiplexer_value: "0" -> ""
)"},
    {"values",
     [](Sample& s) {
         s.messages[0].signals[0].values = {{4294967295, "Max"}, {1, "Loud"}};
     },
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
    + value 4294967295
    ~ value 1
        text: "On" -> "Loud"
    - value 0
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
    + value 0
    ~ value 1
        text: "Loud" -> "On"
    - value 4294967295
)"},
    {"a scaling more",
     [](Sample& s) {
         s.messages[0].signals[0].scaling = sigscale{0.1, -12.5, 12.5, 0.5, "dB"};
     },
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
      factor: "" -> "0.1"
      minimum: "" -> "-12.5"
      maximum: "" -> "12.5"
      step: "" -> "0.5"
      unit: "" -> "dB"
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
  ~ signal Volume
      factor: "0.1" -> ""
      minimum: "-12.5" -> ""
      maximum: "12.5" -> ""
      step: "0.5" -> ""
      unit: "dB" -> ""
)"},
    {"fields before parts, at every level",
     [](Sample& s) {
         s.messages[0].length = 3;
         s.messages[0].signals[0].length = 16;
         s.messages[0].signals[0].values[0].second = "Mute";
     },
     R"(~ message 0x22400C extended Amp_Volume_Status
    length: "2" -> "3"
  ~ signal Volume
      length: "8" -> "16"
    ~ value 0
        text: "Off" -> "Mute"
)",
     R"(~ message 0x22400C extended Amp_Volume_Status
    length: "3" -> "2"
  ~ signal Volume
      length: "16" -> "8"
    ~ value 0
        text: "Mute" -> "Off"
)"},
};

TEST(Compare, SignalsAndValues) {
    for (const CompareCase& row : kSignals) {
        ExpectDifference(row);
    }
}

struct ScalingCase {
    const char* what;
    sigscale after;  // what was {0.1, -12.5, 12.5, 0.5, "dB"}
    const char* fields;
};

const ScalingCase kScalings[] = {
    {"nothing", {0.1, -12.5, 12.5, 0.5, "dB"}, ""},
    {"the factor", {0.01, -12.5, 12.5, 0.5, "dB"}, "factor: \"0.1\" -> \"0.01\"\n"},
    {"the minimum", {0.1, 0, 12.5, 0.5, "dB"}, "minimum: \"-12.5\" -> \"0\"\n"},
    {"the maximum gone", {0.1, -12.5, {}, 0.5, "dB"}, "maximum: \"12.5\" -> \"\"\n"},
    {"the step", {0.1, -12.5, 12.5, 1, "dB"}, "step: \"0.5\" -> \"1\"\n"},
    {"the unit", {0.1, -12.5, 12.5, 0.5, "d\x1B"}, "unit: \"dB\" -> \"d.\"\n"},
};

TEST(Compare, PartsOfAScaling) {
    Sample before = Cabin();
    before.messages[0].signals[0].scaling = sigscale{0.1, -12.5, 12.5, 0.5, "dB"};
    for (const auto& [what, after, fields] : kScalings) {
        Sample changed = before;
        changed.messages[0].signals[0].scaling = after;
        const std::string front = "~ message 0x22400C extended Amp_Volume_Status\n  ~ signal Volume\n      ";
        EXPECT_EQ(Difference(before, changed), *fields == '\0' ? "" : front + fields) << what;
    }
}

const CompareCase kAlike[] = {
    {"a node twice",
     [](Sample& s) {
         s.nodes.push_back({"Amp", {{"Slot", 9.0}}});
     },
     "+ node Amp\n", "- node Amp\n"},
    {"an identifier twice, the new one in front",
     [](Sample& s) {
         s.messages.insert(s.messages.begin() + 1, {0x10, "Pong", 0});
     },
     "~ message 0x10 Pong\n    name: \"Ping\" -> \"Pong\"\n+ message 0x10 Ping\n",
     "~ message 0x10 Ping\n    name: \"Pong\" -> \"Ping\"\n- message 0x10 Ping\n"},
    {"a signal twice, and a third time",
     [](Sample& s) {
         s.messages[0].signals.push_back({"Volume", 0, 1});
         s.messages[0].signals.push_back({"Volume", 1, 1});
     },
     "~ message 0x22400C extended Amp_Volume_Status\n  + signal Volume\n  + signal Volume\n",
     "~ message 0x22400C extended Amp_Volume_Status\n  - signal Volume\n  - signal Volume\n"},
    {"a value twice",
     [](Sample& s) {
         s.messages[0].signals[0].values = {{0, "Off"}, {1, "On"}, {1, "Loud"}};
     },
     "~ message 0x22400C extended Amp_Volume_Status\n  ~ signal Volume\n    + value 1\n",
     "~ message 0x22400C extended Amp_Volume_Status\n  ~ signal Volume\n    - value 1\n"},
};

TEST(Compare, FirstOfSeveralAlikeBelongsToTheFirst) {
    for (const CompareCase& row : kAlike) {
        ExpectDifference(row);
    }
}

TEST(Compare, TellsDefinitionsThenNodesThenMessages) {
    EXPECT_EQ(Difference({}, Cabin()), R"(+ attribute definition node Slot
+ attribute definition message Function
+ attribute definition message Kind
+ attribute definition database Author
+ node Amp
+ node Tuner
+ message 0x22400C extended Amp_Volume_Status
+ message 0x10 Ping
)");
    EXPECT_EQ(Difference(Cabin(), {}), R"(- attribute definition node Slot
- attribute definition message Function
- attribute definition message Kind
- attribute definition database Author
- node Amp
- node Tuner
- message 0x22400C extended Amp_Volume_Status
- message 0x10 Ping
)");
}

TEST(Compare, ControlCharactersBecomeDots) {
    EXPECT_EQ(
        Difference(
            {.definitions = {String("node", "Ra\nck", "")}, .nodes = {{"A\x1Bmp", {{"Ra\nck", "a"}}}}},
            {.definitions = {String("node", "Ra\nck", "")}, .nodes = {{"A\x1Bmp", {{"Ra\nck", "\x7F"}}}}}),
        "~ node A.mp\n    attribute Ra.ck: \"a\" -> \".\"\n");
}

TEST(Compare, LinesOfRecordsAreColoured) {
    Sample after = Cabin();
    after.nodes[1].name = "Radio";
    after.messages[0].signals[0].length = 7;
    EXPECT_EQ(ChangesText(Compare(*Build(Cabin()), *Build(after)), Style(true)),
              "\x1B[32m+ node Radio\x1B[0m\n"
              "\x1B[31m- node Tuner\x1B[0m\n"
              "\x1B[33m~ message 0x22400C extended Amp_Volume_Status\x1B[0m\n"
              "  \x1B[33m~ signal Volume\x1B[0m\n"
              "      length: \"8\" -> \"7\"\n"
              "\x1B[2mnodes: 1 added, 1 removed; messages: 1 changed; signals: 1 changed\x1B[0m\n");
}

}  // namespace
}  // namespace vorn::test
