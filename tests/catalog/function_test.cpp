/// Functions: name, ID and class, what rejects them, and what becomes of operations that fail.

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::function_test {
namespace {

/// A parameter in "Get", and a function class with it.
constexpr std::string_view kParam =
    R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdGet/></PUParamOPType>
       <PUParamType><TVoid TypeRef="type_void"/></PUParamType></PUParam>)";
constexpr std::string_view kClass =
    R"(<FunctionClass><Property><PUnclassified>@P@</PUnclassified></Property></FunctionClass>)";

std::string Expand(std::string text) {
    for (const auto& [mark, value] : {std::pair{"@C@", kClass}, std::pair{"@P@", kParam}}) {
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
            text.replace(at, 3, value);
        }
    }
    return text;
}

/// A catalog of a block "Amp" with a function "Good" (1) and a "Function" element of this content, in which
/// "@C@" stands for a function class and "@P@" for a parameter.
std::unique_ptr<Imported> ImportFunction(const std::string& content) {
    return ImportText(
        CatalogOf(BlockOf(VoidFunction("1", "Good") + Expand("<Function>" + content + "</Function>"))));
}

std::unique_ptr<Imported> ImportClass(const std::string& functionClass) {
    return ImportFunction("<FunctionName>Volume</FunctionName><FunctionID>0x400</FunctionID>" +
                          functionClass);
}

struct HeadCase {
    const char* what;
    const char* content;
    const char* message;
};
constexpr HeadCase kRejectedHeads[] = {
    {"no name", "<FunctionID>2</FunctionID>@C@",
     R"(Error #0111 in '/Cat/Amp/':
  Can not find element <FunctionName>
)"},
    {"empty name", "<FunctionID>2</FunctionID><FunctionName></FunctionName>@C@",
     R"(Error #0111 in '/Cat/Amp/':
  Can not find element <FunctionName>
)"},
    {"no ID", "<FunctionName>Volume</FunctionName>@C@",
     R"(Error #0112 in '/Cat/Amp/Volume':
  Can not find element <FunctionID>
)"},
    {"empty ID", "<FunctionName>Volume</FunctionName><FunctionID/>@C@",
     R"(Error #0112 in '/Cat/Amp/Volume':
  Can not find element <FunctionID>
)"},
    {"ID that is no number", "<FunctionName>Volume</FunctionName><FunctionID>0x4G0</FunctionID>@C@",
     R"(Error #0113 in '/Cat/Amp/Volume':
  Failed to analyze value '0x4G0'
)"},
    {"ID one too large", "<FunctionName>Volume</FunctionName><FunctionID>0x1000</FunctionID>@C@",
     R"(Error #0114 in '/Cat/Amp/Volume':
  Value '4096' out of range [0, 4096)
)"},
    {"negative ID", "<FunctionName>Volume</FunctionName><FunctionID>-7</FunctionID>@C@",
     R"(Error #0114 in '/Cat/Amp/Volume':
  Value '-7' out of range [0, 4096)
)"},
    {"ID of another function", "<FunctionName>Volume</FunctionName><FunctionID>0x001</FunctionID>@C@",
     R"(Error #0115 in '/Cat/Amp/Volume':
  Double definition of element with ID 0x1
)"},
    {"name of another function", "<FunctionName>GOOD</FunctionName><FunctionID>2</FunctionID>@C@",
     R"(Error #0116 in '/Cat/Amp/GOOD':
  Double definition of element 'GOOD'
)"},
    {"ID and name of another function", "<FunctionName>Good</FunctionName><FunctionID>1</FunctionID>@C@",
     R"(Error #0115 in '/Cat/Amp/Good':
  Double definition of element with ID 0x1
)"},
    {"no class", "<FunctionName>Volume</FunctionName><FunctionID>2</FunctionID>",
     R"(Error #0117 in '/Cat/Amp/Volume':
  Can not find element <FunctionClass>
)"},
};

TEST(Function, FaultInTheHeadRejectsIt) {
    for (const HeadCase& row : kRejectedHeads) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportFunction(row.content);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(
            imported->messages,
            row.message + std::string("Error #0145 in '/Cat/Amp':\n  Failed to import element <Function>\n"));
        EXPECT_EQ(NodeAt<ZMTFBlock>(imported->catalog, "Amp")->Count(), 1U);
    }
}

