/// How a parameter, written once, comes into the operations that use it.

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::parameter_assignment_test {
namespace {

constexpr const char* kVoid = R"(<TVoid TypeRef="type_void"/>)";

struct FaultCase {
    const char* what;
    const char* params;  ///< "PUParam" elements of the property "Volume"
    const char* messages;
};

/// Beside each faulty element stands a good one, "Good" at position 0 of "Get".
constexpr FaultCase kFaults[] = {
    {"no type element",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdSet/></PUParamOPType></PUParam>)",
     R"(Error #0128 in '/Cat/Amp/Volume':
  Unknown parameter type in <PUParam>
)"},
    {"type of newer catalogs",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdSet/></PUParamOPType>
        <PUParamType><TShortStream TypeRef="type_stream"/></PUParamType></PUParam>)",
     R"(Error #0128 in '/Cat/Amp/Volume':
  Unknown parameter type in <PUParam>
)"},
    {"parameter that fails by itself",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdSet/></PUParamOPType><TVoid/></PUParam>)",
     R"(Error #0101 in '/Cat/Amp/Volume/P':
  Missing required attribute TypeRef
Error #0129 in '/Cat/Amp/Volume':
  Failed to import element <PUParam>
)"},
    {"parameter without name",
     R"(<PUParam><PUParamOPType><PCmdSet/></PUParamOPType><TString TypeRef="type_string" MaxSize="1"/></PUParam>)",
     R"(Error #0011 in '/Cat/Amp/Volume/':
  Can not find element <ParamName>
Error #0129 in '/Cat/Amp/Volume':
  Failed to import element <PUParam>
)"},
    {"no operations",
     R"(<PUParam><ParamName>P</ParamName><PUParamType><TVoid TypeRef="type_void"/></PUParamType></PUParam>)",
     R"(Error #0135 in '/Cat/Amp/Volume':
  Missing OPType info
)"},
    {"operations further down",
     R"(<PUParam><ParamName>P</ParamName><Use><PUParamOPType><PCmdSet/></PUParamOPType></Use>
        <TVoid TypeRef="type_void"/></PUParam>)",
     R"(Error #0135 in '/Cat/Amp/Volume':
  Missing OPType info
)"},
    {"position that is no number",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdSet><ParamPos>first</ParamPos></PCmdSet>
        </PUParamOPType><TVoid TypeRef="type_void"/></PUParam>)",
     R"(Error #0131 in '/Cat/Amp/Volume':
  Failed to analyze value 'first'
Error #0130 in '/Cat/Amp/Volume':
  Failed to assign parameter 'P' to operation
)"},
    {"position too large",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdSet><ParamPos>256</ParamPos></PCmdSet>
        </PUParamOPType><TVoid TypeRef="type_void"/></PUParam>)",
     R"(Error #0132 in '/Cat/Amp/Volume':
  Invalid parameter position 256
Error #0130 in '/Cat/Amp/Volume':
  Failed to assign parameter 'P' to operation
)"},
    {"negative position",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdSet><ParamPos>-1</ParamPos></PCmdSet>
        </PUParamOPType><TVoid TypeRef="type_void"/></PUParam>)",
     R"(Error #0132 in '/Cat/Amp/Volume':
  Invalid parameter position -1
Error #0130 in '/Cat/Amp/Volume':
  Failed to assign parameter 'P' to operation
)"},
    {"position in use",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdGet/></PUParamOPType><TVoid TypeRef="type_void"/>
        </PUParam>)",
     R"(Error #0134 in '/Cat/Amp/Volume':
  Position 0 of 'P' already occupied
Error #0130 in '/Cat/Amp/Volume':
  Failed to assign parameter 'P' to operation
)"},
    {"every operation has its own fault",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PReportStatus><ParamPos>1.5</ParamPos></PReportStatus>
        <PCmdSet><ParamPos>0x100</ParamPos></PCmdSet><PCmdGet/></PUParamOPType><TVoid TypeRef="type_void"/>
        </PUParam>)",
     R"(Error #0132 in '/Cat/Amp/Volume':
  Invalid parameter position 256
Error #0134 in '/Cat/Amp/Volume':
  Position 0 of 'P' already occupied
Error #0131 in '/Cat/Amp/Volume':
  Failed to analyze value '1.5'
