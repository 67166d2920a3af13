/// Which parameter kind an element becomes.

#include "params/factory.h"

#include <memory>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "params/catalog_vocabulary.h"
#include "params/type_element.h"
#include "support/param_kinds.h"

namespace tarvex::test::factory_test {
namespace {

/// The type code of the parameter made for an element, -1 if none is.
int KindOf(const std::string& content, bool readsNewer = false) {
    const ParsedElement element("<PUParam><ParamName>P</ParamName>" + content + "</PUParam>");
    NewerForms newer(readsNewer);
    const std::unique_ptr<ZMTParam> param = CatalogParamFactory().Create(*element, newer);
    return param ? param->GetType() : -1;
}

struct KindCase {
    const char* element;
    int code;
};
constexpr KindCase kKinds[] = {
    {"TNumber", 13}, {"TEnum", 14}, {"TString", 16}, {"TBool", 10},  {"TBitField", 17},
    {"TVoid", 18},   {"TArray", 8}, {"TRecord", 9},  {"TStream", 6},
};
constexpr KindCase kNewerKinds[] = {{"TShortStream", 21}, {"TCStream", 22}};

TEST(Factory, MakesEveryKindThatHasATypeElement) {
    // The base and the parts of other kinds have none, and the function-ID bit stream shares that of the
    // stream.
    std::set<int> codes = {5, 7, 11, 20, 23};
    for (const KindCase& row : kKinds) {
        EXPECT_TRUE(codes.insert(row.code).second) << row.element;
    }
    for (const KindCase& row : kNewerKinds) {
        EXPECT_TRUE(codes.insert(row.code).second) << row.element;
    }
    std::set<int> all;
    for (const ParamKind kind : AllParamKinds()) {
        all.insert(static_cast<int>(kind));
    }
    EXPECT_EQ(codes, all);
}

TEST(Factory, ReadsTheTypeElementOfEveryKind) {
    for (const KindCase& row : kKinds) {
        EXPECT_NE(CatalogVocabulary().Find(row.element), nullptr) << row.element;
    }
    for (const KindCase& row : kNewerKinds) {
        EXPECT_NE(CatalogVocabulary().Find(row.element), nullptr) << row.element;
    }
}

TEST(Factory, MakesKindsOfNewerCatalogsWhereTheseAreRead) {
    for (const KindCase& row : kNewerKinds) {
        SCOPED_TRACE(row.element);
        const std::string type = std::string("<") + row.element + "/>";
        EXPECT_EQ(KindOf(type, true), row.code);
        EXPECT_EQ(KindOf("<Wrapper>" + type + "</Wrapper>", true), row.code);
        EXPECT_EQ(KindOf(type, false), -1);
        EXPECT_EQ(KindOf(type + "<TNumber/>", false), 13);
    }
}

TEST(Factory, FindsTheTypeElementDirectlyOrOneLevelDeeper) {
    for (const KindCase& row : kKinds) {
        SCOPED_TRACE(row.element);
        const std::string type = std::string("<") + row.element + "/>";
        EXPECT_EQ(KindOf(type), row.code);
        EXPECT_EQ(KindOf("<PUParamType>" + type + "</PUParamType>"), row.code);
        EXPECT_EQ(KindOf("<A/><B><C/></B><D><E/>" + type + "</D>"), row.code);
        EXPECT_EQ(KindOf("<A><B>" + type + "</B></A>"), -1);
    }
}

constexpr const char* kUnknown[] = {
    "",
    "<PUParamType/>",
    "<PUParamType><TCStream/></PUParamType>",
    "<TShortStream/>",
    "<TArrayElementType/>",
    "<TRecordField/>",
    "<StreamCase/>",
    "<tstream/>",
    "<tnumber/>",
    "<TNumberX/>",
    "<Type>TNumber</Type>",
    "<!-- <TNumber/> -->",
};

TEST(Factory, MakesNothingOfUnknownTypes) {
    for (const char* content : kUnknown) {
        EXPECT_EQ(KindOf(content), -1) << content;
    }
}

TEST(Factory, PrefersTheDirectChild) {
    EXPECT_EQ(KindOf("<PUParamType><TString/></PUParamType><TNumber/>"), 13);
    EXPECT_EQ(KindOf("<A><TString/></A><B><TNumber/></B>"), 16);
    EXPECT_EQ(KindOf("<TArray><TRecord/><TNumber/></TArray>"), 8);
    EXPECT_EQ(KindOf("<TStream><TRecord/><TNumber/></TStream>"), 6);
    EXPECT_EQ(KindOf("<Wrapper><TArray><TRecord/></TArray></Wrapper><TRecord/>"), 9);
}

TEST(Factory, MakesEmptyParameters) {
    const ParsedElement element("<PUParam><ParamName>P</ParamName><TVoid TypeRef=\"type_void\"/></PUParam>");
    NewerForms newer;
    const std::unique_ptr<ZMTParam> param = CatalogParamFactory().Create(*element, newer);
    ASSERT_NE(param, nullptr);
    EXPECT_EQ(param->GetName(), "");
    EXPECT_EQ(param->GetParent(), nullptr);
}

TEST(FindTypeElement, LooksAtChildrenFirstAndOneLevelDeeperThen) {
    const ParsedElement element(R"(<P><A><TEnum TypeRef="deeper"/><TBool TypeRef="deeper"/></A>
                                   <TEnum TypeRef="direct"/><B><C><TVoid/></C></B></P>)");
    const auto where = [&](const char* name) -> std::string {
        const Element* found = FindTypeElement(*element, name);
        std::string text = "nowhere";
        if (found != nullptr) {
            GetAttribute(*found, "TypeRef", text);
        }
        return text;
    };
    EXPECT_EQ(where("TEnum"), "direct");
    EXPECT_EQ(where("TBool"), "deeper");
    EXPECT_EQ(where("TVoid"), "nowhere");
    EXPECT_EQ(where("TString"), "nowhere");
}

}  // namespace
}  // namespace tarvex::test::factory_test