struct AcceptedHead {
    const char* content;
    unsigned id;
    const char* name;
};
constexpr AcceptedHead kAcceptedHeads[] = {
    {"<FunctionName>Volume</FunctionName><FunctionID>0xFFF</FunctionID>@C@", 0xFFF, "Volume"},
    {"<FunctionID>0x000</FunctionID><FunctionName>Volume</FunctionName>@C@", 0, "Volume"},
    {"@C@<FunctionName>Volume</FunctionName><FunctionID>1024</FunctionID>", 0x400, "Volume"},
    {"<FunctionName> Volume (L) </FunctionName><FunctionID>2</FunctionID>@C@", 2, "_Volume_(L)_"},
    {"<FunctionName>Vol.Ctrl</FunctionName><FunctionID>2</FunctionID>@C@", 2, "VolCtrl"},
};

TEST(Function, TakesAnyNumberAndSanitizesTheName) {
    for (const AcceptedHead& row : kAcceptedHeads) {
        SCOPED_TRACE(row.content);
        const auto imported = ImportFunction(row.content);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        auto* block = NodeAt<ZMTFBlock>(imported->catalog, "Amp");
        const auto* function = dynamic_cast<ZMTFunction*>(block->GetChild(row.id));
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(function->FunctionID(), row.id);
        EXPECT_EQ(function->GetName(), row.name);
        EXPECT_EQ(function->GetParent(), block);
    }
}

