/// Arrays: their limit, their type and the element that they repeat.

#include "params/array.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/definitions.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/composites.h"
#include "support/catalog_import.h"

namespace tarvex::test::array_test {
namespace {

constexpr unsigned kNoLimit = 0xFFFFFFFF;

/// Imports an array "List" from this type element.
struct ArrayImport : CompositeImport<ZMTParamArray> {
    explicit ArrayImport(std::string_view typeElement)
        : CompositeImport<ZMTParamArray>("List", typeElement) {}
};

struct LimitCase {
    const char* nMax;
    unsigned limit;
    const char* messages;
};
constexpr LimitCase kLimits[] = {
    {"1", 1, ""},
    {"255", 255, ""},
    {" 0x10 ", 16, ""},
    {"0b11", 3, ""},
    {"2147483647", 2147483647, ""},
    {"NMax", kNoLimit, ""},
    {"N (&gt;=0)", kNoLimit, ""},
    {"0", kNoLimit, "Warning #0043 in '/List':\n  Failed to analyze value '0'. Using 'NMax' instead.\n"},
    {"-1", kNoLimit, "Warning #0043 in '/List':\n  Failed to analyze value '-1'. Using 'NMax' instead.\n"},
    {"many", kNoLimit,
     "Warning #0043 in '/List':\n  Failed to analyze value 'many'. Using 'NMax' instead.\n"},
    {"", kNoLimit, "Warning #0043 in '/List':\n  Failed to analyze value ''. Using 'NMax' instead.\n"},
    {"1.5", kNoLimit, "Warning #0043 in '/List':\n  Failed to analyze value '1.5'. Using 'NMax' instead.\n"},
    {"nmax", kNoLimit,
     "Warning #0043 in '/List':\n  Failed to analyze value 'nmax'. Using 'NMax' instead.\n"},
    {" NMax", kNoLimit,
     "Warning #0043 in '/List':\n  Failed to analyze value ' NMax'. Using 'NMax' instead.\n"},
    {"N(&gt;=0)", kNoLimit,
     "Warning #0043 in '/List':\n  Failed to analyze value 'N(>=0)'. Using 'NMax' instead.\n"},
};

TEST(Array, LimitIsANumberAboveZeroOrThereIsNone) {
    for (const LimitCase& row : kLimits) {
        SCOPED_TRACE(row.nMax);
        const ArrayImport read("<TArray TypeRef=\"type_array\" NMax=\"" + std::string(row.nMax) +
                               "\"><TArrayName>Item</TArrayName>" + kByte + "</TArray>");
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.param.NMax(), row.limit);
        EXPECT_EQ(read.param.Count(), 1U);
    }
}

struct FaultCase {
    const char* what;
    const char* typeElement;
    const char* messages;
};
constexpr FaultCase kFaults[] = {
    {"no type element", "<TRecord/>", "Error #0041 in '/List':\n  Can not find element <TArray>\n"},
    {"type element too deep", "<Deep><TArray/></Deep>",
     "Error #0041 in '/List':\n  Can not find element <TArray>\n"},
    {"no limit", R"(<TArray TypeRef="type_array"/>)",
     "Error #0042 in '/List':\n  Missing required attribute NMax\n"},
    {"no type", R"(<TArray NMax="3"/>)", "Error #0044 in '/List':\n  Missing required attribute TypeRef\n"},
    {"neither limit nor type", "<TArray/>", "Error #0042 in '/List':\n  Missing required attribute NMax\n"},
    {"bad limit and no type", R"(<TArray NMax="x"/>)",
     R"(Warning #0043 in '/List':
  Failed to analyze value 'x'. Using 'NMax' instead.
Error #0044 in '/List':
  Missing required attribute TypeRef
)"},
    {"no element", R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>Item</TArrayName></TArray>)",
     "Error #0045 in '/List':\n  Unknown parameter type in <TArray>\n"},
    {"element of an unknown type",
     R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>Item</TArrayName>
        <TArrayElementType><TShortStream/></TArrayElementType></TArray>)",
     "Error #0045 in '/List':\n  Unknown parameter type in <TArray>\n"},
    {"element type too deep",
     R"(<TArray TypeRef="type_array" NMax="3"><A><B><TString TypeRef="type_string" MaxSize="8"/></B></A>
        </TArray>)",
     "Error #0045 in '/List':\n  Unknown parameter type in <TArray>\n"},
    {"element that fails",
     R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>Item</TArrayName>
        <TArrayElementType><TString MaxSize="8"/></TArrayElementType></TArray>)",
     R"(Error #0088 in '/List/Item':
  Missing required attribute TypeRef
