/// Error functions: parameters written once for the catalog and merged into the functions that refer to them.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/parameter_assignment.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::error_functions_test {
namespace {

/// An "ERParam" element with these operation elements.
std::string ErrorParam(const std::string& attributes, const std::string& name,
                       const std::string& operations) {
    return "<ERParam " + attributes + "><ParamName>" + name + "</ParamName><ERParamOPType>" + operations +
           R"(</ERParamOPType><ERParamType><TVoid TypeRef="type_void"/></ERParamType></ERParam>)";
}

/// A "Function" element "Reset" with these elements in its class.
std::string Reset(const std::string& params) {
    return "<Function><FunctionID>2</FunctionID><FunctionName>Reset</FunctionName><FunctionClass><Method>"
           "<MUnclassified>" +
           params + "</MUnclassified></Method></FunctionClass></Function>";
}

std::string At(const std::string& element, int pos) {
    return std::string("<") + element + "><ParamPos>" + std::to_string(pos) + "</ParamPos></" + element + ">";
}

/// A parameter "Own" at position 0 of "Error".
std::string OwnParam() {
    return "<MUParam><ParamName>Own</ParamName><MUParamOPType>" + At("MReportError", 0) +
           R"(</MUParamOPType><TVoid TypeRef="type_void"/></MUParam>)";
}

/// The names in an operation of "Reset" by position, separated by blanks.
std::string Names(const Imported& imported, const std::string& operation) {
    const auto* found = NodeAt<ZMTOperation>(imported.catalog, "Amp", "Reset", operation);
    if (found == nullptr) {
        return "(no operation)";
    }
    std::string names;
    for (const ZMTParam* param : found->GetItems(false)) {
        names += (names.empty() ? "" : " ") + param->GetName();
    }
    return names;
}

TEST(ErrorFunction, IsMergedIntoTheFunctionThatRefersToIt) {
    const auto imported = ImportText(CatalogOf(
        BlockOf(Reset(OwnParam() + R"(<ERParam ParamDefRef="E"/>)")) +
        ErrorParam(R"(ParamDefId="E")", "ErrorCode", At("MReportError", 1) + At("MReportErrorAck", 1))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(Names(*imported, "Error"), "Own ErrorCode");
    EXPECT_EQ(Names(*imported, "ErrorAck"), "ErrorCode");
    const auto* param = NodeAt<ZMTParam>(imported->catalog, "Amp", "Reset", "Error", "ErrorCode");
    ASSERT_NE(param, nullptr);
    EXPECT_EQ(param->GetPath(), "/Cat/Amp/Reset/Error/ErrorCode");
    EXPECT_NE(param, NodeAt<ZMTParam>(imported->catalog, "Amp", "Reset", "ErrorAck", "ErrorCode"));
}

TEST(ErrorFunction, StandsAnywhereInTheCatalog) {
    const std::string definition = ErrorParam(R"(ParamDefId="E")", "ErrorCode", At("MReportError", 0));
    const std::string block = BlockOf(Reset(R"(<ERParam ParamDefRef="E"/>)"));
    const std::string rows[] = {
        CatalogOf(definition + block),
        CatalogOf(block + definition),
        CatalogOf(block, std::string(kDefinitions).replace(12, 0, definition)),
        CatalogOf("<A><B>" + definition + "</B></A>" + block),
        CatalogOf(BlockOf(Reset(definition))),
        CatalogOf(BlockOf(Reset(R"(<ERParam ParamDefRef="E"/>)") +
                          "<Function><FunctionID>3</FunctionID><FunctionName>F</FunctionName><FunctionClass>"
                          "<Method><MTrigger>" +
                          definition + "</MTrigger></Method></FunctionClass></Function>")),
    };
    for (const std::string& xml : rows) {
        SCOPED_TRACE(xml);
        const auto imported = ImportText(xml);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        EXPECT_EQ(Names(*imported, "Error"), "ErrorCode");
    }
}

TEST(ErrorFunction, IsNotPartOfAnyBlock) {
    const auto imported = ImportText(CatalogOf(BlockOf(VoidFunction("1", "Version")) +
                                               ErrorParam(R"(ParamDefId="E")", "X", "<MReportError/>")));
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(imported->tree.find("Temp_ERFunction"), std::string::npos);
}

struct MergeCase {
    const char* what;
    std::string params;
    std::string definitions;
    const char* messages;
    const char* error;  ///< what the operation "Error" holds
};

TEST(ErrorFunction, MergeReportsWhatItCannotPlace) {
    const std::string own = OwnParam();
    const MergeCase rows[] = {
        {"unknown reference", own + R"(<ERParam ParamDefRef="X"/>)", "",
         R"(Error #0126 in '/Cat/Amp/Reset':
  Can not find definition of function 'Temp_ERFunction_X'
)",
         "Own"},
        {"reference in other letters", own + R"(<ERParam ParamDefRef="e"/>)",
         ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 1)),
         R"(Error #0126 in '/Cat/Amp/Reset':
  Can not find definition of function 'Temp_ERFunction_e'
)",
         "Own"},
        {"no reference", own + "<ERParam/>", "",
         R"(Error #0126 in '/Cat/Amp/Reset':
  Can not find definition of function 'Temp_ERFunction_'
)",
         "Own"},
        {"one of two positions in use", own + R"(<ERParam ParamDefRef="E"/>)",
         ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 0) + At("MReportErrorAck", 0)),
         R"(Error #0134 in '/Cat/Amp/Reset':
  Position 0 of 'Code' already occupied
)",
         "Own"},
        {"all positions in use", own + R"(<ERParam ParamDefRef="E"/>)",
         ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 0)),
         R"(Error #0134 in '/Cat/Amp/Reset':
  Position 0 of 'Code' already occupied
