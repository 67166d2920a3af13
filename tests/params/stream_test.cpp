/// Streams: their own element, the cases that they keep, and what is copied and logged of them.

#include "params/stream.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalog/definitions.h"
#include "catalog/element_import.h"
#include "catalog/test_nodes.h"
#include "params/streams.h"

namespace tarvex::test::stream_test {
namespace {

struct FaultCase {
    const char* what;
    const char* typeElement;
    const char* messages;
};
constexpr FaultCase kFaults[] = {
    {"no type element", "<TArray/>", "Error #0028 in '/Body':\n  Can not find element <TStream>\n"},
    {"type element too deep", "<Deep><TStream/></Deep>",
     "Error #0028 in '/Body':\n  Can not find element <TStream>\n"},
    {"another kind of stream", "<TCStream/>", "Error #0028 in '/Body':\n  Can not find element <TStream>\n"},
    {"no length", R"(<TStream TypeRef="type_stream"/>)",
     "Error #0029 in '/Body':\n  Missing required attribute Length\n"},
    {"no type", R"(<TStream Length="8"/>)",
     "Error #0030 in '/Body':\n  Missing required attribute TypeRef\n"},
    {"neither length nor type", "<TStream/>",
     "Error #0029 in '/Body':\n  Missing required attribute Length\n"},
    {"no type, and a case with faults of its own", R"(<TStream Length="8"><StreamCase/></TStream>)",
     "Error #0030 in '/Body':\n  Missing required attribute TypeRef\n"},
};

TEST(Stream, FaultOfItsElementEndsTheImport) {
    for (const FaultCase& row : kFaults) {
        SCOPED_TRACE(row.what);
        const StreamImport read(row.typeElement);
        EXPECT_FALSE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.param.Count(), 0U);
    }
}

TEST(Stream, FaultTakesItsParameterElementWithIt) {
    const auto imported = ImportText(
        CatalogOfParams(Param("Body", R"(<TStream Length="8"/>)", At(1)) + Param("Good", kByte, At(1))));
    EXPECT_EQ(imported->messages, R"(Error #0030 in '/Cat/Amp/Volume/Body':
  Missing required attribute TypeRef
Error #0129 in '/Cat/Amp/Volume':
  Failed to import element <PUParam>
)");
    EXPECT_EQ(InStatus<ZMTParam>(*imported, "Body"), nullptr);
    EXPECT_NE(InStatus<ZMTParam>(*imported, "Good"), nullptr);
}

TEST(Stream, NeedsAName) {
    ElementImport import;
    ZMTParamStream stream;
    EXPECT_FALSE(import.Import(stream, "<PUParam>" + Stream(Case("1")) + "</PUParam>"));
    EXPECT_EQ(import.TakeMessages(), "Error #0011 in '/':\n  Can not find element <ParamName>\n");
}

struct LengthCase {
    const char* text;
    unsigned length;
    const char* line;
};
constexpr LengthCase kLengths[] = {
    {"8", 8, ".Length: 8\n"},
    {" 0x10 ", 16, ".Length: 16\n"},
    {"0b11", 3, ".Length: 3\n"},
    {"0", 0, ".Length: 0\n"},
    {"2147483647", 2147483647, ".Length: 2147483647\n"},
    {"-1", 4294967295, ".Length: -1\n"},
    {"", 0, ".Length: 0\n"},
    {"open", 0, ".Length: 0\n"},
    {"1.5", 0, ".Length: 0\n"},
};

TEST(Stream, LengthThatIsNoNumberIs0) {
    for (const LengthCase& row : kLengths) {
        SCOPED_TRACE(row.text);
        const StreamImport read("<TStream TypeRef=\"type_stream\" Length=\"" + std::string(row.text) + "\">" +
                                Case("1") + "</TStream>");
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, "");
        EXPECT_EQ(read.param.Length(), row.length);
        EXPECT_NE(DumpOf(read.param).find(row.line), std::string::npos);
    }
}

