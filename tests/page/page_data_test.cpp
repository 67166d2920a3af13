/// The data of pages.

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "page/page.h"
#include "page/page_of.h"
#include "page/unpacked_page.h"
#include "support/catalog_import.h"

namespace tarvex::test::page_data_test {
namespace {

using nlohmann::json;

std::map<std::string, json> PiecesOfParams(const std::string& params) {
    return PiecesOf(PageOf(CatalogOfParams(params)));
}

/// A type element and what the page says of a parameter "P" with it, but for its name.
struct Kind {
    const char* type;
    const char* data;
};

class PageParameter : public testing::TestWithParam<Kind> {};

TEST_P(PageParameter, IsToldInWords) {
    json expected = json::parse(GetParam().data);
    expected["name"] = "P";
    const auto pieces = PiecesOfParams(Param("P", GetParam().type));
    EXPECT_EQ(pieces.at("functions-0")["params"], json::array({expected}));
}

constexpr Kind kKinds[] = {
    {R"(<TNumber><BasisDataType><TSByte TypeRef="type_signed_byte"/></BasisDataType><Exponent>-1</Exponent>
        <RangeMin>-50</RangeMin><RangeMax>50</RangeMax><Step>1</Step><Unit UnitRef="unit_km_h"/></TNumber>)",
     R"({"kind": "number", "type": "signed number", "length": "1 byte", "range": "-50..50", "step": "1",
         "exponent": -1, "unit": "km/h"})"},
    {R"(<TEnum TypeRef="type_enum" TEnumMax="3"><TEnumValue Code="0x01">on</TEnumValue>
        <TEnumValue Code="0x02">off</TEnumValue></TEnum>)",
     R"({"kind": "enumeration", "type": "enumeration", "length": "1 byte",
         "values": ["0x01", "on", "", "0x02", "off", ""]})"},
    {R"(<TBool TypeRef="type_bool"><TBoolField BitPos="0"><BitTrueDesc>yes</BitTrueDesc>
        <BitFalseDesc>no</BitFalseDesc></TBoolField></TBool>)",
     R"({"kind": "boolean", "type": "boolean", "length": "1 byte, 8 bits used",
         "bits": [[0, "", "yes", "no"]]})"},
    {R"(<TString TypeRef="type_string" MaxSize="8"/>)",
     R"({"kind": "string", "type": "string", "length": "open, at most 8 bytes"})"},
};

INSTANTIATE_TEST_SUITE_P(All, PageParameter, testing::ValuesIn(kKinds));

const char* const kSetAndStatus =
    "<PCmdSet><ParamPos>1</ParamPos></PCmdSet><PReportStatus><ParamPos>1</ParamPos></PReportStatus>";
const char* const kByte =
    R"(<TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType><Exponent>-1</Exponent>
       <RangeMin>0</RangeMin><RangeMax>20</RangeMax><Step>0.5</Step><Unit UnitRef="unit_none"/></TNumber>)";

TEST(PageData, HasWhatLooksAlikeOnce) {
    const auto pieces = PiecesOfParams(Param("Level", kByte, kSetAndStatus));
    const json& function = pieces.at("functions-0")["functions"][0];
    EXPECT_EQ(function["params"], json::array({0}));
    EXPECT_EQ(function["operations"], json::parse(R"([
        {"opType": 0, "positions": [1], "message": "Amp_Volume_Set", "identifier": 2244608, "look": 0},
        {"opType": 12, "positions": [1], "message": "Amp_Volume_Status", "identifier": 2244620, "look": 0}])"));
    // Letters, name, start bit, length, flags (big-endian), multiplexor, factor, unit, range, runs of bits.
    EXPECT_EQ(function["looks"], json::parse(R"([{"bytes": 1,
        "signals": [["A", "Level", 7, 8, 1, 0, 0.1, "", 0, 20, [0, 8]]]}])"));
}

TEST(PageData, HasTheListsOfFunctionsAlone) {
    const auto pieces = PiecesOfParams(Param("Level", kByte, kSetAndStatus));
    EXPECT_EQ(pieces.at("functions"), json::parse(R"([{"ids": [1024], "names": ["Volume"], "classes": [0],
        "opTypes": [4097], "faults": [0], "incomplete": [0], "pieces": [0, 1]}])"));
    const json& overview = pieces.at("overview");
    EXPECT_EQ(overview["file"], "Cat.xml");
    EXPECT_EQ(overview["classes"], json::parse(R"([["property", "PUnclassified"]])"));
    EXPECT_EQ(overview["blocks"], json::parse(R"([{"id": 34, "name": "Amp"}])"));
    EXPECT_EQ(overview["search"], json::array({"block", "function", "message", "parameter", "signal"}));
    EXPECT_EQ(overview["operationNames"]["method"][0], "Start");
}

/// The catalog with another text instead.
std::string Replaced(std::string catalog, std::string_view text, std::string_view other) {
    return catalog.replace(catalog.find(text), text.size(), other);
}

