/// Identifiers of messages, their order, and operations that share an identifier. Block, function and OPType
/// are packed as 0xBBFFFT. IDs that no catalog file may have are put into the tree by hand.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "export/conversion.h"

namespace tarvex::test::exporter_identifiers_test {
namespace {

using Names = std::vector<std::string>;

struct IdentifierCase {
    const char* fBlockID;
    const char* fktID;
    const char* operation;
    std::uint32_t identifier;
};
constexpr IdentifierCase kIdentifiers[] = {
    {"0x22", "0x400", "<PReportStatus/>", 0x22400C}, {"0x22", "0x400", "<PCmdSet/>", 0x224000},
    {"0xAB", "0xCDE", "<PCmdDecrement/>", 0xABCDE4}, {"0x00", "0x000", "<PCmdSet/>", 0x000000},
    {"0x00", "0x000", "<PCmdGet/>", 0x000001},       {"0x01", "0x001", "<PReportInterface/>", 0x01001E},
    {"0xFF", "0xFFF", "<PReportError/>", 0xFFFFFF},  {"34", "1024", "<PReportStatus/>", 0x22400C},
};

TEST(Identifier, PacksBlockFunctionAndOpType) {
    for (const IdentifierCase& row : kIdentifiers) {
        for (const bool extended : {false, true}) {
            SCOPED_TRACE(testing::Message() << std::hex << row.identifier << (extended ? " extended" : ""));
            Conversion conversion(Block(row.fBlockID, "Amp", Property(row.fktID, "Volume", row.operation)));
            conversion.flags.makeExtended = extended;
            const nlohmann::json messages = conversion.Database()["messages"];
            ASSERT_EQ(messages.size(), 1U);
            EXPECT_EQ(messages[0]["identifier"], row.identifier);
            EXPECT_EQ(messages[0]["extended"], extended);
        }
    }
}

TEST(MessageOrder, IsByBlockThenFunctionThenOpType) {
    const Conversion conversion(
        Block("0x40", "Tuner",
              Property("0x200", "Zone", "<PReportStatus/><PCmdGet/><PCmdSet/>") +
                  Method("0x100", "Abc", "<MReportError/><MCmdStartResult/>")) +
        Block("0x01", "Zulu", Property("0xFFF", "Last") + Property("0x000", "First")));
    EXPECT_EQ(NamesIn(conversion.Database()["messages"]),
              (Names{"Zulu_First_Get", "Zulu_Last_Get", "Tuner_Abc_StartResult", "Tuner_Abc_Error",
                     "Tuner_Zone_Set", "Tuner_Zone_Get", "Tuner_Zone_Status"}));
}

/// A property without operations that is put into a block.
ZMTFunction& PutFunction(ZMTFBlock& block, const std::string& name, std::uint32_t fktID) {
    auto function = std::make_unique<ZMTFunction>("", fktID);
    function->SetName(name);
    function->SetClass(ClassKind::Property);
    function->SetParent(&block);
    ZMTFunction& result = *function;
    block.SetAt(std::move(function), fktID);
    return result;
}

void PutOperation(ZMTFunction& function, const std::string& name, unsigned opType, unsigned slot) {
    auto operation = std::make_unique<ZMTOperation>(ClassKind::Unknown, opType);
    operation->SetName(name);
    operation->SetParent(&function);
    function.SetAt(std::move(operation), slot);
}

struct WideCase {
    std::uint32_t fktID;
    unsigned opType;
    std::uint32_t identifier;
};
constexpr WideCase kWideIds[] = {
    {0x1234, 0x1F, 0x23234F},
    {0xC234, 0x80, 0x232340},  // bits that the block's 0x23 and the function's 0x234 leave clear
    {0xF000, 0xF1, 0x230001},
};

TEST(Identifier, TakesTheLowBitsOfFunctionIdAndOpType) {
    for (const WideCase& row : kWideIds) {
        for (const bool extended : {false, true}) {
            SCOPED_TRACE(testing::Message() << std::hex << row.fktID << " " << row.opType);
            Conversion conversion(Block("0x23", "Amp"));
            PutOperation(PutFunction(*conversion.Catalog().GetAt(0x23), "Wide", row.fktID), "Far", row.opType,
                         0);
            conversion.flags.makeExtended = extended;
            const nlohmann::json message = MessageNamed(conversion.Database(), "Amp_Wide_Far");
            EXPECT_EQ(message["identifier"], row.identifier);
            EXPECT_EQ(message["extended"], extended);
            EXPECT_EQ(message["attributes"]["OpType"], "NDef");
            EXPECT_EQ(message["attributes"]["FunctionClass"], "Property");
        }
    }
}

struct SharedCase {
    const char* what;
    unsigned slotOfSixteen;  // where OPType 0x10 stands; OPType 0x00 stands in slot 1
    Names messages;
};

TEST(SharedIdentifier, FirstOperationOfAFunctionWins) {
    const SharedCase kShared[] = {
        {"0x00 first", 2, {"Amp_Mode_Zero"}},
        {"0x10 first", 0, {"Amp_Mode_Sixteen"}},
    };
    for (const SharedCase& row : kShared) {
        SCOPED_TRACE(row.what);
        Conversion conversion(Block("0x22", "Amp"));
        ZMTFBlock& block = *conversion.Catalog().GetAt(0x22);
        block.Clear();
        ZMTFunction& function = PutFunction(block, "Mode", 0x200);
        PutOperation(function, "Zero", 0x00, 1);
        PutOperation(function, "Sixteen", 0x10, row.slotOfSixteen);
        const nlohmann::json messages = conversion.Database()["messages"];
        EXPECT_EQ(NamesIn(messages), row.messages);
        EXPECT_EQ(messages[0]["identifier"], 0x222000);
    }
}

TEST(SharedIdentifier, SkippedOperationTakesNoNameAndReportsNothing) {
    Conversion conversion(Block("0x22", "Amp"));
    ZMTFBlock& block = *conversion.Catalog().GetAt(0x22);  // with "Volume" (0x400) and its "Get" (1)
    PutOperation(PutFunction(block, "Volume", 0x1400), "Get", 1, 1);  // the same identifier
    PutOperation(PutFunction(block, "Volume", 0x1401), "Get", 1, 1);
    testing::internal::CaptureStdout();
    const nlohmann::json messages = conversion.Database()["messages"];
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(NamesIn(messages), (Names{"Amp_Volume_Get", "Amp_Volume_Get00"}));
    EXPECT_EQ(messages[1]["identifier"], 0x224011);
}

}  // namespace
}  // namespace tarvex::test::exporter_identifiers_test
