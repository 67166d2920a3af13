/// Function blocks: name and ID, which functions they hold, and what rejects them.

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "support/catalog_import.h"

namespace tarvex::test::fblock_test {
namespace {

/// A catalog of a block "Good" (1) and this "FBlock" element's content, with a function where it says "@F@".
std::unique_ptr<Imported> ImportBlock(std::string content) {
    if (const std::size_t at = content.find("@F@"); at != std::string::npos) {
        content.replace(at, 3, VoidFunction("0x100", "Version"));
    }
    return ImportText(CatalogOf("<FBlock><FBlockID>1</FBlockID><FBlockName>Good</FBlockName>" +
                                VoidFunction("0x100", "Version") + "</FBlock><FBlock>" + content +
                                "</FBlock>"));
}

struct RejectedCase {
    const char* what;
    const char* content;
    const char* message;
};
constexpr RejectedCase kRejected[] = {
    {"no name", "<FBlockID>2</FBlockID>@F@",
     R"(Error #0139 in '/Cat/':
  Can not find child element <FBlockName>
)"},
    {"empty name", "<FBlockID>2</FBlockID><FBlockName/>@F@",
     R"(Error #0139 in '/Cat/':
  Can not find child element <FBlockName>
)"},
    {"neither name nor ID", "@F@",
     R"(Error #0139 in '/Cat/':
  Can not find child element <FBlockName>
)"},
    {"name further down", "<Head><FBlockID>2</FBlockID><FBlockName>Amp</FBlockName></Head>@F@",
     R"(Error #0139 in '/Cat/':
  Can not find child element <FBlockName>
)"},
    {"no ID", "<FBlockName>Amp</FBlockName>@F@",
     R"(Error #0140 in '/Cat/Amp':
  Can not find child element <FBlockID>
)"},
    {"empty ID", "<FBlockName>Amp</FBlockName><FBlockID></FBlockID>@F@",
     R"(Error #0140 in '/Cat/Amp':
  Can not find child element <FBlockID>
)"},
    {"ID that is no number", "<FBlockName>Amp</FBlockName><FBlockID>Amp1</FBlockID>@F@",
     R"(Error #0141 in '/Cat/Amp':
  Failed to analyze value 'Amp1'
)"},
    {"percent signs are no format", "<FBlockName>Amp</FBlockName><FBlockID>%d%s%n</FBlockID>@F@",
     R"(Error #0141 in '/Cat/Amp':
  Failed to analyze value '%d%s%n'
)"},
    {"hexadecimal ID without prefix", "<FBlockName>Amp</FBlockName><FBlockID>1F</FBlockID>@F@",
     R"(Error #0141 in '/Cat/Amp':
  Failed to analyze value '1F'
)"},
    {"ID one too large", "<FBlockName>Amp</FBlockName><FBlockID>0x100</FBlockID>@F@",
     R"(Error #0142 in '/Cat/Amp':
  Value '256' out of range [0, 256)
)"},
    {"negative ID", "<FBlockName>Amp</FBlockName><FBlockID>-1</FBlockID>@F@",
     R"(Error #0142 in '/Cat/Amp':
  Value '-1' out of range [0, 256)
)"},
    {"ID of another block", "<FBlockName>Amp</FBlockName><FBlockID>0x01</FBlockID>@F@",
     R"(Error #0143 in '/Cat/Amp':
  Double definition of element with ID 0x1
)"},
    {"name of another block", "<FBlockName>Good</FBlockName><FBlockID>2</FBlockID>@F@",
     R"(Error #0144 in '/Cat/Good':
  Double definition of element 'Good'
)"},
    {"name of another block in other letters", "<FBlockName>gOOD</FBlockName><FBlockID>2</FBlockID>@F@",
     R"(Error #0144 in '/Cat/gOOD':
  Double definition of element 'gOOD'
)"},
    {"ID and name of another block", "<FBlockName>Good</FBlockName><FBlockID>1</FBlockID>@F@",
     R"(Error #0143 in '/Cat/Good':
  Double definition of element with ID 0x1
)"},
    {"no function", "<FBlockName>Amp</FBlockName><FBlockID>2</FBlockID>",
     R"(Error #0146 in '/Cat/Amp':
  Function block contains no valid function
)"},
    {"no function that is of use", "<FBlockName>Amp</FBlockName><FBlockID>2</FBlockID><Function/>",
     R"(Error #0111 in '/Cat/Amp/':
  Can not find element <FunctionName>
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
Error #0146 in '/Cat/Amp':
  Function block contains no valid function
)"},
};

TEST(FBlock, FaultRejectsTheBlockAndLeavesTheOthers) {
    for (const RejectedCase& row : kRejected) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportBlock(row.content);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages,
                  row.message + std::string("Error #0149 in '/Cat':\n  Failed to import element <FBlock>\n"));
        EXPECT_EQ(imported->catalog->Count(), 1U);
        ASSERT_NE(imported->catalog->GetChild(1), nullptr);
        EXPECT_EQ(imported->catalog->GetChild(1)->GetName(), "Good");
    }
}

