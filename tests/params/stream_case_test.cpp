/// Stream cases: the coordinates that they stand for, the parameters that they hold, and what ends their
/// import.

#include "params/stream_case.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/streams.h"

namespace tarvex::test::stream_case_test {
namespace {

constexpr unsigned kNoUpperBound = 0x7FFFFFFF;
const std::string kMember = Member("1", "F");

struct RangeCase {
    const char* posY;
    unsigned min;
    unsigned max;
};
constexpr RangeCase kRanges[] = {
    {"3", 3, 3},
    {" 3 ", 3, 3},
    {"0", 0, 0},
    {"0x1F", 31, 31},
    {"0X1f", 31, 31},
    {"0b101", 5, 5},
    {"2147483647", 2147483647, 2147483647},
    {"-1", 0xFFFFFFFF, 0xFFFFFFFF},
    {"5-7", 5, 5},
    {"1..4", 1, 4},
    {"1...4", 1, 4},
    {" 1 .. 4 ", 1, 4},
    {"0x10..0x1F", 16, 31},
    {"3..3", 3, 3},
    {"4..1", 4, 1},
    {"..5", 0, 5},
    {"5..", 5, 0},
    {"-3..2", 0xFFFFFFFD, 2},
    {"1..2147483647", 1, kNoUpperBound},
    {">7", 7, kNoUpperBound},
    {"> 0x07", 7, kNoUpperBound},
    {"x>7", 7, kNoUpperBound},
    {"7>", 0, kNoUpperBound},
    {"#NULL#", 0, 0},
    {"#null#", 0, 0},
    {"", 0, 0},
};

TEST(StreamCase, RangeIsReadInAllItsForms) {
    for (const RangeCase& row : kRanges) {
        SCOPED_TRACE(row.posY);
        const CaseImport read(Case(row.posY));
        EXPECT_EQ(read.messages, "");
        ASSERT_NE(read.streamCase, nullptr);
        EXPECT_EQ(read.streamCase->PosYMin(), row.min);
        EXPECT_EQ(read.streamCase->PosYMax(), row.max);
    }
}

constexpr const char* kBadRanges[] = {
    "x", ">", "..", "1..x", "x..1", "1..2..3", "1,2", "1.5", ">=8", ">7..9", "1 to 4", " ", "0xG", "NULL",
};

TEST(StreamCase, FailsWithARangeThatCannotBeRead) {
    for (const char* posY : kBadRanges) {
        SCOPED_TRACE(posY);
        const CaseImport read(Case(posY));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.streamCase, nullptr);
        EXPECT_EQ(read.messages, "Error #0017 in '/Body/{StreamCase}':\n  Failed to analyze value '" +
                                     std::string(posY) +
                                     "'\nError #0032 in '/Body':\n  Failed to import element <StreamCase>\n");
    }
}

TEST(StreamCase, LooksNoFurtherThanABadRange) {
    const CaseImport read(Case("#NULL#", "x", ""));
    EXPECT_EQ(read.messages, R"(Error #0017 in '/Body/{StreamCase}':
  Failed to analyze value 'x'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
)");
}

TEST(StreamCase, BoundsAreLoggedAsSignedNumbers) {
    const CaseImport below(Case("-1"));
    ASSERT_NE(below.streamCase, nullptr);
    EXPECT_NE(DumpOf(*below.streamCase).find("\t.PosYMin: -1\n\t.PosYMax: -1\n"), std::string::npos);
    const CaseImport open(Case(">5"));
    ASSERT_NE(open.streamCase, nullptr);
    EXPECT_NE(DumpOf(*open.streamCase).find("\t.PosYMin: 5\n\t.PosYMax: 2147483647\n"), std::string::npos);
}

struct SpellingCase {
    const char* what;
    const char* coordinates;
    const char* posX;
    unsigned min;
    unsigned max;
};
constexpr SpellingCase kSpellings[] = {
    {"nothing", "", "#NULL#", 0, 0},
    {"one element", R"(<PosDescription PosX="A" PosY="1..4"/>)", "A", 1, 4},
    {"one element without y", R"(<PosDescription PosX="A"/>)", "A", 0, 0},
    {"one element without x", R"(<PosDescription PosY="1..4"/>)", "#NULL#", 1, 4},
    {"one element without attributes", "<PosDescription/>", "#NULL#", 0, 0},
    {"one element with empty attributes", R"(<PosDescription PosX="" PosY=""/>)", "", 0, 0},
    {"two of them", R"(<PosDescription PosX="A" PosY="1"/><PosDescription PosX="B" PosY="2"/>)", "A", 1, 1},
    {"two elements", R"(<PosX PosDescription="A"/><PosY PosDescription="1..4"/>)", "A", 1, 4},
    {"two elements, y first", R"(<PosY PosDescription="1..4"/><PosX PosDescription="A"/>)", "A", 1, 4},
    {"an element for y", R"(<PosY PosDescription=">7"/>)", "#NULL#", 7, kNoUpperBound},
    {"an element for x", R"(<PosX PosDescription="A"/>)", "A", 0, 0},
    {"two elements without attributes", "<PosX/><PosY/>", "#NULL#", 0, 0},
    {"an element with an empty attribute", R"(<PosX PosDescription=""/><PosY PosDescription=""/>)", "", 0, 0},
    {"elements win",
     R"(<PosDescription PosX="A" PosY="1"/><PosX PosDescription="B"/><PosY PosDescription="2"/>)", "B", 2, 2},
    {"elements win without attributes", R"(<PosDescription PosX="A" PosY="1"/><PosX/><PosY/>)", "#NULL#", 0,
     0},
    {"element for y wins, x stays", R"(<PosY PosDescription="2"/><PosDescription PosX="A" PosY="1"/>)", "A",
     2, 2},
    {"element for x wins, y stays", R"(<PosX PosDescription="B"/><PosDescription PosX="A" PosY="1"/>)", "B",
     1, 1},
    {"attributes of the wrong name", R"(<PosDescription posX="A" posY="1"/>)", "#NULL#", 0, 0},
    {"texts do not count", "<PosX>A</PosX><PosY>1</PosY>", "#NULL#", 0, 0},
    {"one level too deep", R"(<A><PosDescription PosX="A" PosY="1"/></A>)", "#NULL#", 0, 0},
    {"x is any text", R"(<PosDescription PosX=" &lt;a b&gt; " PosY="1"/>)", " <a b> ", 1, 1},
};

TEST(StreamCase, CoordinatesAreFoundInBothSpellings) {
    for (const SpellingCase& row : kSpellings) {
        SCOPED_TRACE(row.what);
        const CaseImport read("<StreamCase>" + (row.coordinates + kMember) + "</StreamCase>");
        EXPECT_EQ(read.messages, "");
        ASSERT_NE(read.streamCase, nullptr);
        EXPECT_EQ(read.streamCase->PosXString(), row.posX);
        EXPECT_EQ(read.streamCase->PosYMin(), row.min);
        EXPECT_EQ(read.streamCase->PosYMax(), row.max);
        EXPECT_EQ(read.streamCase->Count(), 1U);
    }
}

struct EmptyCase {
    const char* what;
    const char* content;
};
constexpr EmptyCase kEmptyCases[] = {
    {"nothing", ""},
    {"signals instead of parameters", "<StreamSignal/><StreamSignal/>"},
    {"parameters one level too deep", "<A><StreamParam/></A>"},
    {"text", "StreamParam"},
};

TEST(StreamCase, WithoutParametersIsWarnedOfAndStaysEmpty) {
    for (const EmptyCase& row : kEmptyCases) {
        SCOPED_TRACE(row.what);
        const CaseImport read(Case("A", "1..4", row.content));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, R"(Warning #0018 in '/Body/{StreamCase}':
  Can not find element <StreamParam>
Warning #0019 in '/Body/{StreamCase}':
  <StreamCase> without <StreamParam> not supported yet
)");
        ASSERT_NE(read.streamCase, nullptr);
        EXPECT_EQ(read.streamCase->Size(), 0U);
        EXPECT_EQ(read.streamCase->SeqCnt(), 0U);
        EXPECT_EQ(read.streamCase->PosXString(), "A");
        EXPECT_EQ(read.streamCase->PosYMax(), 4U);
    }
}