Error #0127 in '/Cat/Amp/Reset':
  Merge of 'Temp_ERFunction_E' failed
)",
         "Own"},
        {"merged twice", R"(<ERParam ParamDefRef="E"/><ERParam ParamDefRef="E"/>)",
         ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 1)),
         R"(Error #0134 in '/Cat/Amp/Reset':
  Position 1 of 'Code' already occupied
Error #0127 in '/Cat/Amp/Reset':
  Merge of 'Temp_ERFunction_E' failed
)",
         "Code"},
        {"nothing to merge", own + R"(<ERParam ParamDefRef="E"/>)",
         ErrorParam(R"(ParamDefId="E")", "Code", "<MReportUnknown/>"),
         R"(Error #0127 in '/Cat/Amp/Reset':
  Merge of 'Temp_ERFunction_E' failed
)",
         "Own"},
        {"failed merge does not stop the next one",
         R"(<ERParam ParamDefRef="X"/><ERParam ParamDefRef="E"/>)" + own,
         ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 1)),
         R"(Error #0126 in '/Cat/Amp/Reset':
  Can not find definition of function 'Temp_ERFunction_X'
)",
         "Own Code"},
        {"gap after the merge", own + R"(<ERParam ParamDefRef="E"/>)",
         ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 3)),
         R"(Warning #0102 in '/Cat/Amp/Reset/Error':
  Gap in parameter set before parameter 'Code'
)",
         "Own Code"},
    };
    for (const MergeCase& row : rows) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOf(row.definitions + BlockOf(Reset(row.params))));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
        EXPECT_EQ(Names(*imported, "Error"), row.error);
    }
}

TEST(ErrorFunction, ThatFailsIsReportedAndCannotBeMerged) {
    const auto imported =
        ImportText(CatalogOf(R"(<ERParam ParamDefId="E"><ParamName>Code</ParamName></ERParam>
                     <ERParam ParamDefId="F"><ParamName>Info</ParamName><TVoid TypeRef="type_void"/></ERParam>)" +
                             BlockOf(VoidFunction("1", "Version") + Reset(R"(<ERParam ParamDefRef="E"/>)"))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0128 in '/Cat/Temp_ERFunction_E':
  Unknown parameter type in <ERParam>
Error #0148 in '/Cat':
  Failed to import element <ERParam>
Error #0135 in '/Cat/Temp_ERFunction_F':
  Missing OPType info
Error #0148 in '/Cat':
  Failed to import element <ERParam>
Error #0126 in '/Cat/Amp/Reset':
  Can not find definition of function 'Temp_ERFunction_E'
Error #0123 in '/Cat/Amp/Reset':
  Function contains no valid operation
)");
}

TEST(ErrorFunction, FaultsCarryItsOwnPath) {
    const auto imported = ImportText(
        CatalogOf(ErrorParam(R"(ParamDefId="E")", "Code", At("MReportError", 256)) +
                  R"(<ERParam ParamDefId="F"><ParamName>Info</ParamName><ERParamOPType/><TVoid/></ERParam>)" +
                  BlockOf(VoidFunction("1", "Version"))));
    EXPECT_EQ(imported->messages, R"(Error #0132 in '/Cat/Temp_ERFunction_E':
  Invalid parameter position 256
Error #0130 in '/Cat/Temp_ERFunction_E':
  Failed to assign parameter 'Code' to operation
Error #0148 in '/Cat':
  Failed to import element <ERParam>
Error #0101 in '/Cat/Temp_ERFunction_F/Info':
  Missing required attribute TypeRef
Error #0129 in '/Cat/Temp_ERFunction_F':
  Failed to import element <ERParam>
Error #0148 in '/Cat':
  Failed to import element <ERParam>
)");
}

