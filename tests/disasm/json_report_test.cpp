/// The report for programs: a JSON object for each line.

#include "disasm/json_report.h"

#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "disasm/decoding.h"
#include "params/kind_name.h"
#include "support/param_kinds.h"

namespace tarvex::test::json_report_test {
namespace {

std::string ReportOf(const Decoding& decoding, const CapturedMessage& message, std::string file = "") {
    std::string out;
    JsonReport().Message({.file = std::move(file), .number = 7}, message, *decoding.Decode(message), out);
    return out;
}

CapturedMessage Status(std::string_view hex) {
    return {.fBlockID = 0x22, .instID = 1, .fktID = 0x400, .opType = 0xC, .data = BytesOf(hex)};
}

struct ItemRow {
    const char* what;
    std::vector<ParamOf> params;
    const char* bytes;
    const char* items;
};

TEST(JsonReport, EveryKindHasItsKeys) {
    const std::string bit =
        "<TBoolField BitPos=\"1\"><ParamName>Lid</ParamName><BitTrueDesc>open</BitTrueDesc>"
        "<BitFalseDesc>closed</BitFalseDesc></TBoolField>";
    const ItemRow rows[] = {
        {"number",
         {{"Speed", Number("type_unsigned_word", "-1", "unit_km_h")}},
         "01F4",
         R"({"name":"Speed","type":"number","offset":0,"bytes":"01F4","text":"50.0","raw":500,"unit":"km/h"})"},
        {"number without unit",
         {{"Gear", kUByte}},
         "FF",
         R"({"name":"Gear","type":"number","offset":0,"bytes":"FF","text":"255","raw":255})"},
        {"signed number",
         {{"Gear", kSByte}},
         "FF",
         R"({"name":"Gear","type":"number","offset":0,"bytes":"FF","text":"-1","raw":-1})"},
        {"large number",
         {{"Km", kULong}},
         "FFFFFFFF",
         R"({"name":"Km","type":"number","offset":0,"bytes":"FFFFFFFF","text":"4294967295","raw":4294967295})"},
        {"coordinates",
         {{"Pos", kUWord}},
         "0102",
         R"({"name":"Pos","type":"number","offset":0,"bytes":"0102","text":"PosX=1 PosY=2","raw":258})"},
        {"enumeration",
         {{"Mode", kSwitch}},
         "01",
         R"j({"name":"Mode","type":"enumeration","offset":0,"bytes":"01","text":"On (0x01)","raw":1,"value":"On"})j"},
        {"unnamed code",
         {{"Mode", kSwitch}},
         "09",
         R"({"name":"Mode","type":"enumeration","offset":0,"bytes":"09","text":"0x09","raw":9})"},
        {"string",
         {{"Title", Text("9")}},
         "01616200",
         R"({"name":"Title","type":"string","offset":0,"bytes":"01616200","text":"ab"})"},
        {"string with quotes",
         {{"Title", Text("9")}},
         "01225C5C",
         R"({"name":"Title","type":"string","offset":0,"bytes":"01225C5C","text":"\"\\\\ {NotTerm}"})"},
        {"bit field",
         {{"Flags", Bits(2, bit)}},
         "02",
         R"({"name":"Flags","type":"bit_field","offset":0,"bytes":"02","text":"","items":[)"
         R"({"name":"","type":"bit","offset":0,"text":"0","bit":0,"raw":0},)"
         R"({"name":"Lid","type":"bit","offset":0,"text":"open","bit":1,"raw":1}]})"},
        {"void",
         {{"Nothing", kVoid}},
         "",
         R"({"name":"Nothing","type":"void","offset":0,"bytes":"","text":""})"},
        {"array",
         {{"List", Array("3", "Entry", kUByte)}},
         "0506",
         R"({"name":"List","type":"array","offset":0,"bytes":"0506","text":"","items":[)"
         R"({"name":"Entry","entry":1,"type":"number","offset":0,"bytes":"05","text":"5","raw":5},)"
         R"({"name":"Entry","entry":2,"type":"number","offset":1,"bytes":"06","text":"6","raw":6}]})"},
        {"array without entries",
         {{"List", Array("3", "Entry", kUByte)}},
         "",
         R"({"name":"List","type":"array","offset":0,"bytes":"","text":"","items":[]})"},
        {"record",
         {{"Gear", kUByte}, {"Rec", Record({{"A", kUByte}})}},
         "0506",
         R"({"name":"Gear","type":"number","offset":0,"bytes":"05","text":"5","raw":5},)"
         R"({"name":"Rec","type":"record","offset":1,"bytes":"06","text":"","items":[)"
         R"({"name":"A","type":"number","offset":1,"bytes":"06","text":"6","raw":6}]})"},
        {"stream",
         {{"Mode", kUByte}, {"Body", Stream(Case("Mode", "3", {{"1", "A", kUByte}}))}},
         "0306",
         R"({"name":"Mode","type":"number","offset":0,"bytes":"03","text":"3","raw":3},)"
         R"j({"name":"Body","type":"stream","offset":1,"bytes":"06","text":"(Mode=0x03)","items":[)j"
         R"({"name":"A","type":"number","offset":1,"bytes":"06","text":"6","raw":6}]})"},
    };
    for (const ItemRow& row : rows) {
        SCOPED_TRACE(row.what);
        const Decoding decoding(row.params);
        EXPECT_EQ(ReportOf(decoding, Status(row.bytes)),
                  R"({"line":7,"message":"22.01.400.C","data":")" + std::string(row.bytes) +
                      R"(","function_block":"Amp","function":"Volume","operation":"Status","items":[)" +
                      row.items + "],\"errors\":[]}\n");
    }
}