TEST(Stream, TypeIsLookedUp) {
    const StreamImport known(Stream(Case("1")));
    ASSERT_NE(known.param.TypeDefinition(), nullptr);
    EXPECT_EQ(known.param.TypeDefinition()->GetName(), "Stream");
    const StreamImport unknown(R"(<TStream TypeRef="type_x" Length="8">)" + Case("1") + "</TStream>");
    EXPECT_TRUE(unknown.ok);
    EXPECT_EQ(unknown.messages, "");
    EXPECT_EQ(unknown.param.TypeDefinition(), nullptr);
}

TEST(Stream, ElementMayStandDirectlyOrInAWrapper) {
    ElementImport import;
    for (const std::string& content :
         {Stream(Case("1")), "<PUParamType>" + Stream(Case("1")) + "</PUParamType>"}) {
        ZMTParamStream stream;
        EXPECT_TRUE(import.Import(stream, "<PUParam><ParamName>Body</ParamName>" + content + "</PUParam>"));
        EXPECT_EQ(import.TakeMessages(), "");
        EXPECT_EQ(stream.Count(), 1U);
    }
}

TEST(Stream, WithoutCasesIsWarnedOfAndStaysEmpty) {
    const std::string contents[] = {"", "<Cases>" + Case("1") + "</Cases>", "<StreamSignal/>"};
    for (const std::string& content : contents) {
        SCOPED_TRACE(content);
        const StreamImport read(Stream(content));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, "Warning #0031 in '/Body':\n  Can not find element <StreamCase>\n");
        EXPECT_EQ(read.param.Count(), 0U);
    }
}

TEST(Stream, KeepsItsCasesInDocumentOrder) {
    const StreamImport read(Stream(Case("7") + "<Other/>" + Case("1..4") + Case("A", "5") + Case(">8")));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, "");
    EXPECT_EQ(read.param.GetType(), 6);
    EXPECT_EQ(read.param.GetBytesInMsg(), 0);
    EXPECT_EQ(read.param.Selector(), nullptr);
    const unsigned beginnings[] = {7, 1, 5, 8};
    ASSERT_EQ(read.param.Size(), 4U);
    for (unsigned at = 0; at < 4; ++at) {
        SCOPED_TRACE(at);
        const ZMTParamStreamCase* streamCase = read.param.GetAt(at);
        EXPECT_EQ(streamCase->PosYMin(), beginnings[at]);
        EXPECT_EQ(streamCase->GetType(), 7);
        EXPECT_EQ(streamCase->GetName(), "{StreamCase}");
        EXPECT_EQ(streamCase->GetBytesInMsg(), 0);
        EXPECT_EQ(streamCase->ParamPos(), 0U);
        EXPECT_EQ(streamCase->GetParent(), &read.param);
        EXPECT_EQ(read.param.GetChild(at), streamCase);
    }
    EXPECT_EQ(read.param.GetChild(4), nullptr);
    EXPECT_EQ(read.param.FindChild("{streamcase}"), read.param.GetAt(0));
    EXPECT_EQ(read.param.FindChild("Body"), nullptr);
}

TEST(Stream, GoesOnBehindACaseThatFails) {
    const StreamImport read(
        Stream(Case("x") + Case("1") + Case("#NULL#", "2", Member("2", "F")) + Case("3") + Case("many")));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.messages, R"(Error #0017 in '/Body/{StreamCase}':
  Failed to analyze value 'x'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
Error #0024 in '/Body/{StreamCase}':
  Gap in parameter set before parameter 'F'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
Error #0017 in '/Body/{StreamCase}':
  Failed to analyze value 'many'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
)");
    ASSERT_EQ(read.param.Size(), 2U);
    EXPECT_EQ(read.param.GetAt(0)->PosYMin(), 1U);
    EXPECT_EQ(read.param.GetAt(1)->PosYMin(), 3U);
}

TEST(Stream, StaysWhenAllItsCasesFail) {
    const StreamImport read(Stream(Case("x")));
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.param.Count(), 0U);
    EXPECT_EQ(read.messages, R"(Error #0017 in '/Body/{StreamCase}':
  Failed to analyze value 'x'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
)");
}

struct DoubleCase {
    const char* what;
    std::string cases;
    const char* messages;
    unsigned kept;
};

