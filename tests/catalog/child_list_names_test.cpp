/// Look-up by name compared with a search through all slots, in lists of every length, after changes of every
/// kind. The changes are pseudo-random but the same at every run; the names are few, so that they repeat.

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "catalog/child_list.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"

namespace tarvex::test::child_list_names_test {
namespace {

/// Fails its check when the test wants it to.
class FailingNode : public PlainNode {
  public:
    using PlainNode::PlainNode;
    bool Resolve(ImportContext& /*context*/) override { return !fails; }

    bool fails = false;
};

using NodeList = ZMTChildList<FailingNode>;

const FailingNode* FindSlotBySlot(const NodeList& list, const std::string& name) {
    for (unsigned pos = 0; pos < list.Size(); ++pos) {
        const FailingNode* node = list.GetAt(pos);
        if (node != nullptr && NamesEqual(node->GetName(), name)) {
            return node;
        }
    }
    return nullptr;
}

/// A list and what changes it.
class ChangingList {
  public:
    explicit ChangingList(unsigned seed) : random_(seed) {}

    const NodeList& List() const { return list_; }
    unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    /// The empty name, or one of a few letters in either case.
    std::string Name() {
        std::string name;
        for (unsigned left = Below(4); left > 0; --left) {
            name += "abAB"[Below(4)];
        }
        return name;
    }

    void Change() {
        const unsigned pos = Below(list_.Size() + 1);
        switch (Below(13)) {
            case 0:
            case 1:
            case 2:
                return list_.Append(Node());
            case 3:
            case 4:
                return list_.SetAt(Node(), pos);
            case 5:
                return list_.SetAt(Node(), pos + Below(5));
            case 6:
                return list_.SetAt(nullptr, pos);
            case 7:
                return list_.DeleteRange(pos, pos + Below(3));
            case 8:
            case 9:
                return Rename(pos);
            case 10:
                return list_.Resize(list_.Size() + Below(4) - std::min(list_.Size(), 2U));
            case 11:
                return FailSome();
            default:
                return Seldom();
        }
    }

  private:
    std::unique_ptr<FailingNode> Node() { return std::make_unique<FailingNode>(Name()); }

    void Rename(unsigned pos) {
        FailingNode* node = list_.GetAt(pos);
        if (node == nullptr) {
            return;
        }
        const FailingNode other(Name());
        if (Below(2) == 0) {
            node->SetName(other.GetName());
        } else {
            node->CopyFrom(&other);
        }
        list_.NameChanged(*node);
    }

    void FailSome() {
        for (FailingNode* node : list_.GetItems(false)) {
            node->fails = Below(10) == 0;
        }
        list_.ResolveOrDelete(import_.Context());
    }

    void Seldom() {
        if (Below(4) == 0) {
            list_.Compact();
        } else if (Below(10) == 0) {
            list_.Clear();
        }
    }

    std::mt19937 random_;
    ElementImport import_;
    NodeList list_;
};

TEST(ChildListNames, AreFoundAsIfSlotBySlot) {
    unsigned longest = 0;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        ChangingList changing(seed);
        for (unsigned step = 0; step < 1000; ++step) {
            changing.Change();
            // Sometimes several changes follow each other.
            for (unsigned left = changing.Below(4); left > 0; --left) {
                const std::string name = changing.Name();
                ASSERT_EQ(changing.List().FindByName(name), FindSlotBySlot(changing.List(), name))
                    << "'" << name << "' at step " << step << " of seed " << seed;
            }
            longest = std::max(longest, changing.List().Size());
        }
    }
    EXPECT_GT(longest, 60U);
}

/// The list is searched while its elements go one by one.
class LookingNode : public FailingNode {
  public:
    LookingNode(const std::string& name, const NodeList& list) : FailingNode(name), list_(list) {}
    bool Resolve(ImportContext& /*context*/) override {
        for (const char* name : {"a", "B", "ab", "", "none"}) {
            EXPECT_EQ(list_.FindByName(name), FindSlotBySlot(list_, name)) << name;
        }
        return !fails;
    }

  private:
    const NodeList& list_;
};

TEST(ChildListNames, AreFoundWhileElementsFailTheirCheck) {
    for (const unsigned size : {3U, 16U, 17U, 60U}) {
        SCOPED_TRACE(size);
        ElementImport import;
        NodeList list;
        const char* const names[] = {"A", "b", "", "AB", "a", "c"};
        for (unsigned pos = 0; pos < size; ++pos) {
            auto node = std::make_unique<LookingNode>(names[pos % 6], list);
            node->fails = pos % 5 != 4;
            list.Append(std::move(node));
        }
        list.ResolveOrDelete(import.Context());
        EXPECT_EQ(list.Count(), size / 5);
    }
}

}  // namespace
}  // namespace tarvex::test::child_list_names_test