struct BadParamCase {
    const char* what;
    std::string params;
    const char* messages;
};

TEST(StreamCase, FailsAtItsFirstBadParameter) {
    const BadParamCase rows[] = {
        {"unknown type", Member("1", "F", "<TCStream/>"),
         R"(Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
        {"no type", Member("1", "F", ""),
         R"(Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
        {"type too deep", Member("1", "F", "<A>" + std::string(kText) + "</A>"),
         R"(Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
        {"element without anything", "<StreamParam/>",
         R"(Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
        {"parameter that fails", Member("1", "F", R"(<TString MaxSize="8"/>)"),
         R"(Error #0088 in '/Body/{StreamCase}/F':
  Missing required attribute TypeRef
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"no name", Member("1", ""),
         R"(Error #0011 in '/Body/{StreamCase}/':
  Can not find element <ParamName>
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"no position", "<StreamParam><ParamName>F</ParamName>" + std::string(kText) + "</StreamParam>",
         R"(Error #0015 in '/Body/{StreamCase}/F':
  Missing required attribute ParamIdx
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"position 0", Member("0", "F"),
         R"(Error #0016 in '/Body/{StreamCase}/F':
  Invalid parameter position 0
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"position that is no number", Member("first", "F"),
         R"(Error #0016 in '/Body/{StreamCase}/F':
  Invalid parameter position 0
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"sequence without a position", Member("seq2", "F"),
         R"(Error #0016 in '/Body/{StreamCase}/F':
  Invalid parameter position 0
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"position 4096", Member("4096", "F"),
         R"(Error #0016 in '/Body/{StreamCase}/F':
  Invalid parameter position 4096
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"array that fails", Member("1", "List", "<TArray/>"),
         R"(Error #0042 in '/Body/{StreamCase}/List':
  Missing required attribute NMax
Error #0021 in '/Body/{StreamCase}':
  Failed to import element <StreamParam>
)"},
        {"behind a good one", Member("1", "E") + Member("2", "F", "<TCStream/>"),
         R"(Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
        {"second fault is not told", Member("1", "F", "<TCStream/>") + Member("0", "G"),
         R"(Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
        {"warning, then a fault", Member("1", "E") + Member("1", "F") + Member("2", "G", "<TCStream/>"),
         R"(Warning #0022 in '/Body/{StreamCase}':
  Double definition of element at position 1
Error #0020 in '/Body/{StreamCase}':
  Unknown parameter type in <StreamParam>
)"},
    };
    for (const BadParamCase& row : rows) {
        SCOPED_TRACE(row.what);
        const StreamImport read(Stream(Case("#NULL#", "1", row.params) + Case("2")));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, std::string(row.messages) +
                                     "Error #0032 in '/Body':\n  Failed to import element <StreamCase>\n");
        ASSERT_EQ(read.param.Count(), 1U);
        EXPECT_EQ(read.param.GetAt(0)->PosYMin(), 2U);
    }
}

/// No kind of catalogs leaves its position open, so the factory is one whose parameters do.
TEST(StreamCase, FailsWithAParameterThatHasNoPosition) {
    const PlannedFactory factory;
    ElementImport import(factory);
    ZMTParamStream stream;
    EXPECT_TRUE(import.Import(stream, "<PUParam><ParamName>Body</ParamName>" +
                                          Stream(Case("#NULL#", "1", Member("1", "F") + Member("2", "G"))) +
                                          "</PUParam>"));
    EXPECT_EQ(import.TakeMessages(), R"(Error #0023 in '/Body/{StreamCase}':
  Invalid position of parameter 'F'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
)");
    EXPECT_EQ(stream.Count(), 0U);
}

struct KindCase {
    const char* what;
    std::string type;
    int code;
};

TEST(StreamCase, HasParametersOfEveryKind) {
    const KindCase kinds[] = {
        {"number", kByte, 13},
        {"enumeration", kEnum, 14},
        {"string", kText, 16},
        {"bit field", kBits, 17},
        {"boolean", kBool, 10},
        {"void", kVoid, 18},
        {"array", Array("Cell", kByte), 8},
        {"record", Record(1, Field(1, "Cell", kByte)), 9},
        {"stream", Stream(Case("1")), 6},
    };
    for (const KindCase& row : kinds) {
        SCOPED_TRACE(row.what);
        const CaseImport wrapped(Case("#NULL#", "1", Member("1", "F", row.type)));
        const CaseImport direct(
            Case("#NULL#", "1",
                 R"(<StreamParam><ParamName ParamIdx="1">F</ParamName>)" + row.type + "</StreamParam>"));
        for (const CaseImport* read : {&wrapped, &direct}) {
            EXPECT_EQ(read->messages, "");
            ASSERT_NE(read->streamCase, nullptr);
            ASSERT_EQ(read->streamCase->Count(), 1U);
            const ZMTParam* param = read->streamCase->GetAt(0);
            EXPECT_EQ(param->GetType(), row.code);
            EXPECT_EQ(param->GetName(), "F");
            EXPECT_EQ(param->ParamPos(), 1U);
            EXPECT_EQ(param->GetParent(), read->streamCase);
            EXPECT_EQ(read->streamCase->FindChild("f"), param);
            EXPECT_EQ(read->streamCase->GetChild(0), param);
        }
    }
}

TEST(StreamCase, NewOneIsEmptyAndHasItsName) {
    const ZMTParamStreamCase streamCase;
    EXPECT_EQ(streamCase.GetName(), "{StreamCase}");
    EXPECT_EQ(streamCase.GetType(), 7);
    EXPECT_EQ(streamCase.PosXString(), "");
    EXPECT_EQ(streamCase.PosYMin(), 0U);
    EXPECT_EQ(streamCase.PosYMax(), 0U);
    EXPECT_EQ(streamCase.SeqCnt(), 0U);
    EXPECT_EQ(streamCase.Size(), 0U);
}

TEST(StreamCase, ReadsNeitherNameNorPosition) {
    const CaseImport read(R"(<StreamCase FieldIdx="7"><ParamName ParamIdx="7">Other</ParamName>)" + kMember +
                          "</StreamCase>");
    EXPECT_EQ(read.messages, "");
    ASSERT_NE(read.streamCase, nullptr);
    EXPECT_EQ(read.streamCase->GetName(), "{StreamCase}");
    EXPECT_EQ(read.streamCase->ParamPos(), 0U);
}

TEST(StreamCase, ClonesAlone) {
    const CaseImport read(Case("A", "2..5", Member("1seq1", "F") + Member("1seq2", "G")));
    ASSERT_NE(read.streamCase, nullptr);
    const std::unique_ptr<ZMTNode> clone = read.streamCase->Clone();
    const auto* copy = dynamic_cast<ZMTParamStreamCase*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(DumpOf(*copy), DumpOf(*read.streamCase));
    EXPECT_EQ(copy->SeqCnt(), 2U);
    EXPECT_EQ(copy->GetAt(1)->GetParent(), copy);
    EXPECT_NE(copy->GetAt(1), read.streamCase->GetAt(1));
}

TEST(StreamCase, ParameterThatFailsItsCheckIsDeletedWithoutAMessageAndTheCaseStays) {
    ElementImport import;
    ZMTParamStreamCase streamCase;
    streamCase.Append(std::make_unique<PlannedParam>(ParamPlan{.canResolve = false}));
    streamCase.Append(std::make_unique<PlannedParam>(ParamPlan{}));
    EXPECT_TRUE(streamCase.Resolve(import.Context()));
    EXPECT_EQ(import.TakeMessages(), "");
    EXPECT_EQ(streamCase.GetAt(0), nullptr);
    EXPECT_NE(streamCase.GetAt(1), nullptr);
}

}  // namespace
}  // namespace tarvex::test::stream_case_test
