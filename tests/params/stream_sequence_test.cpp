/// The order of the parameters in a stream case: by position and, within a position, by sequence.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "params/stream_case.h"
#include "params/streams.h"

namespace tarvex::test::stream_sequence_test {
namespace {

/// A case whose parameters have these "ParamIdx" values and are called "P0", "P1", ... in document order.
std::string CaseOfIndices(const std::vector<std::string>& indices) {
    std::string members;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        members += Member(indices[i], std::string("P").append(std::to_string(i)));
    }
    return Case("#NULL#", "1", members);
}

/// The parameters of a case as "name:position:sequence", in their order.
std::string OrderOf(const ZMTParamStreamCase& streamCase) {
    std::string order;
    for (unsigned at = 0; at < streamCase.Size(); ++at) {
        const ZMTParam* param = streamCase.GetAt(at);
        order += (at == 0 ? "" : " ") + param->GetName() + ":" + std::to_string(param->ParamPos()) + ":" +
                 std::to_string(param->Sequence());
    }
    return order;
}

struct OrderCase {
    std::vector<std::string> indices;
    const char* order;
    unsigned seqCnt;
};

TEST(StreamSequence, OrdersByPositionAndThenBySequence) {
    const OrderCase rows[] = {
        {{"1"}, "P0:1:0", 0},
        {{"1", "2", "3"}, "P0:1:0 P1:2:0 P2:3:0", 0},
        {{"3", "1", "2"}, "P1:1:0 P2:2:0 P0:3:0", 0},
        {{"1", "2seq1", "2seq2", "3"}, "P0:1:0 P1:2:1 P2:2:2 P3:3:0", 2},
        {{"3", "2seq2", "1", "2seq1"}, "P2:1:0 P3:2:1 P1:2:2 P0:3:0", 2},
        {{"1seq1"}, "P0:1:1", 1},
        {{"1seq3", "1seq2", "1seq1"}, "P2:1:1 P1:1:2 P0:1:3", 3},
        {{"1seq1", "1seq2", "1seq3", "2seq1"}, "P0:1:1 P1:1:2 P2:1:3 P3:2:1", 3},
        {{"1seq1", "2seq1", "2seq2"}, "P0:1:1 P1:2:1 P2:2:2", 2},
        {{"2", "1seq2", "1seq1"}, "P2:1:1 P1:1:2 P0:2:0", 2},
        {{" 1 SEQ 1 ", "1 seq 0x02", "0x2"}, "P0:1:1 P1:1:2 P2:2:0", 2},
        {{"1seq0", "2seq"}, "P0:1:0 P1:2:0", 0},
        {{"1seqx", "2"}, "P0:1:0 P1:2:0", 0},
        {{"1seq10", "1seq9", "1seq8", "1seq7", "1seq6", "1seq5", "1seq4", "1seq3", "1seq2", "1seq1"},
         "P9:1:1 P8:1:2 P7:1:3 P6:1:4 P5:1:5 P4:1:6 P3:1:7 P2:1:8 P1:1:9 P0:1:10",
         10},
        {{"10", "9", "8", "7", "6", "5", "4", "3", "2", "1"},
         "P9:1:0 P8:2:0 P7:3:0 P6:4:0 P5:5:0 P4:6:0 P3:7:0 P2:8:0 P1:9:0 P0:10:0",
         0},
    };
    for (const OrderCase& row : rows) {
        SCOPED_TRACE(row.order);
        const CaseImport read(CaseOfIndices(row.indices));
        EXPECT_EQ(read.messages, "");
        ASSERT_NE(read.streamCase, nullptr);
        EXPECT_EQ(OrderOf(*read.streamCase), row.order);
        EXPECT_EQ(read.streamCase->SeqCnt(), row.seqCnt);
    }
}

struct TwiceCase {
    std::vector<std::string> indices;
    const char* order;
    std::vector<int> positions;  // of the warnings
};

TEST(StreamSequence, SecondParameterAtAPositionAndSequenceIsDropped) {
    const TwiceCase rows[] = {
        {{"1", "1"}, "P0:1:0", {1}},
        {{"1", "1", "1"}, "P0:1:0", {1, 1}},
        {{"1", "2", "2", "1"}, "P0:1:0 P1:2:0", {2, 1}},
        {{"2", "2", "1"}, "P2:1:0 P0:2:0", {2}},
        {{"1seq1", "1seq2", "1seq1"}, "P0:1:1 P1:1:2", {1}},
        {{"1", "0x1seq0"}, "P0:1:0", {1}},
        {{"1seq1", "2", "1seq2"}, "P0:1:1 P2:1:2 P1:2:0", {}},
    };
    for (const TwiceCase& row : rows) {
        SCOPED_TRACE(row.order);
        const CaseImport read(CaseOfIndices(row.indices));
        std::string messages;
        for (const int position : row.positions) {
            messages +=
                "Warning #0022 in '/Body/{StreamCase}':\n  Double definition of element at position " +
                std::to_string(position) + "\n";
        }
        EXPECT_EQ(read.messages, messages);
        ASSERT_NE(read.streamCase, nullptr);
        EXPECT_EQ(OrderOf(*read.streamCase), row.order);
    }
}

struct GapCase {
    std::vector<std::string> indices;
    const char* before;
};

TEST(StreamSequence, GapFailsTheCase) {
    const GapCase rows[] = {
        {{"1", "3"}, "P1"},
        {{"3", "1"}, "P0"},
        {{"2"}, "P0"},
        {{"2", "3"}, "P0"},
        {{"1", "2", "4", "6"}, "P2"},
        {{"6", "4", "2", "1"}, "P1"},
        {{"4095"}, "P0"},
        {{"2seq1"}, "P0"},
        {{"1seq1", "1seq2", "3seq1"}, "P2"},
        {{"1", "3seq2", "3seq1"}, "P2"},
        {{"1", "3", "3seq1"}, "P1"},
    };
    for (const GapCase& row : rows) {
        SCOPED_TRACE(row.indices.back() + " before " + row.before);
        const CaseImport read(CaseOfIndices(row.indices));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.streamCase, nullptr);
        EXPECT_EQ(read.messages,
                  "Error #0024 in '/Body/{StreamCase}':\n  Gap in parameter set before parameter '" +
                      std::string(row.before) +
                      "'\nError #0032 in '/Body':\n  Failed to import element <StreamCase>\n");
    }
}

