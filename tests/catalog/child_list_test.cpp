/// The list that owns child nodes: slots that carry meaning, holes, look-up by name, clones.

#include "catalog/child_list.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalog/definitions.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "import/log/tree_log.h"

namespace tarvex::test::child_list_test {
namespace {

using NodeList = ZMTChildList<PlainNode>;

/// A letter is an element of that name, a dot an empty slot.
void Fill(NodeList& list, const std::string& slots) {
    list.Clear();
    list.Resize(static_cast<unsigned>(slots.size()));
    for (unsigned pos = 0; pos < slots.size(); ++pos) {
        if (slots[pos] != '.') {
            list.SetAt(std::make_unique<PlainNode>(slots.substr(pos, 1)), pos);
        }
    }
}

std::string Slots(const NodeList& list) {
    std::string slots;
    for (const PlainNode* node : list.GetItems(true)) {
        slots += node == nullptr ? "." : node->GetName();
    }
    return slots;
}

TEST(ChildList, StartsEmpty) {
    const NodeList list;
    EXPECT_EQ(list.Size(), 0U);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(list.GetAt(0), nullptr);
    EXPECT_EQ(list.FindByName(""), nullptr);
    EXPECT_THAT(list.GetItems(true), testing::IsEmpty());
}

TEST(ChildList, AppendAddsBehindTheLastSlot) {
    NodeList list;
    Fill(list, "a.");
    list.Append(std::make_unique<PlainNode>("b"));
    list.Append(std::make_unique<PlainNode>("c"));
    EXPECT_EQ(Slots(list), "a.bc");
}

TEST(ChildList, SetAtGrowsByEmptySlots) {
    NodeList list;
    list.SetAt(std::make_unique<PlainNode>("x"), 5);
    EXPECT_EQ(list.Size(), 6U);
    EXPECT_EQ(list.Count(), 1U);
    EXPECT_EQ(Slots(list), ".....x");
    list.SetAt(std::make_unique<PlainNode>("y"), 6);
    EXPECT_EQ(Slots(list), ".....xy");
    list.SetAt(std::make_unique<PlainNode>("z"), 0);
    EXPECT_EQ(Slots(list), "z....xy");
    list.SetAt(std::make_unique<PlainNode>("w"), 5);
    EXPECT_EQ(Slots(list), "z....wy");
}

TEST(ChildList, GetAtIsNullForHolesAndBeyondTheEnd) {
    NodeList list;
    Fill(list, ".a");
    EXPECT_EQ(list.GetAt(0), nullptr);
    ASSERT_NE(list.GetAt(1), nullptr);
    EXPECT_EQ(list.GetAt(1)->GetName(), "a");
    EXPECT_EQ(list.GetAt(2), nullptr);
    EXPECT_EQ(list.GetAt(~0U), nullptr);
}

TEST(ChildList, ReserveReturnsTheSizeAndLeavesIt) {
    NodeList list;
    EXPECT_EQ(list.Reserve(100), 0U);
    Fill(list, "a.b");
    EXPECT_EQ(list.Reserve(100), 3U);
    EXPECT_EQ(list.Reserve(1), 3U);
    EXPECT_EQ(Slots(list), "a.b");
}

TEST(ChildList, OwnsItsElements) {
    const int before = PlainNode::alive;
    {
        NodeList list;
        Fill(list, "ab.c");
        EXPECT_EQ(PlainNode::alive, before + 3);
        list.DeleteRange(0, 0);
        EXPECT_EQ(PlainNode::alive, before + 2);
        list.Resize(3);
        EXPECT_EQ(PlainNode::alive, before + 1);
        list.Clear();
        EXPECT_EQ(PlainNode::alive, before);
        EXPECT_EQ(list.Size(), 0U);
        Fill(list, "ab");
    }
    EXPECT_EQ(PlainNode::alive, before);
}

struct DeleteRangeCase {
    const char* slots;
    unsigned first;
    unsigned last;
    const char* left;
};
constexpr DeleteRangeCase kDeleteRanges[] = {
    {"abcde", 3, 100, "abc.."}, {"abcde", 0, 0, ".bcde"},   {"abcde", 1, 3, "a...e"},
    {"abcde", 4, 4, "abcd."},   {"abcde", 0, ~0U, "....."}, {"abcde", 5, 9, "abcde"},
    {"abcde", 3, 2, "abcde"},   {"a..de", 1, 3, "a...e"},   {"", 0, 0, ""},
};

TEST(ChildList, DeleteRangeEmptiesSlotsAndKeepsTheSize) {
    for (const DeleteRangeCase& row : kDeleteRanges) {
        NodeList list;
        Fill(list, row.slots);
        list.DeleteRange(row.first, row.last);
        EXPECT_EQ(Slots(list), row.left) << row.slots << " from " << row.first << " to " << row.last;
    }
}

struct ResizeCase {
    const char* slots;
    unsigned size;
    const char* result;
};
constexpr ResizeCase kResizes[] = {
    {"abc", 0, ""}, {"abc", 1, "a"}, {"abc", 3, "abc"}, {"abc", 5, "abc.."}, {"", 2, ".."}, {"a..d", 2, "a."},
};

TEST(ChildList, ResizeDropsOrAddsSlotsAtTheEnd) {
    for (const ResizeCase& row : kResizes) {
        NodeList list;
        Fill(list, row.slots);
        list.Resize(row.size);
        EXPECT_EQ(Slots(list), row.result) << row.slots << " to " << row.size;
    }
}

struct CountCase {
    const char* slots;
    unsigned count;
    const char* compact;
};
constexpr CountCase kCounts[] = {
    {"", 0, ""},        {"...", 0, ""},    {"a.b.", 2, "ab"},
    {".a..b", 2, "ab"}, {"abc", 3, "abc"}, {"..c.a.b", 3, "cab"},
};

TEST(ChildList, CountLeavesHolesOutAndCompactRemovesThem) {
    for (const CountCase& row : kCounts) {
        SCOPED_TRACE(row.slots);
        NodeList list;
        Fill(list, row.slots);
        EXPECT_EQ(list.Count(), row.count);
        list.Compact();
        EXPECT_EQ(Slots(list), row.compact);
        EXPECT_EQ(list.Size(), row.count);
    }
}

TEST(ChildList, GetItemsGivesHolesOnlyWhenAsked) {
    NodeList list;
    Fill(list, "a.b.");
    PlainNode* a = list.GetAt(0);
    PlainNode* b = list.GetAt(2);
    EXPECT_THAT(list.GetItems(false), testing::ElementsAre(a, b));
    EXPECT_THAT(list.GetItems(true), testing::ElementsAre(a, nullptr, b, nullptr));
}

TEST(ChildList, GetFirstFindsTheFirstOccupiedSlot) {
    struct Row {
        const char* slots;
        bool found;
        unsigned pos;
    };
    const Row rows[] = {
        {"", false, 0}, {"...", false, 0}, {"a", true, 0}, {"..c", true, 2}, {".b.d", true, 1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.slots);
        NodeList list;
        Fill(list, row.slots);
        unsigned pos = 77;
        EXPECT_EQ(list.GetFirst(pos), row.found);
        EXPECT_EQ(pos, row.pos);
    }
}

TEST(ChildList, GetNextFindsTheFirstOccupiedSlotAfterwards) {
    constexpr unsigned kFromTheBeginning = ~0U;
    struct Row {
        const char* slots;
        unsigned after;
        bool found;
        unsigned pos;
    };
    const Row rows[] = {
        {"a.c", kFromTheBeginning, true, 0},
        {"..c", kFromTheBeginning, true, 2},
        {"a.c", 0, true, 2},
        {"a.c", 1, true, 2},
        {"a.c", 2, false, 0},
        {"a.c", 50, false, 0},
        {"a..", 0, false, 0},
        {"", kFromTheBeginning, false, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.slots) + " after " + std::to_string(row.after));
        NodeList list;
        Fill(list, row.slots);
        unsigned pos = 77;
        EXPECT_EQ(list.GetNext(pos, row.after), row.found);
        if (row.found) {
            EXPECT_EQ(pos, row.pos);
        }
    }
}

TEST(ChildList, FindGapFindsTheElementBehindAHole) {
    struct Row {
        const char* slots;
        unsigned start;
        bool found;
        unsigned pos;
    };
    const Row rows[] = {
        {"a....f", 0, true, 5}, {"abc", 0, false, 0},  {".bc", 0, true, 1},  {".bc", 1, false, 0},
        {".b.d", 1, true, 3},   {"a.c.e", 2, true, 4}, {"a.c", 2, false, 0}, {"a...", 0, false, 0},
        {"", 0, false, 0},      {"....e", 1, true, 4},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.slots) + " from " + std::to_string(row.start));
        NodeList list;
        Fill(list, row.slots);
        unsigned pos = 77;
        EXPECT_EQ(list.FindGap(pos, row.start), row.found);
        if (row.found) {
            EXPECT_EQ(pos, row.pos);
        }
    }
}