struct AcceptedCase {
    const char* content;
    unsigned id;
    const char* name;
};
constexpr AcceptedCase kAccepted[] = {
    {"<FBlockID>0xFF</FBlockID><FBlockName>Amp</FBlockName>@F@", 255, "Amp"},
    {"<FBlockName>Amp</FBlockName><FBlockID>0</FBlockID>@F@", 0, "Amp"},
    {"@F@<FBlockName>Amp</FBlockName><FBlockID> 0x22 </FBlockID>", 0x22, "Amp"},
    {"<FBlockID>0b11</FBlockID><FBlockName>Amp</FBlockName>@F@", 3, "Amp"},
    {"<FBlockID>2</FBlockID><FBlockName> Amp </FBlockName>@F@", 2, "_Amp_"},
    {"<FBlockID>2</FBlockID><FBlockName>Audio Disk.Player</FBlockName>@F@", 2, "Audio_DiskPlayer"},
    {"<FBlockID>2</FBlockID><FBlockName><!-- name -->Amp</FBlockName>@F@", 2, "Amp"},
    {"<FBlockID>2</FBlockID><FBlockName>Amp</FBlockName><Functions><Group>@F@</Group></Functions>", 2, "Amp"},
};

TEST(FBlock, TakesAnyNumberAndSanitizesTheName) {
    for (const AcceptedCase& row : kAccepted) {
        SCOPED_TRACE(row.content);
        const auto imported = ImportBlock(row.content);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        const auto* block = dynamic_cast<ZMTFBlock*>(imported->catalog->GetChild(row.id));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(block->FBlockID(), row.id);
        EXPECT_EQ(block->GetName(), row.name);
        EXPECT_EQ(block->GetParent(), imported->catalog);
        EXPECT_EQ(block->Count(), 1U);
    }
}

TEST(FBlock, FirstOfTwoBlocksWithOneIdStays) {
    const auto imported = ImportBlock("<FBlockID>1</FBlockID><FBlockName>Amp</FBlockName>@F@");
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->catalog->FindChild("Amp"), nullptr);
    EXPECT_EQ(imported->catalog->GetChild(1)->GetName(), "Good");
}

TEST(FBlock, RejectedBlockOccupiesNeitherIdNorName) {
    const auto imported =
        ImportText(CatalogOf("<FBlock><FBlockID>2</FBlockID><FBlockName>Amp</FBlockName></FBlock>"
                             "<FBlock><FBlockID>2</FBlockID><FBlockName>Amp</FBlockName>" +
                             VoidFunction("0x100", "Version") + "</FBlock>"));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0146 in '/Cat/Amp':
  Function block contains no valid function
Error #0149 in '/Cat':
  Failed to import element <FBlock>
)");
    EXPECT_EQ(imported->catalog->Count(), 1U);
}

TEST(FBlock, FailedFunctionIsLeftOutAndItsNeighboursStay) {
    const auto imported = ImportText(
        CatalogOf(BlockOf(VoidFunction("0x001", "First") + "<Function/>" + VoidFunction("0x002", "Second"))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0111 in '/Cat/Amp/':
  Can not find element <FunctionName>
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)");
    const auto* block = NodeAt<ZMTFBlock>(imported->catalog, "Amp");
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->Count(), 2U);
    EXPECT_EQ(block->GetChild(1), block->FindChild("FIRST"));
    EXPECT_EQ(block->GetChild(2), block->FindChild("second"));
    EXPECT_EQ(block->GetChild(0), nullptr);
}

TEST(FBlock, FindsItsFunctionsAfterTheListHasChanged) {
    const auto imported =
        ImportText(CatalogOf(BlockOf(VoidFunction("0x001", "First") + VoidFunction("0x002", "Second"))));
    auto* block = NodeAt<ZMTFBlock>(imported->catalog, "Amp");
    ASSERT_NE(block, nullptr);
    block->DeleteRange(1, 1);
    EXPECT_EQ(block->FindChild("First"), nullptr);
    EXPECT_EQ(block->FindChild("Second"), block->GetChild(2));
    auto third = std::make_unique<ZMTFunction>();
    third->SetName("Third");
    block->SetAt(std::move(third), 5);
    EXPECT_EQ(block->FindChild("third"), block->GetChild(5));
}

}  // namespace
}  // namespace tarvex::test::fblock_test