TEST(JsonReport, BooleanHasEightBits) {
    std::string items;
    for (const char bit : std::string("01234567")) {
        const char value = bit == '7' ? '1' : '0';
        items += items.empty() ? "" : ",";
        items += std::string(R"({"name":"","type":"bit","offset":0,"text":")") + value + R"(","bit":)" + bit +
                 R"(,"raw":)" + value + "}";
    }
    const std::string boolean = R"(<TBool TypeRef="type_bool"/>)";
    const Decoding decoding({{"B", boolean}});
    EXPECT_EQ(
        ReportOf(decoding, Status("80")),
        R"({"line":7,"message":"22.01.400.C","data":"80","function_block":"Amp","function":"Volume",)"
        R"("operation":"Status","items":[{"name":"B","type":"boolean","offset":0,"bytes":"80","text":"",)"
        R"("items":[)" +
            items + "]}],\"errors\":[]}\n");
}

TEST(JsonReport, FunctionIDs) {
    const Decoding decoding(CatalogOf(
        BlockOf("<Function><FunctionID>0x000</FunctionID><FunctionName>FktIDs</FunctionName><FunctionClass>"
                "<Property><PUnclassified>" +
                Param("FktIDList", Stream(Case("#NULL#", "#NULL#", {}))) +
                "</PUnclassified></Property></FunctionClass></Function>")));
    EXPECT_EQ(
        ReportOf(decoding, {0x22, 0, 0, 0xC, {0xE0}}),
        R"({"line":7,"message":"22.00.000.C","data":"E0","function_block":"Amp","function":"FktIDs",)"
        R"("operation":"Status","items":[{"name":"FktIDs","type":"function_ids","offset":0,"bytes":"E0",)"
        R"("text":"000..002"}],"errors":[]})"
        "\n");
}

TEST(JsonReport, FaultsAreTexts) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(ReportOf(decoding, Status("")),
              R"({"line":7,"message":"22.01.400.C","data":"","function_block":"Amp","function":"Volume",)"
              R"("operation":"Status","items":[],"errors":["byte 0: Level needs 1 byte, 0 are left"]})"
              "\n");
}

TEST(JsonReport, UnknownNamesAreNull) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(ReportOf(decoding, {0x22, 1, 0x400, 2, {}}),
              R"({"line":7,"message":"22.01.400.2","data":"","function_block":"Amp","function":"Volume",)"
              R"("operation":null,"items":[],"errors":["unknown operation 0x2"]})"
              "\n");
    EXPECT_EQ(ReportOf(decoding, {0x22, 1, 0x401, 0xC, {}}),
              R"({"line":7,"message":"22.01.401.C","data":"","function_block":"Amp","function":null,)"
              R"("operation":null,"items":[],"errors":["unknown function 0x401"]})"
              "\n");
    EXPECT_EQ(ReportOf(decoding, {0x23, 1, 0x400, 0xC, {1}}),
              R"({"line":7,"message":"23.01.400.C","data":"01","function_block":null,"function":null,)"
              R"("operation":null,"items":[],"errors":["unknown function block 0x23"]})"
              "\n");
}

