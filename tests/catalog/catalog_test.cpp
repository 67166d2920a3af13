/// The root of the tree: what ends an import, and which blocks it holds.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::catalog_test {
namespace {

std::string Block(std::string_view id, std::string_view name, std::string_view functions) {
    std::string xml = "<FBlock><FBlockID>";
    xml.append(id).append("</FBlockID><FBlockName>").append(name).append("</FBlockName>");
    return xml.append(functions).append("</FBlock>");
}

std::string GoodBlock(std::string_view id, std::string_view name) {
    return Block(id, name, VoidFunction("0x100", "Version"));
}

struct FatalCase {
    const char* what;
    std::string xml;
    const char* messages;
};

TEST(Catalog, FatalErrorsEndTheImport) {
    const FatalCase rows[] = {
        {"no definitions", CatalogOf(GoodBlock("1", "Amp"), ""),
         R"(Fatal error in '/Cat':
  Can not find element <Definition>
)"},
        {"definitions only further down", CatalogOf(GoodBlock("1", "Amp"), "<Wrap><Definition/></Wrap>"),
         R"(Fatal error in '/Cat':
  Can not find element <Definition>
)"},
        {"nothing at all", CatalogOf("", ""),
         R"(Fatal error in '/Cat':
  Can not find element <Definition>
)"},
        {"no block", CatalogOf(""),
         R"(Fatal error in '/Cat':
  Function catalog contains no valid function block
)"},
        {"blocks only further down", CatalogOf("<Wrap>" + GoodBlock("1", "Amp") + "</Wrap>"),
         R"(Fatal error in '/Cat':
  Function catalog contains no valid function block
)"},
        {"no block that is of use", CatalogOf(Block("1", "Amp", "") + Block("0x100", "Disc", "")),
         R"(Error #0146 in '/Cat/Amp':
  Function block contains no valid function
Error #0149 in '/Cat':
  Failed to import element <FBlock>
Error #0142 in '/Cat/Disc':
  Value '256' out of range [0, 256)
Error #0149 in '/Cat':
  Failed to import element <FBlock>
Fatal error in '/Cat':
  Function catalog contains no valid function block
)"},
    };
    for (const FatalCase& row : rows) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(row.xml);
        EXPECT_FALSE(imported->ok);
        EXPECT_EQ(imported->catalog, nullptr);
        EXPECT_EQ(imported->messages, row.messages);
    }
}

/// A block of one function whose parameter elements are these.
std::string BlockOfParams(std::string_view id, std::string_view name, std::string_view params) {
    std::string function =
        "<Function><FunctionID>1</FunctionID><FunctionName>F</FunctionName><FunctionClass><Method>"
        "<MUnclassified>";
    function.append(params).append("</MUnclassified></Method></FunctionClass></Function>");
    return Block(id, name, function);
}

constexpr const char* kGoodParam =
    "<MUParam><ParamName>P</ParamName><MUParamOPType><MCmdStart/></MUParamOPType></MUParam>";
constexpr const char* kHungryParam =
    R"(<MUParam Fails="memory"><ParamName>P</ParamName><MUParamOPType><MCmdStart/></MUParamOPType></MUParam>)";

TEST(Catalog, LackOfMemoryEndsTheImport) {
    const FactoryImport result(PlannedFactory(), CatalogOf(BlockOfParams("1", "Amp", kGoodParam) +
                                                           BlockOfParams("2", "Disc", kHungryParam) +
                                                           BlockOfParams("500", "NeverReached", kGoodParam)));
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.messages, R"(Fatal error in '/Cat':
  Not enough memory
)");
}

TEST(Catalog, LackOfMemoryInAnErrorFunctionEndsTheImport) {
    const FactoryImport result(
        PlannedFactory(), CatalogOf(BlockOfParams("1", "Amp", kGoodParam) +
                                    R"(<ERParam ParamDefId="E" Fails="memory"/><ERParam ParamDefId="F"/>)"));
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.messages, R"(Fatal error in '/Cat':
  Not enough memory
)");
}

TEST(Catalog, DefinitionsStandFirstOrLastOrBetween) {
    const std::string amp = GoodBlock("1", "Amp");
    const std::string disc = GoodBlock("2", "Disc");
    for (const std::string& xml :
         {amp + disc + kDefinitions, kDefinitions + amp + disc, amp + kDefinitions + disc}) {
        const auto imported = ImportText(CatalogOf(xml, ""));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        EXPECT_EQ(imported->catalog->Count(), 2U);
        const auto* param = NodeAt<ZMTParam>(imported->catalog, "Disc", "Version", "Get", "{Void}");
        ASSERT_NE(param, nullptr);
        ASSERT_NE(param->TypeDefinition(), nullptr);
        EXPECT_EQ(param->TypeDefinition()->GetName(), "Void");
    }
}

TEST(Catalog, HoldsItsBlocksAtTheirIds) {
    const auto imported =
        ImportText(CatalogOf(GoodBlock("0xFF", "Last") + GoodBlock("34", "Amp") + GoodBlock("0", "First")));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const ZMTCatalog& catalog = *imported->catalog;
    EXPECT_EQ(catalog.Count(), 3U);
    EXPECT_EQ(catalog.Size(), 256U);
    ASSERT_NE(catalog.GetChild(0x22), nullptr);
    EXPECT_EQ(catalog.GetChild(0x22)->GetName(), "Amp");
    EXPECT_EQ(catalog.GetChild(0), catalog.FindChild("First"));
    EXPECT_EQ(catalog.GetChild(255), catalog.FindChild("LAST"));
    EXPECT_EQ(catalog.GetChild(1), nullptr);
    EXPECT_EQ(catalog.FindChild("Disc"), nullptr);
}

TEST(Catalog, IsTheRoot) {
    const auto imported = ImportText(CatalogOf(GoodBlock("1", "Amp")));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->catalog->GetName(), "Cat");
    EXPECT_EQ(imported->catalog->GetPath(), "/Cat");
    EXPECT_EQ(imported->catalog->GetParent(), nullptr);
    EXPECT_EQ(imported->catalog->AbsPath(), imported->dir.File("Cat.xml"));
}

TEST(Catalog, ResolvesTheWholeTree) {
    const auto imported = ImportText(CatalogOf(GoodBlock("1", "Amp")));
    ASSERT_TRUE(imported->ok);
    ZMTCatalog* catalog = imported->catalog;
    EXPECT_EQ(catalog->FindChild("Amp")->GetIndent(), 1U);
    EXPECT_EQ(NodeAt<ZMTFunction>(catalog, "Amp", "Version")->GetIndent(), 2U);
    EXPECT_EQ(NodeAt<ZMTOperation>(catalog, "Amp", "Version", "Get")->GetIndent(), 3U);
    EXPECT_EQ(NodeAt<ZMTParam>(catalog, "Amp", "Version", "Get", "{Void}")->GetIndent(), 4U);
}

}  // namespace
}  // namespace tarvex::test::catalog_test
