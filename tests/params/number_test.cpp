/// Numbers: scale, basis type, unit, and the coordinate parameter "Pos".

#include "params/number.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "support/catalog_import.h"

namespace tarvex::test::number_test {
namespace {

constexpr const char* kScale =
    "<Exponent>0</Exponent><RangeMin>0</RangeMin><RangeMax>255</RangeMax><Step>1</Step>";
constexpr const char* kByte = R"(<BasisDataType><TUByte TypeRef="type_unsigned_byte"/></BasisDataType>)";
constexpr const char* kUnit = R"(<Unit UnitRef="unit_none"/>)";

std::string Basis(const std::string& element, const std::string& typeRef) {
    return "<BasisDataType><" + element + " TypeRef=\"" + typeRef + "\"/></BasisDataType>";
}

/// Imports a parameter of that name whose "TNumber" has this content.
struct NumberImport {
    explicit NumberImport(const std::string& content, const std::string& name = "N") {
        ok = import.Import(number, "<PNParam><ParamName>" + name + "</ParamName><PNParamType><TNumber>" +
                                       content + "</TNumber></PNParamType></PNParam>");
        messages = import.TakeMessages();
    }

    ElementImport import;
    ZMTParamNumber number;
    bool ok = false;
    std::string messages;
};

TEST(Number, TakesOverWhatTheElementSays) {
    const NumberImport read(Basis("TSWord", "type_signed_word") +
                            "<Exponent>-2</Exponent><RangeMin>-12.5</RangeMin><RangeMax>1e3</RangeMax>"
                            "<Step>0.25</Step><Unit UnitRef=\"unit_km_h\"/>");
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.number.GetName(), "N");
    EXPECT_EQ(read.number.Exponent(), -2);
    EXPECT_EQ(read.number.RangeMin(), -12.5);
    EXPECT_EQ(read.number.RangeMax(), 1000.0);
    EXPECT_EQ(read.number.Step(), 0.25);
    EXPECT_EQ(read.number.UnitName(), "kmh");
    EXPECT_EQ(read.number.UnitText(), "km/h");
    ASSERT_NE(read.number.Unit(), nullptr);
    EXPECT_EQ(read.number.Unit()->GetDefName(), "unit_km_h");
    ASSERT_NE(read.number.TypeDefinition(), nullptr);
    EXPECT_EQ(read.number.TypeDefinition()->GetDefName(), "type_signed_word");
    EXPECT_TRUE(read.number.HasPhysicalUnit());
}

struct BasisCase {
    const char* element;
    const char* typeRef;
    int bytes;
    bool isSigned;
};
constexpr BasisCase kBases[] = {
    {"TUByte", "type_unsigned_byte", 1, false}, {"TSByte", "type_signed_byte", 1, true},
    {"TUWord", "type_unsigned_word", 2, false}, {"TSWord", "type_signed_word", 2, true},
    {"TULong", "type_unsigned_long", 4, false}, {"TSLong", "type_signed_long", 4, true},
    {"TUByte", "TYPE_Unsigned_Long", 4, false},  // the definition counts, not the element
    {"TSByte", "type_unsigned_word", 2, false}, {"TVoid", "type_void", 0, true},
    {"TUByte", "type_enum", 1, true},  // any other type counts as signed
};

TEST(Number, SizeAndSignComeFromTheBasisType) {
    for (const BasisCase& row : kBases) {
        SCOPED_TRACE(std::string(row.element) + " " + row.typeRef);
        const NumberImport read(Basis(row.element, row.typeRef) + kScale + kUnit);
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, "");
        EXPECT_EQ(read.number.GetBytesInMsg(), row.bytes);
        EXPECT_EQ(read.number.IsSigned(), row.isSigned);
    }
}

TEST(Number, FirstBasisElementInTableOrderWithATypeRefCounts) {
    struct Row {
        const char* basis;
        const char* typeRef;
    };
    const Row rows[] = {
        {R"(<TSLong TypeRef="type_signed_long"/><TUByte TypeRef="type_unsigned_byte"/>)",
         "type_unsigned_byte"},
        {R"(<TUByte/><TUWord TypeRef="type_unsigned_word"/>)", "type_unsigned_word"},
        {R"(<TSWord TypeRef="type_signed_word"/><TVoid TypeRef="type_void"/>)", "type_void"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.basis);
        const NumberImport read("<BasisDataType>" + std::string(row.basis) + "</BasisDataType>" + kScale +
                                kUnit);
        EXPECT_TRUE(read.ok);
        ASSERT_NE(read.number.TypeDefinition(), nullptr);
        EXPECT_EQ(read.number.TypeDefinition()->GetDefName(), row.typeRef);
    }
}

struct MessageCase {
    const char* what;
    std::string content;
    bool ok;
    const char* messages;
};

