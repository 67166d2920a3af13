/// The report for people: a block of lines for each message.

#include "disasm/text_report.h"

#include <string>

#include <gtest/gtest.h>

#include "disasm/decoding.h"
#include "disasm/wording.h"

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
              "  error: byte 3: 1 byte left over\n");
    EXPECT_EQ(ReportOf(decoding, Status("05 00")),
              "22.01.400.C (05 00) Amp.Volume.Status\n"
              "  Level = 5\n"
              "  error: byte 1: Size needs 2 bytes, 1 is left\n");
    EXPECT_EQ(ReportOf(decoding, Status("")),
              "22.01.400.C () Amp.Volume.Status\n"
              "  error: byte 0: Level needs 1 byte, 0 are left\n");
}

TEST(TextReport, UnknownMessagesShowWhatIsKnown) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(ReportOf(decoding, {0x22, 1, 0x400, 0x2, {5}}),
              "22.01.400.2 (05) Amp.Volume\n  error: unknown operation 0x2\n");
    EXPECT_EQ(ReportOf(decoding, {0x22, 1, 0x200, 0xC, {}}),
              "22.01.200.C () Amp\n  error: unknown function 0x200\n");
    EXPECT_EQ(ReportOf(decoding, {0x23, 0xA, 0x400, 0xC, {5, 0xFF}}),
              "23.0A.400.C (05 FF)\n  error: unknown function block 0x23\n");
}

TEST(TextReport, MessagesOfAFileLookTheSame) {
    const Decoding decoding({{"Level", kUByte}});
    EXPECT_EQ(ReportOf(decoding, Status("05"), "drive.txt"), ReportOf(decoding, Status("05")));
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
