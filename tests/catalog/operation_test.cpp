/// Operations: their names, their dense parameter lists, and the warnings about gaps.

#include "catalog/operation.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::operation_test {
namespace {

struct OpTypeCase {
    unsigned opType;
    const char* element;
    const char* name;
};
constexpr OpTypeCase kProperties[] = {
    {0, "PCmdSet", "Set"},
    {1, "PCmdGet", "Get"},
    {2, "PCmdSetGet", "SetGet"},
    {3, "PCmdIncrement", "Increment"},
    {4, "PCmdDecrement", "Decrement"},
    {5, "PCmdGetInterface", "GetInterface"},
    {12, "PReportStatus", "Status"},
    {14, "PReportInterface", "Interface"},
    {15, "PReportError", "Error"},
    // elements of methods stand for the same OPTypes, the names stay those of properties
    {0, "MCmdStart", "Set"},
    {1, "MCmdAbort", "Get"},
    {2, "MCmdStartResult", "SetGet"},
    {5, "MCmdGetInterface", "GetInterface"},
    {6, "MCmdStartResultAck", "Reserved"},
    {7, "MCmdAbortAck", "OpType7"},
    {8, "MCmdStartAck", "OpType8"},
    {9, "MReportErrorAck", "OpType9"},
    {10, "MReportProcessingAck", "OpTypeA"},
    {11, "MReportProcessing", "OpTypeB"},
    {12, "MReportResult", "Status"},
    {13, "MReportResultAck", "OpTypeD"},
    {14, "MReportInterface", "Interface"},
    {15, "MReportError", "Error"},
};
constexpr OpTypeCase kMethods[] = {
    {0, "MCmdStart", "Start"},
    {1, "MCmdAbort", "Abort"},
    {2, "MCmdStartResult", "StartResult"},
    {5, "MCmdGetInterface", "GetInterface"},
    {6, "MCmdStartResultAck", "StartResultAck"},
    {7, "MCmdAbortAck", "AbortAck"},
    {8, "MCmdStartAck", "StartAck"},
    {9, "MReportErrorAck", "ErrorAck"},
    {10, "MReportProcessingAck", "ProcessingAck"},
    {11, "MReportProcessing", "Processing"},
    {12, "MReportResult", "Result"},
    {13, "MReportResultAck", "ResultAck"},
    {14, "MReportInterface", "Interface"},
    {15, "MReportError", "Error"},
    // elements of properties stand for the same OPTypes, the names stay those of methods
    {0, "PCmdSet", "Start"},
    {1, "PCmdGet", "Abort"},
    {3, "PCmdIncrement", "OpType3"},
    {4, "PCmdDecrement", "OpType4"},
    {12, "PReportStatus", "Result"},
};

/// A function "Volume" of that class with one parameter in this operation element.
std::unique_ptr<Imported> ImportOperation(const std::string& kind, const std::string& functionClass,
                                          const std::string& element) {
    const std::string param = functionClass.substr(0, 2) + "Param";
    return ImportText(CatalogOf(
        BlockOf("<Function><FunctionID>2</FunctionID><FunctionName>Volume</FunctionName><FunctionClass><" +
                kind + "><" + functionClass + "><" + param + "><ParamName/><" + param + "OPType><" + element +
                "/></" + param + "OPType><TVoid TypeRef=\"type_void\"/></" + param + "></" + functionClass +
                "></" + kind + "></FunctionClass></Function>")));
}

void ExpectOneOperation(const Imported& imported, const OpTypeCase& row) {
    EXPECT_EQ(imported.messages, "");
    const auto* function = NodeAt<ZMTFunction>(imported.catalog, "Amp", "Volume");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->Count(), 1U);
    const ZMTOperation* operation = function->GetAt(row.opType);
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->GetName(), row.name);
    EXPECT_EQ(operation->OpType(), row.opType);
    EXPECT_EQ(operation->GetPosition(), row.opType);
    EXPECT_EQ(operation->GetParent(), function);
}

TEST(Operation, OfAPropertyHasThePropertyName) {
    for (const OpTypeCase& row : kProperties) {
        SCOPED_TRACE(row.element);
        ExpectOneOperation(*ImportOperation("Property", "PUnclassified", row.element), row);
    }
}