Error #0130 in '/Cat/Amp/Volume':
  Failed to assign parameter 'P' to operation
)"},
    {"no known operation in the OPType element",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdReset/></PUParamOPType><TVoid TypeRef="type_void"/>
        </PUParam>)",
     ""},
    {"empty OPType element",
     R"(<PUParam><ParamName>P</ParamName><PUParamOPType/><TVoid TypeRef="type_void"/></PUParam>)", ""},
};

TEST(Assignment, FaultLeavesOneParameterOutAndTheOthersIn) {
    for (const FaultCase& row : kFaults) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(Param("Good", kVoid, "<PCmdGet/>") + row.params));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
        auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
        ASSERT_NE(function, nullptr);
        EXPECT_EQ(function->Count(), 1U);
        const auto* operation = NodeAt<ZMTOperation>(function, "Get");
        ASSERT_NE(operation, nullptr);
        EXPECT_EQ(operation->Count(), 1U);
        EXPECT_EQ(operation->GetAt(0)->GetName(), "Good");
    }
}

TEST(Assignment, ParameterOfTwoOperationsStandsInBothAsSeparateObjects) {
    const auto imported = ImportText(CatalogOfParams(Param(
        "P", kVoid, "<PCmdSet><ParamPos>0</ParamPos></PCmdSet><PCmdGet><ParamPos>0</ParamPos></PCmdGet>")));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
    ASSERT_NE(function, nullptr);
    ZMTOperation* set = function->GetAt(0);
    ZMTOperation* get = function->GetAt(1);
    ASSERT_NE(set, nullptr);
    ASSERT_NE(get, nullptr);
    ASSERT_NE(set->GetAt(0), nullptr);
    ASSERT_NE(get->GetAt(0), nullptr);
    EXPECT_NE(set->GetAt(0), get->GetAt(0));
    EXPECT_EQ(set->GetAt(0)->GetName(), "P");
    EXPECT_EQ(get->GetAt(0)->GetName(), "P");
    EXPECT_EQ(set->GetAt(0)->GetParent(), set);
    EXPECT_EQ(get->GetAt(0)->GetParent(), get);
}

struct PositionCase {
    const char* what;
    const char* operations;
    const char* tail;  ///< what the operation "Status" holds, by position
};
constexpr PositionCase kPositions[] = {
    {"no position", "<PReportStatus/>", "PFiller"},
    {"empty position", "<PReportStatus><ParamPos/></PReportStatus>", "PFiller"},
    {"position 0", "<PReportStatus><ParamPos>0</ParamPos></PReportStatus>", "PFiller"},
    {"hexadecimal position", "<PReportStatus><ParamPos>0x2</ParamPos></PReportStatus>", "FillerP"},
    {"binary position", "<PReportStatus><ParamPos>0b10</ParamPos></PReportStatus>", "FillerP"},
    {"position with blanks", "<PReportStatus><ParamPos> 2 </ParamPos></PReportStatus>", "FillerP"},
    {"inside a wrapper", "<Report><PReportStatus><ParamPos>2</ParamPos></PReportStatus></Report>", "FillerP"},
    {"inside two wrappers", "<A><B><PReportStatus><ParamPos>2</ParamPos></PReportStatus></B></A>", "FillerP"},
    {"twice, so not at all", "<PReportStatus/><PReportStatus/>", "Filler"},
    {"twice at different depths, so not at all", "<PReportStatus/><Report><PReportStatus/></Report>",
     "Filler"},
    {"once for properties and once for methods",
     "<MReportResult><ParamPos>7</ParamPos></MReportResult><PReportStatus><ParamPos>2</ParamPos></"
     "PReportStatus>",
     "FillerP"},
    {"twice for properties but once for methods",
     "<PReportStatus/><PReportStatus/><MReportResult><ParamPos>2</ParamPos></MReportResult>", "FillerP"},
};

TEST(Assignment, OperationElementGivesThePosition) {
    for (const PositionCase& row : kPositions) {
        SCOPED_TRACE(row.what);
        const auto imported =
            ImportText(CatalogOfParams(Param("Filler", kVoid) + Param("P", kVoid, row.operations)));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, "");
        const auto* status = NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "Status");
        ASSERT_NE(status, nullptr);
        std::string names;
        for (const ZMTParam* param : status->GetItems(false)) {
            names += param->GetName();
        }
        EXPECT_EQ(names, row.tail);
    }
}

