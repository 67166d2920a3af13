/// Messages: which operation they belong to, and what of them could be read.

#include "disasm/decoded_message.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::decoded_message_test {
namespace {

struct KnownRow {
    CapturedMessage message;
    const char* names;
    const char* fault;
};

std::string NamesOf(const DecodedMessage& decoded) {
    std::string names;
    names += decoded.block == nullptr ? "-" : decoded.block->GetName();
    names += decoded.function == nullptr ? ".-" : "." + decoded.function->GetName();
    return names + (decoded.operation == nullptr ? ".-" : "." + decoded.operation->GetName());
}

TEST(DecodedMessage, UnknownIdentifiersAreFaults) {
    const KnownRow rows[] = {
        {{0x22, 0x01, 0x400, 0xC, {5}}, "Amp.Volume.Status", ""},
        {{0x22, 0xFF, 0x400, 0xC, {5}}, "Amp.Volume.Status", ""},
        {{0x22, 0x01, 0x400, 0x0, {5}}, "Amp.Volume.-", "unknown operation 0x0"},
        {{0x22, 0x01, 0x400, 0xF, {}}, "Amp.Volume.-", "unknown operation 0xF"},
        {{0x22, 0x01, 0x401, 0xC, {5}}, "Amp.-.-", "unknown function 0x401"},
        {{0x22, 0x01, 0xFFF, 0xC, {}}, "Amp.-.-", "unknown function 0xFFF"},
        {{0x23, 0x01, 0x400, 0xC, {5}}, "-.-.-", "unknown function block 0x23"},
        {{0xFF, 0x01, 0x400, 0xC, {}}, "-.-.-", "unknown function block 0xFF"},
    };
    const Decoding decoding({{"Level", kUByte}});
    for (const KnownRow& row : rows) {
        SCOPED_TRACE(row.names);
        const auto decoded = decoding.Decode(row.message);
        EXPECT_EQ(NamesOf(*decoded), row.names);
        EXPECT_EQ(decoded->faults,
                  *row.fault == '\0' ? std::vector<std::string>() : std::vector<std::string>{row.fault});
        EXPECT_EQ(decoded->items.Items().empty(), decoded->operation == nullptr);
    }
}

/// A block of functions, each of these parameter elements of that class.
struct FunctionOf {
    const char* id;
    const char* functionClass;
    std::string params;
    const char* attributes = "";
};

std::string BlockOfFunctions(const std::vector<FunctionOf>& functions) {
    std::string xml;
    for (const FunctionOf& function : functions) {
        xml += "<Function " + std::string(function.attributes) + "><FunctionID>" + function.id +
               "</FunctionID><FunctionName>F" + function.id + "</FunctionName><FunctionClass><Property><" +
               function.functionClass + ">" + function.params + "</" + function.functionClass +
               "></Property></FunctionClass></Function>";
    }
    return BlockOf(xml);
}

/// What a function may have had in any of its operations is told of those that are not there.
TEST(DecodedMessage, OperationsOfFunctionsThatLostParametersAreNotJustUnknown) {
    const std::string anywhere = "<PUParam><ParamName>A</ParamName>" + kUByte + "</PUParam>";
    const std::string nowhere = "<ERParam ParamDefId=\"e\"><ParamName>E</ParamName>" + kVoid + "</ERParam>";
    const Decoding decoding(CatalogOf(
        nowhere +
        BlockOfFunctions({{"1", "PUnclassified", Param("S", kUByte) + anywhere, "FktDefId=\"f\""},
                          {"2", "PUnclassified", Param("S", kUByte) + "<ERParam ParamDefRef=\"e\"/>"},
                          {"3", "PSequence", ""},
                          {"4", "PNone", ""},
                          {"5", "PUnclassified", Param("S", kUByte)}}) +
        "<FBlock><FBlockID>0x23</FBlockID><FBlockName>Copy</FBlockName><Function "
        "FktDefRef=\"f\"/></FBlock>"));
    struct LostRow {
        std::uint8_t block;
        std::uint16_t function;
        const char* fault;
    };
    constexpr LostRow kRows[] = {
        {0x22, 1, "unknown operation 0x0; the function has lost parameters (message 135)"},
        {0x22, 2, "unknown operation 0x0; the function has lost parameters (message 135)"},
        {0x22, 3, "unknown operation 0x0; the function has lost parameters (message 150)"},
        {0x22, 4, "unknown operation 0x0; the function has lost parameters (message 150)"},
        {0x22, 5, "unknown operation 0x0"},
        {0x23, 1, "unknown operation 0x0; the function has lost parameters (message 135)"},
    };
    for (const LostRow& row : kRows) {
        SCOPED_TRACE(row.function);
        const auto decoded = decoding.Decode(
            {.fBlockID = row.block, .instID = 0, .fktID = row.function, .opType = 0, .data = {1}});
        EXPECT_EQ(decoded->faults, std::vector<std::string>{row.fault});
    }
}

/// A copy that has no place in its block had the number of its original.
TEST(DecodedMessage, CopiesThatWereRefusedAreToldByTheNumberOfTheirOriginal) {
    const std::string status = Param("S", kUByte);
    const Decoding decoding(
        CatalogOf(BlockOfFunctions({{"1", "PUnclassified", status, "FktDefId=\"f\""}}) +
                  "<FBlock><FBlockID>0x23</FBlockID><FBlockName>Copy</FBlockName><Function>"
                  "<FunctionID>9</FunctionID><FunctionName>F1</FunctionName><FunctionClass><Property>"
                  "<PUnclassified>" +
                  status +
                  "</PUnclassified></Property></FunctionClass></Function><Function FktDefRef=\"f\">"
                  "<FunctionID>8</FunctionID></Function><Function FktDefRef=\"g\"><FunctionID>7</FunctionID>"
                  "</Function></FBlock>"));
    const std::pair<std::uint16_t, const char*> rows[] = {
        {1, "the catalog has function 0x001, but it could not be imported (message 109)"},
        {7, "the catalog has function 0x007, but it could not be imported (message 106)"},
        {8, "unknown function 0x008"},
    };
    for (const auto& [function, fault] : rows) {
        const auto decoded =
            decoding.Decode({.fBlockID = 0x23, .instID = 0, .fktID = function, .opType = 12, .data = {1}});
        EXPECT_EQ(decoded->faults, std::vector<std::string>{fault});
    }
}

struct CutRow {
    std::string type;
    const char* bytes;
    const char* shown;
};

/// What every kind of parameter says when its bytes end too early.
TEST(DecodedMessage, EveryKindTellsWhatItMisses) {
    const CutRow rows[] = {
        {kUByte, "", "!byte 0: P needs 1 byte, 0 are left"},
        {kUWord, "01", "!byte 0: P needs 2 bytes, 1 is left"},
        {kULong, "01 02 03", "!byte 0: P needs 4 bytes, 3 are left"},
        {kSwitch, "", "!byte 0: P needs 1 byte, 0 are left"},
        {Text("9"), "", "!byte 0: P needs 1 byte, 0 are left"},
        {Bits(8), "", "!byte 0: P needs 1 byte, 0 are left"},
        {Bits(9), "01", "!byte 0: P needs 2 bytes, 1 is left"},
        {R"(<TBool TypeRef="type_bool"/>)", "", "!byte 0: P needs 1 byte, 0 are left"},
        {Array("3", "E", kUWord), "01 02 03", "P@0+2=<[1]E@0+2=258> !byte 2: E needs 2 bytes, 1 is left"},
        {Record({{"A", kUByte}, {"B", kULong}}), "01 02 03",
         "P@0+1=<A@0+1=1> !byte 1: B needs 4 bytes, 2 are left"},
        {Stream(Case("#NULL#", "1", {{"1", "A", kUByte}, {"2", "B", kUWord}})), "01 02",
         "P@0+1={StreamCase}<A@0+1=1> !byte 1: B needs 2 bytes, 1 is left"},
    };
    for (const CutRow& row : rows) {
        SCOPED_TRACE(row.shown);
        // The parameter behind it is not read, and nothing is left over.
        EXPECT_EQ(Decoding({{"P", row.type}, {"Z", kUByte}}).Shown(row.bytes), row.shown);
    }
}

TEST(DecodedMessage, OperationWithoutDataTakesNone) {
    const Decoding decoding(CatalogOfParams(Param("", kVoid, "<PCmdGet/>")));
    const auto get =
        decoding.Decode({.fBlockID = 0x22, .instID = 0, .fktID = 0x400, .opType = 1, .data = {}});
    EXPECT_EQ(Shown(*get), "{Void}@0+0=");
    const auto more =
        decoding.Decode({.fBlockID = 0x22, .instID = 0, .fktID = 0x400, .opType = 1, .data = {5, 6}});
    EXPECT_EQ(Shown(*more), "{Void}@0+0= !byte 0: 2 bytes left over");
}

TEST(DecodedMessage, ItemsKeepACopyOfTheirBytes) {
    const Decoding decoding({{"A", kUWord}, {"B", kUByte}});
    CapturedMessage message{
        .fBlockID = 0x22, .instID = 0, .fktID = 0x400, .opType = 0xC, .data = BytesOf("01 02 03")};
    const auto decoded = decoding.Decode(message);
    message.data.assign(3, 0xFF);
    EXPECT_EQ(Shown(*decoded), "A@0+2=258 B@2+1=3");
}

}  // namespace
}  // namespace tarvex::test::decoded_message_test