TEST(ChildList, FindByNameIgnoresCaseAndTakesTheLowestSlot) {
    NodeList list;
    list.SetAt(std::make_unique<PlainNode>("Other"), 0);
    list.SetAt(std::make_unique<PlainNode>("abc"), 4);
    list.SetAt(std::make_unique<PlainNode>("ABC"), 2);
    EXPECT_EQ(list.FindByName("abc"), list.GetAt(2));
    EXPECT_EQ(list.FindByName("aBc"), list.GetAt(2));
    EXPECT_EQ(list.FindByName("OTHER"), list.GetAt(0));
    EXPECT_EQ(list.FindByName("ab"), nullptr);
    EXPECT_EQ(list.FindByName(""), nullptr);
    list.DeleteRange(2, 2);
    EXPECT_EQ(list.FindByName("ABC"), list.GetAt(4));
}

TEST(ChildList, CopyFromClonesSlotBySlot) {
    PlainNode parent("Parent");
    ZMTChildList<ZMTParam> source;
    source.SetAt(std::make_unique<PlannedParam>(ParamPlan{}), 1);
    source.SetAt(std::make_unique<PlannedParam>(ParamPlan{}), 3);
    source.GetAt(1)->SetName("One");
    source.GetAt(3)->SetName("Three");
    ZMTChildList<ZMTParam> copy;
    copy.SetAt(std::make_unique<PlannedParam>(ParamPlan{}), 0);
    ASSERT_TRUE(copy.CopyFrom(&source, &parent));
    EXPECT_EQ(copy.Count(), 2U);
    EXPECT_EQ(copy.GetAt(0), nullptr);
    for (const unsigned pos : {1U, 3U}) {
        ASSERT_NE(copy.GetAt(pos), nullptr);
        EXPECT_NE(copy.GetAt(pos), source.GetAt(pos));
        EXPECT_EQ(copy.GetAt(pos)->GetName(), source.GetAt(pos)->GetName());
        EXPECT_EQ(copy.GetAt(pos)->GetParent(), &parent);
        EXPECT_EQ(source.GetAt(pos)->GetParent(), nullptr);
    }
}

