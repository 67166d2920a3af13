/// The report for people: a block of lines for each message.

#include "disasm/text_report.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"
#include "import/text/wording.h"

namespace tarvex::test::text_report_test {
namespace {

std::string ReportOf(const Decoding& decoding, const CapturedMessage& message, std::string file = "") {
    std::string out;
    TextReport().Message({.file = std::move(file), .number = 7}, message, *decoding.Decode(message), out);
    return out;
}

CapturedMessage Status(std::string_view hex) {
    return {.fBlockID = 0x22, .instID = 1, .fktID = 0x400, .opType = 0xC, .data = BytesOf(hex)};
}

TEST(TextReport, ParametersStandBelowTheMessage) {
    const Decoding decoding({{"Speed", Number("type_unsigned_word", "-1", "unit_km_h")},
                             {"Gear", kUByte},
                             {"Mode", kSwitch},
                             {"Title", Text("20")}});
    EXPECT_EQ(ReportOf(decoding, Status("01 F4 03 01 01 61 62 63")),
              "22.01.400.C (01 F4 03 01 01 61 62 63) Amp.Volume.Status\n"
              "  Speed = 50.0 km/h\n"
              "  Gear = 3\n"
              "  Mode = On (0x01)\n"
              "  Title = abc {NotTerm}\n");
}

TEST(TextReport, MembersAreIndentedOneLevelDeeper) {
    const std::string bit =
        "<TBoolField BitPos=\"0\"><ParamName>Lid</ParamName><BitTrueDesc>open</BitTrueDesc>"
        "<BitFalseDesc>closed</BitFalseDesc></TBoolField>";
    const Decoding decoding({{"Flags", Bits(2, bit)},
                             {"List", Array("2", "Entry", Record({{"Field", kUByte}, {"Rest", kVoid}}))},
                             {"Codes", Array("2", "", kUByte)},
                             {"Mode", kUByte},
                             {"Body", Stream(Case("Mode", "3", {{"1", "Title", Text("9")}}))}});
    EXPECT_EQ(ReportOf(decoding, Status("03 05 06 07 08 03 01 61 00")),
              "22.01.400.C (03 05 06 07 08 03 01 61 00) Amp.Volume.Status\n"
              "  Flags\n"
              "    [bit0] Lid = open\n"
              "    [bit1] = 1\n"
              "  List\n"
              "    [1] Entry\n"
              "      Field = 5\n"
              "      Rest\n"
              "    [2] Entry\n"
              "      Field = 6\n"
              "      Rest\n"
              "  Codes\n"
              "    [1] = 7\n"
              "    [2] = 8\n"
              "  Mode = 3\n"
              "  Body = (Mode=0x03)\n"
              "    Title = a\n");
}

TEST(TextReport, EntryThatPosAsksForKeepsItsNumber) {
    const Decoding decoding(
        {{"Pos", Number("type_unsigned_word", "0", "unit_km_h")}, {"Data", Array("9", "Entry", kUByte)}});
    EXPECT_EQ(ReportOf(decoding, Status("05 00 07")),
              "22.01.400.C (05 00 07) Amp.Volume.Status\n"
              "  Pos = PosX=5 PosY=0\n"
              "  Data\n"
              "    [5] Entry = 7\n");
}

TEST(TextReport, NamelessEntryOfSeveralParametersIsANumber) {
    const Decoding decoding({{"List", Array("2", "", Record({{"Field", kUByte}}))}});
    EXPECT_EQ(ReportOf(decoding, Status("05")),
              "22.01.400.C (05) Amp.Volume.Status\n"
              "  List\n"
              "    [1]\n"
              "      Field = 5\n");
}

TEST(TextReport, FaultsStandBelowTheParameters) {
    const Decoding decoding({{"Level", kUByte}, {"Size", kUWord}});
    EXPECT_EQ(ReportOf(decoding, Status("05 00 06 07")),
              "22.01.400.C (05 00 06 07) Amp.Volume.Status\n"
              "  Level = 5\n"
              "  Size = 6\n"
              "  error: line 7: byte 3: 1 byte left over\n");
    EXPECT_EQ(ReportOf(decoding, Status("05 00")),
              "22.01.400.C (05 00) Amp.Volume.Status\n"
              "  Level = 5\n"
              "  error: line 7: byte 1: Size needs 2 bytes, 1 is left\n");
    EXPECT_EQ(ReportOf(decoding, Status("")),
              "22.01.400.C () Amp.Volume.Status\n"
              "  error: line 7: byte 0: Level needs 1 byte, 0 are left\n");
}

TEST(TextReport, UnknownMessagesShowWhatIsKnown) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(ReportOf(decoding, {0x22, 1, 0x400, 0x2, {5}}),
              "22.01.400.2 (05) Amp.Volume\n  error: line 7: unknown operation 0x2\n");
    EXPECT_EQ(ReportOf(decoding, {0x22, 1, 0x200, 0xC, {}}),
              "22.01.200.C () Amp\n  error: line 7: unknown function 0x200\n");
    EXPECT_EQ(ReportOf(decoding, {0x23, 0xA, 0x400, 0xC, {5, 0xFF}}),
              "23.0A.400.C (05 FF)\n  error: line 7: unknown function block 0x23\n");
}

TEST(TextReport, OnlyFaultsTellTheFile) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(ReportOf(decoding, Status("05"), "drive.txt"), ReportOf(decoding, Status("05")));
    EXPECT_EQ(ReportOf(decoding, Status("05 06"), "drive.txt"),
              "22.01.400.C (05 06) Amp.Volume.Status\n"
              "  Level = 5\n"
              "  error: line 7 of drive.txt: byte 1: 1 byte left over\n");
}

