/// Copies and clones: only nodes of exactly the same class copy, and a clone shares nothing with its
/// original.

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "catalog/all_classes.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "support/catalog_import.h"

namespace tarvex::test::node_copy_test {
namespace {

/// A function "Volume" with a parameter of every kind in its operation "Status".
std::string EveryKind() {
    const auto at = [](int pos) {
        return "<PReportStatus><ParamPos>" + std::to_string(pos) + "</ParamPos></PReportStatus>";
    };
    return CatalogOfParams(
        Param("Speed", R"(<TNumber><BasisDataType><TSWord TypeRef="type_signed_word"/></BasisDataType>
                          <Exponent>-1</Exponent><RangeMin>-4.5</RangeMin><RangeMax>250</RangeMax>
                          <Step>0.5</Step><Unit UnitRef="unit_km_h"/></TNumber>)",
              at(0)) +
        Param("Mode", R"(<TEnum TypeRef="type_enum" TEnumMax="300"><TEnumValue Code="1">On</TEnumValue>
                         <TEnumValue Code="2..9">Off</TEnumValue></TEnum>)",
              at(1)) +
        Param("Text", R"(<TString TypeRef="type_string" MaxSize="32"/>)", at(2)) +
        Param("Flags", R"(<TBitField TypeRef="type_bitfield" Length="12">
                          <TBoolField BitPos="3"><ParamName>Mute</ParamName><BitTrueDesc>muted</BitTrueDesc>
                          <BitFalseDesc>loud</BitFalseDesc></TBoolField></TBitField>)",
              at(3)) +
        Param("Switch", R"(<TBool TypeRef="type_bool"><TBoolField BitPos="0"><ParamName>On</ParamName>
                           <BitTrueDesc>yes</BitTrueDesc><BitFalseDesc>no</BitFalseDesc></TBoolField></TBool>)",
              at(4)) +
        Param("Nothing", R"(<TVoid TypeRef="type_void"/>)", at(5)) +
        Param("List",
              R"(<TArray TypeRef="type_array" NMax="7"><TArrayName>Item</TArrayName><TArrayElementType>
                         <TString TypeRef="type_string" MaxSize="16"/></TArrayElementType></TArray>)",
              at(6)) +
        Param("Rec", R"(<TRecord TypeRef="type_record" NElements="2">
                        <TRecordField FieldIdx="2"><TRecordFieldName>Second</TRecordFieldName>
                        <TVoid TypeRef="type_void"/></TRecordField>
                        <TRecordField FieldIdx="1"><TRecordFieldName>First</TRecordFieldName>
                        <TString TypeRef="type_string" MaxSize="4"/></TRecordField></TRecord>)",
              at(7)) +
        Param("Body", R"(<TStream TypeRef="type_stream" Length="9">
                         <StreamCase><PosDescription PosX="1..4" PosY="2..5"/>
                         <StreamParam><ParamName ParamIdx="2seq1">Late</ParamName>
                         <TString TypeRef="type_string" MaxSize="4"/></StreamParam>
                         <StreamParam><ParamName ParamIdx="1">Early</ParamName>
                         <TVoid TypeRef="type_void"/></StreamParam></StreamCase></TStream>)",
              at(8)));
}

TEST(CopyFrom, TakesNodesOfExactlyTheSameClass) {
    for (const ClassRow& target : kClasses) {
        for (const ClassRow& source : kClasses) {
            const std::unique_ptr<ZMTNode> copy = target.make();
            const std::unique_ptr<ZMTNode> original = source.make();
            EXPECT_EQ(copy->CopyFrom(original.get()), target.code == source.code)
                << target.name << " from " << source.name;
        }
    }
}

TEST(CopyFrom, TakesNoNullAndChangesNothingWhenItRefuses) {
    for (const ClassRow& row : kClasses) {
        SCOPED_TRACE(row.name);
        const std::unique_ptr<ZMTNode> node = row.make();
        node->SetName("Kept");
        EXPECT_FALSE(node->CopyFrom(nullptr));
        EXPECT_EQ(node->GetName(), "Kept");
    }
    ZMTParamBitField field;
    ZMTParamBool boolean;
    field.SetName("Kept");
    boolean.SetName("Lost");
    EXPECT_FALSE(field.CopyFrom(&boolean));
    EXPECT_EQ(field.GetName(), "Kept");
}

