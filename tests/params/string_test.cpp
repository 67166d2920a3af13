/// Strings: their largest size and their type.

#include "params/string.h"

#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"

namespace tarvex::test::string_test {
namespace {

/// Imports a parameter "Text" with this type element.
struct StringImport {
    explicit StringImport(const std::string& typeElement) {
        ok = import.Import(text, "<PTParam><ParamName>Text</ParamName><PTParamType>" + typeElement +
                                     "</PTParamType></PTParam>");
        messages = import.TakeMessages();
    }

    ElementImport import;
    ZMTParamString text;
    bool ok = false;
    std::string messages;
};

struct MaxSizeCase {
    const char* maxSize;
    unsigned size;
};
constexpr unsigned kUnbounded = 0xFFFFFFFF;
constexpr MaxSizeCase kMaxSizes[] = {
    {"32", 32},
    {"0", 0},
    {"007", 7},
    {"4294967294", 4294967294},
    {"4294967296", kUnbounded},
    {"", kUnbounded},
    {"0x20", kUnbounded},
    {"32 ", kUnbounded},
    {" 32", kUnbounded},
    {"-1", kUnbounded},
    {"+1", kUnbounded},
    {"1.5", kUnbounded},
    {"many", kUnbounded},
};

TEST(String, LargestSizeIsADecimalNumberOrThereIsNone) {
    for (const MaxSizeCase& row : kMaxSizes) {
        SCOPED_TRACE(row.maxSize);
        const StringImport read("<TString TypeRef=\"type_string\" MaxSize=\"" + std::string(row.maxSize) +
                                "\"/>");
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, "");
        EXPECT_EQ(read.text.MaxSize(), row.size);
        EXPECT_EQ(read.text.GetBytesInMsg(), 0);
    }
}

struct MessageCase {
    const char* typeElement;
    const char* messages;
};
constexpr MessageCase kMessages[] = {
    {"<TEnum/>", "Error #0086 in '/Text':\n  Can not find element <TString>\n"},
    {R"(<TString TypeRef="type_string"/>)",
     "Error #0087 in '/Text':\n  Missing required attribute MaxSize\n"},
    {R"(<TString MaxSize="8"/>)", "Error #0088 in '/Text':\n  Missing required attribute TypeRef\n"},
    {"<TString/>", "Error #0087 in '/Text':\n  Missing required attribute MaxSize\n"},
};

TEST(String, FaultEndsTheImport) {
    for (const MessageCase& row : kMessages) {
        SCOPED_TRACE(row.typeElement);
        const StringImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

TEST(String, NeedsAName) {
    ElementImport import;
    ZMTParamString text;
    EXPECT_FALSE(import.Import(
        text, R"(<PTParam><ParamName/><TString TypeRef="type_string" MaxSize="1"/></PTParam>)"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

TEST(String, TypeIsLookedUp) {
    const StringImport known(R"(<TString TypeRef="Type_String" MaxSize="8"/>)");
    ASSERT_NE(known.text.TypeDefinition(), nullptr);
    EXPECT_EQ(known.text.TypeDefinition()->GetName(), "String");
    const StringImport unknown(R"(<TString TypeRef="type_text" MaxSize="8"/>)");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.messages, "");
    EXPECT_EQ(unknown.text.TypeDefinition(), nullptr);
}

TEST(String, DumpShowsThatThereIsNoLimit) {
    const StringImport bounded(R"(<TString TypeRef="type_string" MaxSize="12"/>)");
    EXPECT_EQ(
        DumpOf(bounded.text),
        "PARAMSTRING: Text\n.Parent: -\n.BytesInMsg: 0\n.ParamPos: 0\n.TypeIDName: String\n.MaxSize: 12\n");
    const StringImport unbounded(R"(<TString TypeRef="type_string" MaxSize=""/>)");
    EXPECT_NE(DumpOf(unbounded.text).find("\n.MaxSize: -1\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvex::test::string_test