TEST(JsonReport, FileStandsFirst) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(
        ReportOf(decoding, Status("05"), "a \"b\".txt"),
        R"({"file":"a \"b\".txt","line":7,"message":"22.01.400.C","data":"05","function_block":"Amp",)"
        R"("function":"Volume","operation":"Status","items":[{"name":"Level","type":"number","offset":0,)"
        R"("bytes":"05","text":"5","raw":5}],"errors":[]})"
        "\n");
}

struct BadRow {
    const char* file;
    std::string line;
    std::string report;
};

TEST(JsonReport, BadLineIsAnObjectOfItsOwn) {
    const BadRow rows[] = {
        {"", "hello", R"({"line":7,"text":"hello","errors":["no valid FBlockID"]})"},
        {"a.txt", "hello", R"({"file":"a.txt","line":7,"text":"hello","errors":["no valid FBlockID"]})"},
        {"", "a\"b\\c", R"({"line":7,"text":"a\"b\\c","errors":["no valid FBlockID"]})"},
        {"", std::string("a\t\0b", 4), R"({"line":7,"text":"a..b","errors":["no valid FBlockID"]})"},
        {"", std::string(201, 'x'),
         R"({"line":7,"text":")" + std::string(200, 'x') + R"(...","errors":["no valid FBlockID"]})"},
    };
    for (const BadRow& row : rows) {
        SCOPED_TRACE(row.report);
        std::string out;
        JsonReport().BadLine({.file = row.file, .number = 7}, row.line, "no valid FBlockID", out);
        EXPECT_EQ(out, row.report + "\n");
    }
}

TEST(JsonReport, BytesThatAreNoTextStillGiveJson) {
    for (const std::string line : {"\xff\xfe", "\xc3", "a\xc3\xbc", "\xed\xa0\x80", "\x80"}) {
        SCOPED_TRACE(testing::PrintToString(line));
        for (const std::string& file : {std::string(), line}) {
            std::string out;
            JsonReport().BadLine({.file = file, .number = 1}, line, "half a data byte in '" + line + "'",
                                 out);
            const nlohmann::json parsed = nlohmann::json::parse(out, nullptr, false);
            ASSERT_TRUE(parsed.is_object()) << out;
            EXPECT_EQ(parsed.at("line"), 1);
            EXPECT_EQ(parsed.at("errors").size(), 1U);
        }
    }
}

TEST(JsonReport, LineIsNotCutInsideACharacter) {
    const std::string start(199, 'x');
    std::string out;
    JsonReport().BadLine({.file = "", .number = 1}, start + "\xc3\xbcyz", "no valid FBlockID", out);
    EXPECT_EQ(nlohmann::json::parse(out).at("text"), start + "...");
}

TEST(JsonReport, LineIsShownWithoutWhatIsNoText) {
    std::string out;
    JsonReport().BadLine({.file = "", .number = 1},
                         "a\x1B\xc2\x9b"
                         "b\xff\xc3\xbc",
                         "no valid FBlockID", out);
    EXPECT_EQ(nlohmann::json::parse(out).at("text"), "a..b.\xc3\xbc");
}

TEST(JsonReport, TypesAreDocumented) {
    const std::string document = ReadFile(TARVEX_DOCS "/disassembler.md");
    const std::size_t row = document.find("| `type` |");
    ASSERT_NE(row, std::string::npos);
    const std::string types = document.substr(row, document.find('\n', row) - row);
    for (const ParamKind kind : AllParamKinds()) {
        const bool isItem = kind != ParamKind::Base && kind != ParamKind::StreamCase;
        EXPECT_EQ(types.find("`" + std::string(KindName(kind)) + "`") != std::string::npos, isItem)
            << KindName(kind);
    }
}

}  // namespace
}  // namespace tarvex::test::json_report_test
