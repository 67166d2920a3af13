/// Arrays: how many entries stand in a message, and the one that "Pos" asks for.

#include "disasm/array_item.h"

#include <span>
#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::array_item_test {
namespace {

struct ArrayRow {
    const char* bytes;
    const char* shown;
};

void Expect(const Decoding& decoding, std::span<const ArrayRow> rows) {
    for (const ArrayRow& row : rows) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

constexpr ArrayRow kBytes[] = {
    {"", "L@0+0=<>"},
    {"0A", "L@0+1=<[1]E@0+1=10>"},
    {"0A 0B 0C", "L@0+3=<[1]E@0+1=10 [2]E@1+1=11 [3]E@2+1=12>"},
    {"0A 0B 0C 0D", "L@0+3=<[1]E@0+1=10 [2]E@1+1=11 [3]E@2+1=12> !byte 3: 1 byte left over"},
};

TEST(ArrayItem, EntriesRepeatUpToTheLimitAndTheEndOfTheMessage) {
    Expect(Decoding({{"L", Array("3", "E", kUByte)}}), kBytes);
}

constexpr ArrayRow kWords[] = {
    {"00 0A 00 0B", "L@0+4=<[1]E@0+2=10 [2]E@2+2=11>"},
    {"00 0A 00", "L@0+2=<[1]E@0+2=10> !byte 2: E needs 2 bytes, 1 is left"},
    {"00", "!byte 0: E needs 2 bytes, 1 is left"},
};

TEST(ArrayItem, KeepsTheEntriesBeforeTheOneThatIsIncomplete) {
    Expect(Decoding({{"L", Array("3", "E", kUWord)}}), kWords);
}

constexpr ArrayRow kBetween[] = {
    {"05 0A 0B 06", "A@0+1=5 L@1+2=<[1]E@1+1=10 [2]E@2+1=11> Z@3+1=6"},
    {"05 0A 0B 06 07", "A@0+1=5 L@1+2=<[1]E@1+1=10 [2]E@2+1=11> Z@3+1=6 !byte 4: 1 byte left over"},
    {"05 0A 0B", "A@0+1=5 L@1+2=<[1]E@1+1=10 [2]E@2+1=11> !byte 3: Z needs 1 byte, 0 are left"},
    {"05 0A", "A@0+1=5 L@1+1=<[1]E@1+1=10> !byte 2: Z needs 1 byte, 0 are left"},
    {"05", "A@0+1=5 L@1+0=<> !byte 1: Z needs 1 byte, 0 are left"},
};

TEST(ArrayItem, ParametersBehindItFollowItsLastEntry) {
    Expect(Decoding({{"A", kUByte}, {"L", Array("2", "E", kUByte)}, {"Z", kUByte}}), kBetween);
}

constexpr ArrayRow kTexts[] = {
    {"01 61 00 01 62 63 00", "L@0+7=<[1]T@0+3=a [2]T@3+4=bc>"},
    {"01 61 00 00 00 62", "L@0+6=<[1]T@0+3=a [2]T@3+3=b {NotTerm}>"},
};

TEST(ArrayItem, EntriesMayDifferInSize) {
    Expect(Decoding({{"L", Array("NMax", "T", Text("9"))}}), kTexts);
}

constexpr ArrayRow kVoids[] = {
    {"", "L@0+0=<>"},
    {"07", "L@0+0=<[1]{Void}@0+0=> !byte 0: 1 byte left over"},
};

TEST(ArrayItem, AnEntryWithoutBytesIsTheLast) {
    Expect(Decoding({{"L", Array("NMax", "", kVoid)}}), kVoids);
}

constexpr ArrayRow kVoidRecords[] = {
    {"07", "L@0+0=<[1]R@0+0=<V@0+0=>> !byte 0: 1 byte left over"},
};

TEST(ArrayItem, ARecordOfVoidsIsAnEntryWithoutBytes) {
    Expect(Decoding({{"L", Array("NMax", "R", Record({{"V", kVoid}}))}}), kVoidRecords);
}

TEST(ArrayItem, NamelessElementsAreCountedAllTheSame) {
    const ArrayRow rows[] = {{"0A 0B", "L@0+2=<[1]@0+1=10 [2]@1+1=11>"}};
    Expect(Decoding({{"L", Array("NMax", "", kUByte)}}), rows);
}

TEST(ArrayItem, OpenArrayTakesTheWholeMessage) {
    const Decoding decoding({{"L", Array("N (&gt;=0)", "E", kUByte)}});
    std::string bytes;
    for (int i = 0; i < 1000; ++i) {
        bytes += "2A";
    }
    const auto decoded = decoding.Decode(bytes);
    EXPECT_TRUE(decoded->faults.empty());
    ASSERT_EQ(decoded->items.Items().size(), 1U);
    const ZMostParameter& list = *decoded->items.Items()[0];
    EXPECT_EQ(list.Bytes().size(), 1000U);
    EXPECT_EQ(list.GetType(), kParamArray);
    EXPECT_EQ(list.EntryNumber(0), 1U);
    ASSERT_NE(list.Members(), nullptr);
    ASSERT_EQ(list.Members()->Items().size(), 1000U);
    EXPECT_EQ(list.Members()->Items()[999]->Offset(), 999U);
    EXPECT_EQ(list.Members()->Items()[0]->EntryNumber(0), 0U);
}

constexpr ArrayRow kPositions[] = {
    {"00 00 0A 0B 0C", "Pos@0+2=PosX=0 PosY=0 Data@2+3=<[1]E@2+1=10 [2]E@3+1=11 [3]E@4+1=12>"},
    {"00 00", "Pos@0+2=PosX=0 PosY=0 Data@2+0=<>"},
    {"01 00 0A", "Pos@0+2=PosX=1 PosY=0 Data@2+1=<[1]E@2+1=10>"},
    {"02 00 0A", "Pos@0+2=PosX=2 PosY=0 Data@2+1=<[2]E@2+1=10>"},
    {"03 00 0A", "Pos@0+2=PosX=3 PosY=0 Data@2+1=<[3]E@2+1=10>"},
    {"02 00 0A 0B", "Pos@0+2=PosX=2 PosY=0 Data@2+1=<[2]E@2+1=10> !byte 3: 1 byte left over"},
    // The entry that is asked for has to be there.
    {"02 00", "Pos@0+2=PosX=2 PosY=0 !byte 2: E needs 1 byte, 0 are left"},
    {"04 00 0A", "Pos@0+2=PosX=4 PosY=0 !byte 2: Data has no entry 4"},
    {"FF 00", "Pos@0+2=PosX=255 PosY=0 !byte 2: Data has no entry 255"},
    {"00", "!byte 0: Pos needs 2 bytes, 1 is left"},
};

TEST(ArrayItem, PosAsksForOneEntryOrAll) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}}), kPositions);
}

