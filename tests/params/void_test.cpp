/// Parameters without data.

#include "params/void.h"

#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"

namespace tarvex::test::void_test {
namespace {

struct VoidCase {
    const char* what;
    const char* content;
    bool ok;
    const char* name;
    const char* messages;
};
constexpr VoidCase kVoids[] = {
    {"named", R"(<ParamName>Nothing</ParamName><PUParamType><TVoid TypeRef="type_void"/></PUParamType>)",
     true, "Nothing", ""},
    {"name that is a field's", R"(<TRecordFieldName>Field</TRecordFieldName><TVoid TypeRef="type_void"/>)",
     true, "Field", ""},
    {"empty name", R"(<ParamName ParamIdx="#NULL#"/><TVoid TypeRef="type_void"/>)", true, "{Void}", ""},
    {"empty field name", R"(<TRecordFieldName/><TVoid TypeRef="type_void"/>)", true, "{Void}", ""},
    {"name of which nothing is left", R"(<ParamName>?!</ParamName><TVoid TypeRef="type_void"/>)", true,
     "{Void}", ""},
    {"no name element", R"(<TVoid TypeRef="type_void"/>)", true, "{Void}",
     "Error #0011 in '/':\n  Can not find element <ParamName>\n"},
    {"no type element", "<ParamName/><PUParamType/>", false, "{Void}",
     "Error #0100 in '/{Void}':\n  Can not find element <TVoid>\n"},
    {"no type", "<ParamName>V</ParamName><TVoid/>", false, "V",
     "Error #0101 in '/V':\n  Missing required attribute TypeRef\n"},
    {"nothing at all", "", false, "{Void}",
     "Error #0011 in '/':\n  Can not find element <ParamName>\n"
     "Error #0100 in '/{Void}':\n  Can not find element <TVoid>\n"},
};

TEST(Void, MayDoWithoutAName) {
    for (const VoidCase& row : kVoids) {
        SCOPED_TRACE(row.what);
        ElementImport import;
        ZMTParamVoid nothing;
        EXPECT_EQ(import.Import(nothing, "<PUParam>" + std::string(row.content) + "</PUParam>"), row.ok);
        EXPECT_EQ(nothing.GetName(), row.name);
        EXPECT_EQ(import.TakeMessages(), row.messages);
    }
}

TEST(Void, HasNoBytesAndLooksItsTypeUp) {
    ElementImport import;
    ZMTParamVoid known;
    ZMTParamVoid unknown;
    EXPECT_TRUE(import.Import(known, R"(<PUParam><ParamName/><TVoid TypeRef="TYPE_VOID"/></PUParam>)"));
    EXPECT_TRUE(import.Import(unknown, R"(<PUParam><ParamName/><TVoid TypeRef="type_x"/></PUParam>)"));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(known.GetBytesInMsg(), 0);
    ASSERT_NE(known.TypeDefinition(), nullptr);
    EXPECT_EQ(known.TypeDefinition()->GetName(), "Void");
    EXPECT_EQ(unknown.TypeDefinition(), nullptr);
}

TEST(Void, WithoutANameIsDumpedWithItsStandIn) {
    ElementImport import;
    ZMTParamVoid nothing;
    ASSERT_TRUE(import.Import(nothing, R"(<PUParam><ParamName/><TVoid TypeRef="type_void"/></PUParam>)"));
    EXPECT_EQ(DumpOf(nothing),
              "PARAMVOID: {Void}\n.Parent: -\n.BytesInMsg: 0\n.ParamPos: 0\n.TypeIDName: Void\n");
}

}  // namespace
}  // namespace tarvex::test::void_test
