/// Where that ends what is known of messages.

#include "review/layout_end.h"

#include <string>

#include <gtest/gtest.h>

#include "params/layout.h"
#include "review/examples.h"

namespace tarvex::test::layout_end_test {
namespace {

using namespace review;

/// What is told of the operation of a function of a block; "complete" when all is known.
std::string EndOf(const CatalogReading& reading, unsigned fBlockID, unsigned functionID, unsigned opType) {
    const auto end = LayoutEndOf(*reading.Catalog()->GetAt(fBlockID)->GetAt(functionID)->GetAt(opType));
    return !end ? "complete" : (end->isHole ? "? " : "~ ") + end->why;
}

TEST(ReviewLayoutEnd, IsTheFirstThatIsNotKnown) {
    struct Row {
        unsigned fBlockID;
        unsigned functionID;
        unsigned opType;
        const char* end;
    };
    constexpr Row kRows[] = {
        {0x22, 0x402, 12, "complete"},
        {0x22, 0x409, 0, "complete"},
        {0x22, 0x408, 0, "~ Data: array, open, at most 8 elements"},
        {0x31, 0x209, 12, "~ Artist: string, open, at most 32 bytes"},
        {0x31, 0x204, 12, "~ Title: string, open, at most 64 bytes"},
        {0x40, 0x202, 12, "? the parameter at position 1 could not be imported (message 129)"},
        {0x50, 0x307, 12, "? Network has another number of fields than it says (message 55)"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(EndOf(Roadster(), row.fBlockID, row.functionID, row.opType), row.end);
    }
}

/// How many operations of a catalog have an end, after a look at each.
unsigned Ends(const CatalogReading& reading) {
    unsigned ends = 0;
    for (const ZMTFBlock& block : reading.Catalog()->Items()) {
        for (const ZMTFunction& function : block.Items()) {
            for (const ZMTOperation& operation : function.Items()) {
                const auto end = LayoutEndOf(operation);
                const Layout layout = LayoutOf(operation);
                EXPECT_EQ(end.has_value(), layout != Layout::Complete) << operation.GetPath();
                EXPECT_TRUE(!end || !end->isHole || layout == Layout::Incomplete) << operation.GetPath();
                ends += end ? 1 : 0;
            }
        }
    }
    return ends;
}

TEST(ReviewLayoutEnd, GoesWithTheVerdict) {
    EXPECT_EQ(Ends(Roadster()), 29U);
    EXPECT_GT(Ends(Convertible()), 0U);
    const std::string data = std::string(TARVEX_SHOWN) + "/../";
    for (const char* catalog : {"faults.xml", "newer_faults.xml"}) {
        EXPECT_GT(Ends(CatalogReading(data + catalog, {})), 0U) << catalog;
    }
}

}  // namespace
}  // namespace tarvex::test::layout_end_test