struct BitsRow {
    int length;
    std::vector<int> described;
    const char* bytes;
    const char* lines;
};

TEST(TextReport, BitsWithoutDescriptionShareALine) {
    const BitsRow rows[] = {
        {1, {}, "01", "    [bit0] = 1\n"},
        {8, {}, "A5", "    [bit7..0] = 10100101\n"},
        {8, {0}, "A5", "    [bit0] B = True\n    [bit7..1] = 1010010\n"},
        {8, {7}, "A5", "    [bit7] B = True\n    [bit6..0] = 0100101\n"},
        {8,
         {1, 4, 5},
         "A5",
         "    [bit1] B = False\n    [bit4] B = False\n    [bit5] B = True\n    [bit7..6 3..2 0] = 10 01 1\n"},
        {16,
         {12, 8},
         "92 80",
         "    [bit 8] B = False\n    [bit12] B = True\n    [bit15..13 11..9 7..0] = 100 001 10000000\n"},
        {2, {0, 1}, "02", "    [bit0] B = False\n    [bit1] B = True\n"},
    };
    for (const BitsRow& row : rows) {
        SCOPED_TRACE(row.lines);
        std::string bits;
        for (const int bit : row.described) {
            bits +=
                "<TBoolField BitPos=\"" + std::to_string(bit) + "\"><ParamName>B</ParamName></TBoolField>";
        }
        const std::string report = ReportOf(Decoding({{"F", Bits(row.length, bits)}}), Status(row.bytes));
        EXPECT_EQ(report.substr(report.find('\n') + 1), std::string("  F\n") + row.lines);
    }
}

TEST(TextReport, AppendsToTheText) {
    const Decoding decoding({{"Level", kUByte}});
    std::string out = "before\n";
    TextReport().Message({}, Status("05"), *decoding.Decode("05"), out);
    EXPECT_EQ(out, "before\n22.01.400.C (05) Amp.Volume.Status\n  Level = 5\n");
}

struct BadRow {
    const char* file;
    std::string line;
    const char* fault;
    std::string report;
};

TEST(TextReport, BadLineIsShownWithItsPlace) {
    const BadRow rows[] = {
        {"", "hello", "no valid FBlockID", "hello\n  error: line 7: no valid FBlockID\n"},
        {"drive.txt", "hello", "no valid FBlockID",
         "hello\n  error: line 7 of drive.txt: no valid FBlockID\n"},
        {"", "22.01\t\x1b[31m", "no valid InstID", "22.01..[31m\n  error: line 7: no valid InstID\n"},
        {"", std::string(201, 'x'), "no valid FBlockID",
         std::string(200, 'x') + "...\n  error: line 7: no valid FBlockID\n"},
    };
    for (const BadRow& row : rows) {
        SCOPED_TRACE(row.report);
        std::string out;
        TextReport().BadLine({.file = row.file, .number = 7}, row.line, row.fault, out);
        EXPECT_EQ(out, row.report);
    }
}

struct ShownRow {
    std::string line;
    std::string shown;
};

TEST(Report, LineIsShownWithoutControlCharactersAndNotTooLong) {
    const ShownRow rows[] = {
        {"", ""},
        {"22.01.400.C 0x", "22.01.400.C 0x"},
        {"a\tb\rc", "a.b.c"},
        {std::string("a\0b", 3), "a.b"},
        {"\x01\x1f \x7e\x7f", ".. ~."},
        {std::string(199, 'x'), std::string(199, 'x')},
        {std::string(200, 'x'), std::string(200, 'x')},
        {std::string(201, 'x'), std::string(200, 'x') + "..."},
        {std::string(100000, 'x'), std::string(200, 'x') + "..."},
    };
    for (const ShownRow& row : rows) {
        SCOPED_TRACE(row.shown);
        EXPECT_EQ(ShownText(row.line), row.shown);
    }
}

struct HexRow {
    const char* bytes;
    const char* separator;
    const char* text;
};
constexpr HexRow kHexTexts[] = {
    {"", " ", ""},
    {"00", " ", "00"},
    {"0A FF", " ", "0A FF"},
    {"0A FF", "", "0AFF"},
    {"01 02 03", ", ", "01, 02, 03"},
};

TEST(Report, BytesHaveTwoDigitsEach) {
    for (const HexRow& row : kHexTexts) {
        EXPECT_EQ(HexText(BytesOf(row.bytes), row.separator), row.text);
    }
}

}  // namespace
}  // namespace tarvex::test::text_report_test
