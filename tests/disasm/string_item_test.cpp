/// Strings: the characters of both widths, their end, and what is left of the message.

#include "disasm/string_item.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"

namespace tarvex::test::string_item_test {
namespace {

struct TextRow {
    const char* maxSize;
    const char* bytes;
    const char* shown;
};

constexpr TextRow kNarrow[] = {
    {"255", "01 61 62 63 00", "T@0+5=abc"},
    {"255", "01 61 62 63", "T@0+4=abc {NotTerm}"},
    {"255", "01 00", "T@0+2="},
    {"255", "01", "T@0+1= {NotTerm}"},
    {"255", "02 61 00", "T@0+3=a"},
    {"255", "80 61 00", "T@0+3=a"},
    {"255", "FF 61 00", "T@0+3=a"},
    {"255", "01 61 00 62", "T@0+3=a !byte 3: 1 byte left over"},
    {"255", "01 00 61 00", "T@0+2= !byte 2: 2 bytes left over"},
    {"", "01 61 00", "T@0+3=a"},
    {"255", "", "!byte 0: T needs 1 byte, 0 are left"},
    // What cannot be printed.
    {"255", "01 1F 20 21 7E 7F 00", "T@0+7=. !~."},
    {"255", "01 41 0A 42 09 43 0D 44 00", "T@0+9=A.B.C.D"},
    {"255", "01 80 FF 9F 00", "T@0+5=.\u00FF."},
    // ISO 8859-15, which has eight characters where Latin-1 has others.
    {"255", "01 E4 A4 A6 A8 B4 B8 BC BD BE A5 00",
     "T@0+12=\u00E4\u20AC\u0160\u0161\u017D\u017E\u0152\u0153\u0178\u00A5"},
    // UTF-8; what is none is shown byte by byte.
    {"255", "02 C3 A4 E2 82 AC F0 9F 8E B5 00", "T@0+11=\u00E4\u20AC\U0001F3B5"},
    {"255", "02 C3 41 FF C3 00", "T@0+6=.A.."},
    {"255", "02 E2 80 AE 41 C2 9B 00", "T@0+8=.A."},
    {"2", "02 C3 A4 C3 00", "T@0+3=\u00E4 {NotTerm} !byte 3: 2 bytes left over"},
    // Encodings of which only ASCII is sure.
    {"255", "03 41 E4 00", "T@0+4=A."},
    {"255", "FF 41 E4 00", "T@0+4=A."},
    {"255", "01 25 73 25 6E 00", "T@0+6=%s%n"},
};

constexpr TextRow kWide[] = {
    {"255", "00 00 61 00 62 00 00", "T@0+7=ab"},
    {"255", "00 00 61 00 62", "T@0+5=ab {NotTerm}"},
    {"255", "00 00 00", "T@0+3="},
    {"255", "00", "T@0+1= {NotTerm}"},
    {"255", "00 00 61 00 00 00 62", "T@0+5=a !byte 5: 2 bytes left over"},
    // An odd byte is no character.
    {"255", "00 00 61 00", "T@0+3=a {NotTerm} !byte 3: 1 byte left over"},
    {"255", "00 00", "T@0+1= {NotTerm} !byte 1: 1 byte left over"},
    {"255", "00 61", "T@0+1= {NotTerm} !byte 1: 1 byte left over"},
    {"255", "00 00 61 00 62 00", "T@0+5=ab {NotTerm} !byte 5: 1 byte left over"},
    // A zero half ends nothing, and the low half alone is not the character.
    {"255", "00 61 00 00 62 00 00", "T@0+7=\u6100b"},
    {"255", "00 00 41 01 41 20 AC 00 42 00 00", "T@0+11=A\u0141\u20ACB"},
    // A pair of halves is one character, a half alone is none.
    {"255", "00 D8 3C DF B5 00 41 00 00", "T@0+9=\U0001F3B5A"},
    {"255", "00 D8 3C 00 41 DF B5 D8 3C 00 00", "T@0+11=.A.."},
    {"1", "00 D8 3C DF B5 00 00", "T@0+3=. {NotTerm} !byte 3: 4 bytes left over"},
    {"255", "00 20 2E 00 9B 00 41 00 00", "T@0+9=..A"},
    {"255", "00 00 1F 00 20 00 7E 00 7F 00 00", "T@0+11=. ~."},
};

constexpr TextRow kSizes[] = {
    {"3", "01 61 62 00", "T@0+4=ab"},
    {"3", "01 61 62 63 00", "T@0+5=abc"},
    {"3", "01 61 62 63", "T@0+4=abc {NotTerm}"},
    {"3", "01 61 62 63 64 00", "T@0+4=abc {NotTerm} !byte 4: 2 bytes left over"},
    {"3", "01 61 62 63 00 64", "T@0+5=abc !byte 5: 1 byte left over"},
    {"3", "01 61 62 63 00 00", "T@0+5=abc !byte 5: 1 byte left over"},
    {"0", "01 00", "T@0+2="},
    {"0", "01 61", "T@0+1= {NotTerm} !byte 1: 1 byte left over"},
    {"0", "01", "T@0+1= {NotTerm}"},
    {"1", "01 61", "T@0+2=a {NotTerm}"},
    {"2", "00 00 61 00 62 00 00", "T@0+7=ab"},
    {"2", "00 00 61 00 62", "T@0+5=ab {NotTerm}"},
    {"2", "00 00 61 00 62 00 63 00 00", "T@0+5=ab {NotTerm} !byte 5: 4 bytes left over"},
    {"2", "00 00 61 00 62 00", "T@0+5=ab {NotTerm} !byte 5: 1 byte left over"},
    {"0", "00 00 00", "T@0+3="},
    // Only plain decimal digits are a limit.
    {"0x01", "01 61 62 63 00", "T@0+5=abc"},
};

TEST(StringItem, OneByteCharacters) {
    for (const TextRow& row : kNarrow) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(Decoding({{"T", Text(row.maxSize)}}).Shown(row.bytes), row.shown);
    }
}

TEST(StringItem, TwoByteCharacters) {
    for (const TextRow& row : kWide) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(Decoding({{"T", Text(row.maxSize)}}).Shown(row.bytes), row.shown);
    }
}

