/// Which faults of a function are about its operations and its parameters.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "page/page_of.h"
#include "page/unpacked_page.h"
#include "support/catalog_import.h"

namespace tarvex::test::fault_places_test {
namespace {

using nlohmann::json;

/// Each fault of the only function: its number, and where it stands.
std::vector<std::string> PlacesOf(const std::string& params) {
    const auto pieces = PiecesOf(PageOf(CatalogOfParams(params)));
    const json& function = pieces.at("functions-0")["functions"][0];
    std::vector<std::string> places;
    for (const json& fault : function["faults"]) {
        std::string place = fault["number"].dump();
        place += fault.contains("param") ? " param " + fault["param"].dump() : "";
        place += fault.contains("opType") ? " opType " + fault["opType"].dump() : "";
        places.push_back(place);
    }
    return places;
}

std::string At(const char* operation, const char* position) {
    const std::string name = operation;
    return "<" + name + "><ParamPos>" + position + "</ParamPos></" + name + ">";
}

const char* const kByte =
    R"(<TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType><Exponent>0</Exponent>
       <RangeMin>0</RangeMin><RangeMax>20</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/></TNumber>)";
const char* const kWithoutUnit =
    R"(<TNumber><BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType><Exponent>0</Exponent>
       <RangeMin>0</RangeMin><RangeMax>20</RangeMax><Step>1</Step><Unit UnitRef="unit_nowhere"/></TNumber>)";
const char* const kSameCodes =
    R"(<TEnum TypeRef="type_enum" TEnumMax="3"><TEnumValue Code="0x01">on</TEnumValue>
       <TEnumValue Code="0x01">off</TEnumValue></TEnum>)";
const char* const kRecord =
    R"(<TRecord TypeRef="type_record" NElements="1"><TRecordField FieldIdx="1">
       <TRecordFieldName>Entry</TRecordFieldName><TString TypeRef="type_string" MaxSize="4"/></TRecordField>
       </TRecord>)";
const char* const kWord =
    R"(<TNumber><BasisDataType><TUWord TypeRef="type_unsigned_word"/></BasisDataType><Exponent>0</Exponent>
       <RangeMin>0</RangeMin><RangeMax>9</RangeMax><Step>1</Step><Unit UnitRef="unit_none"/></TNumber>)";

struct Row {
    const char* what;
    std::string params;
    std::vector<std::string> places;
};

TEST(FaultPlaces, AreTheElementsThatFaultsStandIn) {
    const std::string first = At("PReportStatus", "1");
    const std::string second = At("PReportStatus", "2");
    const Row rows[] = {
        {"a value of a parameter that is called like its operation",
         Param("Status", kSameCodes, first) + Param("Level", kByte, second),
         {"85 param 0"}},
        {"a lost parameter that is called like an operation",
         Param("Status", kWithoutUnit, first) + Param("Level", kByte, second),
         {"152", "129", "102 opType 12"}},
        {"what an operation lacks that another one has",
         Param("Pos", kWord, first) + Param("Data", kRecord, At("PCmdSet", "1") + second),
         {"57 opType 0", "122"}},
        {"the second of two parameters of one name",
         Param("X", kByte, first) + Param("X", kWord, second),
         {"9 param 1"}},
        {"a parameter of which databases have no name", Param("音量", kSameCodes, first), {"85 param 0"}},
        {"a gap in front of one", Param("音量", kByte, second), {"102 opType 12"}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PlacesOf(row.params), row.places) << row.what;
    }
}

}  // namespace
}  // namespace tarvex::test::fault_places_test
