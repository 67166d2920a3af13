/// Functions that refer to one defined elsewhere.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::function_copy_test {
namespace {

constexpr const char* kFunctionFailed = "  Failed to import element <Function>\n";

/// A catalog of a block "Amp" (0x22) and a block "Disc" (0x31) with these functions and one more of its own.
std::string TwoBlocks(const std::string& ampFunctions, const std::string& discFunctions) {
    return CatalogOf(BlockOf(ampFunctions) +
                     "<FBlock><FBlockID>0x31</FBlockID><FBlockName>Disc</FBlockName>" +
                     VoidFunction("0x001", "Own") + discFunctions + "</FBlock>");
}

TEST(FunctionCopy, TakesOverNameIdKindAndOperations) {
    const auto imported = ImportText(TwoBlocks(VoidFunction("0x400", "Volume", R"(FktDefId="fkt_volume")"),
                                               R"(<Function FktDefRef="fkt_volume"/>)"));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    auto* disc = imported->catalog->FindChild("Disc");
    const auto* copy = dynamic_cast<ZMTFunction*>(disc->GetChild(0x400));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetName(), "Volume");
    EXPECT_EQ(copy->FunctionID(), 0x400U);
    EXPECT_EQ(copy->Class(), ClassKind::Property);
    EXPECT_EQ(copy->GetParent(), disc);
    const auto* param = NodeAt<ZMTParam>(disc, "Volume", "Get", "{Void}");
    ASSERT_NE(param, nullptr);
    EXPECT_EQ(param->GetPath(), "/Cat/Disc/Volume/Get/{Void}");
    EXPECT_NE(param, NodeAt<ZMTParam>(imported->catalog, "Amp", "Volume", "Get", "{Void}"));
}

TEST(FunctionCopy, IgnoresWhatElseItsElementSays) {
    const auto imported = ImportText(
        TwoBlocks(VoidFunction("0x400", "Volume", R"(FktDefId="fkt_volume")"),
                  VoidFunction("0x5000", "Other", R"(FktDefRef="fkt_volume" FktDefId="fkt_other")")));
    EXPECT_EQ(imported->messages, "");
    EXPECT_NE(NodeAt<ZMTFunction>(imported->catalog, "Disc", "Volume"), nullptr);
    EXPECT_EQ(NodeAt<ZMTFunction>(imported->catalog, "Disc", "Other"), nullptr);
}

struct RejectedCopy {
    const char* what;
    std::string ampFunctions;
    std::string discFunctions;
    std::string message;
};

TEST(FunctionCopy, FaultRejectsIt) {
    const std::string volume = VoidFunction("0x400", "Volume", R"(FktDefId="fkt_volume")");
    const std::string reference = R"(<Function FktDefRef="fkt_volume"/>)";
    const RejectedCopy rows[] = {
        {"unknown identifier", volume, R"(<Function FktDefRef="fkt_bass"/>)",
         R"(Error #0106 in '/Cat/Disc/':
  Can not find definition of function 'fkt_bass'
)"},
        {"identifier in other letters", volume, R"(<Function FktDefRef="FKT_volume"/>)",
         R"(Error #0106 in '/Cat/Disc/':
  Can not find definition of function 'FKT_volume'
)"},
        {"name instead of an identifier", volume, R"(<Function FktDefRef="Volume"/>)",
         R"(Error #0106 in '/Cat/Disc/':
  Can not find definition of function 'Volume'
)"},
        {"empty identifier", VoidFunction("0x400", "Volume", R"(FktDefId="")"), R"(<Function FktDefRef=""/>)",
         R"(Error #0106 in '/Cat/Disc/':
  Can not find definition of function ''
)"},
        {"definition that comes later", VoidFunction("0x300", "Bass"), reference + volume,
         R"(Error #0106 in '/Cat/Disc/':
  Can not find definition of function 'fkt_volume'
)"},
        {"ID in use", volume, VoidFunction("0x400", "Loudness") + reference,
         R"(Error #0108 in '/Cat/Disc/Volume':
  Double definition of element with ID 0x400
)"},
        {"name in use", volume, VoidFunction("0x401", "VOLUME") + reference,
         R"(Error #0109 in '/Cat/Disc/Volume':
  Double definition of element 'Volume'
)"},
        {"the same copy twice, here the second", volume, reference + reference,
         R"(Error #0108 in '/Cat/Disc/Volume':
  Double definition of element with ID 0x400
)"},
    };
    for (const RejectedCopy& row : rows) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(TwoBlocks(row.ampFunctions, row.discFunctions));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.message + "Error #0145 in '/Cat/Disc':\n" + kFunctionFailed);
    }
}

TEST(FunctionCopy, RejectedFunctionCannotBeReferredTo) {
    const auto imported = ImportText(TwoBlocks(
        VoidFunction("0x300", "Bass") + VoidFunction("0x9999", "Volume", R"(FktDefId="fkt_volume")"),
        R"(<Function FktDefRef="fkt_volume"/>)"));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0114 in '/Cat/Amp/Volume':
  Value '39321' out of range [0, 4096)
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
Error #0106 in '/Cat/Disc/':
  Can not find definition of function 'fkt_volume'
Error #0145 in '/Cat/Disc':
  Failed to import element <Function>
)");
}

