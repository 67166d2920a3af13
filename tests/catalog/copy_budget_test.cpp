/// What copies of parameters and functions may take.

#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "params/enumeration.h"
#include "params/void.h"

namespace tarvex::test::copy_budget_test {
namespace {

TEST(Bound, GrowsWithTheInput) {
    struct Row {
        Bound bound;
        std::size_t inputBytes;
        std::size_t allowed;
    };
    constexpr Row kRows[] = {
        {{7}, 0, 7},
        {{7}, 1'000'000, 7},
        {{7, 3}, 2, 13},
        {{7, 1, 4}, 3, 7},
        {{7, 1, 4}, 9, 9},
        {CopyBudget::kBytes, 0, 268'435'456},
        {CopyBudget::kBytes, 60'000'000, 1'228'435'456},
    };
    for (const auto& [bound, inputBytes, allowed] : kRows) {
        EXPECT_EQ(bound.For(inputBytes), allowed);
        EXPECT_TRUE(Allowance(bound, inputBytes).Take(allowed));
        EXPECT_FALSE(Allowance(bound, inputBytes).Take(allowed + 1));
    }
}

TEST(Allowance, GivesNothingAfterARefusal) {
    Allowance allowance(10);
    EXPECT_TRUE(allowance.Take(9));
    EXPECT_FALSE(allowance.IsSpent());
    EXPECT_FALSE(allowance.Take(2));
    EXPECT_TRUE(allowance.IsSpent());
    EXPECT_FALSE(allowance.Take(1));
    EXPECT_FALSE(allowance.Take(0));
}

TEST(CopyBudget, AllowsCopiesByTheirSize) {
    ZMTParamEnum enumeration;
    RunAllowance run;
    CopyBudget budget(Allowance(2 * enumeration.CopySize() + 10), run);
    EXPECT_TRUE(budget.TakeFor(enumeration, 10));
    EXPECT_TRUE(budget.TakeFor(enumeration));
    EXPECT_FALSE(budget.TakeFor(enumeration));
}

TEST(CopyBudget, TakesCopiesFromTheRun) {
    ZMTParamEnum enumeration;
    const std::size_t size = enumeration.CopySize();
    RunAllowance run(Cost{1000, size + size / 2, 0});
    CopyBudget budget(Allowance(10 * size), run);
    EXPECT_TRUE(budget.TakeFor(enumeration));
    EXPECT_EQ(run.Left().memory, size / 2);
    EXPECT_EQ(run.Left().steps, 1000 - size / 8);
    EXPECT_FALSE(budget.TakeFor(enumeration));
    run.GiveBack(size);
    EXPECT_FALSE(budget.TakeFor(enumeration));  // and from then on
}

TEST(CopyBudget, LeavesAQuarterOfTheMemoryToTheDatabase) {
    ZMTParamEnum enumeration;
    const std::size_t size = enumeration.CopySize();
    RunAllowance run(Cost{1000, 4 * size, 0});
    CopyBudget budget(0, run);
    for (int copy = 1; copy <= 3; ++copy) {
        EXPECT_TRUE(budget.TakeFor(enumeration));
    }
    EXPECT_FALSE(budget.TakeFor(enumeration));
}

TEST(CopyBudget, CountsTheSlotsUpToAPosition) {
    // As many slots as the pointer of a parameter has bytes, eight times over: position 7 and those before.
    ElementImport import;
    const std::string xml =
        "<PUParam><ParamName>P</ParamName><PUParamOPType><PCmdGet><ParamPos>7</ParamPos>"
        "</PCmdGet></PUParamOPType><PUParamType><TVoid TypeRef=\"type_void\"/>"
        "</PUParamType></PUParam>";
    ZMTParamVoid param;
    param.SetName("P");
    const std::size_t size = param.CopySize() + 8 * sizeof(void*);
    for (const bool fits : {true, false}) {
        ZMTFunction function;
        import.Context().copies = CopyBudget(Allowance(size - (fits ? 0 : 1)), import.Context().run);
        const ParsedElement element(xml);
        EXPECT_TRUE(function.ImportErrorFunction(*element, import.Context()) == fits);
        EXPECT_EQ(function.Count(), fits ? 1U : 0U);
    }
}

TEST(CopyBudget, SizeOfACopyCountsWhatIsBelow) {
    ZMTParamEnum enumeration;
    const std::size_t alone = enumeration.CopySize();
    auto value = std::make_unique<ZMTEnumValue>();
    value->SetName(std::string(1000, 'n'));
    const std::size_t valueSize = value->CopySize();
    EXPECT_GT(valueSize, 1000U);
    enumeration.Append(std::move(value));
    EXPECT_GE(enumeration.CopySize(), alone + valueSize);
}

/// A context of which nothing may be copied.
void Exhaust(ImportContext& context) {
    context.copies = CopyBudget(Allowance(0), context.run);
}

TEST(CopyBudget, ParametersBeyondItCountAsNotCloned) {
    ElementImport import;
    Exhaust(import.Context());
    ZMTFunction function;
    EXPECT_TRUE(import.Import(function, VoidFunction("0x400", "Volume")));
    EXPECT_EQ(import.TakeMessages(),
              "Error #0133 in '/Volume':\n  Failed to duplicate object\n"
              "Error #0130 in '/Volume':\n  Failed to assign parameter '{Void}' to operation\n");
    EXPECT_EQ(function.Count(), 0U);
}

TEST(CopyBudget, FunctionsBeyondItCountAsNotCopied) {
    ElementImport import;
    ZMTFunction original;
    ASSERT_TRUE(import.Import(original, VoidFunction("0x400", "Volume", R"(FktDefId="fkt")")));
    EXPECT_EQ(import.TakeMessages(), "");
    Exhaust(import.Context());
    ZMTFunction copy;
    EXPECT_FALSE(import.Import(copy, R"(<Function FktDefRef="fkt"/>)"));
    EXPECT_EQ(import.TakeMessages(), "Error #0107 in '/Volume':\n  Failed to duplicate object\n");
    EXPECT_EQ(copy.Count(), 0U);
}

}  // namespace
}  // namespace tarvex::test::copy_budget_test