TEST(Assignment, LastPositionIs255) {
    const auto imported =
        ImportText(CatalogOfParams(Param("First", kVoid, "<PCmdSet/>") +
                                   Param("Last", kVoid, "<PCmdSet><ParamPos>255</ParamPos></PCmdSet>")));
    EXPECT_EQ(imported->messages, R"(Warning #0102 in '/Cat/Amp/Volume/Set':
  Gap in parameter set before parameter 'Last'
)");
    EXPECT_NE(NodeAt<ZMTParam>(imported->catalog, "Amp", "Volume", "Set", "Last"), nullptr);
}

TEST(Assignment, OccupiedPositionSkipsOnlyThatOperation) {
    const auto imported =
        ImportText(CatalogOfParams(Param("First", kVoid, "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>") +
                                   Param("Second", kVoid,
                                         "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>"
                                         "<PReportStatus><ParamPos>1</ParamPos></PReportStatus>")));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Error #0134 in '/Cat/Amp/Volume':
  Position 1 of 'Second' already occupied
)");
    auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
    EXPECT_NE(NodeAt<ZMTParam>(function, "Set", "First"), nullptr);
    EXPECT_EQ(NodeAt<ZMTParam>(function, "Set", "Second"), nullptr);
    EXPECT_NE(NodeAt<ZMTParam>(function, "Status", "Second"), nullptr);
}

TEST(Assignment, BadPositionSkipsOnlyThatOperation) {
    const auto imported = ImportText(CatalogOfParams(
        Param("P", kVoid,
              "<PCmdSet><ParamPos>x</ParamPos></PCmdSet><PCmdGet><ParamPos>999</ParamPos></PCmdGet>"
              "<PCmdSetGet><ParamPos>1</ParamPos></PCmdSetGet>")));
    EXPECT_EQ(imported->messages, R"(Error #0131 in '/Cat/Amp/Volume':
  Failed to analyze value 'x'
Error #0132 in '/Cat/Amp/Volume':
  Invalid parameter position 999
)");
    const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
    EXPECT_EQ(function->Count(), 1U);
    EXPECT_NE(function->FindChild("SetGet"), nullptr);
}

/// What the operations of a function have lost, by OPType.
std::string LossesOf(const ZMTFunction& function) {
    std::string text;
    for (const auto& [place, hole] : function.LostParams().All()) {
        text += std::to_string(place.first) + ": " + HoleText(hole) + "\n";
    }
    return text;
}

TEST(Assignment, ParameterThatCannotBeClonedIsLeftOut) {
    FactoryImport result(PlannedFactory(), CatalogOf(BlockOf(R"(
        <Function><FunctionID>2</FunctionID><FunctionName>Reset</FunctionName><FunctionClass><Method><MTrigger>
          <MTParam Fails="clone"><ParamName>Bad</ParamName><MTParamOPType><MCmdStart/><MReportError/></MTParamOPType>
          </MTParam>
          <MTParam><ParamName>Good</ParamName><MTParamOPType><MCmdStart/></MTParamOPType></MTParam>
        </MTrigger></Method></FunctionClass></Function>)")));
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.messages, R"(Error #0133 in '/Cat/Amp/Reset':
  Failed to duplicate object
Error #0133 in '/Cat/Amp/Reset':
  Failed to duplicate object
Error #0130 in '/Cat/Amp/Reset':
  Failed to assign parameter 'Bad' to operation
)");
    const auto* function = NodeAt<ZMTFunction>(&result.catalog, "Amp", "Reset");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->Count(), 1U);
    EXPECT_NE(NodeAt<ZMTParam>(&result.catalog, "Amp", "Reset", "Start", "Good"), nullptr);
    EXPECT_EQ(LossesOf(*function),
              "0: the parameter at position 0 could not be imported (message 133)\n"
              "15: the parameter at position 0 could not be imported (message 133)\n");
}

