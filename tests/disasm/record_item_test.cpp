/// Records: all their fields, or those that "Pos" asks for.

#include "disasm/record_item.h"

#include <span>
#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::record_item_test {
namespace {

struct RecordRow {
    const char* bytes;
    const char* shown;
};

void Expect(const Decoding& decoding, std::span<const RecordRow> rows) {
    for (const RecordRow& row : rows) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

constexpr RecordRow kPlain[] = {
    {"01 00 02 07", "R@0+3=<A@0+1=1 B@1+2=2> Z@3+1=7"},
    {"01 00 02", "R@0+3=<A@0+1=1 B@1+2=2> !byte 3: Z needs 1 byte, 0 are left"},
    {"01 00", "R@0+1=<A@0+1=1> !byte 1: B needs 2 bytes, 1 is left"},
    {"01", "R@0+1=<A@0+1=1> !byte 1: B needs 2 bytes, 0 are left"},
    {"", "!byte 0: A needs 1 byte, 0 are left"},
};

TEST(RecordItem, HasItsFieldsInOrder) {
    Expect(Decoding({{"R", Record({{"A", kUByte}, {"B", kUWord}})}, {"Z", kUByte}}), kPlain);
}

TEST(RecordItem, FieldsStandInTheOrderOfTheirIndexes) {
    const std::string record =
        "<TRecord TypeRef=\"type_record\" NElements=\"2\"><TRecordField FieldIdx=\"2\"><TRecordFieldName>B"
        "</TRecordFieldName>" +
        kUByte +
        "</TRecordField><TRecordField FieldIdx=\"1\"><TRecordFieldName>A"
        "</TRecordFieldName>" +
        kUWord + "</TRecordField></TRecord>";
    EXPECT_EQ(Decoding({{"R", record}}).Shown("00 01 02"), "R@0+3=<A@0+2=1 B@2+1=2>");
}

TEST(RecordItem, TellsItsTypeAndItsMembers) {
    const Decoding decoding({{"R", Record({{"A", kUByte}})}});
    const auto decoded = decoding.Decode("05");
    ASSERT_EQ(decoded->items.Items().size(), 1U);
    const ZMostParameter& record = *decoded->items.Items()[0];
    EXPECT_EQ(record.GetType(), kParamRecord);
    ASSERT_NE(record.Members(), nullptr);
    EXPECT_EQ(record.Members()->Items().size(), 1U);
}

/// Fields: 1 a byte, 2 a word, 3 a record of a byte and an inner record, 4 an array of three bytes at most.
std::string MixedRecord() {
    return Record({{"A", kUByte},
                   {"B", kUWord},
                   {"C", Record({{"P", kUByte}, {"Q", Record({{"M", kUByte}, {"N", kUByte}})}})},
                   {"D", Array("3", "E", kUByte)}});
}

constexpr RecordRow kPositions[] = {
    // x and y are 0: everything.
    {"00 00 01 00 02 03 04 05 06 07",
     "Pos@0+2=PosX=0 PosY=0 Data@2+8=<A@2+1=1 B@3+2=2 C@5+3=<P@5+1=3 Q@6+2=<M@6+1=4 N@7+1=5>> "
     "D@8+2=<[1]E@8+1=6 [2]E@9+1=7>>"},
    // Only x: that field.
    {"01 00 07", "Pos@0+2=PosX=1 PosY=0 Data@2+1=<A@2+1=7>"},
    {"02 00 00 07", "Pos@0+2=PosX=2 PosY=0 Data@2+2=<B@2+2=7>"},
    {"03 00 01 02 03", "Pos@0+2=PosX=3 PosY=0 Data@2+3=<C@2+3=<P@2+1=1 Q@3+2=<M@3+1=2 N@4+1=3>>>"},
    {"04 00 07 08", "Pos@0+2=PosX=4 PosY=0 Data@2+2=<D@2+2=<[1]E@2+1=7 [2]E@3+1=8>>"},
    {"05 00 07", "Pos@0+2=PosX=5 PosY=0 !byte 2: Data has no field 5"},
    // Only y: that field.
    {"00 01 07", "Pos@0+2=PosX=0 PosY=1 Data@2+1=<A@2+1=7>"},
    {"00 02 00 07", "Pos@0+2=PosX=0 PosY=2 Data@2+2=<B@2+2=7>"},
    {"00 03 01 02 03", "Pos@0+2=PosX=0 PosY=3 Data@2+3=<C@2+3=<P@2+1=1 Q@3+2=<M@3+1=2 N@4+1=3>>>"},
    {"00 04 07", "Pos@0+2=PosX=0 PosY=4 Data@2+1=<D@2+1=<[1]E@2+1=7>>"},
    {"00 05 07", "Pos@0+2=PosX=0 PosY=5 !byte 2: Data has no field 5"},
    // Both, and x is a simple field: field y.
    {"01 02 00 07", "Pos@0+2=PosX=1 PosY=2 Data@2+2=<B@2+2=7>"},
    {"02 01 07", "Pos@0+2=PosX=2 PosY=1 Data@2+1=<A@2+1=7>"},
    {"01 01 07", "Pos@0+2=PosX=1 PosY=1 Data@2+1=<A@2+1=7>"},
    {"01 03 01 02 03", "Pos@0+2=PosX=1 PosY=3 Data@2+3=<C@2+3=<P@2+1=1 Q@3+2=<M@3+1=2 N@4+1=3>>>"},
    {"02 09 07", "Pos@0+2=PosX=2 PosY=9 !byte 2: Data has no field 9"},
    // Both, and x is a record or an array: y in it.
    {"03 01 07", "Pos@0+2=PosX=3 PosY=1 Data@2+1=<C@2+1=<P@2+1=7>>"},
    {"03 02 07 08", "Pos@0+2=PosX=3 PosY=2 Data@2+2=<C@2+2=<Q@2+2=<M@2+1=7 N@3+1=8>>>"},
    {"03 03 07", "Pos@0+2=PosX=3 PosY=3 !byte 2: C has no field 3"},
    {"04 02 07", "Pos@0+2=PosX=4 PosY=2 Data@2+1=<D@2+1=<[2]E@2+1=7>>"},
    {"04 02", "Pos@0+2=PosX=4 PosY=2 !byte 2: E needs 1 byte, 0 are left"},
    {"04 04 07", "Pos@0+2=PosX=4 PosY=4 !byte 2: D has no entry 4"},
    {"04 02 07 08", "Pos@0+2=PosX=4 PosY=2 Data@2+1=<D@2+1=<[2]E@2+1=7>> !byte 3: 1 byte left over"},
    // Bytes are missing.
    {"02 00 07", "Pos@0+2=PosX=2 PosY=0 !byte 2: B needs 2 bytes, 1 is left"},
    {"03 02 07",
     "Pos@0+2=PosX=3 PosY=2 Data@2+1=<C@2+1=<Q@2+1=<M@2+1=7>>> !byte 3: N needs 1 byte, 0 are left"},
    {"00 00", "Pos@0+2=PosX=0 PosY=0 !byte 2: A needs 1 byte, 0 are left"},
};

TEST(RecordItem, PosAsksForFields) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", MixedRecord()}}), kPositions);
}

constexpr RecordRow kSmallPos[] = {
    {"00 01 00 02", "Pos@0+1=0 Data@1+3=<A@1+1=1 B@2+2=2>"},
    {"02 00 07", "Pos@0+1=2 Data@1+2=<B@1+2=7>"},
    {"03 07", "Pos@0+1=3 !byte 1: Data has no field 3"},
};

TEST(RecordItem, PosOfOneByteIsTheField) {
    Expect(Decoding({{"Pos", kUByte}, {"Data", Record({{"A", kUByte}, {"B", kUWord}})}}), kSmallPos);
}

constexpr RecordRow kRecordPos[] = {
    {"00 00 01 00 02", "Pos@0+2=<x@0+1=0 y@1+1=0> Data@2+3=<A@2+1=1 B@3+2=2>"},
    {"02 00 00 07", "Pos@0+2=<x@0+1=2 y@1+1=0> Data@2+2=<B@2+2=7>"},
    {"00 02 00 07", "Pos@0+2=<x@0+1=0 y@1+1=2> Data@2+2=<B@2+2=7>"},
    {"03 00 07", "Pos@0+2=<x@0+1=3 y@1+1=0> !byte 2: Data has no field 3"},
    {"02", "Pos@0+1=<x@0+1=2> !byte 1: y needs 1 byte, 0 are left"},
};

TEST(RecordItem, PosThatIsARecordOfXAndYSelectsAsANumberDoes) {
    const std::string data = Record({{"A", kUByte}, {"B", kUWord}});
    Expect(Decoding({{"Pos", Record({{"x", kUByte}, {"y", kUByte}})}, {"Data", data}}), kRecordPos);
    // Records of other fields select nothing.
    const std::string other = "Pos@0+3=<x@0+1=1 y@1+2=0> Data@3+3=<A@3+1=1 B@4+2=2>";
    EXPECT_EQ(
        Decoding({{"Pos", Record({{"x", kUByte}, {"y", kUWord}})}, {"Data", data}}).Shown("010000010002"),
        other);
    const std::string three = "Pos@0+3=<x@0+1=1 y@1+1=0 z@2+1=0> Data@3+3=<A@3+1=1 B@4+2=2>";
    EXPECT_EQ(Decoding({{"Pos", Record({{"x", kUByte}, {"y", kUByte}, {"z", kUByte}})}, {"Data", data}})
                  .Shown("010000010002"),
              three);
}

constexpr RecordRow kEnumPos[] = {
    {"02 00 07", "Pos@0+1=Auto (0x02) Data@1+2=<B@1+2=7>"},
    {"01 07", "Pos@0+1=On (0x01) Data@1+1=<A@1+1=7>"},
};

TEST(RecordItem, PosThatIsAnEnumerationIsTheField) {
    Expect(Decoding({{"Pos", kSwitch}, {"Data", Record({{"A", kUByte}, {"B", kUWord}})}}), kEnumPos);
}

constexpr RecordRow kOtherName[] = {
    {"01 00 05 06", "Pos@0+2=PosX=1 PosY=0 Rest@2+2=<A@2+1=5 B@3+1=6>"},
};

TEST(RecordItem, RecordOfAnotherNameHasAllItsFields) {
    Expect(Decoding({{"Pos", kUWord}, {"Rest", Record({{"A", kUByte}, {"B", kUByte}})}}), kOtherName);
}

constexpr RecordRow kNested[] = {
    {"01 02 03 04 05", "R@0+5=<A@0+1=1 I@1+3=<B@1+1=2 J@2+2=<C@2+1=3 D@3+1=4>> E@4+1=5>"},
    {"01 02 03", "R@0+3=<A@0+1=1 I@1+2=<B@1+1=2 J@2+1=<C@2+1=3>>> !byte 3: D needs 1 byte, 0 are left"},
};

TEST(RecordItem, RecordsInsideRecordsHaveAllTheirFields) {
    Expect(
        Decoding({{"R", Record({{"A", kUByte},
                                {"I", Record({{"B", kUByte}, {"J", Record({{"C", kUByte}, {"D", kUByte}})}})},
                                {"E", kUByte}})}}),
        kNested);
}

/// An entry is a record of a byte and an array of two words at most.
constexpr RecordRow kDeep[] = {
    // y is spent on the record; the array in it has everything.
    {"01 02 00 05 00 06", "Pos@0+2=PosX=1 PosY=2 Data@2+4=<[1]R@2+4=<L@2+4=<[1]E@2+2=5 [2]E@4+2=6>>>"},
    {"01 01 05", "Pos@0+2=PosX=1 PosY=1 Data@2+1=<[1]R@2+1=<A@2+1=5>>"},
};

TEST(RecordItem, CoordinatesReachTwoLevelsDeep) {
    Expect(Decoding({{"Pos", kUWord},
                     {"Data", Array("3", "R", Record({{"A", kUByte}, {"L", Array("2", "E", kUWord)}}))}}),
           kDeep);
}

constexpr RecordRow kVoids[] = {
    {"", "V@0+0="},
    {"07", "V@0+0= !byte 0: 1 byte left over"},
};

TEST(VoidItem, TakesNoBytes) {
    Expect(Decoding({{"V", kVoid}}), kVoids);
}

TEST(VoidItem, StandsBetweenOthers) {
    const RecordRow rows[] = {{"05 06", "A@0+1=5 V@1+0= B@1+1=6"}};
    Expect(Decoding({{"A", kUByte}, {"V", kVoid}, {"B", kUByte}}), rows);
}

TEST(VoidItem, IsNamedEvenWithoutAName) {
    const RecordRow rows[] = {{"", "{Void}@0+0="}};
    Expect(Decoding({{"", kVoid}}), rows);
}

}  // namespace
}  // namespace tarvex::test::record_item_test
