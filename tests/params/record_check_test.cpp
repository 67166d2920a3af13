/// Records after their import: the second pass over their fields, names used twice, and copies.

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/definitions.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/array.h"
#include "params/composites.h"
#include "params/record.h"
#include "support/catalog_import.h"

namespace tarvex::test::record_check_test {
namespace {

void AddField(ZMTParamRecord& record, unsigned pos, ParamPlan plan) {
    auto field = std::make_unique<PlannedParam>(plan);
    field->SetParamPos(pos);
    field->SetParent(&record);
    record.SetAt(std::move(field), pos);
}

TEST(RecordCheck, FieldThatFailsIsDeletedWithoutAMessage) {
    ElementImport import;
    ZMTParamRecord record;
    record.SetName("Rec");
    AddField(record, 1, {.canResolve = false});
    AddField(record, 2, {});
    AddField(record, 3, {.canResolve = false});
    EXPECT_TRUE(record.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(record.Count(), 1U);
    ASSERT_NE(record.GetAt(2), nullptr);
    EXPECT_EQ(record.GetAt(2)->ParamPos(), 2U);
    EXPECT_EQ(record.GetAt(2)->GetIndent(), 1U);
}

TEST(RecordCheck, RecordThatLosesEveryFieldStaysWithAWarning) {
    ElementImport import;
    ZMTParamRecord record;
    record.SetName("Rec");
    AddField(record, 1, {.canResolve = false});
    AddField(record, 2, {.canResolve = false});
    EXPECT_TRUE(record.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "Warning #0058 in '/Rec':\n  Record contains no valid parameter\n");
    EXPECT_EQ(record.Count(), 0U);
}

TEST(RecordCheck, ManyFieldsOfWhichEveryOtherFails) {
    ElementImport import;
    ZMTParamRecord record;
    record.SetName("Rec");
    for (unsigned pos = 1; pos <= 100; ++pos) {
        AddField(record, pos, {.canResolve = pos % 2 == 0});
    }
    EXPECT_TRUE(record.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(record.Count(), 50U);
    EXPECT_EQ(record.GetAt(1), nullptr);
    EXPECT_NE(record.GetAt(100), nullptr);
}

TEST(RecordCheck, WarningAboutAnEmptyRecordComesFromEveryOperation) {
    const auto imported =
        ImportText(CatalogOfParams(Param("Rec", Record(1, Field(1, "Data", Array("Item", kByte))),
                                         "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>" + At(1))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages,
              R"(Error #0047 in '/Cat/Amp/Volume/Set/Rec/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Warning #0058 in '/Cat/Amp/Volume/Set/Rec':
  Record contains no valid parameter
Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Warning #0058 in '/Cat/Amp/Volume/Status/Rec':
  Record contains no valid parameter
)");
    const auto* record = InStatus<ZMTParamRecord>(*imported, "Rec");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->Count(), 0U);
    EXPECT_EQ(record->NElements(), 1U);
}

struct NameCase {
    const char* what;
    std::string params;
    const char* messages;
};

/// All parameters stand in "Status".
TEST(RecordCheck, NameUsedTwiceIsTold) {
    const std::string field = Record(1, Field(1, "Level", kByte));
    const NameCase cases[] = {
        {"two fields", Param("Rec", Record(2, Field(1, "Level", kByte) + Field(2, "LEVEL", kByte))),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/LEVEL':
  Multiple use of parameter name 'LEVEL'
)"},
        {"three fields in reverse order",
         Param("Rec",
               Record(3, Field(3, "level", kByte) + Field(2, "Level", kByte) + Field(1, "LEVEL", kByte))),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/Level':
  Multiple use of parameter name 'Level'
Warning #0009 in '/Cat/Amp/Volume/Status/Rec/level':
  Multiple use of parameter name 'level'
)"},
        {"field like a parameter before the record",
         Param("Level", kByte, At(1)) + Param("Rec", field, At(2)),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/Level':
  Multiple use of parameter name 'Level'
)"},
        {"field like a parameter behind the record",
         Param("Rec", field, At(1)) + Param("Level", kByte, At(2)), ""},
        {"field like its record", Param("Level", field), ""},
        {"fields of two records", Param("One", field, At(1)) + Param("Two", field, At(2)), ""},
        {"field like its operation", Param("Rec", Record(1, Field(1, "Status", kByte))), ""},
        {"field like its function", Param("Rec", Record(1, Field(1, "Volume", kByte))), ""},
        {"field like an operation before",
         Param("Nothing", kVoid, "<PCmdSet/>") + Param("Rec", Record(1, Field(1, "Set", kByte))), ""},
        {"element like a parameter before the array",
         Param("Level", kByte, At(1)) + Param("List", Array("level", kByte), At(2)),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/List/level':
  Multiple use of parameter name 'level'
)"},
        {"element like a parameter behind the array",
         Param("List", Array("Level", kByte), At(1)) + Param("Level", kByte, At(2)), ""},
        {"element like its array", Param("List", Array("List", kByte)), ""},
        {"field of a record in an array like a parameter before",
         Param("Level", kByte, At(1)) + Param("List", Array("Entry", field), At(2)),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/List/Entry/Level':
  Multiple use of parameter name 'Level'
)"},
        {"field of a record in a record like a field before",
         Param("Rec", Record(2, Field(1, "Level", kByte) + Field(2, "Inner", field))),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/Inner/Level':
  Multiple use of parameter name 'Level'
)"},
        {"field of a record in a record like a field behind",
         Param("Rec", Record(2, Field(1, "Inner", field) + Field(2, "Level", kByte))), ""},
        {"two records", Param("Rec", field, At(1)) + Param("rec", field, At(2)),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/rec':
  Multiple use of parameter name 'rec'
)"},
        {"two arrays", Param("List", Array("A", kByte), At(1)) + Param("LIST", Array("B", kByte), At(2)),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/LIST':
  Multiple use of parameter name 'LIST'
)"},
        {"array in a record like its field before",
         Param("Rec", Record(2, Field(1, "Level", kByte) + Field(2, "level", Array("A", kByte)))),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/level':
  Multiple use of parameter name 'level'
)"},
        {"nameless elements",
         Param(
             "One",
             R"(<TArray TypeRef="type_array" NMax="1"><TString TypeRef="type_string" MaxSize="1"/></TArray>)",
             At(1)),
         "Warning #0010 in '/Cat/Amp/Volume/One/':\n  Can not find element <TArrayName>\n"},
        {"nameless void fields", Param("Rec", Record(2, Field(1, "", kVoid) + Field(2, "", kVoid))),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/{Void}':
  Multiple use of parameter name '{Void}'
)"},
    };
    for (const NameCase& row : cases) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(row.params));
        EXPECT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
    }
}

/// A long record looks its names up in another way.
TEST(RecordCheck, NameUsedTwiceAmongManyFieldsIsTold) {
    std::string fields = Field(1, "Level", kByte);
    for (int pos = 2; pos <= 40; ++pos) {
        fields += Field(pos, pos == 20 || pos == 40 ? "LEVEL" : "F" + std::to_string(pos), kByte);
    }
    const auto imported =
        ImportText(CatalogOfParams(Param("F7", kByte, At(1)) + Param("Rec", Record(40, fields), At(2))));
    EXPECT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, R"(Warning #0009 in '/Cat/Amp/Volume/Status/Rec/F7':
  Multiple use of parameter name 'F7'
Warning #0009 in '/Cat/Amp/Volume/Status/Rec/LEVEL':
  Multiple use of parameter name 'LEVEL'
Warning #0009 in '/Cat/Amp/Volume/Status/Rec/LEVEL':
  Multiple use of parameter name 'LEVEL'
)");
}

/// The look-up for the second pass does not outlive it.
TEST(RecordCheck, NamesThatChangeLaterAreFound) {
    ElementImport import;
    ZMTParamRecord record;
    for (unsigned pos = 1; pos <= 40; ++pos) {
        AddField(record, pos, {});
        record.GetAt(pos)->SetName("F" + std::to_string(pos));
    }
    EXPECT_TRUE(record.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    record.GetAt(3)->SetName("Changed");
    EXPECT_EQ(record.FindChild("changed"), record.GetAt(3));
    EXPECT_EQ(record.FindChild("F3"), nullptr);
    EXPECT_EQ(record.FindChild("F40"), record.GetAt(40));
}

/// What is deleted is no longer there to be found: the number behind the array of its name is the first one.
TEST(RecordCheck, NameOfADeletedFieldIsFree) {
    const std::string list = Array("Item", kByte);
    std::string fields =
        Field(1, "Data", list) + Field(2, "Data", list) + Field(3, "Data", kByte) + Field(4, "Data", kText);
    unsigned count = 4;
    for (const bool isLong : {false, true}) {
        SCOPED_TRACE(isLong ? "long" : "short");
        for (; isLong && count < 30; ++count) {
            fields += Field(static_cast<int>(count) + 1, "F" + std::to_string(count), kByte);
        }
        const auto imported = ImportText(CatalogOfParams(Param("Rec", Record(count, fields))));
        EXPECT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, R"(Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Error #0047 in '/Cat/Amp/Volume/Status/Rec/Data':
  Can't find 'Pos' parameter to 'Data' parameter of record or array
Warning #0009 in '/Cat/Amp/Volume/Status/Rec/Data':
  Multiple use of parameter name 'Data'
)");
    }
}

TEST(RecordCopy, HasFieldsOfItsOwnThatKnowTheirNewParents) {
    CompositeImport<ZMTParamRecord> read(
        "Rec", Record(2, Field(1, "A", kWord) + Field(2, "Inner", Record(1, Field(1, "B", kByte)))));
    ASSERT_EQ(read.messages, "");
    read.param.SetParamPos(5);
    const std::unique_ptr<ZMTNode> clone = read.param.Clone();
    auto* copy = dynamic_cast<ZMTParamRecord*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetName(), "Rec");
    EXPECT_EQ(copy->ParamPos(), 5U);
    EXPECT_EQ(copy->NElements(), 2U);
    EXPECT_EQ(copy->TypeDefinition(), read.param.TypeDefinition());
    EXPECT_NE(copy->TypeDefinition(), nullptr);
    EXPECT_EQ(copy->Size(), 3U);
    EXPECT_EQ(copy->GetAt(0), nullptr);
    for (const unsigned pos : {1U, 2U}) {
        ASSERT_NE(copy->GetAt(pos), nullptr);
        EXPECT_NE(copy->GetAt(pos), read.param.GetAt(pos));
        EXPECT_EQ(copy->GetAt(pos)->GetParent(), copy);
        EXPECT_EQ(copy->GetAt(pos)->ParamPos(), pos);
    }
    EXPECT_EQ(copy->GetAt(1)->GetBytesInMsg(), 2);
    EXPECT_EQ(DumpOf(*copy), DumpOf(read.param));
    const auto& inner = dynamic_cast<const ZMTParamRecord&>(*copy->GetAt(2));
    EXPECT_EQ(inner.GetAt(1)->GetParent(), &inner);
    read.param.GetAt(1)->SetName("Changed");
    read.param.Clear();
    EXPECT_EQ(copy->GetAt(1)->GetName(), "A");
    EXPECT_EQ(inner.GetAt(1)->GetPath(), "/Rec/Inner/B");
}