/// Both operations of a function lose a parameter, which it has from somewhere else.
TEST(Losses, StayWithCopiesOfFunctionsAndWithErrorParameters) {
    const std::string broken =
        "<ERParam ParamDefId=\"broken\"><ParamName>Why</ParamName><ERParamOPType><PReportError>"
        "<ParamPos>2</ParamPos></PReportError></ERParamOPType><TNone/></ERParam>";
    const std::string code =
        "<ERParam ParamDefId=\"code\"><ParamName>Code</ParamName><ERParamOPType><PReportError>"
        "<ParamPos>1</ParamPos></PReportError></ERParamOPType>" +
        std::string(kVoid) + "</ERParam>";
    const std::string nowhere =
        "<ERParam ParamDefId=\"nowhere\"><ParamName>Any</ParamName>" + std::string(kVoid) + "</ERParam>";
    const auto function = [](const char* id, const char* name, const std::string& errors) {
        return std::string("<Function FktDefId=\"") + name + "\"><FunctionID>" + id +
               "</FunctionID><FunctionName>" + name +
               "</FunctionName><FunctionClass><Property><PUnclassified><PUParam><ParamName>Level</ParamName>"
               "<PUParamOPType><PReportStatus/></PUParamOPType><TNone/></PUParam>" +
               errors + "</PUnclassified></Property></FunctionClass></Function>";
    };
    const auto imported =
        ImportText(CatalogOf(BlockOf(function("1", "A", code + broken) + function("2", "B", code + nowhere)) +
                             "<FBlock><FBlockID>0x23</FBlockID><FBlockName>Copy</FBlockName><Function "
                             "FktDefRef=\"A\"/></FBlock>"));
    ASSERT_TRUE(imported->ok);
    const std::string ofA =
        "12: the parameter at position 0 could not be imported (message 128)\n"
        "15: the parameter at position 2 could not be imported (message 128)\n";
    EXPECT_EQ(LossesOf(*NodeAt<ZMTFunction>(imported->catalog, "Amp", "A")), ofA);
    EXPECT_EQ(LossesOf(*NodeAt<ZMTFunction>(imported->catalog, "Copy", "A")), ofA);
    // Of an element that names no operation nobody knows which of them have lost it.
    EXPECT_EQ(LossesOf(*NodeAt<ZMTFunction>(imported->catalog, "Amp", "B")),
              "12: the parameter at an unknown position could not be imported (message 135)\n"
              "12: the parameter at position 0 could not be imported (message 128)\n"
              "15: the parameter at an unknown position could not be imported (message 135)\n"
              "16: the parameter at an unknown position could not be imported (message 135)\n");
}

struct FunctionClassCase {
    const char* kind;
    const char* element;
    const char* prefix;
};
constexpr FunctionClassCase kFunctionClassNames[] = {
    {"Property", "PUnclassified", "PU"}, {"Property", "PArray", "PA"},      {"Property", "PRecord", "PR"},
    {"Property", "PSwitch", "PS"},       {"Property", "PNumber", "PN"},     {"Property", "PEnum", "PE"},
    {"Property", "PText", "PT"},         {"Method", "MUnclassified", "MU"}, {"Method", "MTrigger", "MT"},
};

/// A parameter element "<prefix>Param" with an OPType element of another prefix, in OPType 15.
std::string ClassParam(const std::string& prefix, const std::string& opTypePrefix, const std::string& name) {
    return std::string("<") + prefix + "Param><ParamName>" + name + "</ParamName><" + opTypePrefix +
           "ParamOPType><PReportError/></" + opTypePrefix + "ParamOPType>" + std::string(kVoid) + "</" +
           prefix + "Param>";
}

std::string FunctionOf(const std::string& kind, const std::string& classes) {
    return CatalogOf(
        BlockOf("<Function><FunctionID>2</FunctionID><FunctionName>F</FunctionName><FunctionClass><" + kind +
                ">" + classes + "</" + kind + "></FunctionClass></Function>"));
}