constexpr ArrayRow kOpen[] = {
    {"FF 00 0A", "Pos@0+2=PosX=255 PosY=0 Data@2+1=<[255]E@2+1=10>"},
};

TEST(ArrayItem, OpenArrayHasEveryEntry) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", Array("NMax", "E", kUByte)}}), kOpen);
}

constexpr ArrayRow kVoidEntries[] = {
    {"05 00", "Pos@0+2=PosX=5 PosY=0 Data@2+0=<[5]{Void}@2+0=>"},
    {"00 00", "Pos@0+2=PosX=0 PosY=0 Data@2+0=<>"},
};

TEST(ArrayItem, EntryWithoutBytesThatIsAskedForIsThere) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", Array("NMax", "", kVoid)}}), kVoidEntries);
}

constexpr ArrayRow kRecords[] = {
    {"00 00 01 02 03 04",
     "Pos@0+2=PosX=0 PosY=0 Data@2+4=<[1]R@2+2=<A@2+1=1 B@3+1=2> [2]R@4+2=<A@4+1=3 B@5+1=4>>"},
    {"02 00 01 02", "Pos@0+2=PosX=2 PosY=0 Data@2+2=<[2]R@2+2=<A@2+1=1 B@3+1=2>>"},
    {"02 01 07", "Pos@0+2=PosX=2 PosY=1 Data@2+1=<[2]R@2+1=<A@2+1=7>>"},
    {"02 02 07", "Pos@0+2=PosX=2 PosY=2 Data@2+1=<[2]R@2+1=<B@2+1=7>>"},
    {"00 02 07 08", "Pos@0+2=PosX=0 PosY=2 Data@2+2=<[1]R@2+1=<B@2+1=7> [2]R@3+1=<B@3+1=8>>"},
    {"02 02", "Pos@0+2=PosX=2 PosY=2 !byte 2: B needs 1 byte, 0 are left"},
    {"02 03 07", "Pos@0+2=PosX=2 PosY=3 !byte 2: R has no field 3"},
    {"04 01 07", "Pos@0+2=PosX=4 PosY=1 !byte 2: Data has no entry 4"},
};

TEST(ArrayItem, YGoesOnToTheRecordThatIsTheEntry) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", Array("3", "R", Record({{"A", kUByte}, {"B", kUByte}}))}}),
           kRecords);
}