TEST(PageData, HasNamesAsTheCatalogWritesThem) {
    std::string catalog = Replaced(CatalogOfParams(Param("Level", kByte)), "Amp<", "音声アンプ<");
    catalog = Replaced(std::move(catalog), "Volume<", "Laut &amp; leise<");
    const auto pieces = PiecesOf(PageOf(catalog));
    EXPECT_EQ(pieces.at("overview")["blocks"],
              json::parse(R"([{"id": 34, "name": "音声アンプ", "databaseName": ""}])"));
    EXPECT_EQ(pieces.at("functions")[0]["names"], json::array({"Laut & leise"}));
    // Behind the place of the function.
    EXPECT_EQ(pieces.at("functions")[0]["databaseNames"], json::parse(R"([0, "Laut__leise"])"));
    EXPECT_EQ(pieces.at("search-0")["lines"], "音声アンプ");
    EXPECT_EQ(pieces.at("search-1")["lines"], "Laut & leise\nLaut__leise");
}

TEST(PageData, HasOneNameWhereASearchSeesNoDifference) {
    const auto pieces =
        PiecesOf(PageOf(Replaced(CatalogOfParams(Param("Level", kByte)), "Volume<", "Vol 1<")));
    EXPECT_EQ(pieces.at("functions")[0]["databaseNames"], json::parse(R"([0, "Vol_1"])"));
    EXPECT_EQ(pieces.at("search-1")["lines"], "Vol 1");
}

TEST(PageData, HasTheBeginningsOfDescriptionsInAPieceOfTheirBlock) {
    std::string letters;
    for (int count = 0; count < 161; ++count) {
        letters += "ж";
    }
    const auto pieces = PiecesOf(
        PageOf(Replaced(CatalogOfParams(Param("Level", kByte)), "</FunctionName>",
                        "</FunctionName><FunctionDescription>" + letters + "</FunctionDescription>")));
    EXPECT_EQ(pieces.at("overview")["blocks"][0]["descriptions"], "descriptions-0");
    EXPECT_EQ(pieces.at("descriptions-0"), json::array({letters.substr(0, 320) + "\u2026"}));
    EXPECT_EQ(pieces.at("functions-0")["functions"][0]["description"], letters);
}

TEST(PageData, TellsWhatItsNumbersStandFor) {
    const auto pieces = PiecesOfParams(Param("Level", kByte));
    const json& overview = pieces.at("overview");
    EXPECT_EQ(overview["layouts"], json::parse(R"(["complete", "open", "incomplete"])"));
    EXPECT_EQ(overview["signalFlags"], json::parse(R"({"isBigEndian": 1, "isSigned": 2, "isMultiplexor": 4,
        "isMultiplexed": 8})"));
    EXPECT_EQ(overview["placesOfFunction"], 17);
}

TEST(PageData, HasPositionsAsTheCatalogCountsThem) {
    const auto at = [](const char* position) {
        return "<PReportStatus><ParamPos>" + std::string(position) + "</ParamPos></PReportStatus>";
    };
    const auto pieces = PiecesOfParams(Param("First", kByte, at("0")) + Param("Third", kByte, at("3")) +
                                       Param("Other", kByte, "<PCmdSet><ParamPos>2</ParamPos></PCmdSet>"));
    const json& operations = pieces.at("functions-0")["functions"][0]["operations"];
    // Parameters as they come up: Other in Set, First and Third in Status.
    EXPECT_EQ(operations[0]["positions"], json::parse("[2, null, null]"));
    EXPECT_EQ(operations[1]["positions"], json::parse("[null, 0, 3]"));
}

TEST(PageData, HasFaultsAtWhatTheyAreAbout) {
    // The number lacks its step, and the string lacks its length in one operation.
    const std::string level =
        R"(<TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType><Exponent>0</Exponent>
           <RangeMin>0</RangeMin><RangeMax>20</RangeMax><Unit UnitRef="unit_none"/></TNumber>)";
    const auto pieces = PiecesOfParams(Param("Level", level) + Param("Lost", "<TNothing/>"));
    const json& function = pieces.at("functions-0")["functions"][0];
    ASSERT_GE(function["faults"].size(), 2U);
    const json& first = function["faults"][0];
    EXPECT_EQ(first["kind"], "warning");
    EXPECT_EQ(first["number"], 70);
    EXPECT_EQ(first["path"], "/Amp/Volume/Level");
    EXPECT_EQ(first["param"], 0);
    EXPECT_FALSE(function["faults"][1].contains("param"));
    EXPECT_EQ(pieces.at("overview")["blocks"][0]["faults"], function["faults"].size());
    EXPECT_EQ(pieces.at("functions")[0]["faults"][0], function["faults"].size());
}

TEST(PageData, TellsOfFaultsOutsideOfFunctions) {
    constexpr std::string_view kEnd = "</FBlock>";
    std::string catalog = CatalogOfParams(Param("Level", kByte));
    catalog.replace(catalog.find(kEnd), kEnd.size(),
                    "<Function><FunctionID>0x9999</FunctionID></Function></FBlock>"
                    "<FBlock><FBlockID>0x22</FBlockID><FBlockName>Again</FBlockName></FBlock>");
    const auto pieces = PiecesOf(PageOf(catalog));
    const json& overview = pieces.at("overview");
    ASSERT_TRUE(overview["blocks"][0].contains("ownFaults"));
    EXPECT_FALSE(pieces.at(overview["blocks"][0]["ownFaults"].get<std::string>()).empty());
    ASSERT_TRUE(overview.contains("otherFaults"));
    EXPECT_FALSE(pieces.at(overview["otherFaults"].get<std::string>()).empty());
    EXPECT_EQ(overview["lostFunctions"], 1);
    EXPECT_EQ(overview["lostBlocks"], 1);
}

}  // namespace
}  // namespace tarvex::test::page_data_test
