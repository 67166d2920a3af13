/// Looking the names of a list up takes work that grows with their number, not with its square.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/child_list.h"
#include "catalog/test_nodes.h"
#include "cost/work.h"

namespace tarvex::test::child_list_cost_test {
namespace {

/// The work of finding every name of a list. Where the names differ, slots in turn would be compared up to
/// there.
Work FindAll(unsigned count, const std::string& front, const std::string& back) {
    const auto nameOf = [&](unsigned pos) { return front + std::to_string(1000 + pos) + back; };
    ZMTChildList<PlainNode> list;
    for (unsigned pos = 0; pos < count; ++pos) {
        list.Append(std::make_unique<PlainNode>(nameOf(pos)));
    }
    return WorkOf([&] {
        for (unsigned pos = 0; pos < count; ++pos) {
            ASSERT_EQ(list.FindByName(nameOf(pos)), list.GetAt(pos));
        }
    });
}

TEST(ChildListCost, GrowsInProportionToTheNumberOfNames) {
    EXPECT_TRUE(GrowsInProportion(FindAll(300, "", ""), FindAll(600, "", "")));
}

TEST(ChildListCost, GrowsInProportionToTheLengthOfTheNames) {
    const std::string common(100, 'N');
    EXPECT_TRUE(GrowsInProportion(FindAll(300, common, ""), FindAll(300, common + common, "")));
}

TEST(ChildListCost, IsTheSameWhereverTheNamesDiffer) {
    const std::string common(100, 'N');
    const Work start = FindAll(300, "", common);
    const Work end = FindAll(300, common, "");
    EXPECT_LE(end.calls, start.calls + start.calls / 4);
}

}  // namespace
}  // namespace tarvex::test::child_list_cost_test