TEST(ChildList, CopyFromLeavesTheListEmptyWhenACloneFails) {
    PlainNode parent("Parent");
    ZMTChildList<ZMTParam> source;
    source.Append(std::make_unique<PlannedParam>(ParamPlan{}));
    source.Append(std::make_unique<PlannedParam>(ParamPlan{.generations = 0}));
    ZMTChildList<ZMTParam> copy;
    copy.Append(std::make_unique<PlannedParam>(ParamPlan{}));
    EXPECT_FALSE(copy.CopyFrom(&source, &parent));
    EXPECT_EQ(copy.Size(), 0U);
    EXPECT_EQ(source.Count(), 2U);
}

TEST(ChildList, CopyFromNothingFails) {
    PlainNode parent("Parent");
    ZMTChildList<ZMTParam> copy;
    EXPECT_FALSE(copy.CopyFrom(nullptr, &parent));
}

/// Notes the order in which it is resolved and dumped.
class NotingNode : public PlainNode {
  public:
    NotingNode(const std::string& name, std::string& notes, bool resolves = true)
        : PlainNode(name), notes_(notes), resolves_(resolves) {}
    bool Resolve(ImportContext& /*context*/) override {
        notes_ += GetName();
        return resolves_;
    }
    bool Dump(ZMostTreeLog& /*treeLog*/) const override {
        notes_ += GetName();
        return true;
    }