TEST(StringItem, TakesAtMostMaxSizeCharactersAndTheZeroOneBehindThem) {
    for (const TextRow& row : kSizes) {
        SCOPED_TRACE(std::string(row.maxSize) + ": " + row.bytes);
        EXPECT_EQ(Decoding({{"T", Text(row.maxSize)}}).Shown(row.bytes), row.shown);
    }
}

struct SequenceRow {
    const char* bytes;
    const char* shown;
};
constexpr SequenceRow kSequences[] = {
    {"01 61 00 00 00 62 00 00 07", "T@0+3=a U@3+5=b N@8+1=7"},
    {"01 61 62 01 63 00 07", "T@0+3=ab {NotTerm} U@3+3=c N@6+1=7"},
    {"01 61 00", "T@0+3=a !byte 3: U needs 1 byte, 0 are left"},
    {"01 61 00 01", "T@0+3=a U@3+1= {NotTerm} !byte 4: N needs 1 byte, 0 are left"},
    // The odd byte goes to the parameter behind.
    {"01 61 00 00 00 62 07", "T@0+3=a U@3+3=b {NotTerm} N@6+1=7"},
};

TEST(StringItem, NextParameterBeginsBehindTheString) {
    const Decoding decoding({{"T", Text("2")}, {"U", Text("255")}, {"N", kUByte}});
    for (const SequenceRow& row : kSequences) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(decoding.Shown(row.bytes), row.shown);
    }
}

TEST(StringItem, UnboundedStringTakesTheWholeMessage) {
    const Decoding decoding({{"T", Text("")}});
    std::string bytes = "01";
    for (std::size_t i = 1; i < kMaxMessageBytes; ++i) {
        bytes += "78";
    }
    const auto decoded = decoding.Decode(bytes);
    ASSERT_EQ(decoded->items.Items().size(), 1U);
    const ZMostParameter& item = *decoded->items.Items()[0];
    EXPECT_EQ(item.Bytes().size(), kMaxMessageBytes);
    EXPECT_EQ(item.GetText(), std::string(kMaxMessageBytes - 1, 'x') + " {NotTerm}");
    EXPECT_EQ(item.GetType(), kParamString);
    EXPECT_TRUE(decoded->faults.empty());
}

}  // namespace
}  // namespace tarvex::test::string_item_test