Error #0046 in '/List':
  Failed to import element <TArray>
)"},
    {"nameless element that fails",
     R"(<TArray TypeRef="type_array" NMax="3"><TString MaxSize="8"/></TArray>)",
     R"(Warning #0010 in '/List/':
  Can not find element <TArrayName>
Error #0088 in '/List/':
  Missing required attribute TypeRef
Error #0046 in '/List':
  Failed to import element <TArray>
)"},
    {"array that fails in an array",
     R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>Row</TArrayName>
        <TArray TypeRef="type_array" NMax="4"><TArrayName>Item</TArrayName></TArray></TArray>)",
     R"(Error #0045 in '/List/Row':
  Unknown parameter type in <TArray>
Error #0046 in '/List':
  Failed to import element <TArray>
)"},
    {"record that fails in an array",
     R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>Row</TArrayName><TRecord/></TArray>)",
     R"(Error #0049 in '/List/Row':
  Missing required attribute NElements
Error #0046 in '/List':
  Failed to import element <TArray>
)"},
};

TEST(Array, FaultEndsTheImport) {
    for (const FaultCase& row : kFaults) {
        SCOPED_TRACE(row.what);
        const ArrayImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.param.Size(), 0U);
    }
}

TEST(Array, NeedsAName) {
    ElementImport import;
    ZMTParamArray array;
    EXPECT_FALSE(import.Import(array, "<PUParam><ParamName/>" + Array("Item", kByte) + "</PUParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

TEST(Array, AsARecordFieldNeedsAPosition) {
    ElementImport import;
    ZMTParamArray array;
    EXPECT_FALSE(import.Import(array, "<TRecordField><TRecordFieldName>List</TRecordFieldName>" +
                                          Array("Item", kByte) + "</TRecordField>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0012 in '/List':\n  Missing required attribute FieldIdx\n");
}

TEST(Array, TypeIsLookedUp) {
    const ArrayImport known("<TArray TypeRef=\"TYPE_array\" NMax=\"3\"><TArrayName>Item</TArrayName>" +
                            std::string(kByte) + "</TArray>");
    EXPECT_TRUE(known.ok);
    ASSERT_NE(known.param.TypeDefinition(), nullptr);
    EXPECT_EQ(known.param.TypeDefinition()->GetName(), "Array");
    const ArrayImport unknown("<TArray TypeRef=\"type_x\" NMax=\"3\"><TArrayName>Item</TArrayName>" +
                              std::string(kByte) + "</TArray>");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.messages, "");
    EXPECT_EQ(unknown.param.TypeDefinition(), nullptr);
}

TEST(Array, HoldsItsElementInTheFirstSlot) {
    const ArrayImport read(Array("Item Of", kWord));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.param.GetName(), "List");
    EXPECT_EQ(read.param.ParamPos(), 0U);
    EXPECT_EQ(read.param.GetBytesInMsg(), 0);
    EXPECT_EQ(read.param.Selector(), nullptr);
    EXPECT_EQ(read.param.Size(), 1U);
    const ZMTParam* item = read.param.GetAt(0);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->GetType(), 13);
    EXPECT_EQ(item->GetName(), "Item_Of");
    EXPECT_EQ(item->ParamPos(), 0U);
    EXPECT_EQ(item->GetBytesInMsg(), 2);
    EXPECT_EQ(item->GetParent(), &read.param);
    EXPECT_EQ(read.param.GetChild(0), item);
    EXPECT_EQ(read.param.GetChild(1), nullptr);
    EXPECT_EQ(read.param.FindChild("ITEM_of"), item);
    EXPECT_EQ(read.param.FindChild("List"), nullptr);
}

struct ElementCase {
    const char* what;
    std::string type;
    int code;
};

TEST(Array, HasElementsOfEveryKind) {
    const ElementCase kinds[] = {
        {"number", kByte, 13},
        {"enumeration", kEnum, 14},
        {"string", kText, 16},
        {"bit field", kBits, 17},
        {"boolean", kBool, 10},
        {"void", kVoid, 18},
        {"array", Array("Cell", kByte), 8},
        {"record", Record(1, Field(1, "Cell", kByte)), 9},
    };
    for (const ElementCase& row : kinds) {
        SCOPED_TRACE(row.what);
        const std::string head = R"(<TArray TypeRef="type_array" NMax="3"><TArrayName>Item</TArrayName>)";
        const ArrayImport direct(head + row.type + "</TArray>");
        const ArrayImport wrapped(head + "<TArrayElementType>" + row.type + "</TArrayElementType></TArray>");
        for (const ArrayImport* read : {&direct, &wrapped}) {
            EXPECT_TRUE(read->ok);
            EXPECT_EQ(read->messages, "");
            ASSERT_EQ(read->param.Count(), 1U);
            EXPECT_EQ(read->param.GetAt(0)->GetType(), row.code);
            EXPECT_EQ(read->param.GetAt(0)->GetName(), "Item");
        }
    }
}

struct NamelessCase {
    const char* nameElement;
    const char* type;
    const char* name;
};
constexpr NamelessCase kNameless[] = {
    {"", kByte, ""},
    {"<TArrayName/>", kByte, ""},
    {"<ParamName>Item</ParamName>", kByte, ""},
    {"", kVoid, "{Void}"},
};

TEST(Array, MayHaveANamelessElement) {
    for (const NamelessCase& row : kNameless) {
        SCOPED_TRACE(row.nameElement);
        const ArrayImport read(R"(<TArray TypeRef="type_array" NMax="3">)" + std::string(row.nameElement) +
                               row.type + "</TArray>");
        EXPECT_EQ(read.messages, "Warning #0010 in '/List/':\n  Can not find element <TArrayName>\n");
        EXPECT_TRUE(read.ok);
        ASSERT_EQ(read.param.Count(), 1U);
        EXPECT_EQ(read.param.GetAt(0)->GetName(), row.name);
    }
}

TEST(Array, OfArraysNamesEachLevelByTheOneAround) {
    const ArrayImport read(Array("Row", Array("Cell", kByte)));
    EXPECT_EQ(read.messages, "");
    const auto* row = dynamic_cast<const ZMTParamArray*>(read.param.GetAt(0));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->GetName(), "Row");
    ASSERT_EQ(row->Count(), 1U);
    EXPECT_EQ(row->GetAt(0)->GetName(), "Cell");
    EXPECT_EQ(row->GetAt(0)->GetPath(), "/List/Row/Cell");
}