  private:
    std::string& notes_;
    bool resolves_;
};

TEST(ChildList, ResolveAllGoesInOrderAndStopsAtTheFirstFailure) {
    ElementImport import;
    std::string notes;
    NodeList list;
    EXPECT_TRUE(list.ResolveAll(import.Context()));
    list.SetAt(std::make_unique<NotingNode>("c", notes), 5);
    list.SetAt(std::make_unique<NotingNode>("a", notes), 1);
    EXPECT_TRUE(list.ResolveAll(import.Context()));
    EXPECT_EQ(notes, "ac");
    notes.clear();
    list.SetAt(std::make_unique<NotingNode>("b", notes, false), 3);
    EXPECT_FALSE(list.ResolveAll(import.Context()));
    EXPECT_EQ(notes, "ab");
}

TEST(ChildList, DumpAllGoesInOrderAndSkipsHoles) {
    ZMostTreeLog log;
    std::string notes;
    NodeList list;
    list.SetAt(std::make_unique<NotingNode>("c", notes), 7);
    list.SetAt(std::make_unique<NotingNode>("b", notes), 2);
    list.SetAt(std::make_unique<NotingNode>("a", notes), 0);
    list.DumpAll(log);
    EXPECT_EQ(notes, "abc");
}

std::unique_ptr<ZMTDef> Definition(const std::string& defName) {
    auto definition = std::make_unique<ZMTDef>();
    definition->SetName("Name of " + defName);
    definition->SetDefName(defName);
    return definition;
}

TEST(DefList, FindByDefNameIgnoresCaseAndTakesTheLowestSlot) {
    ZMTDefList<ZMTDef> list;
    EXPECT_EQ(list.FindByDefName("type_enum"), nullptr);
    list.SetAt(Definition("TYPE_ENUM"), 3);
    list.SetAt(Definition("type_enum"), 1);
    list.Append(Definition("type_bool"));
    EXPECT_EQ(list.FindByDefName("Type_Enum"), list.GetAt(1));
    EXPECT_EQ(list.FindByDefName("TYPE_BOOL"), list.GetAt(4));
    EXPECT_EQ(list.FindByDefName("Name of type_bool"), nullptr);
    EXPECT_EQ(list.FindByDefName(""), nullptr);
}

TEST(DefList, FindByDefNameFollowsEveryChangeOfTheList) {
    ZMTDefList<ZMTDef> list;
    list.Append(Definition("a"));
    EXPECT_EQ(list.FindByDefName("b"), nullptr);
    list.Append(Definition("b"));
    EXPECT_EQ(list.FindByDefName("b"), list.GetAt(1));
    list.SetAt(Definition("b"), 0);
    EXPECT_EQ(list.FindByDefName("b"), list.GetAt(0));
    EXPECT_EQ(list.FindByDefName("a"), nullptr);
    list.DeleteRange(0, 0);
    EXPECT_EQ(list.FindByDefName("b"), list.GetAt(1));
    list.Compact();
    EXPECT_EQ(list.FindByDefName("b"), list.GetAt(0));
    list.Resize(3);
    EXPECT_EQ(list.FindByDefName("b"), list.GetAt(0));
    list.Resize(0);
    EXPECT_EQ(list.FindByDefName("b"), nullptr);
    list.Append(Definition("b"));
    EXPECT_NE(list.FindByDefName("b"), nullptr);
    list.Clear();
    EXPECT_EQ(list.FindByDefName("b"), nullptr);
}

}  // namespace
}  // namespace tarvex::test::child_list_test