TEST(FunctionCopy, LastDefinitionOfAnIdentifierWins) {
    const auto imported = ImportText(TwoBlocks(VoidFunction("0x400", "Volume", R"(FktDefId="fkt")") +
                                                   VoidFunction("0x401", "Bass", R"(FktDefId="fkt")"),
                                               R"(<Function FktDefRef="fkt"/>)"));
    EXPECT_EQ(imported->messages, "");
    EXPECT_NE(NodeAt<ZMTFunction>(imported->catalog, "Disc", "Bass"), nullptr);
    EXPECT_EQ(NodeAt<ZMTFunction>(imported->catalog, "Disc", "Volume"), nullptr);
}

TEST(FunctionCopy, WithdrawnFunctionCanBeReferredTo) {
    const auto imported = ImportText(
        TwoBlocks(R"(<Function FktDefId="fkt"><FunctionID>2</FunctionID><FunctionName>Bare</FunctionName>
                     <FunctionClass><Method/></FunctionClass></Function>)",
                  R"(<Function FktDefRef="fkt"/>)"));
    ASSERT_TRUE(imported->ok);
    const auto* copy = NodeAt<ZMTFunction>(imported->catalog, "Disc", "Bare");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Class(), ClassKind::Method);
    EXPECT_EQ(copy->Count(), 0U);
}

/// A method with one parameter that carries these attributes.
std::string Method(const std::string& id, const std::string& name, const std::string& attributes) {
    return "<Function FktDefId=\"fkt_" + name + "\"><FunctionID>" + id + "</FunctionID><FunctionName>" +
           name + "</FunctionName><FunctionClass><Method><MTrigger><MTParam " + attributes +
           "><ParamName>P</ParamName><MTParamOPType><MCmdStart/></MTParamOPType></MTParam></MTrigger></"
           "Method>"
           "</FunctionClass></Function>";
}

TEST(FunctionCopy, FailsWhenAParameterCannotBeDuplicated) {
    FactoryImport result(
        PlannedFactory(),
        CatalogOf(BlockOf(Method("1", "Volume", R"(Fails="copy")")) +
                  "<FBlock><FBlockID>2</FBlockID><FBlockName>Disc</FBlockName>" + Method("2", "Own", "") +
                  R"(<Function FktDefRef="fkt_Volume"/></FBlock>)"));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.messages, R"(Error #0107 in '/Cat/Disc/Volume':
  Failed to duplicate object
Error #0145 in '/Cat/Disc':
  Failed to import element <Function>
)");
    EXPECT_NE(NodeAt<ZMTFunction>(&result.catalog, "Amp", "Volume"), nullptr);
    EXPECT_EQ(NodeAt<ZMTFunction>(&result.catalog, "Disc", "Volume"), nullptr);
}

TEST(FunctionCopy, FailsWhenTheDefinitionIsNoFunction) {
    ElementImport import;
    PlainNode root("Cat");
    ZMTOperation notAFunction;
    import.Context().functions.Register("fkt", notAFunction);
    ZMTFunction copy;
    copy.SetParent(&root);
    EXPECT_FALSE(import.Import(copy, R"(<Function FktDefRef="fkt"/>)"));
    EXPECT_EQ(import.TakeMessages(), R"(Error #0110 in '/Cat/':
  Failed to import element <Function>
)");
}

/// Error functions E0 to E<count - 1>.
std::string ErrorFunctions(unsigned count) {
    std::string xml;
    for (unsigned i = 0; i < count; ++i) {
        xml += "<ERParam ParamDefId=\"E" + std::to_string(i) + R"("><ParamName/><ERParamOPType><PReportError/>
               </ERParamOPType><TVoid TypeRef="type_void"/></ERParam>)";
    }
    return xml;
}

TEST(FunctionCopy, MayBeOfAnErrorFunctionWithItsNumberAsId) {
    const auto imported =
        ImportText(CatalogOf(BlockOf(R"(<Function FktDefRef="Temp_ERFunction_E2"/>)") + ErrorFunctions(3)));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* copy = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Temp_ERFunction_E2");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->FunctionID(), 2U);
    EXPECT_NE(copy->FindChild("Error"), nullptr);
}

TEST(FunctionCopy, FailsForAnErrorFunctionWhoseNumberIsNoFunctionId) {
    const auto imported = ImportText(CatalogOf(BlockOf(R"(<Function FktDefRef="Temp_ERFunction_E4095"/>
                                                          <Function FktDefRef="Temp_ERFunction_E4096"/>)") +
                                               ErrorFunctions(4097)));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0110 in '/Cat/Amp/Temp_ERFunction_E4096':
  Failed to import element <Function>
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)");
    EXPECT_NE(imported->catalog->FindChild("Amp")->GetChild(0xFFF), nullptr);
}

}  // namespace
}  // namespace tarvex::test::function_copy_test