TEST(RecordCopy, ReplacesWhatWasThere) {
    ZMTParamRecord copy;
    AddField(copy, 1, {});
    AddField(copy, 9, {});
    const CompositeImport<ZMTParamRecord> read("Rec", Record(1, Field(1, "A", kByte)));
    ASSERT_TRUE(copy.CopyFrom(&read.param));
    EXPECT_EQ(copy.Size(), 2U);
    EXPECT_EQ(copy.GetAt(1)->GetName(), "A");
    EXPECT_EQ(copy.NElements(), 1U);
}

TEST(RecordCopy, FailsWhenAFieldCannotBeCloned) {
    ZMTParamRecord record;
    AddField(record, 1, {});
    AddField(record, 2, {.generations = 0});
    EXPECT_EQ(record.Clone(), nullptr);
    ZMTParamRecord copy;
    AddField(copy, 1, {});
    EXPECT_FALSE(copy.CopyFrom(&record));
    EXPECT_EQ(copy.Count(), 0U);
    AddField(record, 2, {.generations = 1});
    EXPECT_NE(record.Clone(), nullptr);
}

TEST(RecordCopy, FailsWhenAFieldOfARecordInAnArrayCannotBeCloned) {
    ZMTParamArray array;
    array.Append(std::make_unique<ZMTParamRecord>());
    auto& record = dynamic_cast<ZMTParamRecord&>(*array.GetAt(0));
    AddField(record, 1, {.generations = 0});
    EXPECT_EQ(array.Clone(), nullptr);
    record.Clear();
    EXPECT_NE(array.Clone(), nullptr);
}

TEST(RecordCopy, RefusesArraysAndNothingAtAll) {
    const ZMTParamArray array;
    ZMTParamRecord record;
    AddField(record, 1, {});
    const ZMTNode* nothing = nullptr;
    EXPECT_FALSE(record.CopyFrom(&static_cast<const ZMTNode&>(array)));
    EXPECT_FALSE(record.CopyFrom(nothing));
    EXPECT_EQ(record.Count(), 1U);
}

}  // namespace
}  // namespace tarvex::test::record_check_test
