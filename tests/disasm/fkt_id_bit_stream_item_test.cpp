/// Function-ID bit streams: the functions that a block offers.

#include "disasm/fkt_id_bit_stream_item.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::fkt_id_bit_stream_item_test {
namespace {

/// A catalog whose function 0x000 has these parameters in its "Status".
Decoding FktIDs(std::string_view params) {
    std::string xml =
        "<Function><FunctionID>0x000</FunctionID><FunctionName>FktIDs</FunctionName><FunctionClass>"
        "<Property><PUnclassified>";
    xml.append(params).append("</PUnclassified></Property></FunctionClass></Function>");
    return Decoding(CatalogOf(BlockOf(xml)));
}

std::string At(int pos) {
    return "<PReportStatus><ParamPos>" + std::to_string(pos) + "</ParamPos></PReportStatus>";
}

std::unique_ptr<DecodedMessage> Decode(const Decoding& decoding, std::string_view hex) {
    return decoding.Decode({.fBlockID = 0x22, .instID = 0, .fktID = 0, .opType = 0xC, .data = BytesOf(hex)});
}

std::string ListType() {
    return Stream(Case("#NULL#", "#NULL#", {}));
}

struct IDsRow {
    const char* bytes;
    const char* shown;
};
constexpr IDsRow kLists[] = {
    {"", "FktIDs@0+0="},
    {"00", "FktIDs@0+1="},
    {"00 00 00", "FktIDs@0+3="},
    // One.
    {"80", "FktIDs@0+1=000"},
    {"40", "FktIDs@0+1=001"},
    {"01", "FktIDs@0+1=007"},
    {"00 80", "FktIDs@0+2=008"},
    {"00 01", "FktIDs@0+2=00F"},
    // Two.
    {"C0", "FktIDs@0+1=000, 001"},
    {"03", "FktIDs@0+1=006, 007"},
    {"01 80", "FktIDs@0+2=007, 008"},
    // Three and more.
    {"E0", "FktIDs@0+1=000..002"},
    {"07", "FktIDs@0+1=005..007"},
    {"03 80", "FktIDs@0+2=006..008"},
    {"01 FF 80", "FktIDs@0+3=007..010"},
    {"FF", "FktIDs@0+1=000..007"},
    {"FF FF", "FktIDs@0+2=000..00F"},
    {"00 07", "FktIDs@0+2=00D..00F"},
    // Several runs.
    {"A0", "FktIDs@0+1=000, 002"},
    {"AA", "FktIDs@0+1=000, 002, 004, 006"},
    {"D8", "FktIDs@0+1=000, 001, 003, 004"},
    {"EE", "FktIDs@0+1=000..002, 004..006"},
    {"9B", "FktIDs@0+1=000, 003, 004, 006, 007"},
    {"E1 C1", "FktIDs@0+2=000..002, 007..009, 00F"},
};

TEST(FktIDBitStreamItem, ListsTheFunctionsWhoseBitsAreSet) {
    const Decoding decoding = FktIDs(Param("FktIDList", ListType()));
    for (const IDsRow& row : kLists) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(Shown(*Decode(decoding, row.bytes)), row.shown);
    }
}

struct FarRow {
    std::size_t zeros;
    const char* bytes;
    const char* text;
};
constexpr FarRow kFar[] = {
    {0x20, "80", "100"}, {0x20, "FF FF", "100..10F"}, {511, "01", "FFF"},        {511, "03", "FFE, FFF"},
    {512, "80", "1000"}, {65534, "01", "7FFF7"},      {31, "01 80", "0FF, 100"},
};

TEST(FktIDBitStreamItem, IdentifiersGoOnAsFarAsTheMessage) {
    const Decoding decoding = FktIDs(Param("FktIDList", ListType()));
    for (const FarRow& row : kFar) {
        SCOPED_TRACE(row.text);
        std::string bytes;
        for (std::size_t i = 0; i < row.zeros; ++i) {
            bytes += "00";
        }
        const auto decoded = Decode(decoding, bytes + row.bytes);
        ASSERT_EQ(decoded->items.Items().size(), 1U);
        EXPECT_EQ(decoded->items.Items()[0]->GetText(), row.text);
        EXPECT_EQ(decoded->items.Items()[0]->GetType(), kParamFktIDBitStream);
        EXPECT_TRUE(decoded->faults.empty());
    }
}

TEST(FktIDBitStreamItem, AllFunctionsAreOneRun) {
    const Decoding decoding = FktIDs(Param("FktIDList", ListType()));
    std::string bytes;
    for (int i = 0; i < 512; ++i) {
        bytes += "FF";
    }
    EXPECT_EQ(Shown(*Decode(decoding, bytes)), "FktIDs@0+512=000..FFF");
}

constexpr IDsRow kRests[] = {
    {"05 80", "Number@0+1=5 FktIDs@1+1=000"},
    {"05", "Number@0+1=5 FktIDs@1+0="},
    {"", "!byte 0: Number needs 1 byte, 0 are left"},
};

TEST(FktIDBitStreamItem, TakesWhatIsLeft) {
    const Decoding decoding = FktIDs(Param("Number", kUByte, At(1)) + Param("FKTIDs", ListType(), At(2)));
    for (const IDsRow& row : kRests) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(Shown(*Decode(decoding, row.bytes)), row.shown);
    }
}

TEST(FktIDBitStreamItem, LeavesNothingForAParameterBehindIt) {
    const Decoding decoding = FktIDs(Param("FktIDs", ListType(), At(1)) + Param("Number", kUByte, At(2)));
    EXPECT_EQ(Shown(*Decode(decoding, "80 05")),
              "FktIDs@0+2=000, 00D, 00F !byte 2: Number needs 1 byte, 0 are left");
}

}  // namespace
}  // namespace tarvex::test::fkt_id_bit_stream_item_test
