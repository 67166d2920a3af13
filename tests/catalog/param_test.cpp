/// What all parameters share: their names, their positions, and the warning about a name used twice.

#include "catalog/param.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/number.h"
#include "params/void.h"
#include "support/catalog_import.h"

namespace tarvex::test::param_test {
namespace {

constexpr const char* kVoid = R"(<TVoid TypeRef="type_void"/>)";

/// A parameter of the base class: names and positions are read as every kind reads them.
struct NameAndPosition {
    explicit NameAndPosition(const std::string& xml) {
        const ParsedElement element(xml);
        nameIsRead = param.ImportParamName(*element, import.Context());
        nameMessages = import.TakeMessages();
        posIsRead = param.ImportParamPos(*element, import.Context());
        posMessages = import.TakeMessages();
    }

    ElementImport import;
    ZMTParam param;
    bool nameIsRead = false;
    bool posIsRead = false;
    std::string nameMessages;
    std::string posMessages;
};

struct NameCase {
    const char* xml;
    const char* name;
};
constexpr NameCase kNames[] = {
    {"<PUParam><ParamName>Volume</ParamName></PUParam>", "Volume"},
    {"<PUParam><ParamName> Amp </ParamName></PUParam>", "_Amp_"},
    {"<PUParam><ParamName>Vol.Ctrl [dB] (L)</ParamName></PUParam>", "VolCtrl_[dB]_(L)"},
    {"<PUParam><ParamName>\xC3\x9C"
     "bung</ParamName></PUParam>",
     "bung"},
    {"<PUParam><ParamName>Two\nLines\tTabbed</ParamName></PUParam>", "TwoLinesTabbed"},
    {"<PUParam><Other>X</Other><ParamName>P</ParamName><ParamName>Q</ParamName></PUParam>", "P"},
    {"<TRecordField><TRecordFieldName>Field</TRecordFieldName></TRecordField>", "Field"},
    {"<TRecordField><TRecordFieldName>F</TRecordFieldName><ParamName>P</ParamName></TRecordField>", "P"},
    {"<TRecordField><ParamName/><TRecordFieldName>F</TRecordFieldName></TRecordField>", "F"},
    {"<TArray><TArrayName>List Of</TArrayName></TArray>", "List_Of"},
    {"<TArray><TArrayName>List</TArrayName><ParamName>P</ParamName></TArray>", "List"},
    {"<StreamCase><ParamName>P</ParamName></StreamCase>", ""},
};

TEST(ParamName, ComesFromTheNameElement) {
    for (const NameCase& row : kNames) {
        SCOPED_TRACE(row.xml);
        const NameAndPosition read(row.xml);
        EXPECT_TRUE(read.nameIsRead);
        EXPECT_EQ(read.param.GetName(), row.name);
        EXPECT_EQ(read.nameMessages, "");
    }
}

struct MissingName {
    const char* xml;
    bool isRead;
    const char* messages;
};
constexpr MissingName kMissingNames[] = {
    {"<PUParam/>", false, "Error #0011 in '/':\n  Can not find element <ParamName>\n"},
    {"<PUParam><ParamName/></PUParam>", false, "Error #0011 in '/':\n  Can not find element <ParamName>\n"},
    {"<PUParam><N><ParamName>P</ParamName></N></PUParam>", false,
     "Error #0011 in '/':\n  Can not find element <ParamName>\n"},
    {"<TRecordField><ParamName/><TRecordFieldName/></TRecordField>", false,
     "Error #0011 in '/':\n  Can not find element <ParamName>\n"},
    {"<PUParam><TArrayName>A</TArrayName></PUParam>", false,
     "Error #0011 in '/':\n  Can not find element <ParamName>\n"},
    {"<TArray/>", true, "Warning #0010 in '/':\n  Can not find element <TArrayName>\n"},
    {"<TArray><TArrayName/></TArray>", true, "Warning #0010 in '/':\n  Can not find element <TArrayName>\n"},
    {"<TArray><ParamName>P</ParamName></TArray>", true,
     "Warning #0010 in '/':\n  Can not find element <TArrayName>\n"},
};

TEST(ParamName, IsNeededByAllButArrays) {
    for (const MissingName& row : kMissingNames) {
        SCOPED_TRACE(row.xml);
        const NameAndPosition read(row.xml);
        EXPECT_EQ(read.nameIsRead, row.isRead);
        EXPECT_EQ(read.param.GetName(), "");
        EXPECT_EQ(read.nameMessages, row.messages);
    }
}

struct FieldIdxCase {
    const char* attribute;
    bool isRead;
    unsigned pos;
    const char* messages;
};
constexpr FieldIdxCase kFieldIdx[] = {
    {R"(FieldIdx="1")", true, 1, ""},
    {R"(FieldIdx="4095")", true, 4095, ""},
    {R"(FieldIdx="0x10")", true, 16, ""},
    {R"(FieldIdx=" 7 ")", true, 7, ""},
    {"", false, 0, "Error #0012 in '/F':\n  Missing required attribute FieldIdx\n"},
    {R"(FieldIdx="one")", false, 0, "Error #0013 in '/F':\n  Failed to analyze value 'one'\n"},
    {R"(FieldIdx="1A")", false, 0, "Error #0013 in '/F':\n  Failed to analyze value '1A'\n"},
    {R"(FieldIdx="0")", false, 0, "Error #0014 in '/F':\n  Invalid parameter position 0\n"},
    {R"(FieldIdx="")", false, 0, "Error #0014 in '/F':\n  Invalid parameter position 0\n"},
    {R"(FieldIdx="4096")", false, 4096, "Error #0014 in '/F':\n  Invalid parameter position 4096\n"},
    {R"(FieldIdx="-1")", false, 0xFFFFFFFF, "Error #0014 in '/F':\n  Invalid parameter position -1\n"},
};

TEST(FieldIdx, IsThePositionOfARecordField) {
    for (const FieldIdxCase& row : kFieldIdx) {
        SCOPED_TRACE(row.attribute);
        const NameAndPosition read("<TRecordField " + std::string(row.attribute) +
                                   "><TRecordFieldName>F</TRecordFieldName></TRecordField>");
        EXPECT_EQ(read.posIsRead, row.isRead);
        EXPECT_EQ(read.param.GetPosition(), row.pos);
        EXPECT_EQ(read.posMessages, row.messages);
    }
}

struct ParamIdxCase {
    const char* text;
    unsigned pos;
    unsigned sequence;
};
constexpr ParamIdxCase kParamIdx[] = {
    {"5", 5, 0},       {"5seq1", 5, 1}, {"5 SEQ 1", 5, 1},     {"3seq2", 3, 2}, {"3 seq 2", 3, 2},
    {"4095", 4095, 0}, {"0x10", 16, 0}, {"0X10Seq0x2", 16, 2}, {" 2 ", 2, 0},   {"1seq", 1, 0},
    {"1seq0", 1, 0},   {"1seqx", 1, 0}, {"1seq2seq3", 1, 0},
};

TEST(ParamIdx, GivesPositionAndSequenceOfAStreamParameter) {
    for (const ParamIdxCase& row : kParamIdx) {
        SCOPED_TRACE(row.text);
        const NameAndPosition read("<StreamParam><ParamName ParamIdx=\"" + std::string(row.text) +
                                   "\">P</ParamName></StreamParam>");
        EXPECT_TRUE(read.posIsRead);
        EXPECT_EQ(read.param.GetPosition(), row.pos);
        EXPECT_EQ(read.param.Sequence(), row.sequence);
        EXPECT_EQ(read.posMessages, "");
    }
}

struct BadParamIdx {
    const char* nameElement;
    const char* messages;
};
constexpr BadParamIdx kBadParamIdx[] = {
    {"<ParamName>P</ParamName>", "Error #0015 in '/P':\n  Missing required attribute ParamIdx\n"},
    {R"(<TRecordFieldName ParamIdx="1">P</TRecordFieldName>)",
     "Error #0015 in '/P':\n  Missing required attribute ParamIdx\n"},
    {R"(<ParamName ParamIdx="seq2">P</ParamName>)", "Error #0016 in '/P':\n  Invalid parameter position 0\n"},
    {R"(<ParamName ParamIdx="0">P</ParamName>)", "Error #0016 in '/P':\n  Invalid parameter position 0\n"},
    {R"(<ParamName ParamIdx="">P</ParamName>)", "Error #0016 in '/P':\n  Invalid parameter position 0\n"},
    {R"(<ParamName ParamIdx="x">P</ParamName>)", "Error #0016 in '/P':\n  Invalid parameter position 0\n"},
    {R"(<ParamName ParamIdx="4096">P</ParamName>)",
     "Error #0016 in '/P':\n  Invalid parameter position 4096\n"},
    {R"(<ParamName ParamIdx="5000seq1">P</ParamName>)",
     "Error #0016 in '/P':\n  Invalid parameter position 5000\n"},
    {R"(<ParamName ParamIdx="-1">P</ParamName>)", "Error #0016 in '/P':\n  Invalid parameter position -1\n"},
};

TEST(ParamIdx, OutOfRangeIsAnError) {
    for (const BadParamIdx& row : kBadParamIdx) {
        SCOPED_TRACE(row.nameElement);
        const NameAndPosition read("<StreamParam>" + std::string(row.nameElement) + "</StreamParam>");
        EXPECT_FALSE(read.posIsRead);
        EXPECT_EQ(read.posMessages, row.messages);
    }
}

TEST(ParamIdx, IsCutAfter499Characters) {
    // "5", blanks and "seq1": the digit is the 499th character, then the 500th
    for (const auto& [blanks, sequence] : {std::pair{494U, 1U}, std::pair{495U, 0U}}) {
        const NameAndPosition read("<StreamParam><ParamName ParamIdx=\"5" + std::string(blanks, ' ') +
                                   "seq1\">P</ParamName></StreamParam>");
        EXPECT_TRUE(read.posIsRead);
        EXPECT_EQ(read.param.GetPosition(), 5U);
        EXPECT_EQ(read.param.Sequence(), sequence) << blanks;
    }
}

TEST(ParamPosition, OfOtherElementsIsLeftToTheirOwner) {
    for (const char* tag : {"PUParam", "MUParam", "ERParam", "TArray", "StreamCase", "TBoolField"}) {
        SCOPED_TRACE(tag);
        const NameAndPosition read(std::string("<") + tag +
                                   " FieldIdx=\"3\"><ParamName ParamIdx=\"4seq5\">P"
                                   "</ParamName></" +
                                   tag + ">");
        EXPECT_TRUE(read.posIsRead);
        EXPECT_EQ(read.param.GetPosition(), 0U);
        EXPECT_EQ(read.param.Sequence(), 0U);
        EXPECT_EQ(read.posMessages, "");
    }
}

TEST(ParamPosition, FaultEndsTheImportOfEveryKind) {
    ElementImport import;
    ZMTParamVoid nothing;
    EXPECT_FALSE(
        import.Import(nothing, R"(<TRecordField FieldIdx="4096"><TRecordFieldName>F</TRecordFieldName>
                                           <TVoid/></TRecordField>)"));
    EXPECT_EQ(import.TakeMessages(), "Error #0014 in '/F':\n  Invalid parameter position 4096\n");
    ZMTParamNumber number;
    EXPECT_FALSE(import.Import(number, R"(<StreamParam><ParamName>N</ParamName><TNumber/></StreamParam>)"));
    EXPECT_EQ(import.TakeMessages(), "Error #0015 in '/N':\n  Missing required attribute ParamIdx\n");
}

TEST(ParamMessage, TakesNamesWithPercentSignsAsTheyAre) {
    ElementImport import;
    PlainNode parent("100%d%s%n");
    ZMTParamNumber number;
    number.SetParent(&parent);
    EXPECT_FALSE(import.Import(number, "<PNParam/>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/100%d%s%n/':\n  Can not find element <ParamName>\n");
}

TEST(ParamPosition, SurvivesACopyWithSequenceAndType) {
    ElementImport import;
    ZMTParamVoid original;
    ASSERT_TRUE(import.Import(original, R"(<StreamParam><ParamName ParamIdx="3seq2">P</ParamName>
                                           <TVoid TypeRef="TYPE_void"/></StreamParam>)"));
    ZMTParamVoid copy;
    ASSERT_TRUE(copy.CopyFrom(&original));
    EXPECT_EQ(copy.GetPosition(), 3U);
    EXPECT_EQ(copy.Sequence(), 2U);
    EXPECT_EQ(copy.TypeDefinition(), original.TypeDefinition());
    ASSERT_NE(copy.TypeDefinition(), nullptr);
    EXPECT_EQ(copy.TypeDefinition()->GetName(), "Void");
}

TEST(ParamDump, ShowsTheSequenceOnlyWhenThereIsOne) {
    ElementImport import;
    ZMTParamVoid sequenced;
    ZMTParamVoid plain;
    ASSERT_TRUE(import.Import(sequenced, R"(<StreamParam><ParamName ParamIdx="3seq2">P</ParamName>
                                            <TVoid TypeRef="type_void"/></StreamParam>)"));
    ASSERT_TRUE(import.Import(plain, R"(<StreamParam><ParamName ParamIdx="4">Q</ParamName>
                                        <TVoid TypeRef="type_float"/></StreamParam>)"));
    EXPECT_EQ(DumpOf(sequenced),
              "PARAMVOID: P\n.Parent: -\n.BytesInMsg: 0\n.ParamPos: 3 seq 2\n.TypeIDName: Void\n");
    EXPECT_EQ(DumpOf(plain), "PARAMVOID: Q\n.Parent: -\n.BytesInMsg: 0\n.ParamPos: 4\n.TypeIDName: \n");
}

/// A void parameter of that name at these positions of "Set" and "Status"; -1 for not at all.
std::string Named(const std::string& name, int inSet, int inStatus) {
    std::string operations;
    if (inSet >= 0) {
        operations += "<PCmdSet><ParamPos>" + std::to_string(inSet) + "</ParamPos></PCmdSet>";
    }
    if (inStatus >= 0) {
        operations += "<PReportStatus><ParamPos>" + std::to_string(inStatus) + "</ParamPos></PReportStatus>";
    }
    return Param(name, kVoid, operations);
}

struct DuplicateCase {
    const char* what;
    std::string params;
    const char* messages;
};

TEST(DuplicateName, IsWarnedOfOncePerParameterThatFindsAnother) {
    const DuplicateCase rows[] = {
        {"different names", Named("A", -1, 1) + Named("B", -1, 2), ""},
        {"two of a name", Named("A", -1, 1) + Named("A", -1, 2),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/A':
  Multiple use of parameter name 'A'
)"},
        {"two of a name, counting from 0", Named("A", -1, 0) + Named("A", -1, 1),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/A':
  Multiple use of parameter name 'A'
)"},
        {"in other letters, and written in the other order", Named("VOLUME", -1, 2) + Named("volume", -1, 1),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/VOLUME':
  Multiple use of parameter name 'VOLUME'
)"},
        {"three of a name", Named("A", -1, 1) + Named("A", -1, 2) + Named("A", -1, 3),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/A':
  Multiple use of parameter name 'A'
Warning #0009 in '/Cat/Amp/Volume/Status/A':
  Multiple use of parameter name 'A'
)"},
        {"in each of two operations", Named("A", 1, 1) + Named("A", 2, 2),
         R"(Warning #0009 in '/Cat/Amp/Volume/Set/A':
  Multiple use of parameter name 'A'
Warning #0009 in '/Cat/Amp/Volume/Status/A':
  Multiple use of parameter name 'A'
)"},
        {"one in each of two operations", Named("A", 1, -1) + Named("A", -1, 1), ""},
        {"two without a name of their own", Named("", -1, 1) + Named("", -1, 2),
         R"(Warning #0009 in '/Cat/Amp/Volume/Status/{Void}':
  Multiple use of parameter name '{Void}'
)"},
        {"named as an operation", Named("Set", 1, 1), ""},
        {"named as the function and the block", Named("Volume", 0, 1) + Named("Amp", 1, 2), ""},
    };
    for (const DuplicateCase& row : rows) {
        SCOPED_TRACE(row.what);
        const auto imported = ImportText(CatalogOfParams(row.params));
        ASSERT_TRUE(imported->ok);
        EXPECT_EQ(imported->messages, row.messages);
    }
}

TEST(DuplicateName, IsNoneWithoutParentOrName) {
    ElementImport import;
    ZMTParam alone;
    alone.SetName("A");
    EXPECT_FALSE(alone.HasDuplicateName());
    EXPECT_TRUE(alone.Resolve(import.Context()));
    ZMTOperation operation;
    for (const unsigned pos : {1U, 2U}) {
        auto nameless = std::make_unique<ZMTParam>();
        nameless->SetParent(&operation);
        nameless->SetParamPos(pos);
        operation.SetAt(std::move(nameless), pos);
    }
    EXPECT_TRUE(operation.GetAt(2)->Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
}

}  // namespace
}  // namespace tarvex::test::param_test