TEST(Function, RejectedFunctionOccupiesNeitherIdNorName) {
    const auto imported = ImportText(CatalogOf(
        BlockOf("<Function><FunctionName>Volume</FunctionName><FunctionID>2</FunctionID></Function>" +
                VoidFunction("2", "Volume"))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0117 in '/Cat/Amp/Volume':
  Can not find element <FunctionClass>
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)");
    EXPECT_NE(NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume"), nullptr);
}

struct ClassCase {
    const char* what;
    const char* functionClass;
    bool stays;
    const char* messages;
};
constexpr ClassCase kFunctionClassCases[] = {
    {"array", R"(<FunctionClass ClassRef="class_dynamic_array"><Property><PArray>
                 <PAParam><ParamName>P</ParamName><PAParamOPType><PCmdGet/></PAParamOPType>
                 <TVoid TypeRef="type_void"/></PAParam></PArray></Property></FunctionClass>)",
     true,
     R"(Warning #0118 in '/Cat/Amp/Volume':
  Import of function class type 'class_dynamic_array' not fully supported yet
)"},
    {"long array",
     R"(<FunctionClass ClassRef="class_long_array"><Property><PUnclassified>@P@</PUnclassified></Property>
        </FunctionClass>)",
     true,
     R"(Warning #0118 in '/Cat/Amp/Volume':
  Import of function class type 'class_long_array' not fully supported yet
)"},
    {"long array in other letters",
     R"(<FunctionClass ClassRef="Class_LONG_Array"><Property><PUnclassified>@P@</PUnclassified></Property>
        </FunctionClass>)",
     true,
     R"(Warning #0118 in '/Cat/Amp/Volume':
  Import of function class type 'Class_LONG_Array' not fully supported yet
)"},
    {"array of records",
     R"(<FunctionClass ClassRef="class_dynamic_array_of_record"><Property><PUnclassified>@P@</PUnclassified>
        </Property></FunctionClass>)",
     false,
     R"(Error #0119 in '/Cat/Amp/Volume':
  Import of function class type 'class_dynamic_array_of_record' not fully supported yet
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)"},
    {"long array of records",
     R"(<FunctionClass ClassRef="CLASS_long_array_of_record"><Property><PUnclassified>@P@</PUnclassified>
        </Property></FunctionClass>)",
     false,
     R"(Error #0119 in '/Cat/Amp/Volume':
  Import of function class type 'CLASS_long_array_of_record' not fully supported yet
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)"},
    {"any other class",
     R"(<FunctionClass ClassRef="class_array"><Property><PUnclassified>@P@</PUnclassified></Property>
        </FunctionClass>)",
     true, ""},
    {"neither property nor method", "<FunctionClass><PUnclassified>@P@</PUnclassified></FunctionClass>",
     false,
     R"(Error #0124 in '/Cat/Amp/Volume':
  Can neighter find element <Property> nor <Method>
Error #0120 in '/Cat/Amp/Volume':
  Failed to import element <FunctionClass>
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)"},
    {"empty class", "<FunctionClass/>", false,
     R"(Error #0124 in '/Cat/Amp/Volume':
  Can neighter find element <Property> nor <Method>
Error #0120 in '/Cat/Amp/Volume':
  Failed to import element <FunctionClass>
Error #0145 in '/Cat/Amp':
  Failed to import element <Function>
)"},
    {"property of an unknown class",
     "<FunctionClass><Property><PContainer>@P@</PContainer></Property></FunctionClass>", true,
     R"(Error #0150 in '/Cat/Amp/Volume':
  No matching sub element found
Warning #0138 in '/Cat/Amp/Volume':
  Too many errors while importing parameters. Removing all parameters from the function's operations.
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
    {"method without a class", "<FunctionClass><Method/></FunctionClass>", true,
     R"(Error #0150 in '/Cat/Amp/Volume':
  No matching sub element found
Warning #0138 in '/Cat/Amp/Volume':
  Too many errors while importing parameters. Removing all parameters from the function's operations.
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
    {"array of an unsupported kind with an unknown class",
     R"(<FunctionClass ClassRef="class_long_array"><Method/></FunctionClass>)", true,
     R"(Warning #0118 in '/Cat/Amp/Volume':
  Import of function class type 'class_long_array' not fully supported yet
Error #0150 in '/Cat/Amp/Volume':
  No matching sub element found
Warning #0138 in '/Cat/Amp/Volume':
  Too many errors while importing parameters. Removing all parameters from the function's operations.
Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
    {"class without parameters", "<FunctionClass><Property><PUnclassified/></Property></FunctionClass>", true,
     R"(Error #0123 in '/Cat/Amp/Volume':
  Function contains no valid operation
)"},
};

TEST(Function, ClassIsTakenRefusedOrWithdrawn) {
    for (const ClassCase& row : kFunctionClassCases) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportClass(row.functionClass);
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
        EXPECT_EQ(NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume") != nullptr, row.stays);
    }
}

TEST(Function, KindComesFromTheClass) {
    struct Row {
        const char* functionClass;
        ClassKind kind;
    };
    const Row rows[] = {
        {"<FunctionClass><Property><PUnclassified/></Property></FunctionClass>", ClassKind::Property},
        {"<FunctionClass><Method><MTrigger/></Method></FunctionClass>", ClassKind::Method},
        {"<FunctionClass><Method><MTrigger/></Method><Property><PText/></Property></FunctionClass>",
         ClassKind::Property},
        {"<FunctionClass><Property/></FunctionClass>", ClassKind::Property},
        {"<FunctionClass><Method/></FunctionClass>", ClassKind::Method},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.functionClass);
        const auto imported = ImportClass(row.functionClass);
        const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(function->Class(), row.kind);
    }
}

/// A method "Reset" whose parameter elements are these, imported with parameters that fail as they say.
std::string PlannedCatalog(const std::string& params) {
    return CatalogOf(
        BlockOf("<Function><FunctionID>0x200</FunctionID><FunctionName>Reset</FunctionName>"
                "<FunctionClass><Method><MUnclassified>" +
                params + "</MUnclassified></Method></FunctionClass></Function>"));
}

TEST(Function, OperationThatFailsToResolveIsDeleted) {
    FactoryImport result(PlannedFactory(), PlannedCatalog(R"(
        <MUParam Fails="resolve"><ParamName>A</ParamName><MUParamOPType><MCmdStart/></MUParamOPType></MUParam>
        <MUParam><ParamName>B</ParamName><MUParamOPType><MReportResult/></MUParamOPType></MUParam>)"));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.messages, R"(Error #0122 in '/Cat/Amp/Reset':
  Failed to import operation 'Start'
)");
    const auto* function = NodeAt<ZMTFunction>(&result.catalog, "Amp", "Reset");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->GetChild(0), nullptr);
    EXPECT_NE(function->GetChild(12), nullptr);
    EXPECT_EQ(function->Count(), 1U);
}

TEST(Function, StaysWhenAllOperationsFailToResolve) {
    FactoryImport result(PlannedFactory(), PlannedCatalog(R"(
        <MUParam Fails="resolve"><ParamName>A</ParamName>
          <MUParamOPType><MReportResult/><MCmdStart/></MUParamOPType></MUParam>)"));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.messages, R"(Error #0122 in '/Cat/Amp/Reset':
  Failed to import operation 'Start'
Error #0122 in '/Cat/Amp/Reset':
  Failed to import operation 'Result'
Error #0123 in '/Cat/Amp/Reset':
  Function contains no valid operation
)");
    const auto* function = NodeAt<ZMTFunction>(&result.catalog, "Amp", "Reset");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->Count(), 0U);
}

TEST(Function, FindsItsOperationsByOpTypeAndName) {
    const auto imported = ImportText(CatalogOf(BlockOf(VoidFunction("1", "Version"))));
    const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Version");
    ASSERT_NE(function, nullptr);
    ASSERT_NE(function->GetChild(1), nullptr);
    EXPECT_EQ(function->GetChild(1), function->FindChild("GET"));
    EXPECT_EQ(function->GetChild(0), nullptr);
    EXPECT_EQ(function->FindChild("Set"), nullptr);
}

}  // namespace
}  // namespace tarvex::test::function_test