TEST(Array, DumpShowsSelectorAndLimitAndThenTheElement) {
    const ArrayImport limited(
        Array("Row", R"(<TArray TypeRef="type_x" NMax="NMax"><TArrayName>Cell</TArrayName>
                                              <TString TypeRef="type_string" MaxSize="8"/></TArray>)"));
    EXPECT_EQ(DumpOf(limited.param),
              "PARAMARRAY: List\n"
              ".Parent: -\n"
              ".BytesInMsg: 0\n"
              ".ParamPos: 0\n"
              ".TypeIDName: Array\n"
              ".SelectorParam: \n"
              ".NMax: 3\n"
              "\tPARAMARRAY: Row\n"
              "\t.Parent: /List\n"
              "\t.BytesInMsg: 0\n"
              "\t.ParamPos: 0\n"
              "\t.TypeIDName: \n"
              "\t.SelectorParam: \n"
              "\t.NMax: -1\n"
              "\t\tPARAMSTRING: Cell\n"
              "\t\t.Parent: /List/Row\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 0\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n");
}

TEST(Array, ElementThatFailsItsCheckIsDeletedWithoutAMessageAndTheArrayStays) {
    ElementImport import;
    ZMTParamArray array;
    array.Append(std::make_unique<PlannedParam>(ParamPlan{.canResolve = false}));
    array.GetAt(0)->SetParent(&array);
    EXPECT_TRUE(array.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(array.Count(), 0U);
}

TEST(Array, ElementThatPassesItsCheckStays) {
    ElementImport import;
    ZMTParamArray array;
    array.Append(std::make_unique<PlannedParam>(ParamPlan{}));
    array.GetAt(0)->SetParent(&array);
    EXPECT_TRUE(array.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    ASSERT_EQ(array.Count(), 1U);
    EXPECT_EQ(array.GetAt(0)->GetIndent(), 1U);
}

TEST(Array, ClonesItsElement) {
    ArrayImport read(Array("Item", kByte));
    read.param.SetParamPos(7);
    const std::unique_ptr<ZMTNode> clone = read.param.Clone();
    auto* copy = dynamic_cast<ZMTParamArray*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetName(), "List");
    EXPECT_EQ(copy->ParamPos(), 7U);
    EXPECT_EQ(copy->NMax(), 3U);
    EXPECT_EQ(copy->TypeDefinition(), read.param.TypeDefinition());
    EXPECT_NE(copy->TypeDefinition(), nullptr);
    ASSERT_EQ(copy->Count(), 1U);
    EXPECT_NE(copy->GetAt(0), read.param.GetAt(0));
    EXPECT_EQ(copy->GetAt(0)->GetParent(), copy);
    EXPECT_EQ(copy->GetAt(0)->GetName(), "Item");
    read.param.GetAt(0)->SetName("Changed");
    read.param.Clear();
    EXPECT_EQ(copy->GetAt(0)->GetPath(), "/List/Item");
}

TEST(Array, CopyReplacesWhatWasThere) {
    const ArrayImport read(Array("Item", kByte));
    ZMTParamArray copy;
    copy.Append(std::make_unique<PlannedParam>(ParamPlan{}));
    copy.Append(std::make_unique<PlannedParam>(ParamPlan{}));
    ASSERT_TRUE(copy.CopyFrom(&read.param));
    EXPECT_EQ(copy.Size(), 1U);
    EXPECT_EQ(copy.GetAt(0)->GetName(), "Item");
    const ZMTParamArray empty;
    ASSERT_TRUE(copy.CopyFrom(&empty));
    EXPECT_EQ(copy.Size(), 0U);
    EXPECT_EQ(copy.NMax(), kNoLimit);
}

TEST(Array, CannotBeClonedWhenItsElementCannot) {
    ZMTParamArray outer;
    outer.Append(std::make_unique<ZMTParamArray>());
    auto& inner = dynamic_cast<ZMTParamArray&>(*outer.GetAt(0));
    inner.Append(std::make_unique<PlannedParam>(ParamPlan{.generations = 0}));
    EXPECT_EQ(inner.Clone(), nullptr);
    EXPECT_EQ(outer.Clone(), nullptr);
    ZMTParamArray copy;
    EXPECT_FALSE(copy.CopyFrom(&outer));
    EXPECT_EQ(copy.Count(), 0U);
    inner.Clear();
    EXPECT_NE(outer.Clone(), nullptr);
}

TEST(Array, IsCopiedIntoEveryOperationThatUsesIt) {
    const auto imported = ImportText(CatalogOfParams(
        Param("List", Array("Item", kByte), "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>" + At(1))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* set = NodeAt<ZMTParamArray>(imported->catalog, "Amp", "Volume", "Set", "List");
    const auto* status = InStatus<ZMTParamArray>(*imported, "List");
    ASSERT_NE(set, nullptr);
    ASSERT_NE(status, nullptr);
    EXPECT_NE(set->GetAt(0), status->GetAt(0));
    EXPECT_EQ(set->GetAt(0)->GetPath(), "/Cat/Amp/Volume/Set/List/Item");
    EXPECT_EQ(status->GetAt(0)->GetPath(), "/Cat/Amp/Volume/Status/List/Item");
}

}  // namespace
}  // namespace tarvex::test::array_test