struct SequenceCase {
    const char* what;
    std::vector<std::string> indices;
    const char* number;
};

TEST(StreamSequence, SequenceThatIsNotOneUnbrokenOrderFailsTheCase) {
    const SequenceCase rows[] = {
        {"begins with 2", {"1seq2"}, "25"},
        {"begins with 2, and goes on", {"1seq2", "1seq3"}, "25"},
        {"leaves out 2", {"1seq1", "1seq3"}, "25"},
        {"leaves out 2, in another order", {"1seq3", "1seq1"}, "25"},
        {"below 0", {"1seq-1"}, "25"},
        {"at the second position", {"1", "2seq2"}, "25"},
        {"begins anew at each position", {"1seq1", "2seq2"}, "25"},
        {"with and without", {"1", "1seq1"}, "26"},
        {"with and without, in another order", {"1seq1", "1"}, "26"},
        {"without, and a later step", {"1", "1seq2"}, "26"},
        {"with, with and without", {"1seq1", "1seq2", "1"}, "26"},
        {"with and without at the second position", {"1seq1", "2", "2seq1"}, "26"},
        {"with and without before another position", {"1", "1seq1", "2"}, "26"},
    };
    for (const SequenceCase& row : rows) {
        SCOPED_TRACE(row.what);
        const CaseImport read(CaseOfIndices(row.indices));
        EXPECT_TRUE(read.ok);
        EXPECT_EQ(read.streamCase, nullptr);
        EXPECT_EQ(read.messages, "Error #00" + std::string(row.number) +
                                     " in '/Body/{StreamCase}':\n"
                                     "  Can't reconstruct sequence of parameters (check attribute 'ParamIdx' "
                                     "of StreamParams)\n"
                                     "Error #0032 in '/Body':\n  Failed to import element <StreamCase>\n");
    }
}

TEST(StreamSequence, StepsStandInTheLog) {
    const CaseImport read(
        Case("#NULL#", "1", Member("1", "A") + Member("2seq2", "C") + Member("2seq1", "B")));
    ASSERT_NE(read.streamCase, nullptr);
    EXPECT_EQ(DumpOf(*read.streamCase),
              "\tPARAMSTREAMCASE: {StreamCase}\n"
              "\t.Parent: /Body\n"
              "\t.BytesInMsg: 0\n"
              "\t.ParamPos: 0\n"
              "\t.TypeIDName: \n"
              "\t.PosXString: #NULL#\n"
              "\t.PosYMin: 1\n"
              "\t.PosYMax: 1\n"
              "\t.SeqCnt: 2\n"
              "\t\tPARAMSTRING: A\n"
              "\t\t.Parent: /Body/{StreamCase}\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 1\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n"
              "\t\tPARAMSTRING: B\n"
              "\t\t.Parent: /Body/{StreamCase}\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 2 seq 1\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n"
              "\t\tPARAMSTRING: C\n"
              "\t\t.Parent: /Body/{StreamCase}\n"
              "\t\t.BytesInMsg: 0\n"
              "\t\t.ParamPos: 2 seq 2\n"
              "\t\t.TypeIDName: String\n"
              "\t\t.MaxSize: 8\n");
}

TEST(StreamSequence, LongestPositionIs4095) {
    std::vector<std::string> indices;
    for (unsigned pos = 1; pos <= 4095; ++pos) {
        indices.push_back(std::to_string(pos));
    }
    const CaseImport read(CaseOfIndices(indices));
    EXPECT_EQ(read.messages, "");
    ASSERT_NE(read.streamCase, nullptr);
    EXPECT_EQ(read.streamCase->Count(), 4095U);
    EXPECT_EQ(read.streamCase->GetAt(4094)->ParamPos(), 4095U);
}

}  // namespace
}  // namespace tarvex::test::stream_sequence_test
