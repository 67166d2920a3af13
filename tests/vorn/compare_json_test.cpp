/// Differences as JSON.

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cabin.h"
#include "vorn/compare_report.h"

namespace vorn::test {
namespace {

std::string JsonDifference(const Sample& before, const Sample& after) {
    return ChangesJson(Compare(*Build(before), *Build(after)));
}

struct JsonCase {
    const char* what;
    void (*change)(Sample& sample);
    const char* json;
};

const JsonCase kCases[] = {
    {"equal databases", [](Sample&) {}, "[]"},
    {"a definition more", [](Sample& s) { s.definitions.push_back(String("node", "Rack", "")); },
     R"([{"change": "added", "object": "attribute definition", "name": "node Rack"}])"},
    {"a definition changed", [](Sample& s) { s.definitions[0].maximum = 15; },
     R"([{"change": "changed", "object": "attribute definition", "name": "node Slot",
          "fields": [{"field": "maximum", "before": 255, "after": 15}]}])"},
    {"nodes, with an attribute that has a number",
     [](Sample& s) {
         s.nodes[0].attributes = {{"Slot", 2.5}};
         s.nodes[1].name = "Radio";
     },
     R"([{"change": "changed", "object": "node", "name": "Amp",
          "fields": [{"field": "attribute Slot", "before": 1, "after": 2.5}]},
         {"change": "added", "object": "node", "name": "Radio"},
         {"change": "removed", "object": "node", "name": "Tuner"}])"},
    {"a message without its name, length and attributes",
     [](Sample& s) {
         s.messages[0] = {kVolume, "", 0, s.messages[0].signals, ""};
     },
     R"([{"change": "changed", "object": "message", "identifier": 2244620, "extended": true, "name": "",
          "fields": [{"field": "name", "before": "Amp_Volume_Status", "after": ""},
                     {"field": "length", "before": 2, "after": 0},
                     {"field": "node", "before": "Amp", "after": null},
                     {"field": "attribute Function", "before": "Volume", "after": null},
                     {"field": "attribute Kind", "before": "Status", "after": null}]}])"},
    {"a message that moved", [](Sample& s) { s.messages[1].identifier = 0x11 | kExtendedIdentifier; },
     R"([{"change": "moved", "object": "message", "identifier": 17, "extended": true, "name": "Ping",
          "fields": [{"field": "identifier", "before": 16, "after": 17},
                     {"field": "extended", "before": false, "after": true}]}])"},
    {"signals and values, without fields of the records around them",
     [](Sample& s) {
         s.messages[0].signals.push_back({"Top", 15, 1});
         s.messages[0].signals[0].values = {{0, "Off"}, {2, "Loud"}};
     },
     R"([{"change": "changed", "object": "message", "identifier": 2244620, "extended": true,
          "name": "Amp_Volume_Status",
          "parts": [{"change": "changed", "object": "signal", "name": "Volume",
                     "parts": [{"change": "added", "object": "value", "value": 2},
                               {"change": "removed", "object": "value", "value": 1}]},
                    {"change": "added", "object": "signal", "name": "Top"}]}])"},
    {"fields of signals",
     [](Sample& s) {
         s.messages[0].signals[1] = {
             "Case", 8, 2, kBig | kSelected | kSigned, 3, {}, sigscale{0.01, {}, {}, {}, "km/h"}};
     },
     R"([{"change": "changed", "object": "message", "identifier": 2244620, "extended": true,
          "name": "Amp_Volume_Status",
          "parts": [{"change": "changed", "object": "signal", "name": "Case",
                     "fields": [{"field": "byte_order", "before": "little_endian", "after": "big_endian"},
                                {"field": "signed", "before": false, "after": true},
                                {"field": "multiplexor", "before": true, "after": false},
                                {"field": "multiplexer_value", "before": null, "after": 3},
                                {"field": "factor", "before": null, "after": 0.01},
                                {"field": "unit", "before": null, "after": "km/h"}]}]}])"},
    {"special characters",
     [](Sample& s) {
         s.nodes.push_back(
             {"Q\"uo\\te\n\x1B S\xC3\xBC"
              "d"});
     },
     R"([{"change": "added", "object": "node", "name": "Q\"uo\\te\n\u001b S\u00fcd"}])"},
};

TEST(CompareJson, ListsChanges) {
    using nlohmann::ordered_json;
    for (const auto& [what, change, json] : kCases) {
        Sample after = Cabin();
        change(after);
        EXPECT_EQ(ordered_json::parse(JsonDifference(Cabin(), after)).at("changes").dump(1),
                  ordered_json::parse(json).dump(1))
            << what;
    }
}

TEST(CompareJson, HasARecordOnEachLineAndCountsThem) {
    Sample after = Cabin();
    after.nodes.push_back({"Phone"});
    after.messages[0].length = 3;
    after.messages[0].node = "Tuner";
    after.messages[0].signals[0].values[1].second = "Loud";
    after.messages[0].signals.pop_back();
    EXPECT_EQ(JsonDifference(Cabin(), after), R"({
"changes": [
  {"change": "added", "object": "node", "name": "Phone"},
  {"change": "changed", "object": "message", "identifier": 2244620, "extended": true, "name": "Amp_Volume_Status", "fields": [{"field": "length", "before": 2, "after": 3}, {"field": "node", "before": "Amp", "after": "Tuner"}], "parts": [
    {"change": "changed", "object": "signal", "name": "Volume", "parts": [
      {"change": "changed", "object": "value", "value": 1, "fields": [{"field": "text", "before": "On", "after": "Loud"}]}
    ]},
    {"change": "removed", "object": "signal", "name": "Low"}
  ]}
],
"summary": {"attribute_definitions": {"added": 0, "removed": 0, "moved": 0, "changed": 0}, "nodes": {"added": 1, "removed": 0, "moved": 0, "changed": 0}, "messages": {"added": 0, "removed": 0, "moved": 0, "changed": 1}, "signals": {"added": 0, "removed": 1, "moved": 0, "changed": 1}, "values": {"added": 0, "removed": 0, "moved": 0, "changed": 1}, "unique_names": 0}
}
)");
}

TEST(CompareJson, NothingHasASummaryToo) {
    const auto json = nlohmann::json::parse(JsonDifference(Cabin(), Cabin()));
    EXPECT_EQ(json.at("changes").dump(), "[]");
    EXPECT_EQ(json.at("summary").at("messages").at("changed"), 0);
}

}  // namespace
}  // namespace vorn::test
