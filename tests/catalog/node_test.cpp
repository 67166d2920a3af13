/// What all nodes of the tree share: type codes, names, paths, levels and the scoped look-up.

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "catalog/all_classes.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/param_kinds.h"

namespace tarvex::test::node_test {
namespace {

TEST(NodeType, EveryClassAnswersForItsOwnCodeOnly) {
    for (const ClassRow& row : kClasses) {
        const std::unique_ptr<ZMTNode> node = row.make();
        EXPECT_EQ(node->GetType(), row.code) << row.name;
        for (int code = -1; code <= 200; ++code) {
            EXPECT_EQ(node->IsType(code), code == row.code) << row.name << " asked for " << code;
        }
    }
}

TEST(NodeType, EveryKindOfParameterIsAmongTheClasses) {
    for (const ParamKind kind : AllParamKinds()) {
        EXPECT_NE(std::ranges::find(kClasses, static_cast<int>(kind), &ClassRow::code), std::end(kClasses))
            << static_cast<int>(kind);
    }
}

TEST(NodeType, CodesOfStreamsArraysAndRecordsNeverMove) {
    EXPECT_EQ(kParamStream, 6);
    EXPECT_EQ(kParamStreamCase, 7);
    EXPECT_EQ(kParamArray, 8);
    EXPECT_EQ(kParamRecord, 9);
    EXPECT_EQ(kParamFktIDBitStream, 20);
}

TEST(NewNode, IsEmptyAndAlone) {
    for (const ClassRow& row : kClasses) {
        SCOPED_TRACE(row.name);
        const std::unique_ptr<ZMTNode> node = row.make();
        EXPECT_EQ(node->GetName(), row.code == kParamStreamCase ? "{StreamCase}" : "");
        EXPECT_EQ(node->GetParent(), nullptr);
        EXPECT_EQ(node->GetBytesInMsg(), 0);
        EXPECT_EQ(node->GetIndent(), 0U);
        EXPECT_EQ(node->GetPosition(), 0U);
        EXPECT_EQ(node->GetChild(0), nullptr);
        EXPECT_EQ(node->FindChild(""), nullptr);
    }
}

TEST(NodePath, IsMadeOfTheNamesFromTheRootDown) {
    PlainNode root("Cat");
    PlainNode block("FB", &root);
    PlainNode function("Volume", &block);
    EXPECT_EQ(root.GetPath(), "/Cat");
    EXPECT_EQ(block.GetPath(), "/Cat/FB");
    EXPECT_EQ(function.GetPath(), "/Cat/FB/Volume");
}

TEST(NodePath, KeepsEmptyNames) {
    PlainNode root;
    PlainNode nameless("", &root);
    PlainNode entry("Byte", &nameless);
    EXPECT_EQ(root.GetPath(), "/");
    EXPECT_EQ(nameless.GetPath(), "//");
    EXPECT_EQ(entry.GetPath(), "///Byte");
}

TEST(NodePath, FollowsANewNameAndANewParent) {
    PlainNode first("First");
    PlainNode second("Second");
    PlainNode child("Child", &first);
    child.SetName("Renamed");
    EXPECT_EQ(child.GetPath(), "/First/Renamed");
    child.SetParent(&second);
    EXPECT_EQ(child.GetPath(), "/Second/Renamed");
    child.SetParent(nullptr);
    EXPECT_EQ(child.GetPath(), "/Renamed");
}

TEST(NodeLevel, CountsTheNodesAbove) {
    PlainNode root("Cat");
    PlainNode block("FB", &root);
    PlainNode function("Volume", &block);
    EXPECT_EQ(root.GetLevel(), 0U);
    EXPECT_EQ(block.GetLevel(), 1U);
    EXPECT_EQ(function.GetLevel(), 2U);
    EXPECT_EQ(root.GetIndentLevel(), 0U);
    EXPECT_EQ(function.GetIndentLevel(), 2U);
    EXPECT_EQ(root.GetDumpLevel(), 0U);
    EXPECT_EQ(function.GetDumpLevel(), 2U);
}

TEST(NodeLevel, IsKeptAsIndentByResolve) {
    ElementImport import;
    PlainNode root("Cat");
    PlainNode block("FB", &root);
    EXPECT_EQ(block.GetIndent(), 0U);
    EXPECT_TRUE(block.Resolve(import.Context()));
    EXPECT_EQ(block.GetIndent(), 1U);
    EXPECT_TRUE(root.Resolve(import.Context()));
    EXPECT_EQ(root.GetIndent(), 0U);
}

TEST(NodeBytes, AreKept) {
    PlainNode node;
    node.SetBytesInMsg(4);
    EXPECT_EQ(node.GetBytesInMsg(), 4);
    node.SetBytesInMsg(-1);
    EXPECT_EQ(node.GetBytesInMsg(), -1);
}

TEST(NodeBase, HasNoChildrenAndNoClone) {
    PlainNode node("Cat");
    EXPECT_EQ(node.FindChild("Cat"), nullptr);
    EXPECT_EQ(node.GetChild(0), nullptr);
    EXPECT_EQ(node.Clone(), nullptr);
}

TEST(NodeImport, OperationsAndBareDefinitionsHaveNoElementOfTheirOwn) {
    ElementImport import;
    ZMTOperation operation;
    ZMTDef definition;
    ZMTParam param;
    EXPECT_FALSE(import.Import(operation, "<PCmdSet/>"));
    EXPECT_FALSE(import.Import(definition, "<TypeDef TypeID=\"type_enum\"/>"));
    EXPECT_FALSE(import.Import(param, "<PUParam><ParamName>Volume</ParamName></PUParam>"));
    EXPECT_EQ(import.TakeMessages(), "");
}

/// A node with children that each have a position of their own.
class Scope : public PlainNode, public ZMTChildList<Scope> {
  public:
    Scope(const std::string& name, unsigned position) : PlainNode(name), position_(position) {}

