/// What copies of parameters and functions may take.

#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "params/enumeration.h"

namespace tarvex::test {
namespace {

TEST(CopyBudget, GrowsWithTheCatalog) {
    struct Row {
        std::size_t catalogBytes;
        std::size_t allowed;
    };
    constexpr Row kRows[] = {{0, 268'435'456}, {1, 268'435'472}, {60'000'000, 1'228'435'456}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.catalogBytes);
        EXPECT_TRUE(CopyBudget(row.catalogBytes).Take(row.allowed));
        EXPECT_FALSE(CopyBudget(row.catalogBytes).Take(row.allowed + 1));
    }
}

TEST(CopyBudget, NothingIsAllowedAfterARefusal) {
    CopyBudget budget;
    EXPECT_TRUE(budget.Take(CopyBudget::kLeast - 10));
    EXPECT_TRUE(budget.Take(9));
    EXPECT_FALSE(budget.Take(2));
    EXPECT_FALSE(budget.Take(1));
    EXPECT_FALSE(budget.Take(0));
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
    context.copies = CopyBudget();
    EXPECT_TRUE(context.copies.Take(CopyBudget::kLeast));
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
}  // namespace tarvex::test
