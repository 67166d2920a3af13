/// The lines of a capture: every spelling of a message, and what is wrong with the others.

#include "capture/message_line.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"
#include "import/text/wording.h"

namespace tarvex::test::message_line_test {
namespace {

struct LineRow {
    const char* line;
    const char* address;
    const char* data;
};

constexpr LineRow kAddresses[] = {
    {"22.01.400.C", "22.01.400.C", ""},   {"22.1.400.C", "22.01.400.C", ""},
    {"0.0.0.0", "00.00.000.0", ""},       {"1.2.3.4", "01.02.003.4", ""},
    {"FF.FF.FFF.F", "FF.FF.FFF.F", ""},   {"ff.fe.fdc.b", "FF.FE.FDC.B", ""},
    {"  22.01.400.C", "22.01.400.C", ""}, {"\t22.01.400.C 05", "22.01.400.C", "05"},
    {"22.01.400.C  ", "22.01.400.C", ""}, {"22.01.400.C 05 \t", "22.01.400.C", "05"},
};

constexpr LineRow kData[] = {
    {"22.01.400.C 05", "22.01.400.C", "05"},
    {"22.01.400.C 0506", "22.01.400.C", "05 06"},
    {"22.01.400.C 05 06", "22.01.400.C", "05 06"},
    {"22.01.400.C 05\t06", "22.01.400.C", "05 06"},
    {"22.01.400.C   05   06   ", "22.01.400.C", "05 06"},
    {"22.01.400.C 0506 07 0809", "22.01.400.C", "05 06 07 08 09"},
    {"22.01.400.C aBcD", "22.01.400.C", "AB CD"},
    {"22.01.400.C ()", "22.01.400.C", ""},
    {"22.01.400.C ( )", "22.01.400.C", ""},
    {"22.01.400.C (05)", "22.01.400.C", "05"},
    {"22.01.400.C (05 06)", "22.01.400.C", "05 06"},
    {"22.01.400.C (0506)", "22.01.400.C", "05 06"},
    {"22.01.400.C ( 05 06 )", "22.01.400.C", "05 06"},
    {"22.01.400.C (05 06) ", "22.01.400.C", "05 06"},
};

constexpr LineRow kLengths[] = {
    // A fifth field.
    {"22.01.400.C.0", "22.01.400.C", ""},
    {"22.01.400.C.2 0506", "22.01.400.C", "05 06"},
    {"22.01.400.C.2 05 06", "22.01.400.C", "05 06"},
    {"22.01.400.C.02 05 06", "22.01.400.C", "05 06"},
    {"22.01.400.C.2 (05 06)", "22.01.400.C", "05 06"},
    // Decimal or hexadecimal, whichever fits.
    {"22.01.400.C.10 00010203040506070809", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C.A 00010203040506070809", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C.0a 00010203040506070809", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C.10 000102030405060708090A0B0C0D0E0F", "22.01.400.C",
     "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F"},
    // Before parentheses.
    {"22.01.400.C 0 ()", "22.01.400.C", ""},
    {"22.01.400.C 2 (0506)", "22.01.400.C", "05 06"},
    {"22.01.400.C 02 (05 06)", "22.01.400.C", "05 06"},
    {"22.01.400.C 10 (00010203040506070809)", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C 0A (00010203040506070809)", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    // A single digit.
    {"22.01.400.C 0", "22.01.400.C", ""},
    {"22.01.400.C 2 0506", "22.01.400.C", "05 06"},
    {"22.01.400.C 2 05 06", "22.01.400.C", "05 06"},
    {"22.01.400.C A 00010203040506070809", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C a 00 01 02 03 04 05 06 07 08 09", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    // Marked.
    {"22.01.400.C [2] 0506", "22.01.400.C", "05 06"},
    {"22.01.400.C [02] 05 06", "22.01.400.C", "05 06"},
    {"22.01.400.C [0]", "22.01.400.C", ""},
    {"22.01.400.C [10] 00010203040506070809", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C [0A] 00010203040506070809", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09"},
    {"22.01.400.C [12] 000102030405060708090A0B", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09 0A 0B"},
    {"22.01.400.C 2: 0506", "22.01.400.C", "05 06"},
    {"22.01.400.C 02: 05 06", "22.01.400.C", "05 06"},
    {"22.01.400.C 12: 000102030405060708090A0B", "22.01.400.C", "00 01 02 03 04 05 06 07 08 09 0A 0B"},
    {"22.01.400.C 0: ", "22.01.400.C", ""},
    // Two digits without a mark are a data byte.
    {"22.01.400.C 02 05 06", "22.01.400.C", "02 05 06"},
    {"22.01.400.C 02 0506", "22.01.400.C", "02 05 06"},
    {"22.01.400.C 01 05", "22.01.400.C", "01 05"},
    {"22.01.400.C 02", "22.01.400.C", "02"},
};

constexpr LineRow kMarkedLengths[] = {
    {"22.01.400.C [2] (05 06)", "22.01.400.C", "05 06"},
    {"22.01.400.C [02] (0506)", "22.01.400.C", "05 06"},
    {"22.01.400.C [0] ()", "22.01.400.C", ""},
    {"22.01.400.C 2: (05 06)", "22.01.400.C", "05 06"},
    {"22.01.400.C 0: ()", "22.01.400.C", ""},
};

void ExpectMessages(std::span<const LineRow> rows) {
    for (const LineRow& row : rows) {
        SCOPED_TRACE(row.line);
        CapturedMessage message;
        EXPECT_EQ(ParseMessageLine(row.line, message), "");
        EXPECT_EQ(AddressText(message), row.address);
        EXPECT_EQ(HexText(message.data, " "), row.data);
    }
}

TEST(MessageLine, AddressIsFourHexadecimalNumbers) {
    ExpectMessages(kAddresses);
}

TEST(MessageLine, DataBytesHaveTwoDigitsAndAnyBlanks) {
    ExpectMessages(kData);
}

TEST(MessageLine, LengthMayStandBeforeTheData) {
    ExpectMessages(kLengths);
}

TEST(MessageLine, MarkedLengthMayStandBeforeParenthesesToo) {
    ExpectMessages(kMarkedLengths);
}

TEST(MessageLine, FieldsAreKeptAsNumbers) {
    CapturedMessage message;
    ASSERT_EQ(ParseMessageLine("60.a1.20F.c 01F403", message), "");
    EXPECT_EQ(message.fBlockID, 0x60U);
    EXPECT_EQ(message.instID, 0xA1U);
    EXPECT_EQ(message.fktID, 0x20FU);
    EXPECT_EQ(message.opType, 0xCU);
    EXPECT_EQ(message.data, BytesOf("01 F4 03"));
}

TEST(MessageLine, NothingStaysOfTheLineBefore) {
    CapturedMessage message;
    ASSERT_EQ(ParseMessageLine("22.01.400.C 01 02 03", message), "");
    ASSERT_EQ(ParseMessageLine("22.01.400.C 04", message), "");
    EXPECT_EQ(message.data, BytesOf("04"));
}

struct FaultRow {
    const char* line;
    const char* fault;
};
constexpr FaultRow kFaults[] = {
    {"hello", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {".01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"100.01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"G2.01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"-1.01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"+1.01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"FFFFFFFFFFFFFFFFFF22.01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"100000022.01.400.C", "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"22", "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"22.", "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"22..400.C", "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"22.100.400.C", "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"22.X.400.C", "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01", "no valid FktID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.", "no valid FktID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01..C", "no valid FktID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.1000.C", "no valid FktID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.4-0.C", "no valid FktID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400", "no valid OPType, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400.", "no valid OPType, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400.10", "no valid OPType, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400.G", "no valid OPType, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400. C", "no valid OPType, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400.C 05 6", "half a data byte in '6', expected two hexadecimal digits"},
    {"22.01.400.C 050", "half a data byte in '050', expected two hexadecimal digits"},
    {"22.01.400.C 05 06 070", "half a data byte in '070', expected two hexadecimal digits"},
    {"22.01.400.C (5)", "half a data byte in '5', expected two hexadecimal digits"},
    {"22.01.400.C 05 GG", "no data byte 'GG', expected two hexadecimal digits"},
    {"22.01.400.C 0x", "no data byte '0x', expected two hexadecimal digits"},
    {"22.01.400.C (05 -1)", "no data byte '-1', expected two hexadecimal digits"},
    {"22.01.400.C (05 06", "no closing parenthesis"},
    {"22.01.400.C (", "no closing parenthesis"},
    {"22.01.400.C 1 (05", "no closing parenthesis"},
    {"22.01.400.C.3 05 06", "length 3, but 2 data bytes"},
    {"22.01.400.C.3 05", "length 3, but 1 data byte"},
    {"22.01.400.C.3", "length 3, but 0 data bytes"},
    {"22.01.400.C.0 05", "length 0, but 1 data byte"},
    {"22.01.400.C 3 (05 06)", "length 3, but 2 data bytes"},
    {"22.01.400.C 03 (05)", "length 03, but 1 data byte"},
    {"22.01.400.C 3 05 06", "length 3, but 2 data bytes"},
    {"22.01.400.C 1", "length 1, but 0 data bytes"},
    {"22.01.400.C [1] 05 06", "length 1, but 2 data bytes"},
    {"22.01.400.C 1: 05 06", "length 1, but 2 data bytes"},
    {"22.01.400.C.10 000102030405060708090A0B", "length 10, but 12 data bytes"},
    {"22.01.400.C B (00010203040506070809)", "length B, but 10 data bytes"},
};

TEST(MessageLine, FaultTellsWhatIsWrong) {
    for (const FaultRow& row : kFaults) {
        SCOPED_TRACE(row.line);
        CapturedMessage message;
        EXPECT_EQ(ParseMessageLine(row.line, message), row.fault);
    }
}

constexpr const char* kRefused[] = {
    "22.01.400.C.G 05",
    "22.01.400.C.2.3 05 06",
    "22.01.400.C [] 05",
    "22.01.400.C [x] 05",
    "22.01.400.C [1 05",
    "22.01.400.C : 05",
    "22.01.400.C x: 05",
    "22.01.400.C 05)",
    "22.01.400.C ((05))",
    "22.01.400.C.18446744073709551617 05",  // 2^64 + 1
    "22.01.400.C.4294967297 05",            // 2^32 + 1
    "22.01.400.C.10000000000000001 05",     // 16^16 + 1
};

TEST(MessageLine, NeverTakesALineThatIsNoMessage) {
    for (const char* line : kRefused) {
        SCOPED_TRACE(line);
        CapturedMessage message;
        EXPECT_NE(ParseMessageLine(line, message), "");
    }
}

TEST(MessageLine, NulByteIsNoPartOfAMessage) {
    CapturedMessage message;
    EXPECT_NE(ParseMessageLine(std::string_view("22.01.400.C 05\0 06", 18), message), "");
    EXPECT_EQ(ParseMessageLine(std::string_view("\0", 1), message),
              "no valid FBlockID, expected FBlockID.InstID.FktID.OPType");
}

struct CountRow {
    std::size_t count;
    const char* fault;
};
constexpr CountRow kCounts[] = {
    {65534, ""},
    {65535, ""},
    {65536, "more than 65535 data bytes"},
    {100000, "more than 65535 data bytes"},
};

TEST(MessageLine, MessageHasAtMost65535DataBytes) {
    for (const CountRow& row : kCounts) {
        SCOPED_TRACE(row.count);
        std::string digits;
        for (std::size_t i = 0; i < row.count; ++i) {
            digits += "2A";
        }
        CapturedMessage message;
        EXPECT_EQ(ParseMessageLine("22.01.400.C " + digits, message), row.fault);
        if (*row.fault == '\0') {
            EXPECT_EQ(message.data.size(), row.count);
        }
        EXPECT_EQ(ParseMessageLine("22.01.400.C (" + digits + ")", message), row.fault);
    }
}

struct CommentRow {
    const char* line;
    bool isComment;
};
constexpr CommentRow kComments[] = {
    {"", true},
    {" ", true},
    {"\t \t", true},
    {"#", true},
    {"# note", true},
    {"#22.01.400.C", true},
    {"; note", true},
    {" // note", true},
    {"/ note", false},
    {"22.01.400.C", false},
    {"22.01.400.C # note", false},
    {"hello", false},
    {".", false},
};

TEST(MessageLine, BlankLinesAndNotesAreNoMessages) {
    for (const CommentRow& row : kComments) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(IsCommentLine(row.line), row.isComment);
    }
}

}  // namespace
}  // namespace tarvex::test::message_line_test