    unsigned GetPosition() const override { return position_; }
    ZMTNode* FindChild(const SoughtName& name) const override { return FindByName(name); }

    Scope& Add(const std::string& name, unsigned position) {
        auto child = std::make_unique<Scope>(name, position);
        child->SetParent(this);
        Scope& result = *child;
        Append(std::move(child));
        return result;
    }

  private:
    unsigned position_;
};

/// Root(0): Before(1), Same(2), Inner(5): { Near(1), Same(3), Far(7) }, After(6)
struct ScopeTree {
    Scope root{"Root", 0};
    Scope& before = root.Add("Before", 1);
    Scope& outerSame = root.Add("Same", 2);
    Scope& inner = root.Add("Inner", 5);
    Scope& after = root.Add("After", 6);
    Scope& near = inner.Add("Near", 1);
    Scope& innerSame = inner.Add("Same", 3);
    Scope& far = inner.Add("Far", 7);
};

TEST(FindVisible, SeesOnlyWhatStandsBefore) {
    ScopeTree tree;
    struct Row {
        const char* what;
        const char* name;
        unsigned beforePos;
        const Scope* expected;
    };
    const Row rows[] = {
        {"in the own list", "Near", 2, &tree.near},
        {"in any letter case", "nEAR", 2, &tree.near},
        {"at the limit itself", "Near", 1, nullptr},
        {"behind the limit", "Far", 7, nullptr},
        {"just before the limit", "Far", 8, &tree.far},
        {"in the parent's list, before the asking node", "Before", 1, &tree.before},
        {"in the parent's list although nothing stands before position 0", "Before", 0, &tree.before},
        {"in the parent's list, behind the asking node", "After", 9, nullptr},
        {"in both lists, near one wins", "Same", 4, &tree.innerSame},
        {"in both lists, near one is too late", "Same", 3, &tree.outerSame},
        {"the asked node itself", "Inner", 9, nullptr},
        {"the root itself", "Root", 9, nullptr},
        {"nowhere", "Other", 9, nullptr},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(tree.inner.FindVisible(row.name, row.beforePos), row.expected) << row.what;
    }
}

TEST(FindVisible, RootDoesNotFindItself) {
    const Scope root("Root", 0);
    EXPECT_EQ(root.FindVisible("Root", 100), nullptr);
    const PlainNode plain("Root");
    EXPECT_EQ(plain.FindVisible("Root", 100), nullptr);
}

}  // namespace
}  // namespace tarvex::test::node_test