TEST(Stream, SecondCaseAtAPositionIsDropped) {
    const char* const at3 = "Warning #0033 in '/Body':\n  Double definition of element at position 3\n";
    const DoubleCase rows[] = {
        {"same text", Case("3") + Case("3"), at3, 1},
        {"same value, written differently", Case("3") + Case(" 0x03 ") + Case("3..3"),
         "Warning #0033 in '/Body':\n  Double definition of element at position 3\n"
         "Warning #0033 in '/Body':\n  Double definition of element at position 3\n",
         1},
        {"same range, with the beginning told", Case("A", "3..9") + Case("A", "3...0x9"), at3, 1},
        {"same open range", Case(">3") + Case("> 3"), at3, 1},
        {"not beside each other", Case("3") + Case("4") + Case("3"), at3, 2},
        {"below 0", Case("-2") + Case("-2"),
         "Warning #0033 in '/Body':\n  Double definition of element at position -2\n", 1},
        {"both open", "<StreamCase>" + Member("1", "F") + "</StreamCase>" + Case("#NULL#", "#NULL#"),
         "Warning #0033 in '/Body':\n  Double definition of element at position 0\n", 1},
        {"first one failed", Case("#NULL#", "3", Member("2", "F")) + Case("3"),
         "Error #0024 in '/Body/{StreamCase}':\n  Gap in parameter set before parameter 'F'\n"
         "Error #0032 in '/Body':\n  Failed to import element <StreamCase>\n",
         1},
        {"second one fails", Case("3") + Case("#NULL#", "3", Member("2", "F")),
         "Error #0024 in '/Body/{StreamCase}':\n  Gap in parameter set before parameter 'F'\n"
         "Error #0032 in '/Body':\n  Failed to import element <StreamCase>\n",
         1},
    };
    for (const DoubleCase& row : rows) {
        SCOPED_TRACE(row.what);
        const StreamImport read(Stream(row.cases));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages, row.messages);
        EXPECT_EQ(read.param.Count(), row.kept);
    }
}

TEST(Stream, OfTwoCasesAtAPositionTheFirstIsKept) {
    const StreamImport read(
        Stream(Case("A", "3", Member("1", "First")) + Case("A", "3", Member("1", "Second"))));
    ASSERT_EQ(read.param.Count(), 1U);
    EXPECT_EQ(read.param.GetAt(0)->GetAt(0)->GetName(), "First");
}

struct OverlapCase {
    const char* what;
    std::vector<const char*> ranges;
    bool overlap;
};

TEST(Stream, CasesThatShareAValueAreToldOnceAndStay) {
    const OverlapCase rows[] = {
        {"apart", {"1..4", "6..9"}, false},
        {"next to each other", {"1..4", "5..6"}, false},
        {"next to each other, the other way round", {"5..6", "1..4"}, false},
        {"sharing an end", {"1..4", "4..6"}, true},
        {"sharing an end, the other way round", {"4..6", "1..4"}, true},
        {"same beginning", {"1..4", "1..2"}, true},
        {"same end", {"1..4", "3..4"}, true},
        {"one inside the other", {"2..3", "1..9"}, true},
        {"single value inside", {"1..9", "5"}, true},
        {"single values", {"1", "2"}, false},
        {"single value at the end", {"4", "1..4"}, true},
        {"open range", {"1..9", ">9"}, true},
        {"behind it an open range", {"1..9", ">10"}, false},
        {"two open ranges", {">1", ">2000000000"}, true},
        {"the end of an open range", {">5", "2147483647"}, true},
        {"three, first and last", {"1..4", "8..9", "4..5"}, true},
        {"three, all of them", {"1..4", "2..5", "3..6"}, true},
        {"three, one around two", {"1", "3", "0..9"}, true},
        {"three, none", {"7..9", "1..3", "4..6"}, false},
        {"reversed bounds hold no value", {"4..1", "1..4"}, false},
        {"reversed bounds inside", {"1..9", "5..3"}, false},
        {"reversed bounds between two that meet", {"1..4", "3..2", "4..6"}, true},
        {"two with reversed bounds", {"9..1", "8..2"}, false},
    };
    for (const OverlapCase& row : rows) {
        SCOPED_TRACE(row.what);
        std::string cases;
        for (const char* range : row.ranges) {
            cases += Case(range);
        }
        const StreamImport read(Stream(cases));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.messages,
                  row.overlap ? "Warning #0035 in '/Body':\n  Overlapping streamcase(s)\n" : "");
        EXPECT_EQ(read.param.Count(), row.ranges.size());
    }
}