TEST(Operation, OfAMethodHasTheMethodName) {
    for (const OpTypeCase& row : kMethods) {
        SCOPED_TRACE(row.element);
        ExpectOneOperation(*ImportOperation("Method", "MUnclassified", row.element), row);
    }
}

TEST(Operation, EveryOpTypeHasAName) {
    struct Row {
        const char* property;
        const char* method;
    };
    const Row rows[16] = {
        {"Set", "Start"},
        {"Get", "Abort"},
        {"SetGet", "StartResult"},
        {"Increment", "OpType3"},
        {"Decrement", "OpType4"},
        {"GetInterface", "GetInterface"},
        {"Reserved", "StartResultAck"},
        {"OpType7", "AbortAck"},
        {"OpType8", "StartAck"},
        {"OpType9", "ErrorAck"},
        {"OpTypeA", "ProcessingAck"},
        {"OpTypeB", "Processing"},
        {"Status", "Result"},
        {"OpTypeD", "ResultAck"},
        {"Interface", "Interface"},
        {"Error", "Error"},
    };
    for (unsigned opType = 0; opType < 16; ++opType) {
        SCOPED_TRACE(opType);
        EXPECT_EQ(ZMTOperation(ClassKind::Property, opType).GetName(), rows[opType].property);
        EXPECT_EQ(ZMTOperation(ClassKind::Method, opType).GetName(), rows[opType].method);
        EXPECT_EQ(ZMTOperation(ClassKind::Unknown, opType).GetName(), "");
        EXPECT_EQ(ZMTOperation(ClassKind::ErrorFunction, opType).GetName(), "");
    }
}

TEST(Operation, ElementsThatDoNotExistYetSelectNothing) {
    for (const char* element : {"XXXnotyetXXX", "pcmdset", "PCmd", "Set"}) {
        SCOPED_TRACE(element);
        const auto imported = ImportOperation("Property", "PUnclassified", element);
        const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(function->Count(), 0U);
        EXPECT_EQ(imported->messages, R"(Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)");
    }
}

/// An operation "Status" with parameters P<pos> at these positions.
void Fill(ZMTOperation& operation, const std::vector<unsigned>& positions) {
    for (const unsigned pos : positions) {
        auto param = std::make_unique<PlannedParam>(ParamPlan{});
        param->SetName(std::string("P").append(std::to_string(pos)));
        param->SetParamPos(pos);
        param->SetParent(&operation);
        operation.SetAt(std::move(param), pos);
    }
}

struct GapCase {
    const char* what;
    std::vector<unsigned> positions;
    const char* before;  ///< The parameter that the warning names; empty for no warning.
};

TEST(Operation, GapBetweenParametersIsWarnedOfOnce) {
    const GapCase rows[] = {
        {"counting from 0", {0, 1, 2}, ""}, {"counting from 1", {1, 2}, ""},  {"only the first", {0}, ""},
        {"only the second", {1}, ""},       {"gap after 0", {0, 2}, "P2"},    {"gap after 1", {1, 3}, "P3"},
        {"0 and 1 missing", {2, 3}, "P2"},  {"two gaps", {0, 1, 3, 6}, "P3"}, {"far away", {0, 255}, "P255"},
    };
    for (const GapCase& row : rows) {
        SCOPED_TRACE(row.what);
        ElementImport import;
        ZMTFunction function;
        function.SetName("Volume");
        ZMTOperation operation(ClassKind::Property, 12);
        operation.SetParent(&function);
        Fill(operation, row.positions);
        EXPECT_TRUE(operation.Resolve(import.Context()));
        const std::string warning =
            "Warning #0102 in '/Volume/Status':\n  Gap in parameter set before parameter '";
        EXPECT_EQ(import.TakeMessages(),
                  row.before[0] == '\0' ? std::string() : warning + row.before + "'\n");
    }
}

