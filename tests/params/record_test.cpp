/// Records: their fields, the positions of these, and what ends the import.

#include "params/record.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/definitions.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/array.h"
#include "params/composites.h"
#include "support/catalog_import.h"

namespace tarvex::test::record_test {
namespace {

/// Imports a record "Rec" from this type element.
struct RecordImport : CompositeImport<ZMTParamRecord> {
    explicit RecordImport(std::string_view typeElement)
        : CompositeImport<ZMTParamRecord>("Rec", typeElement) {}
};

struct FaultCase {
    const char* what;
    std::string typeElement;
    const char* messages;
};

TEST(Record, FaultOfItsElementEndsTheImport) {
    const std::string field = Field(1, "F", kByte);
    const FaultCase faults[] = {
        {"no type element", "<TArray/>", "Error #0048 in '/Rec':\n  Can not find element <TRecord>\n"},
        {"type element too deep", "<Deep><TRecord/></Deep>",
         "Error #0048 in '/Rec':\n  Can not find element <TRecord>\n"},
        {"no number of fields", "<TRecord TypeRef=\"type_record\">" + field + "</TRecord>",
         "Error #0049 in '/Rec':\n  Missing required attribute NElements\n"},
        {"no type", "<TRecord NElements=\"1\">" + field + "</TRecord>",
         "Error #0050 in '/Rec':\n  Missing required attribute TypeRef\n"},
        {"no attributes", "<TRecord>" + field + "</TRecord>",
         "Error #0049 in '/Rec':\n  Missing required attribute NElements\n"},
        {"no fields", R"(<TRecord TypeRef="type_record" NElements="1"/>)",
         "Error #0051 in '/Rec':\n  Can not find element <TRecordField>\n"},
        {"no fields, as declared", R"(<TRecord TypeRef="type_record" NElements="0"/>)",
         "Error #0051 in '/Rec':\n  Can not find element <TRecordField>\n"},
        {"fields one level too deep",
         R"(<TRecord TypeRef="type_record" NElements="1"><Fields>)" + field + "</Fields></TRecord>",
         "Error #0051 in '/Rec':\n  Can not find element <TRecordField>\n"},
    };
    for (const FaultCase& row : faults) {
        SCOPED_TRACE(row.what);
        const RecordImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.param.Count(), 0U);
    }
}

struct FieldsCase {
    const char* what;
    unsigned declared;
    std::string fields;
    const char* messages;
};

TEST(Record, BadFieldEndsTheImport) {
    const FieldsCase cases[] = {
        {"field of an unknown type", 1, Field(1, "F", "<TShortStream/>"),
         "Error #0052 in '/Rec':\n  Unknown parameter type in <TRecordField>\n"},
        {"field without a type", 1, Field(1, "F", ""),
         "Error #0052 in '/Rec':\n  Unknown parameter type in <TRecordField>\n"},
        {"field type too deep", 1, Field(1, "F", "<Deep>" + std::string(kByte) + "</Deep>"),
         "Error #0052 in '/Rec':\n  Unknown parameter type in <TRecordField>\n"},
        {"field that fails", 1, Field(1, "F", R"(<TString MaxSize="8"/>)"),
         R"(Error #0088 in '/Rec/F':
  Missing required attribute TypeRef
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"field without a name", 1, Field(1, "", kByte),
         R"(Error #0011 in '/Rec/':
  Can not find element <ParamName>
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"field without a position", 1,
         "<TRecordField><TRecordFieldName>F</TRecordFieldName>" + std::string(kByte) + "</TRecordField>",
         R"(Error #0012 in '/Rec/F':
  Missing required attribute FieldIdx
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"position that is no number", 1,
         R"(<TRecordField FieldIdx="first"><TRecordFieldName>F</TRecordFieldName>)" + std::string(kByte) +
             "</TRecordField>",
         R"(Error #0013 in '/Rec/F':
  Failed to analyze value 'first'
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"position 0", 1, Field(0, "F", kByte),
         R"(Error #0014 in '/Rec/F':
  Invalid parameter position 0
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"negative position", 1, Field(-1, "F", kByte),
         R"(Error #0014 in '/Rec/F':
  Invalid parameter position -1
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"position 4096", 1, Field(4096, "F", kByte),
         R"(Error #0014 in '/Rec/F':
  Invalid parameter position 4096
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"second field at a position", 3, Field(1, "A", kByte) + Field(2, "B", kByte) + Field(2, "C", kByte),
         "Error #0054 in '/Rec':\n  Position 2 of 'C' already occupied\n"},
        {"three fields at a position", 3, Field(1, "A", kByte) + Field(1, "B", kByte) + Field(1, "C", kByte),
         R"(Error #0054 in '/Rec':
  Position 1 of 'B' already occupied
Error #0054 in '/Rec':
  Position 1 of 'C' already occupied
)"},
        {"hole before the last", 3, Field(1, "A", kByte) + Field(2, "B", kByte) + Field(4, "C", kByte),
         "Error #0056 in '/Rec':\n  Gap in parameter set before parameter 'C'\n"},
        {"two holes", 3, Field(1, "A", kByte) + Field(3, "B", kByte) + Field(5, "C", kByte),
         "Error #0056 in '/Rec':\n  Gap in parameter set before parameter 'B'\n"},
        {"hole before the first", 2, Field(2, "A", kByte) + Field(3, "B", kByte),
         "Error #0056 in '/Rec':\n  Gap in parameter set before parameter 'A'\n"},
        {"hole that the document order hides", 3,
         Field(4, "A", kByte) + Field(2, "B", kByte) + Field(1, "C", kByte),
         "Error #0056 in '/Rec':\n  Gap in parameter set before parameter 'A'\n"},
        {"alone at 4095", 1, Field(4095, "A", kByte),
         "Error #0056 in '/Rec':\n  Gap in parameter set before parameter 'A'\n"},
        {"bad field that leaves a hole", 3,
         Field(1, "A", kByte) + Field(2, "B", "<TShortStream/>") + Field(3, "C", kByte),
         "Error #0052 in '/Rec':\n  Unknown parameter type in <TRecordField>\n"},
        {"every bad field is told", 6,
         Field(1, "A", kByte) + Field(1, "B", kByte) + Field(9, "C", "<TShortStream/>") +
             Field(0, "D", kByte) + Field(3, "E", R"(<TString MaxSize="8"/>)") + Field(1, "F", kByte),
         R"(Error #0054 in '/Rec':
  Position 1 of 'B' already occupied
Error #0052 in '/Rec':
  Unknown parameter type in <TRecordField>
Error #0014 in '/Rec/D':
  Invalid parameter position 0
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
Error #0088 in '/Rec/E':
  Missing required attribute TypeRef
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
Error #0054 in '/Rec':
  Position 1 of 'F' already occupied
)"},
        {"bad field at a position in use", 2,
         Field(1, "A", kByte) + Field(1, "B", R"(<TString MaxSize="8"/>)"),
         R"(Error #0088 in '/Rec/B':
  Missing required attribute TypeRef
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"wrong number of fields and a bad one", 3, Field(1, "A", kByte) + Field(1, "B", kByte),
         R"(Warning #0055 in '/Rec':
  Number of record fields (2) does not match value of attribute 'NElements' (3)
Error #0054 in '/Rec':
  Position 1 of 'B' already occupied
)"},
        {"record that fails in a record", 1, Field(1, "Inner", Record(1, Field(2, "F", kByte))),
         R"(Error #0056 in '/Rec/Inner':
  Gap in parameter set before parameter 'F'
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
        {"array that fails in a record", 1, Field(1, "Inner", "<TArray/>"),
         R"(Error #0042 in '/Rec/Inner':
  Missing required attribute NMax
Error #0053 in '/Rec':
  Failed to import element <TRecordField>
)"},
    };
    for (const FieldsCase& row : cases) {
        SCOPED_TRACE(row.what);
        const RecordImport read(Record(row.declared, row.fields));
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

struct CountCase {
    const char* declared;
    unsigned fields;
    const char* messages;
};
constexpr CountCase kCounts[] = {
    {"1", 1, ""},
    {"2", 2, ""},
    {" 0x2 ", 2, ""},
    {"3", 2,
     "Warning #0055 in '/Rec':\n"
     "  Number of record fields (2) does not match value of attribute 'NElements' (3)\n"},
    {"1", 2,
     "Warning #0055 in '/Rec':\n"
     "  Number of record fields (2) does not match value of attribute 'NElements' (1)\n"},
    {"0", 1,
     "Warning #0055 in '/Rec':\n"
     "  Number of record fields (1) does not match value of attribute 'NElements' (0)\n"},
    {"", 1,
     "Warning #0055 in '/Rec':\n"
     "  Number of record fields (1) does not match value of attribute 'NElements' (0)\n"},
    {"two", 2,
     "Warning #0055 in '/Rec':\n"
     "  Number of record fields (2) does not match value of attribute 'NElements' (0)\n"},
    {"-1", 1,
     "Warning #0055 in '/Rec':\n"
     "  Number of record fields (1) does not match value of attribute 'NElements' (-1)\n"},
};

TEST(Record, NumberOfFieldsIsTheOneFound) {
    for (const CountCase& row : kCounts) {
        SCOPED_TRACE(std::string(row.declared) + " for " + std::to_string(row.fields));
        std::string fields;
        for (unsigned pos = 1; pos <= row.fields; ++pos) {
            fields += Field(static_cast<int>(pos), "F" + std::to_string(pos), kByte);
        }
        const RecordImport read("<TRecord TypeRef=\"type_record\" NElements=\"" + std::string(row.declared) +
                                "\">" + fields + "</TRecord>");
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.param.NElements(), row.fields);
        EXPECT_EQ(read.param.Count(), row.fields);
    }
}

TEST(Record, OfThreeDeclaredFieldsWithTwoIsDumpedWithTwo) {
    const RecordImport read(Record(3, Field(1, "A", kByte) + Field(2, "B", kByte)));
    EXPECT_TRUE(read.ok);
    EXPECT_NE(DumpOf(read.param).find("\n.NElements: 2\n"), std::string::npos);
}

TEST(Record, NeedsAName) {
    ElementImport import;
    ZMTParamRecord record;
    EXPECT_FALSE(import.Import(record, "<PUParam>" + Record(1, Field(1, "F", kByte)) + "</PUParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

TEST(Record, TypeIsLookedUp) {
    const RecordImport known(Record(1, Field(1, "F", kByte)));
    ASSERT_NE(known.param.TypeDefinition(), nullptr);
    EXPECT_EQ(known.param.TypeDefinition()->GetName(), "Record");
    const RecordImport unknown("<TRecord TypeRef=\"type_x\" NElements=\"1\">" + Field(1, "F", kByte) +
                               "</TRecord>");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.messages, "");
    EXPECT_EQ(unknown.param.TypeDefinition(), nullptr);
}

TEST(Record, HoldsItsFieldsAtTheirPositions) {
    const RecordImport read(Record(3, Field(3, "C c", kWord) + Field(1, "A", kByte) + Field(2, "B", kText)));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.param.GetBytesInMsg(), 0);
    EXPECT_EQ(read.param.Selector(), nullptr);
    EXPECT_EQ(read.param.Size(), 4U);
    EXPECT_EQ(read.param.GetAt(0), nullptr);
    const std::vector<std::pair<std::string, int>> fields = {{"A", 13}, {"B", 16}, {"C_c", 13}};
    for (unsigned pos = 1; pos <= 3; ++pos) {
        const auto& [name, code] = fields[pos - 1];
        SCOPED_TRACE(name);
        const ZMTParam* field = read.param.GetAt(pos);
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->GetName(), name);
        EXPECT_EQ(field->GetType(), code);
        EXPECT_EQ(field->ParamPos(), pos);
        EXPECT_EQ(field->GetPosition(), pos);
        EXPECT_EQ(field->GetParent(), &read.param);
        EXPECT_EQ(read.param.GetChild(pos), field);
        EXPECT_EQ(read.param.FindChild(name), field);
    }
    EXPECT_EQ(read.param.GetChild(4), nullptr);
    EXPECT_EQ(read.param.FindChild("c_C"), read.param.GetAt(3));
    EXPECT_EQ(read.param.FindChild("Rec"), nullptr);
}

struct KindCase {
    const char* what;
    std::string type;
    int code;
};

TEST(Record, HasFieldsOfEveryKind) {
    const KindCase kinds[] = {
        {"number", kByte, 13},
        {"enumeration", kEnum, 14},
        {"string", kText, 16},
        {"bit field", kBits, 17},
        {"boolean", kBool, 10},
        {"void", kVoid, 18},
        {"array", Array("Cell", kByte), 8},
        {"record", Record(1, Field(1, "Cell", kByte)), 9},
    };
    for (const KindCase& row : kinds) {
        SCOPED_TRACE(row.what);
        const std::string head = R"(<TRecordField FieldIdx="1"><TRecordFieldName>F</TRecordFieldName>)";
        const RecordImport direct(Record(1, head + row.type + "</TRecordField>"));
        const RecordImport wrapped(Record(1, Field(1, "F", row.type)));
        for (const RecordImport* read : {&direct, &wrapped}) {
            EXPECT_TRUE(read->ok);
            EXPECT_EQ(read->messages, "");
            ASSERT_EQ(read->param.Count(), 1U);
            EXPECT_EQ(read->param.GetAt(1)->GetType(), row.code);
            EXPECT_EQ(read->param.GetAt(1)->GetName(), "F");
        }
    }
}

TEST(Record, VoidFieldsMayBeNameless) {
    const RecordImport read(Record(2, Field(1, "", kVoid) + Field(2, "", kVoid)));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.param.GetAt(1)->GetName(), "{Void}");
    EXPECT_EQ(read.param.GetAt(2)->GetName(), "{Void}");
}

TEST(Record, MayStandInARecordAndAnArray) {
    const RecordImport read(Record(
        2, Field(1, "Inner", Record(1, Field(1, "F", kByte))) +
               Field(2, "List", Array("Entry", Record(2, Field(1, "G", kByte) + Field(2, "H", kByte))))));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    const auto* inner = dynamic_cast<const ZMTParamRecord*>(read.param.GetAt(1));
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->GetAt(1)->GetPath(), "/Rec/Inner/F");
    const auto* list = dynamic_cast<const ZMTParamArray*>(read.param.GetAt(2));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->ParamPos(), 2U);
    const auto* entry = dynamic_cast<const ZMTParamRecord*>(list->GetAt(0));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->ParamPos(), 0U);
    EXPECT_EQ(entry->Count(), 2U);
    EXPECT_EQ(entry->GetAt(2)->GetPath(), "/Rec/List/Entry/H");
}

TEST(Record, DumpShowsSelectorAndNumberAndThenTheFieldsInOrder) {
    const RecordImport read(
        Record(2, Field(2, "Inner", Record(1, Field(1, "F", kText))) + Field(1, "A", kVoid)));
    EXPECT_EQ(DumpOf(read.param),
              "PARAMRECORD: Rec\n"
              ".Parent: -\n"
              ".BytesInMsg: 0\n"
              ".ParamPos: 0\n"
              ".TypeIDName: Record\n"
              ".SelectorParam: \n"
              ".NElements: 2\n"
              "\tPARAMVOID: A\n"
              "\t.Parent: /Rec\n"
              "\t.BytesInMsg: 0\n"
              "\t.ParamPos: 1\n"
              "\t.TypeIDName: Void\n"
              "\tPARAMRECORD: Inner\n"
              "\t.Parent: /Rec\n"
              "\t.BytesInMsg: 0\n"
              "\t.ParamPos: 2\n"
              "\t.TypeIDName: Record\n"
              "\t.SelectorParam: \n"
              "\t.NElements: 1\n"
              "\t\tPARAMSTRING: F\n"
              "\t\t.Parent: /Rec/Inner\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 1\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n");
}

}  // namespace
}  // namespace tarvex::test::record_test
