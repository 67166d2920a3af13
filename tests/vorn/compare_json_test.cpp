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
          "fields": [{"field": "maximum", "before": "255", "after": "15"}]}])"},
    {"a node renamed", [](Sample& s) { s.nodes[1].name = "Radio"; },
     R"([{"change": "added", "object": "node", "name": "Radio"},
         {"change": "removed", "object": "node", "name": "Tuner"}])"},
    {"a message without its name, length and attributes",
     [](Sample& s) {
         s.messages[0] = {kVolume, "", 0, s.messages[0].signals, "Amp"};
     },
     R"([{"change": "changed", "object": "message", "name": "0x22400C extended ",
          "fields": [{"field": "name", "before": "Amp_Volume_Status", "after": ""},
                     {"field": "length", "before": "2", "after": "0"},
                     {"field": "attribute Function", "before": "Volume", "after": ""},
                     {"field": "attribute Kind", "before": "Status", "after": ""}]}])"},
    {"signals and values, without fields of the records around them",
     [](Sample& s) {
         s.messages[0].signals.push_back({"Top", 15, 1});
         s.messages[0].signals[0].values = {{0, "Off"}, {2, "Loud"}};
     },
     R"([{"change": "changed", "object": "message", "name": "0x22400C extended Amp_Volume_Status",
          "parts": [{"change": "changed", "object": "signal", "name": "Volume",
                     "parts": [{"change": "added", "object": "value", "name": "2"},
                               {"change": "removed", "object": "value", "name": "1"}]},
                    {"change": "added", "object": "signal", "name": "Top"}]}])"},
    {"a scaling",
     [](Sample& s) {
         s.messages[0].signals[1].scaling = sigscale{0.01, {}, {}, {}, "km/h"};
     },
     R"([{"change": "changed", "object": "message", "name": "0x22400C extended Amp_Volume_Status",
          "parts": [{"change": "changed", "object": "signal", "name": "Case",
                     "fields": [{"field": "factor", "before": "", "after": "0.01"},
                                {"field": "unit", "before": "", "after": "km/h"}]}]}])"},
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
        EXPECT_EQ(ordered_json::parse(JsonDifference(Cabin(), after)).dump(1),
                  ordered_json::parse(json).dump(1))
            << what;
    }
}

TEST(CompareJson, HasARecordOnEachLine) {
    Sample after = Cabin();
    after.nodes.push_back({"Phone"});
    after.messages[0].length = 3;
    after.messages[0].node = "Tuner";
    after.messages[0].signals[0].values[1].second = "Loud";
    after.messages[0].signals.pop_back();
    EXPECT_EQ(JsonDifference(Cabin(), after), R"([
  {"change": "added", "object": "node", "name": "Phone"},
  {"change": "changed", "object": "message", "name": "0x22400C extended Amp_Volume_Status", "fields": [{"field": "length", "before": "2", "after": "3"}, {"field": "node", "before": "Amp", "after": "Tuner"}], "parts": [
    {"change": "changed", "object": "signal", "name": "Volume", "parts": [
      {"change": "changed", "object": "value", "name": "1", "fields": [{"field": "text", "before": "On", "after": "Loud"}]}
    ]},
    {"change": "removed", "object": "signal", "name": "Low"}
  ]}
]
)");
    EXPECT_EQ(JsonDifference(Cabin(), Cabin()), "[]\n");
}

}  // namespace
}  // namespace vorn::test