constexpr ArrayRow kArrays[] = {
    {"02 01 07", "Pos@0+2=PosX=2 PosY=1 Data@2+1=<[2]I@2+1=<[1]E@2+1=7>>"},
    {"01 02 07", "Pos@0+2=PosX=1 PosY=2 Data@2+1=<[1]I@2+1=<[2]E@2+1=7>>"},
    {"01 03 07", "Pos@0+2=PosX=1 PosY=3 !byte 2: I has no entry 3"},
    {"01 00 07 08", "Pos@0+2=PosX=1 PosY=0 Data@2+2=<[1]I@2+2=<[1]E@2+1=7 [2]E@3+1=8>>"},
    {"00 00 01 02 03",
     "Pos@0+2=PosX=0 PosY=0 Data@2+3=<[1]I@2+2=<[1]E@2+1=1 [2]E@3+1=2> [2]I@4+1=<[1]E@4+1=3>>"},
    {"00 02 01 02", "Pos@0+2=PosX=0 PosY=2 Data@2+2=<[1]I@2+1=<[2]E@2+1=1> [2]I@3+1=<[2]E@3+1=2>>"},
};

TEST(ArrayItem, YGoesOnToTheArrayThatIsTheEntry) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", Array("3", "I", Array("2", "E", kUByte))}}), kArrays);
}

constexpr ArrayRow kScalars[] = {
    {"02 05 07", "Pos@0+2=PosX=2 PosY=5 Data@2+1=<[2]E@2+1=7>"},
};

TEST(ArrayItem, YHasNoMeaningForASimpleEntry) {
    Expect(Decoding({{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}}), kScalars);
}

constexpr ArrayRow kBytePos[] = {
    {"00 07 08", "Pos@0+1=0 Data@1+2=<[1]E@1+1=7 [2]E@2+1=8>"},
    {"02 07", "Pos@0+1=2 Data@1+1=<[2]E@1+1=7>"},
    {"04 07", "Pos@0+1=4 !byte 1: Data has no entry 4"},
};

TEST(ArrayItem, PosOfOneByteIsTheEntry) {
    Expect(Decoding({{"Pos", kUByte}, {"Data", Array("3", "E", kUByte)}}), kBytePos);
}

constexpr ArrayRow kLongPos[] = {
    {"00 00 00 02 07", "Pos@0+4=2 Data@4+1=<[2]E@4+1=7>"},
    {"00 00 02 00 07", "Pos@0+4=512 !byte 4: Data has no entry 512"},
};

TEST(ArrayItem, PosOfFourBytesIsTheEntry) {
    Expect(Decoding({{"Pos", kULong}, {"Data", Array("3", "E", kUByte)}}), kLongPos);
}

constexpr ArrayRow kEnumPos[] = {
    {"00 07 08", "Pos@0+1=Off (0x00) Data@1+2=<[1]E@1+1=7 [2]E@2+1=8>"},
    {"01 07", "Pos@0+1=On (0x01) Data@1+1=<[1]E@1+1=7>"},
    {"09 07", "Pos@0+1=0x09 !byte 1: Data has no entry 9"},
};

TEST(ArrayItem, PosThatIsAnEnumerationIsTheEntry) {
    Expect(Decoding({{"Pos", kSwitch}, {"Data", Array("3", "E", kUByte)}}), kEnumPos);
}

constexpr ArrayRow kNoSelector[] = {
    {"02 00 07 08", "Pos@0+2=PosX=2 PosY=0 List@2+2=<[1]E@2+1=7 [2]E@3+1=8>"},
};

TEST(ArrayItem, ArrayOfAnotherNameHasAllItsEntries) {
    Expect(Decoding({{"Pos", kUWord}, {"List", Array("3", "E", kUByte)}}), kNoSelector);
}

constexpr ArrayRow kInside[] = {
    {"02 00 07", "R@0+3=<Pos@0+2=PosX=2 PosY=0 Data@2+1=<[2]E@2+1=7>>"},
    {"00 00 07 08", "R@0+4=<Pos@0+2=PosX=0 PosY=0 Data@2+2=<[1]E@2+1=7 [2]E@3+1=8>>"},
};

TEST(ArrayItem, PosInTheSameRecordSelects) {
    Expect(Decoding({{"R", Record({{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}})}}), kInside);
}

constexpr ArrayRow kRepeated[] = {
    {"02 00 07 01 00 08",
     "L@0+6=<[1]R@0+3=<Pos@0+2=PosX=2 PosY=0 Data@2+1=<[2]E@2+1=7>> "
     "[2]R@3+3=<Pos@3+2=PosX=1 PosY=0 Data@5+1=<[1]E@5+1=8>>>"},
};

TEST(ArrayItem, EachEntryGoesByItsOwnPos) {
    Expect(
        Decoding({{"L", Array("NMax", "R", Record({{"Pos", kUWord}, {"Data", Array("3", "E", kUByte)}}))}}),
        kRepeated);
}

}  // namespace
}  // namespace tarvex::test::array_item_test