TEST(Stream, CasesOverlapWhateverTheirX) {
    const StreamImport equal(Stream(Case("A", "1..4") + Case("B", "1..4")));
    EXPECT_EQ(equal.messages, "Warning #0035 in '/Body':\n  Overlapping streamcase(s)\n");
    EXPECT_EQ(equal.param.Count(), 2U);
    const StreamImport open(Stream(Case("A", "#NULL#") + Case("B", "0")));
    EXPECT_EQ(open.messages, "Warning #0035 in '/Body':\n  Overlapping streamcase(s)\n");
    EXPECT_EQ(open.param.Count(), 2U);
}

TEST(Stream, OnlyCasesThatAreKeptOverlap) {
    const StreamImport dropped(Stream(Case("1..4") + Case("1..4")));
    EXPECT_EQ(dropped.messages, "Warning #0033 in '/Body':\n  Double definition of element at position 1\n");
    const StreamImport failed(Stream(Case("1..4") + Case("#NULL#", "2", Member("2", "F"))));
    EXPECT_EQ(failed.messages, R"(Error #0024 in '/Body/{StreamCase}':
  Gap in parameter set before parameter 'F'
Error #0032 in '/Body':
  Failed to import element <StreamCase>
)");
    const StreamImport both(Stream(Case("1..4") + Case("4") + Case("1..4")));
    EXPECT_EQ(both.messages, R"(Warning #0033 in '/Body':
  Double definition of element at position 1
Warning #0035 in '/Body':
  Overlapping streamcase(s)
)");
}

TEST(Stream, DumpShowsCasesAndTheirParametersEachOneLevelDeeper) {
    const StreamImport read(
        Stream(Case("x%d%%", "1..4", Member("2seq1", "Title") + Member("1", "Kind", kVoid)) + Case(">7")));
    EXPECT_EQ(DumpOf(read.param),
              "PARAMSTREAM: Body\n"
              ".Parent: -\n"
              ".BytesInMsg: 0\n"
              ".ParamPos: 0\n"
              ".TypeIDName: Stream\n"
              ".SelectorParam: \n"
              ".Length: 8\n"
              "\tPARAMSTREAMCASE: {StreamCase}\n"
              "\t.Parent: /Body\n"
              "\t.BytesInMsg: 0\n"
              "\t.ParamPos: 0\n"
              "\t.TypeIDName: \n"
              "\t.PosXString: x0%\n"
              "\t.PosYMin: 1\n"
              "\t.PosYMax: 4\n"
              "\t.SeqCnt: 1\n"
              "\t\tPARAMVOID: Kind\n"
              "\t\t.Parent: /Body/{StreamCase}\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 1\n"
              "\t\t.TypeIDName: Void\n"
              "\t\tPARAMSTRING: Title\n"
              "\t\t.Parent: /Body/{StreamCase}\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 2 seq 1\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n"
              "\tPARAMSTREAMCASE: {StreamCase}\n"
              "\t.Parent: /Body\n"
              "\t.BytesInMsg: 0\n"
              "\t.ParamPos: 0\n"
              "\t.TypeIDName: \n"
              "\t.PosXString: #NULL#\n"
              "\t.PosYMin: 7\n"
              "\t.PosYMax: 2147483647\n"
              "\t.SeqCnt: 0\n"
              "\t\tPARAMSTRING: F\n"
              "\t\t.Parent: /Body/{StreamCase}\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 1\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n");
}

TEST(Stream, CaseDoesNotDeepenTheIndentation) {
    StreamImport read(Stream(Case("1")));
    PlainNode parent("Parent");
    read.param.SetParent(&parent);
    EXPECT_TRUE(read.param.Resolve(read.import.Context()));
    const ZMTParamStreamCase* streamCase = read.param.GetAt(0);
    EXPECT_EQ(read.param.GetIndent(), 1U);
    EXPECT_EQ(streamCase->GetIndent(), 1U);
    EXPECT_EQ(streamCase->GetLevel(), 2U);
    EXPECT_EQ(streamCase->GetAt(0)->GetIndent(), 2U);
    EXPECT_EQ(streamCase->GetAt(0)->GetLevel(), 3U);
    EXPECT_EQ(ZMTParamStreamCase().GetIndentLevel(), 0U);
}