TEST(Assignment, EveryClassHasItsOwnParameterElement) {
    for (const FunctionClassCase& row : kFunctionClassNames) {
        SCOPED_TRACE(row.element);
        std::string params = ClassParam(row.prefix, row.prefix, "Own");
        for (const FunctionClassCase& other : kFunctionClassNames) {
            if (std::string_view(other.prefix) != row.prefix) {
                params += ClassParam(other.prefix, other.prefix, "Other");
            }
        }
        const auto imported = ImportText(
            FunctionOf(row.kind, std::string("<") + row.element + ">" + params + "</" + row.element + ">"));
        EXPECT_EQ(imported->messages, "");
        const auto* operation = NodeAt<ZMTOperation>(imported->catalog, "Amp", "F", "Error");
        ASSERT_NE(operation, nullptr);
        EXPECT_EQ(operation->Count(), 1U);
        EXPECT_NE(operation->FindChild("Own"), nullptr);
    }
}

TEST(Assignment, EveryOpTypeElementServesEveryClass) {
    for (const char* prefix : {"PU", "PA", "PR", "PS", "PN", "PE", "PT", "MU", "MT", "ER"}) {
        SCOPED_TRACE(prefix);
        const auto imported =
            ImportText(FunctionOf("Property", "<PNumber>" + ClassParam("PN", prefix, "P") + "</PNumber>"));
        EXPECT_EQ(imported->messages, "");
        EXPECT_NE(NodeAt<ZMTParam>(imported->catalog, "Amp", "F", "Error", "P"), nullptr);
    }
}

TEST(Assignment, OnlyTheFirstClassInTableOrderCounts) {
    const std::string text = "<PText>" + ClassParam("PT", "PT", "OfText") + "</PText>";
    const std::string array = "<PArray>" + ClassParam("PA", "PA", "OfArray") + "</PArray>";
    const auto imported = ImportText(FunctionOf("Property", text + array));
    EXPECT_EQ(imported->messages, "");
    const auto* operation = NodeAt<ZMTOperation>(imported->catalog, "Amp", "F", "Error");
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->Count(), 1U);
    EXPECT_NE(operation->FindChild("OfArray"), nullptr);
}

TEST(Assignment, OnlyTheFirstOpTypeElementInTableOrderCounts) {
    const auto imported = ImportText(
        CatalogOfParams("<PUParam><ParamName>P</ParamName><ERParamOPType><PReportError/></ERParamOPType>"
                        "<PTParamOPType><PCmdGet/></PTParamOPType><PAParamOPType><PCmdSet/></PAParamOPType>"
                        "<TVoid TypeRef=\"type_void\"/></PUParam>"));
    EXPECT_EQ(imported->messages, "");
    const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->Count(), 1U);
    EXPECT_NE(function->FindChild("Set"), nullptr);
}

TEST(Assignment, MethodClassInsideAPropertyCountsAsAProperty) {
    const auto imported =
        ImportText(FunctionOf("Property", "<MTrigger>" + ClassParam("MT", "MT", "P") + "</MTrigger>"));
    EXPECT_EQ(imported->messages, "");
    const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "F");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->Class(), ClassKind::Property);
    EXPECT_EQ(function->Count(), 1U);
}

/// Each place takes 4 steps, and each element below an OPType element 2.
TEST(ParameterAssignment, TakesStepsFromTheRun) {
    struct Row {
        const char* what;
        const char* operations;
        std::size_t steps;
    };
    const Row rows[] = {
        {"none", "", 0},
        {"two operations", "<PCmdSet/><PCmdGet/>", 12},
        {"one with a position", "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>", 8},
        {"others", "<Step><Unit/></Step><Unit/>", 6},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const std::string xml = std::string("<PUParam><ParamName>P</ParamName><PUParamOPType>") +
                                row.operations + "</PUParamOPType><PUParamType>" + std::string(kVoid) +
                                "</PUParamType></PUParam>";
        ElementImport import;
        const ParsedElement element(xml);
        // Copies take steps as well.
        import.Context().copies = CopyBudget(Allowance(0), import.Context().run);
        for (const bool isEnough : {true, false}) {
            if (!isEnough && row.steps == 0) {
                continue;
            }
            import.Context().run = RunAllowance(Cost{row.steps - (isEnough ? 0 : 1), 10'000, 0});
            ZMTFunction function;
            if (isEnough) {
                function.ImportErrorFunction(*element, import.Context());
                EXPECT_EQ(import.Context().run.Left().steps, 0U);
            } else {
                EXPECT_THROW(function.ImportErrorFunction(*element, import.Context()), AllowanceSpent);
            }
        }
    }
}

}  // namespace
}  // namespace tarvex::test::parameter_assignment_test