TEST(ErrorFunction, LastDefinitionOfAnIdentifierWins) {
    const auto imported =
        ImportText(CatalogOf(ErrorParam(R"(ParamDefId="E")", "First", At("MReportError", 1)) +
                             ErrorParam(R"(ParamDefId="E")", "Second", At("MReportError", 1)) +
                             BlockOf(Reset(R"(<ERParam ParamDefRef="E"/>)"))));
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(Names(*imported, "Error"), "Second");
}

TEST(ErrorFunction, DefinitionComesBeforeReferenceOnOneElement) {
    const auto imported = ImportText(CatalogOf(
        ErrorParam(R"(ParamDefId="E")", "Other", At("MReportError", 1)) +
        BlockOf(Reset(ErrorParam(R"(ParamDefRef="E" ParamDefId="F")", "Own", At("MReportError", 1))))));
    EXPECT_EQ(imported->messages, "");
    EXPECT_EQ(Names(*imported, "Error"), "Own");
}

struct KindCase {
    const char* operations;
    ClassKind kind;
    const char* firstName;
};
constexpr KindCase kKinds[] = {
    {"<PCmdGet/><PReportError/>", ClassKind::Property, "Get"},
    {"<MCmdAbort/><MReportError/>", ClassKind::Method, "Abort"},
    {"<PReportError/><MCmdAbort/>", ClassKind::Method, "Abort"},
    {"<MReportError/><PCmdGet/>", ClassKind::Property, "Get"},
};

TEST(ErrorFunction, FirstOpTypeDecidesWhetherItIsPropertyOrMethod) {
    for (const KindCase& row : kKinds) {
        SCOPED_TRACE(row.operations);
        const auto imported = ImportText(CatalogOf(ErrorParam(R"(ParamDefId="E")", "Code", row.operations) +
                                                   BlockOf(R"(<Function FktDefRef="Temp_ERFunction_E"/>)")));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Temp_ERFunction_E");
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(function->Class(), row.kind);
        ASSERT_NE(function->GetChild(1), nullptr);
        EXPECT_EQ(function->GetChild(1)->GetName(), row.firstName);
    }
}

TEST(ErrorFunction, StartsAsOneWithItsNumber) {
    const ZMTFunction function("X", 17);
    EXPECT_EQ(function.GetName(), "Temp_ERFunction_X");
    EXPECT_EQ(function.FunctionID(), 17U);
    EXPECT_EQ(function.Class(), ClassKind::ErrorFunction);
}

TEST(ErrorFunction, NodeThatIsNoFunctionCannotBeMerged) {
    ElementImport import;
    ZMTOperation notAFunction;
    import.Context().functions.Register("Temp_ERFunction_E", notAFunction);
    ZMTFunction function;
    function.SetName("Reset");
    const ParsedElement functionClass(
        R"(<FunctionClass><Method><MTrigger><ERParam ParamDefRef="E"/></MTrigger></Method></FunctionClass>)");
    EXPECT_TRUE(ParameterAssignment(function, import.Context()).ImportFunctionClass(*functionClass));
    EXPECT_EQ(import.TakeMessages(), R"(Error #0127 in '/Reset':
  Merge of 'Temp_ERFunction_E' failed
)");
}

TEST(ErrorFunction, ParameterThatCannotBeClonedFailsTheMerge) {
    FactoryImport result(
        PlannedFactory(),
        CatalogOf(
            ErrorParam(R"(ParamDefId="E" Fails="copy")", "Code", "<MReportError/>") +
            BlockOf(Reset(R"(<MUParam><ParamName>Own</ParamName><MUParamOPType><MCmdStart/></MUParamOPType>
                                   </MUParam><ERParam ParamDefRef="E"/>)"))));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.messages, R"(Error #0133 in '/Cat/Amp/Reset':
  Failed to duplicate object
Error #0127 in '/Cat/Amp/Reset':
  Merge of 'Temp_ERFunction_E' failed
)");
}

}  // namespace
}  // namespace tarvex::test::error_functions_test