TEST(CopyFrom, CopiesNameParentBytesAndIndentOfEveryClass) {
    ElementImport import;
    PlainNode root("Root");
    PlainNode parent("Parent", &root);
    for (const ClassRow& row : kClasses) {
        SCOPED_TRACE(row.name);
        const std::unique_ptr<ZMTNode> original = row.make();
        original->SetName("Original");
        original->SetParent(&parent);
        original->SetBytesInMsg(3);
        original->Resolve(import.Context());
        const std::unique_ptr<ZMTNode> copy = row.make();
        ASSERT_TRUE(copy->CopyFrom(original.get()));
        EXPECT_EQ(copy->GetName(), "Original");
        EXPECT_EQ(copy->GetParent(), &parent);
        EXPECT_EQ(copy->GetBytesInMsg(), 3);
        EXPECT_EQ(copy->GetIndent(), row.code == kParamStreamCase ? 1U : 2U);
    }
}

TEST(CopyFrom, CopiesTheFieldsOfDefinitions) {
    ElementImport import;
    ZMTDefType type;
    ASSERT_TRUE(import.Import(type, R"(<TypeDef TypeID="type_signed_word"><TDefName>Word</TDefName>
                                       <TDefSize>2</TDefSize></TypeDef>)"));
    ZMTDefType typeCopy;
    ASSERT_TRUE(typeCopy.CopyFrom(&type));
    EXPECT_EQ(typeCopy.GetDefName(), "type_signed_word");
    EXPECT_EQ(typeCopy.Code(), 11);
    EXPECT_EQ(typeCopy.DefSize(), 2);
    ZMTDefUnit unit;
    ASSERT_TRUE(import.Import(unit, R"(<UnitDef UnitID="unit_s"><UnitDefName>s</UnitDefName>
                                       <UnitDefCode>0x12</UnitDefCode></UnitDef>)"));
    ZMTDefUnit unitCopy;
    ASSERT_TRUE(unitCopy.CopyFrom(&unit));
    EXPECT_EQ(unitCopy.GetDefName(), "unit_s");
    EXPECT_EQ(unitCopy.Code(), 0x12);
}

TEST(Clone, KeepsClassNameAndParent) {
    const int cloneable[] = {3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15, 16, 17, 18, 20};
    PlainNode parent("Parent");
    for (const ClassRow& row : kClasses) {
        if (std::find(std::begin(cloneable), std::end(cloneable), row.code) == std::end(cloneable)) {
            continue;
        }
        SCOPED_TRACE(row.name);
        const std::unique_ptr<ZMTNode> original = row.make();
        original->SetName("Original");
        original->SetParent(&parent);
        const std::unique_ptr<ZMTNode> clone = original->Clone();
        ASSERT_NE(clone, nullptr);
        EXPECT_NE(clone, original);
        EXPECT_EQ(clone->GetType(), row.code);
        EXPECT_EQ(clone->GetName(), "Original");
        EXPECT_EQ(clone->GetParent(), &parent);
    }
}

TEST(Clone, OfAFunctionEqualsItInEveryLineOfTheTreeLog) {
    const auto imported = ImportText(EveryKind());
    ASSERT_EQ(imported->messages, "");
    const auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
    ASSERT_NE(function, nullptr);
    const std::unique_ptr<ZMTNode> clone = function->Clone();
    ASSERT_NE(clone, nullptr);
    const std::string dump = DumpOf(*clone);
    EXPECT_EQ(dump, DumpOf(*function));
    for (const char* header :
         {"PARAMNUMBER: Speed", "PARAMENUM: Mode", "ENUMVALUE: Off", "PARAMSTRING: Text",
          "PARAMBITFIELD: Flags", "PARAMBOOL: Switch", "PARAMBOOLFIELD: On", "PARAMVOID: Nothing",
          "PARAMARRAY: List", "PARAMSTRING: Item", "PARAMRECORD: Rec", "PARAMSTRING: First",
          "PARAMVOID: Second", "PARAMSTREAM: Body", "PARAMSTREAMCASE: {StreamCase}", "PARAMVOID: Early",
          "PARAMSTRING: Late"}) {
        EXPECT_NE(dump.find(header), std::string::npos) << header;
    }
}

TEST(Clone, CopiesFieldsThatTheTreeLogDoesNotShow) {
    const auto imported = ImportText(EveryKind());
    const auto* number = NodeAt<ZMTParamNumber>(imported->catalog, "Amp", "Volume", "Status", "Speed");
    ASSERT_NE(number, nullptr);
    const std::unique_ptr<ZMTNode> clone = number->Clone();
    const auto& copy = dynamic_cast<const ZMTParamNumber&>(*clone);
    EXPECT_TRUE(copy.IsSigned());
    EXPECT_EQ(copy.Unit(), number->Unit());
    EXPECT_NE(copy.Unit(), nullptr);
    EXPECT_EQ(copy.TypeDefinition(), number->TypeDefinition());
    EXPECT_EQ(copy.GetIndent(), 4U);
}

TEST(Clone, HasChildrenOfItsOwnThatKnowTheirNewParents) {
    const auto imported = ImportText(EveryKind());
    auto* function = NodeAt<ZMTFunction>(imported->catalog, "Amp", "Volume");
    ASSERT_NE(function, nullptr);
    const std::unique_ptr<ZMTNode> clone = function->Clone();
    ZMTNode* operation = clone->FindChild("Status");
    ASSERT_NE(operation, nullptr);
    EXPECT_NE(operation, function->FindChild("Status"));
    EXPECT_EQ(operation->GetParent(), clone.get());
    EXPECT_EQ(clone->GetParent(), function->GetParent());
    for (const char* name : {"Speed", "Mode", "Text", "Flags", "Switch", "Nothing", "List", "Rec", "Body"}) {
        SCOPED_TRACE(name);
        ZMTNode* param = operation->FindChild(name);
        ASSERT_NE(param, nullptr);
        EXPECT_NE(param, function->FindChild("Status")->FindChild(name));
        EXPECT_EQ(param->GetParent(), operation);
    }
    for (const auto& [param, child] :
         {std::pair{"Mode", "On"}, std::pair{"Flags", "Mute"}, std::pair{"Switch", "On"},
          std::pair{"List", "Item"}, std::pair{"Rec", "First"}, std::pair{"Rec", "Second"},
          std::pair{"Body", "{StreamCase}"}}) {
        SCOPED_TRACE(param);
        ZMTNode* owner = operation->FindChild(param);
        ASSERT_NE(owner->FindChild(child), nullptr);
        EXPECT_EQ(owner->FindChild(child)->GetParent(), owner);
        EXPECT_NE(owner->FindChild(child), function->FindChild("Status")->FindChild(param)->FindChild(child));
    }
}

TEST(Clone, OutlivesAndIgnoresItsOriginal) {
    auto imported = ImportText(EveryKind());
    auto* operation = NodeAt<ZMTOperation>(imported->catalog, "Amp", "Volume", "Status");
    ASSERT_NE(operation, nullptr);
    const std::unique_ptr<ZMTNode> clone = operation->Clone();
    clone->SetParent(nullptr);
    operation->FindChild("Mode")->FindChild("On")->SetName("Changed");
    operation->FindChild("Text")->SetName("Changed");
    operation->Clear();
    ASSERT_NE(clone->FindChild("Mode"), nullptr);
    EXPECT_NE(clone->FindChild("Mode")->FindChild("On"), nullptr);
    EXPECT_NE(clone->FindChild("Text"), nullptr);
    EXPECT_EQ(clone->FindChild("Flags")->GetPath(), "/Status/Flags");
    EXPECT_EQ(clone->FindChild("List")->FindChild("Item")->GetPath(), "/Status/List/Item");
    EXPECT_EQ(clone->FindChild("Rec")->GetChild(2)->GetPath(), "/Status/Rec/Second");
    EXPECT_EQ(clone->FindChild("Body")->GetChild(0)->GetChild(1)->GetPath(),
              "/Status/Body/{StreamCase}/Late");
}

TEST(Clone, FailsWhenAChildCannotBeCloned) {
    ZMTFunction function;
    ZMTOperation& operation = function.OperationAt(0);
    operation.SetAt(std::make_unique<PlannedParam>(ParamPlan{.generations = 0}), 1);
    EXPECT_EQ(operation.Clone(), nullptr);
    EXPECT_EQ(function.Clone(), nullptr);
    operation.SetAt(std::make_unique<PlannedParam>(ParamPlan{.generations = 1}), 1);
    EXPECT_NE(operation.Clone(), nullptr);
    EXPECT_NE(function.Clone(), nullptr);
}

}  // namespace
}  // namespace tarvex::test::node_copy_test