TEST(Operation, ResolveClosesTheGapsAndRenumbers) {
    ElementImport import;
    ZMTOperation operation(ClassKind::Property, 12);
    Fill(operation, {0, 2, 7});
    EXPECT_TRUE(operation.Resolve(import.Context()));
    ASSERT_EQ(operation.Size(), 3U);
    const char* names[] = {"P0", "P2", "P7"};
    for (unsigned slot = 0; slot < 3; ++slot) {
        EXPECT_EQ(operation.GetAt(slot)->GetName(), names[slot]);
        EXPECT_EQ(operation.GetAt(slot)->GetPosition(), slot);
    }
}

TEST(Operation, OfAnErrorFunctionMayHaveGaps) {
    ElementImport import;
    ZMTFunction function("ErrorCode", 3);
    ZMTOperation operation(ClassKind::Property, 15);
    operation.SetParent(&function);
    Fill(operation, {0, 2});
    EXPECT_TRUE(operation.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(operation.Size(), 2U);
}

TEST(Operation, OnlyTheBeginningOfTheNameMakesAnErrorFunction) {
    for (const auto& [name, isExempt] :
         {std::pair{"Temp_ERFunction_", true}, std::pair{"Temp_ERFunction_X", true},
          std::pair{"My_Temp_ERFunction_X", false}, std::pair{"Temp_ERFunction", false}}) {
        SCOPED_TRACE(name);
        ElementImport import;
        ZMTFunction function;
        function.SetName(name);
        ZMTOperation operation(ClassKind::Property, 15);
        operation.SetParent(&function);
        Fill(operation, {0, 2});
        EXPECT_TRUE(operation.Resolve(import.Context()));
        EXPECT_EQ(import.TakeMessages().empty(), isExempt);
    }
}

TEST(Operation, WithoutParametersIsWarnedOfAndStays) {
    ElementImport import;
    ZMTFunction function;
    function.SetName("Volume");
    function.OperationAt(0).SetName("Set");
    EXPECT_TRUE(function.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), R"(Warning #0103 in '/Volume/Set':
  Operation contains no valid parameter
)");
    EXPECT_EQ(function.Count(), 1U);
}

TEST(Operation, WithdrawingParametersLeavesTheOperations) {
    ElementImport import;
    ZMTFunction function;
    function.SetName("Volume");
    function.SetClass(ClassKind::Property);
    Fill(function.OperationAt(0), {0, 1});
    Fill(function.OperationAt(12), {1});
    function.WithdrawParameters();
    EXPECT_EQ(function.Count(), 2U);
    EXPECT_TRUE(function.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), R"(Warning #0103 in '/Volume/Set':
  Operation contains no valid parameter
Warning #0103 in '/Volume/Status':
  Operation contains no valid parameter
)");
}

TEST(Operation, FailsWithAParameterThatFails) {
    ElementImport import;
    ZMTOperation operation(ClassKind::Property, 0);
    operation.SetAt(std::make_unique<PlannedParam>(ParamPlan{.canResolve = false}), 1);
    EXPECT_FALSE(operation.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
}

TEST(Operation, FindsItsParametersByPositionAndName) {
    ZMTOperation operation(ClassKind::Property, 0);
    Fill(operation, {1, 4});
    EXPECT_EQ(operation.GetChild(0), nullptr);
    ASSERT_NE(operation.GetChild(4), nullptr);
    EXPECT_EQ(operation.FindChild("p4"), operation.GetChild(4));
    EXPECT_EQ(operation.FindChild("P2"), nullptr);
}

TEST(Operation, GapInACatalogIsClosedAndNamed) {
    const auto at = [](int pos) {
        return "<PReportStatus><ParamPos>" + std::to_string(pos) + "</ParamPos></PReportStatus>";
    };
    const std::string type = R"(<TVoid TypeRef="type_void"/>)";
    const auto imported = ImportText(CatalogOfParams(Param("A", type, at(0)) + Param("B", type, at(2))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Warning #0102 in '/Cat/Amp/Volume/Status':
  Gap in parameter set before parameter 'B'
)");
    const auto* operation = NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "Status");
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->Size(), 2U);
    EXPECT_EQ(operation->GetChild(1), operation->FindChild("B"));
}

}  // namespace
}  // namespace tarvex::test::operation_test
