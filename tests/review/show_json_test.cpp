/// What of catalogs is shown to programs.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "review/examples.h"
#include "review/show.h"

namespace tarvex::test::show_json_test {
namespace {

using namespace review;
using nlohmann::json;

json Shown(const CatalogReading& reading, const std::vector<std::string>& words) {
    return json::parse(MakeShowJson(reading)->Of(Shower(reading).AnswersTo(words)));
}

TEST(ReviewShowJson, AllBlocks) {
    const json shown = json::parse(MakeShowJson(Roadster())->Of(ViewOf(Roadster())));
    EXPECT_EQ(shown["file"], "roadster.xml");
    EXPECT_EQ(shown["version"], json::parse(R"({"release": "3.1", "date": "2024-06-03"})"));
    EXPECT_EQ(shown["other_faults"], 5);
    ASSERT_EQ(shown["blocks"].size(), 6U);
    EXPECT_EQ(shown["blocks"][2], json::parse(R"({"fblock_id": 49, "fblock": "Disc_Player", "kind": "Slave",
        "version": {"release": "2.0", "date": "2024-05-17"}, "description": "One slot for a disc of 12\u00A0cm.",
        "function_count": 14, "fault_count": 6})"));
}

TEST(ReviewShowJson, AFunction) {
    const json function = Shown(Roadster(), {"31.209"})["answers"][0]["functions"][0];
    EXPECT_EQ(function["fblock_id"], 0x31);
    EXPECT_EQ(function["function"], "DiscInfo");
    EXPECT_EQ(function["class"], "PUnclassified");
    EXPECT_EQ(function["parameters"].size(), 3U);
    EXPECT_EQ(function["parameters"][1]["bytes"], nullptr);
    EXPECT_EQ(function["parameters"][1]["members"][1], json::parse(R"({"name": "Format",
        "catalog_name": "Format", "kind": "enumeration", "bytes": 2, "description": null, "selector": null,
        "values": [
          {"codes": [0, 0], "name": "Audio", "catalog_name": "Audio", "description": null},
          {"codes": [256, 256], "name": "Data", "catalog_name": "Data", "description": null}]})"));
    EXPECT_EQ(function["operations"][1], json::parse(R"({"op_type": 12, "name": "Status",
        "address": "31.209.C", "is_lost": false, "layout": "Open", "known_bytes": 6,
        "end": {"is_hole": false, "why": "Artist: string, open, at most 32 bytes"},
        "parameters": [{"parameter": 0, "position": 1, "catalog_position": 1},
                       {"parameter": 1, "position": 2, "catalog_position": 2},
                       {"parameter": 2, "position": 3, "catalog_position": 3}],
        "message": {"name": "DiscPlayer_DiscInfo_Status", "identifier": 3219612, "signals": [
          {"name": "DiscNr", "start_bit": 7, "length": 8, "byte_order": "big_endian", "is_multiplexor": false,
           "multiplexer_value": null},
          {"name": "Titles", "start_bit": 15, "length": 8, "byte_order": "big_endian", "is_multiplexor": false,
           "multiplexer_value": null},
          {"name": "Format", "start_bit": 23, "length": 16, "byte_order": "big_endian", "is_multiplexor": false,
           "multiplexer_value": null},
          {"name": "Disc_text", "start_bit": 33, "length": 1, "byte_order": "big_endian",
           "is_multiplexor": false, "multiplexer_value": null},
          {"name": "Features_NN_3", "start_bit": 35, "length": 1, "byte_order": "big_endian",
           "is_multiplexor": false, "multiplexer_value": null},
          {"name": "Changed_NN_7", "start_bit": 47, "length": 1, "byte_order": "big_endian",
           "is_multiplexor": false, "multiplexer_value": null}]}})"));
    EXPECT_EQ(function["faults"], json::array());
}

TEST(ReviewShowJson, ParametersOfEachKind) {
    const json parameters = Shown(Convertible(), {"71.205"})["answers"][0]["functions"][0]["parameters"];
    const json& program = parameters[1];
    EXPECT_EQ(program["kind"], "short_stream");
    EXPECT_EQ(program["selector"], "ProgramKind");
    EXPECT_EQ(program["max_bytes"], 8);
    EXPECT_EQ(program["cases"][0], json::parse(R"({"pos_x": "ProgramKind", "pos_y": [0, 0],
        "repeated_from": null, "members": [
        {"name": "StartMinute", "catalog_name": "StartMinute", "kind": "signal", "bytes": null, "description": "Of the day.",
         "selector": null, "bit_length": 11},
        {"name": "QuarterHours", "catalog_name": "QuarterHours", "kind": "signal", "bytes": null, "description": null, "selector": null,
         "bit_length": 5}]})"));
    EXPECT_EQ(program["cases"][3]["pos_y"], json::parse("[16, null]"));
    EXPECT_EQ(program["cases"][1]["members"][1]["members"][0], json::parse(R"({"name": "Degrees",
        "catalog_name": "Degrees", "kind": "number", "bytes": 1, "description": null, "selector": null, "signed": true, "exponent": 0,
        "range": null, "step": 1.0, "unit": "°C"})"));
    EXPECT_EQ(parameters[2]["bits"], json::parse(R"([{"bit": 0, "name": null, "true": "on", "false": "off",
        "catalog_name": null, "catalog_true": "on", "catalog_false": "off"}])"));
}

TEST(ReviewShowJson, Places) {
    const json answers = Shown(Roadster(), {"muted", "AudioAmp.Volume.S*t", "nowhere.*"})["answers"];
    EXPECT_EQ(answers[0]["places"], json::parse(R"([{"fblock_id": 34, "fblock": "AudioAmp",
        "function_id": 275, "function": "Mute", "what": "bit 0 of Mute, muted / audible"}])"));
    EXPECT_EQ(answers[1]["places"][1], json::parse(R"({"fblock_id": 34, "fblock": "AudioAmp",
        "function_id": 1024, "function": "Volume", "op_type": 2, "operation": "SetGet"})"));
    EXPECT_EQ(answers[2]["places"], json::array());
    EXPECT_EQ(answers[2]["nearest"].size(), 3U);
}

}  // namespace
}  // namespace tarvex::test::show_json_test
