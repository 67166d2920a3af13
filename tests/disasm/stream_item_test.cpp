/// Streams: the case that stands in a message, and its parameters.

#include "disasm/stream_item.h"

#include <span>
#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::stream_item_test {
namespace {

struct StreamRow {
    const char* bytes;
    const char* shown;
};

void Expect(const Decoding& decoding, std::span<const StreamRow> rows) {
    for (const StreamRow& row : rows) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

/// Cases 1, 2 to 4, and from 7 on, of the selector `posX`.
std::string ThreeCases(std::string_view posX) {
    return Stream(Case(posX, "1", {{"1", "A", kUByte}}) + Case(posX, "2..4", {{"1", "B", kUWord}}) +
                  Case(posX, "&gt;7", {{"1", "C", kUByte}, {"2", "D", kUByte}}));
}

constexpr StreamRow kNumbers[] = {
    {"01 05", "Mode@0+1=1 S@1+1=(Mode=0x01)<A@1+1=5>"},
    {"02 00 05", "Mode@0+1=2 S@1+2=(Mode=0x02..0x04)<B@1+2=5>"},
    {"04 00 05", "Mode@0+1=4 S@1+2=(Mode=0x02..0x04)<B@1+2=5>"},
    {"07 05 06", "Mode@0+1=7 S@1+2=(Mode>=0x07)<C@1+1=5 D@2+1=6>"},
    {"FF 05 06", "Mode@0+1=255 S@1+2=(Mode>=0x07)<C@1+1=5 D@2+1=6>"},
    {"01 05 06", "Mode@0+1=1 S@1+1=(Mode=0x01)<A@1+1=5> !byte 2: 1 byte left over"},
    // Bytes of the case are missing.
    {"02 05", "Mode@0+1=2 !byte 1: B needs 2 bytes, 1 is left"},
    {"07 05", "Mode@0+1=7 S@1+1=(Mode>=0x07)<C@1+1=5> !byte 2: D needs 1 byte, 0 are left"},
    // There is no case.
    {"00 05", "Mode@0+1=0 !byte 1: S has no case that fits"},
    {"05 05", "Mode@0+1=5 !byte 1: S has no case that fits"},
    {"06", "Mode@0+1=6 !byte 1: S has no case that fits"},
    {"", "!byte 0: Mode needs 1 byte, 0 are left"},
};

TEST(StreamItem, NumberTellsTheCase) {
    Expect(Decoding({{"Mode", kUByte}, {"S", ThreeCases("Mode")}}), kNumbers);
}

constexpr StreamRow kWords[] = {
    {"00 01 05", "Mode@0+2=1 S@2+1=(Mode=0x01)<A@2+1=5>"},
    {"01 01 05 06", "Mode@0+2=257 S@2+2=(Mode>=0x07)<C@2+1=5 D@3+1=6>"},
    {"01 00 05 06", "Mode@0+2=256 S@2+2=(Mode>=0x07)<C@2+1=5 D@3+1=6>"},
};

TEST(StreamItem, NumberOfTwoBytesThatIsNoPosCountsAsAWhole) {
    Expect(Decoding({{"Mode", kUWord}, {"S", ThreeCases("Mode")}}), kWords);
}

constexpr StreamRow kEnums[] = {
    {"01 05", "Mode@0+1=On (0x01) S@1+1=(Mode=0x01)<A@1+1=5>"},
    {"02 00 05", "Mode@0+1=Auto (0x02) S@1+2=(Mode=0x02..0x04)<B@1+2=5>"},
    {"03 00 05", "Mode@0+1=0x03 S@1+2=(Mode=0x02..0x04)<B@1+2=5>"},
    {"00 05", "Mode@0+1=Off (0x00) !byte 1: S has no case that fits"},
};

TEST(StreamItem, EnumerationTellsTheCase) {
    Expect(Decoding({{"Mode", kSwitch}, {"S", ThreeCases("Mode")}}), kEnums);
}

constexpr StreamRow kSigned[] = {
    {"FF 05", "Mode@0+1=-1 S@1+1=(Mode=0xFFFFFFFD..0xFFFFFFFF)<A@1+1=5>"},
    {"FD 05", "Mode@0+1=-3 S@1+1=(Mode=0xFFFFFFFD..0xFFFFFFFF)<A@1+1=5>"},
    {"FC 05", "Mode@0+1=-4 !byte 1: S has no case that fits"},
    {"00 00 05", "Mode@0+1=0 S@1+2=(Mode=0x00..0x0A)<B@1+2=5>"},
    {"0A 00 05", "Mode@0+1=10 S@1+2=(Mode=0x00..0x0A)<B@1+2=5>"},
    {"80 05", "Mode@0+1=-128 !byte 1: S has no case that fits"},
    {"7F 05", "Mode@0+1=127 S@1+1=(Mode>=0x40)<C@1+1=5>"},
};

TEST(StreamItem, SignedNumbersCompareSigned) {
    Expect(Decoding({{"Mode", kSByte},
                     {"S", Stream(Case("Mode", "-3..-1", {{"1", "A", kUByte}}) +
                                  Case("Mode", "0..10", {{"1", "B", kUWord}}) +
                                  Case("Mode", "&gt;64", {{"1", "C", kUByte}}))}}),
           kSigned);
}

constexpr StreamRow kBig[] = {
    {"FF FF FF FF 05", "Mode@0+4=4294967295 S@4+1=(Mode>=0x40)<C@4+1=5>"},
    {"7F FF FF FF 05", "Mode@0+4=2147483647 S@4+1=(Mode>=0x40)<C@4+1=5>"},
    {"80 00 00 00 05", "Mode@0+4=2147483648 S@4+1=(Mode>=0x40)<C@4+1=5>"},
    {"00 00 00 3F 05", "Mode@0+4=63 !byte 4: S has no case that fits"},
};

TEST(StreamItem, OpenCaseHasNoUpperBound) {
    Expect(Decoding({{"Mode", kULong}, {"S", Stream(Case("Mode", "&gt;64", {{"1", "C", kUByte}}))}}), kBig);
}

constexpr StreamRow kOverlaps[] = {
    {"03 05", "Mode@0+1=3 S@1+1=(Mode=0x01..0x04)<A@1+1=5>"},
    {"04 05", "Mode@0+1=4 S@1+1=(Mode=0x01..0x04)<A@1+1=5>"},
    {"05 00 05", "Mode@0+1=5 S@1+2=(Mode=0x04..0x06)<B@1+2=5>"},
};

TEST(StreamItem, FirstCaseThatFitsCounts) {
    Expect(Decoding({{"Mode", kUByte},
                     {"S", Stream(Case("Mode", "1..4", {{"1", "A", kUByte}}) +
                                  Case("Mode", "4..6", {{"1", "B", kUWord}}) +
                                  Case("Mode", "3", {{"1", "C", kULong}}))}}),
           kOverlaps);
}

constexpr StreamRow kPositions[] = {
    {"01 01 05", "Pos@0+2=PosX=1 PosY=1 S@2+1=(Pos=0x01..0x02)<A@2+1=5>"},
    {"01 02 05", "Pos@0+2=PosX=1 PosY=2 S@2+1=(Pos=0x01..0x02)<A@2+1=5>"},
    {"02 01 00 05", "Pos@0+2=PosX=2 PosY=1 S@2+2=(Pos=0x01..0x02)<B@2+2=5>"},
    {"03 02 00 05", "Pos@0+2=PosX=3 PosY=2 S@2+2=(Pos=0x01..0x02)<B@2+2=5>"},
    {"04 01 05", "Pos@0+2=PosX=4 PosY=1 !byte 2: S has no case that fits"},
    {"01 03 05", "Pos@0+2=PosX=1 PosY=3 !byte 2: S has no case that fits"},
    // x is open.
    {"00 05 07 08", "Pos@0+2=PosX=0 PosY=5 S@2+2=(Pos=0x05)<C@2+1=7 D@3+1=8>"},
    {"FF 05 07 08", "Pos@0+2=PosX=255 PosY=5 S@2+2=(Pos=0x05)<C@2+1=7 D@3+1=8>"},
    // x is a range without end.
    {"08 06 07", "Pos@0+2=PosX=8 PosY=6 S@2+1=(Pos=0x06)<E@2+1=7>"},
    {"FF 06 07", "Pos@0+2=PosX=255 PosY=6 S@2+1=(Pos=0x06)<E@2+1=7>"},
    {"07 06 07", "Pos@0+2=PosX=7 PosY=6 !byte 2: S has no case that fits"},
};

TEST(StreamItem, BothCoordinatesTellTheCase) {
    Expect(Decoding({{"Pos", kUWord},
                     {"S", Stream(Case("1", "1..2", {{"1", "A", kUByte}}) +
                                  Case("2..3", "1..2", {{"1", "B", kUWord}}) +
                                  Case("#NULL#", "5", {{"1", "C", kUByte}, {"2", "D", kUByte}}) +
                                  Case("&gt;8", "6", {{"1", "E", kUByte}}))}}),
           kPositions);
}

constexpr StreamRow kNamedPos[] = {
    {"09 01 05", "Pos@0+2=PosX=9 PosY=1 S@2+1=(Pos=0x01)<A@2+1=5>"},
    {"01 09 05", "Pos@0+2=PosX=1 PosY=9 !byte 2: S has no case that fits"},
};

TEST(StreamItem, PosByNameTellsTheCaseByItsLowerByte) {
    Expect(Decoding({{"Pos", kUWord}, {"S", Stream(Case("Pos", "1", {{"1", "A", kUByte}}))}}), kNamedPos);
}

constexpr StreamRow kBytePos[] = {
    {"01 05", "Pos@0+1=1 S@1+1=(Pos=0x01)<A@1+1=5>"},
    {"02 05", "Pos@0+1=2 !byte 1: S has no case that fits"},
};

TEST(StreamItem, PosOfOneByteTellsTheCase) {
    Expect(Decoding({{"Pos", kUByte}, {"S", Stream(Case("#NULL#", "1", {{"1", "A", kUByte}}))}}), kBytePos);
}

constexpr StreamRow kOnly[] = {
    {"05", "S@0+1={StreamCase}<A@0+1=5>"},
    {"", "!byte 0: A needs 1 byte, 0 are left"},
};

TEST(StreamItem, OnlyCaseStandsWhenNothingSelects) {
    Expect(Decoding({{"S", Stream(Case("#NULL#", "3", {{"1", "A", kUByte}}))}}), kOnly);
}

TEST(StreamItem, WithoutSelectorSeveralCasesDoNotFit) {
    const StreamRow rows[] = {{"05", "!byte 0: S has no case that fits"},
                              {"", "!byte 0: S has no case that fits"}};
    Expect(Decoding({{"S", ThreeCases("#NULL#")}}), rows);
}

TEST(StreamItem, WithoutCasesItIsBytes) {
    const StreamRow rows[] = {{"05 06", "S@0+2=05 06<>"}, {"", "S@0+0=<>"}};
    Expect(Decoding({{"S", Stream("")}}), rows);
}

TEST(StreamItem, SelectorThatComesLaterTellsNothing) {
    const StreamRow rows[] = {{"05 01", "!byte 0: S has no case that fits"}};
    Expect(Decoding({{"S", ThreeCases("Mode")}, {"Mode", kUByte}}), rows);
}

TEST(StreamItem, SelectorWithoutASingleValueTellsNothing) {
    const StreamRow rows[] = {{"01 05", "Pos@0+1=<A@0+1=1> !byte 1: S has no case that fits"}};
    Expect(Decoding({{"Pos", Record({{"A", kUByte}})}, {"S", ThreeCases("#NULL#")}}), rows);
}

TEST(StreamItem, NothingIsReadBehindAStreamWithoutCase) {
    const StreamRow rows[] = {{"09 05", "Mode@0+1=9 !byte 1: S has no case that fits"}};
    Expect(
        Decoding({{"Mode", kUByte}, {"S", Stream(Case("Mode", "1", {{"1", "A", kUByte}}))}, {"Z", kUByte}}),
        rows);
}

constexpr StreamRow kSequences[] = {
    {"01 02 03 04", "S@0+4={StreamCase}<A@0+1=1 B@1+1=2 C@2+1=3 D@3+1=4>"},
};

TEST(StreamItem, ParametersStandByPositionAndSequence) {
    Expect(Decoding({{"S", Stream(Case("#NULL#", "1",
                                       {{"3", "D", kUByte},
                                        {"2seq2", "C", kUByte},
                                        {"1", "A", kUByte},
                                        {"2seq1", "B", kUByte}}))}}),
           kSequences);
}

TEST(StreamItem, CaseWithoutParametersIsBytes) {
    const StreamRow rows[] = {{"01", "Mode@0+1=1 S@1+0=(Mode=0x01)<>"},
                              {"01 05 FF", "Mode@0+1=1 S@1+2=(Mode=0x01) 05 FF<>"}};
    Expect(Decoding({{"Mode", kUByte}, {"S", Stream(Case("Mode", "1", {}))}}), rows);
}

constexpr StreamRow kBehind[] = {
    {"01 05 06", "Mode@0+1=1 S@1+1=(Mode=0x01)<A@1+1=5> Z@2+1=6"},
    {"01 05", "Mode@0+1=1 S@1+1=(Mode=0x01)<A@1+1=5> !byte 2: Z needs 1 byte, 0 are left"},
};

TEST(StreamItem, ParametersBehindItFollowTheCase) {
    Expect(Decoding({{"Mode", kUByte}, {"S", ThreeCases("Mode")}, {"Z", kUByte}}), kBehind);
}

constexpr StreamRow kInside[] = {
    {"01 05 02 00 06",
     "L@0+5=<[1]R@0+2=<Mode@0+1=1 S@1+1=(Mode=0x01)<A@1+1=5>> "
     "[2]R@2+3=<Mode@2+1=2 S@3+2=(Mode=0x02..0x04)<B@3+2=6>>>"},
};

TEST(StreamItem, SelectorInTheSameRecordTellsTheCaseOfEachEntry) {
    Expect(Decoding({{"L", Array("NMax", "R", Record({{"Mode", kUByte}, {"S", ThreeCases("Mode")}}))}}),
           kInside);
}

constexpr StreamRow kComposites[] = {
    {"02 07 08 09", "S@0+4={StreamCase}<N@0+1=2 L@1+2=<[1]E@1+1=7 [2]E@2+1=8> R@3+1=<A@3+1=9>>"},
    {"02 07 08",
     "S@0+3={StreamCase}<N@0+1=2 L@1+2=<[1]E@1+1=7 [2]E@2+1=8>> "
     "!byte 3: A needs 1 byte, 0 are left"},
};

TEST(StreamItem, CasesHoldArraysAndRecords) {
    Expect(Decoding({{"S", Stream(Case("#NULL#", "1",
                                       {{"1", "N", kUByte},
                                        {"2", "L", Array("2", "E", kUByte)},
                                        {"3", "R", Record({{"A", kUByte}})}}))}}),
           kComposites);
}

constexpr StreamRow kStreams[] = {
    {"01 05", "S@0+2={StreamCase}<Kind@0+1=1 I@1+1=(Kind=0x01)<A@1+1=5>>"},
    {"05 05", "S@0+1={StreamCase}<Kind@0+1=5> !byte 1: I has no case that fits"},
};

TEST(StreamItem, StreamInACaseIsToldByItsOwnSibling) {
    Expect(Decoding(
               {{"S", Stream(Case("#NULL#", "1", {{"1", "Kind", kUByte}, {"2", "I", ThreeCases("Kind")}}))}}),
           kStreams);
}

TEST(StreamItem, TellsItsType) {
    const Decoding decoding({{"S", Stream(Case("#NULL#", "1", {{"1", "A", kUByte}}))}});
    const auto decoded = decoding.Decode("05");
    ASSERT_EQ(decoded->items.Items().size(), 1U);
    EXPECT_EQ(decoded->items.Items()[0]->GetType(), kParamStream);
}

std::string ErrorParam(std::string_view name, std::string_view type, int pos, std::string_view operation) {
    const std::string tag(operation);
    return Param(name, type, "<" + tag + "><ParamPos>" + std::to_string(pos) + "</ParamPos></" + tag + ">");
}

/// An operation with an ErrorCode and a stream, which has a case for code 3 alone.
std::string CatalogOfErrors(std::string_view operation, std::string_view stream,
                            std::string_view type = "TStream") {
    std::string cases = "<" + std::string(type) + " TypeRef=\"type_stream\" Length=\"9\">";
    cases += Case("ErrorCode", "3", {{"1", "A", kUByte}}) + "</" + std::string(type) + ">";
    return CatalogOfParams(ErrorParam("ErrorCode", kUByte, 1, operation) +
                           ErrorParam(stream, cases, 2, operation));
}

struct ErrorRow {
    const char* operation;
    const char* stream;
    const char* type;
    unsigned opType;
    const char* bytes;
    const char* shown;
};
constexpr ErrorRow kErrors[] = {
    {"PReportError", "ErrorInfo", "TStream", 0xF, "03 05",
     "ErrorCode@0+1=3 ErrorInfo@1+1=(ErrorCode=0x03)<A@1+1=5>"},
    {"PReportError", "ErrorInfo", "TStream", 0xF, "04", "ErrorCode@0+1=4 ErrorInfo@1+0=<>"},
    {"PReportError", "ErrorInfo", "TShortStream", 0xF, "04", "ErrorCode@0+1=4 ErrorInfo@1+0=<>"},
    // Something is left, a case has too little, another name, another operation.
    {"PReportError", "ErrorInfo", "TStream", 0xF, "04 05",
     "ErrorCode@0+1=4 !byte 1: ErrorInfo has no case that fits"},
    {"PReportError", "ErrorInfo", "TStream", 0xF, "03",
     "ErrorCode@0+1=3 !byte 1: A needs 1 byte, 0 are left"},
    {"PReportError", "Info", "TStream", 0xF, "04", "ErrorCode@0+1=4 !byte 1: Info has no case that fits"},
    {"PReportStatus", "ErrorInfo", "TStream", 0xC, "04",
     "ErrorCode@0+1=4 !byte 1: ErrorInfo has no case that fits"},
};

TEST(StreamItem, ErrorReportMayEndWhereItsCodeHasNoCase) {
    for (const ErrorRow& row : kErrors) {
        SCOPED_TRACE(std::string(row.stream) + " " + row.type + " " + row.bytes);
        const Decoding decoding(CatalogOfErrors(row.operation, row.stream, row.type), true);
        EXPECT_EQ(Shown(*decoding.Decode({.fBlockID = 0x22,
                                          .instID = 1,
                                          .fktID = 0x400,
                                          .opType = row.opType,
                                          .data = BytesOf(row.bytes)})),
                  row.shown);
    }
}

TEST(StreamItem, PosThatIsARecordTellsCaseAndX) {
    const std::string cases = Case("1", "5", {{"1", "A", kUByte}}) + Case("2", "5", {{"1", "B", kUWord}});
    const Decoding decoding({{"Pos", Record({{"x", kUByte}, {"y", kUByte}})}, {"S", Stream(cases)}});
    EXPECT_EQ(decoding.Shown("01 05 07"), "Pos@0+2=<x@0+1=1 y@1+1=5> S@2+1=(Pos=0x05)<A@2+1=7>");
    EXPECT_EQ(decoding.Shown("02 05 00 07"), "Pos@0+2=<x@0+1=2 y@1+1=5> S@2+2=(Pos=0x05)<B@2+2=7>");
    EXPECT_EQ(decoding.Shown("03 05 07"), "Pos@0+2=<x@0+1=3 y@1+1=5> !byte 2: S has no case that fits");
}

}  // namespace
}  // namespace tarvex::test::stream_item_test