TEST(Number, RaisesOneMessagePerFault) {
    const MessageCase rows[] = {
        {"no scale at all", kByte + std::string(kUnit), true,
         R"(Warning #0067 in '/N':
  Can not find element <Exponent>
Warning #0068 in '/N':
  Can not find element <RangeMin>
Warning #0069 in '/N':
  Can not find element <RangeMax>
Warning #0070 in '/N':
  Can not find element <Step>
)"},
        {"empty elements", std::string(kByte) + "<Exponent/><RangeMin/><RangeMax></RangeMax><Step/>" + kUnit,
         true,
         R"(Warning #0067 in '/N':
  Can not find element <Exponent>
Warning #0068 in '/N':
  Can not find element <RangeMin>
Warning #0069 in '/N':
  Can not find element <RangeMax>
Warning #0070 in '/N':
  Can not find element <Step>
)"},
        {"no basis type", std::string(kScale) + kUnit, false,
         R"(Error #0071 in '/N':
  Can not find element <BasisDataType>
)"},
        {"basis type further down", "<Wrap>" + std::string(kByte) + "</Wrap>" + kScale + kUnit, false,
         R"(Error #0071 in '/N':
  Can not find element <BasisDataType>
)"},
        {"empty basis type", "<BasisDataType/>" + std::string(kScale) + kUnit, false,
         R"(Error #0151 in '/N':
  Type definition not found
)"},
        {"basis type without reference",
         "<BasisDataType><TUByte/></BasisDataType>" + std::string(kScale) + kUnit, false,
         R"(Error #0151 in '/N':
  Type definition not found
)"},
        {"basis type that is not defined", Basis("TUByte", "type_byte") + kScale + kUnit, false,
         R"(Error #0151 in '/N':
  Type definition not found
)"},
        {"basis element of another kind", Basis("TFloat", "type_unsigned_byte") + kScale + kUnit, false,
         R"(Error #0151 in '/N':
  Type definition not found
)"},
        {"no unit", std::string(kByte) + kScale, false,
         R"(Error #0072 in '/N':
  Can not find element <Unit>
)"},
        {"unit without reference", std::string(kByte) + kScale + "<Unit/>", false,
         R"(Error #0072 in '/N':
  Can not find element <Unit>
)"},
        {"unit that is not defined", std::string(kByte) + kScale + R"(<Unit UnitRef="unit_s"/>)", false,
         R"(Error #0152 in '/N':
  Cannot find unit definition
)"},
        {"nothing", "", false,
         R"(Warning #0067 in '/N':
  Can not find element <Exponent>
Warning #0068 in '/N':
  Can not find element <RangeMin>
Warning #0069 in '/N':
  Can not find element <RangeMax>
Warning #0070 in '/N':
  Can not find element <Step>
Error #0071 in '/N':
  Can not find element <BasisDataType>
)"},
    };
    for (const MessageCase& row : rows) {
        SCOPED_TRACE(row.what);
        const NumberImport read(row.content);
        EXPECT_EQ(read.ok, row.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

TEST(Number, WhatTheScaleLacksIsZero) {
    const NumberImport read(std::string(kByte) + kUnit);
    EXPECT_EQ(read.number.Exponent(), 0);
    EXPECT_EQ(read.number.RangeMin(), 0.0);
    EXPECT_EQ(read.number.RangeMax(), 0.0);
    EXPECT_EQ(read.number.Step(), 0.0);
    EXPECT_NE(DumpOf(read.number).find("\n.Range: 0.000000-0.000000\n.Step: 0.000000\n"), std::string::npos);
}

TEST(Number, ScaleThatIsNoNumberIsZeroWithoutAMessage) {
    const NumberImport read(
        kByte +
        std::string(
            "<Exponent>1.5</Exponent><RangeMin>low</RangeMin><RangeMax>7 km</RangeMax><Step>-</Step>") +
        kUnit);
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.number.Exponent(), 0);
    EXPECT_EQ(read.number.RangeMin(), 0.0);
    EXPECT_EQ(read.number.RangeMax(), 7.0);
    EXPECT_EQ(read.number.Step(), 0.0);
}

TEST(Number, NeedsItsTypeElement) {
    ElementImport import;
    ZMTParamNumber number;
    EXPECT_FALSE(import.Import(number, "<PNParam><ParamName>N</ParamName><TEnum/></PNParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0066 in '/N':\n  Can not find element <TNumber>\n");
    ZMTParamNumber nameless;
    EXPECT_FALSE(import.Import(nameless, "<PNParam><ParamName/><TNumber/></PNParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

TEST(Number, TypeElementStandsInAWrapperOrDirectly) {
    const std::string type = "<TNumber>" + std::string(kByte) + kScale + kUnit + "</TNumber>";
    for (const std::string& content : {type, "<PNParamType>" + type + "</PNParamType>"}) {
        SCOPED_TRACE(content);
        ElementImport import;
        ZMTParamNumber number;
        EXPECT_TRUE(import.Import(number, "<PNParam><ParamName>N</ParamName>" + content + "</PNParam>"));
        EXPECT_EQ(number.GetBytesInMsg(), 1);
    }
}

struct PosCase {
    const char* name;
    const char* typeRef;
    const char* exponent;
    const char* messages;
};
constexpr PosCase kPositions[] = {
    {"Pos", "type_unsigned_word", "0", ""},
    {"Pos", "type_signed_word", "0", ""},
    {"Pos", "type_unsigned_byte", "0", "Warning #0073 in '/Pos':\n  Size of 'Pos' parameter <> 2 Bytes\n"},
    {"Pos", "type_unsigned_long", "0", "Warning #0073 in '/Pos':\n  Size of 'Pos' parameter <> 2 Bytes\n"},
    {"Pos", "type_unsigned_word", "1", "Warning #0074 in '/Pos':\n  Exponent of 'Pos' parameter <> 0\n"},
    {"pos", "type_unsigned_byte", "-1",
     "Warning #0073 in '/pos':\n  Size of 'Pos' parameter <> 2 Bytes\n"
     "Warning #0074 in '/pos':\n  Exponent of 'Pos' parameter <> 0\n"},
    {"Position", "type_unsigned_byte", "-1", ""},
};

TEST(Number, NamedPosIsAnUnscaledWord) {
    for (const PosCase& row : kPositions) {
        SCOPED_TRACE(std::string(row.name) + " " + row.typeRef + " " + row.exponent);
        const NumberImport read(Basis("TUWord", row.typeRef) + "<Exponent>" + row.exponent +
                                    "</Exponent><RangeMin>0</RangeMin><RangeMax>1</RangeMax><Step>1</Step>" +
                                    kUnit,
                                row.name);
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
    }
}

TEST(Number, NamedPosKeepsItsOneByte) {
    const NumberImport read(std::string(kByte) + kScale + kUnit, "Pos");
    EXPECT_EQ(read.number.GetBytesInMsg(), 1);
}

struct UnitCase {
    const char* unitID;
    const char* unitName;
    const char* name;
    bool isPhysical;
};
constexpr UnitCase kUnits[] = {
    {"unit_s", "s", "s", true},
    {"unit_none", "none", "none", false},
    {"Unit_Undefined", "undefined", "undefined", false},
    {"unit_x", "unit_none", "unit_none", false},
    {"unit_x", "UNIT_undefined", "UNIT_undefined", false},
};

TEST(Number, ReservedUnitsStandForNone) {
    for (const UnitCase& row : kUnits) {
        SCOPED_TRACE(std::string(row.unitID) + " " + row.unitName);
        ElementImport import;
        ZMTDefinition definitions;
        ASSERT_TRUE(import.Import(definitions,
                                  R"(<Definition><TypeDef TypeID="type_unsigned_byte"><TDefName>B</TDefName>
                                     <TDefSize>1</TDefSize></TypeDef><UnitDef UnitID=")" +
                                      std::string(row.unitID) + "\"><UnitDefName>" + row.unitName +
                                      "</UnitDefName><UnitDefCode>1</UnitDefCode></UnitDef></Definition>"));
        import.Context().definitions = &definitions;
        ZMTParamNumber number;
        ASSERT_TRUE(import.Import(number, "<PNParam><ParamName>N</ParamName><TNumber>" + std::string(kByte) +
                                              kScale + "<Unit UnitRef=\"" + row.unitID +
                                              "\"/></TNumber></PNParam>"));
        EXPECT_EQ(number.UnitName(), row.name);
        EXPECT_EQ(number.HasPhysicalUnit(), row.isPhysical);
    }
}

TEST(Number, BeforeItsImportHasNoUnit) {
    const ZMTParamNumber number;
    EXPECT_EQ(number.Unit(), nullptr);
    EXPECT_EQ(number.UnitText(), "");
    EXPECT_FALSE(number.HasPhysicalUnit());
    EXPECT_EQ(number.TypeDefinition(), nullptr);
}

TEST(Number, CarriesItsPathInACatalog) {
    const auto imported = ImportText(CatalogOfParams(Param("Speed", "<TNumber/>")));
    EXPECT_EQ(imported->messages.substr(0, 45), "Warning #0067 in '/Cat/Amp/Volume/Speed':\n  C");
    EXPECT_NE(imported->messages.find("Error #0071 in '/Cat/Amp/Volume/Speed':"), std::string::npos);
    EXPECT_NE(
        imported->messages.find("Error #0129 in '/Cat/Amp/Volume':\n  Failed to import element <PUParam>\n"),
        std::string::npos);
}

}  // namespace
}  // namespace tarvex::test::number_test