TEST(Stream, ClonesItsCasesAndTheirParameters) {
    StreamImport read(Stream(
        Case("A", "1..4", Member("1", "Rec", Record(1, Field(1, "F", kByte))) + Member("2seq1", "Text"))));
    read.param.SetParamPos(7);
    const std::unique_ptr<ZMTNode> clone = read.param.Clone();
    auto* copy = dynamic_cast<ZMTParamStream*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(DumpOf(*copy), DumpOf(read.param));
    EXPECT_EQ(copy->ParamPos(), 7U);
    EXPECT_EQ(copy->Length(), 8U);
    EXPECT_EQ(copy->TypeDefinition(), read.param.TypeDefinition());
    EXPECT_NE(copy->TypeDefinition(), nullptr);
    ASSERT_EQ(copy->Count(), 1U);
    const ZMTParamStreamCase* streamCase = copy->GetAt(0);
    EXPECT_NE(streamCase, read.param.GetAt(0));
    EXPECT_EQ(streamCase->GetParent(), copy);
    EXPECT_EQ(streamCase->PosXString(), "A");
    EXPECT_EQ(streamCase->PosYMin(), 1U);
    EXPECT_EQ(streamCase->PosYMax(), 4U);
    EXPECT_EQ(streamCase->SeqCnt(), 1U);
    read.param.GetAt(0)->GetAt(1)->SetName("Changed");
    read.param.Clear();
    ASSERT_EQ(streamCase->Count(), 2U);
    EXPECT_EQ(streamCase->GetAt(1)->GetName(), "Text");
    EXPECT_EQ(streamCase->GetAt(1)->Sequence(), 1U);
    EXPECT_EQ(streamCase->GetAt(0)->GetChild(1)->GetPath(), "/Body/{StreamCase}/Rec/F");
}

TEST(Stream, CopyReplacesWhatWasThere) {
    const StreamImport read(Stream(Case("1")));
    StreamImport other(Stream(Case("4") + Case("5")));
    ASSERT_TRUE(other.param.CopyFrom(&read.param));
    ASSERT_EQ(other.param.Size(), 1U);
    EXPECT_EQ(other.param.GetAt(0)->PosYMin(), 1U);
    const ZMTParamStream empty;
    ASSERT_TRUE(other.param.CopyFrom(&empty));
    EXPECT_EQ(other.param.Size(), 0U);
    EXPECT_EQ(other.param.Length(), 0U);
}

TEST(Stream, CannotBeClonedWhenAParameterCannot) {
    ZMTParamStream stream;
    stream.Append(std::make_unique<ZMTParamStreamCase>());
    stream.GetAt(0)->Append(std::make_unique<PlannedParam>(ParamPlan{.generations = 0}));
    EXPECT_EQ(stream.GetAt(0)->Clone(), nullptr);
    EXPECT_EQ(stream.Clone(), nullptr);
    stream.GetAt(0)->Clear();
    EXPECT_NE(stream.Clone(), nullptr);
}

TEST(Stream, IsCopiedIntoEveryOperationThatUsesIt) {
    const auto imported = ImportText(CatalogOfParams(
        Param("Body", Stream(Case("1")), "<PCmdSet><ParamPos>1</ParamPos></PCmdSet>" + At(1))));
    ASSERT_TRUE(imported->ok);
    EXPECT_EQ(imported->messages, "");
    const auto* set = NodeAt<ZMTParamStream>(imported->catalog, "Amp", "Volume", "Set", "Body");
    const auto* status = InStatus<ZMTParamStream>(*imported, "Body");
    ASSERT_NE(set, nullptr);
    ASSERT_NE(status, nullptr);
    EXPECT_NE(set->GetAt(0), status->GetAt(0));
    EXPECT_EQ(set->GetAt(0)->GetAt(0)->GetPath(), "/Cat/Amp/Volume/Set/Body/{StreamCase}/F");
    EXPECT_EQ(status->GetAt(0)->GetAt(0)->GetPath(), "/Cat/Amp/Volume/Status/Body/{StreamCase}/F");
}

}  // namespace
}  // namespace tarvex::test::stream_test
