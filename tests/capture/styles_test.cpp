/// The styles of captures: each line shows by itself which one it has.

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "capture/capture_reader.h"
#include "capture/capture_run.h"
#include "disasm/csv_report.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"

namespace tarvex::test::styles_test {
namespace {

const Decoding& Amp() {
    static const Decoding decoding(
        {{"Speed", Number("type_unsigned_word", "-1", "unit_km_h")}, {"Mode", kSwitch}});
    return decoding;
}

/// A message 22.01.400.C with the data 01 F4 01, in a style. `prefix` and `origin`: what the text and the
/// JSON report have of it; `line`: where it begins.
struct StyleRow {
    const char* what;
    const char* capture;
    const char* prefix = "";
    const char* origin = "";
    int line = 1;
};

constexpr StyleRow kStyles[] = {
    {"bytes with blanks", "22.01.400.C 01 F4 01"},
    {"bytes without", "22.01.400.C 01F401"},
    {"parentheses", "22.01.400.C (01 F4 01)"},
    {"length as fifth field", "22.01.400.C.3 01 F4 01"},
    {"length before parentheses", "22.01.400.C 3 (01 F4 01)"},
    {"length as digit", "22.01.400.C 3 01 F4 01"},
    {"length in brackets", "22.01.400.C [03] 01 F4 01"},
    {"length with colon", "22.01.400.C 3: 01 F4 01"},
    {"hexadecimal length", "22.01.400.C [0x3] 01 F4 01"},
    {"0x before fields", "0x22.0x01.0x400.0xC 01 F4 01"},
    {"0x before one field", "22.01.0x400.C 01 F4 01"},
    {"0x before bytes", "22.01.400.C 0x01 0xF4 0x01"},
    {"0x before all bytes", "22.01.400.C 0x01F401"},
    {"commas", "22.01.400.C 01,F4,01"},
    {"commas and blanks", "22.01.400.C (01, F4, 01)"},
    {"semicolons", "22.01.400.C 01;F4;01"},
    {"semicolons and a comment", "22.01.400.C 01;F4; 01 # fast"},
    {"semicolons and a comment behind another", "22.01.400.C 01;F4;01; fast"},
    {"semicolons and a comment behind a blank", "22.01.400.C 01;F4;01 ; 02"},
    {"comment #", "22.01.400.C 01 F4 01 # fast"},
    {"comment ;", "22.01.400.C 01 F4 01 ; fast"},
    {"comment ; without a blank", "22.01.400.C 01 F4 01; fast"},
    {"comment //", "22.01.400.C (01 F4 01) // fast (very)"},
    {"blanks around", " \t22.01.400.C 01 F4 01 \t\r"},
    {"seconds", "12.345 22.01.400.C 01 F4 01", "12.345 ", R"("time":"12.345",)"},
    {"seconds in brackets", "[12.345] 22.01.400.C 01 F4 01", "12.345 ", R"("time":"12.345",)"},
    {"whole milliseconds", "123456 22.01.400.C 01 F4 01", "123456 ", R"("time":"123456",)"},
    {"time of day", "12:34:56.789 22.01.400.C 01 F4 01", "12:34:56.789 ", R"("time":"12:34:56.789",)"},
    {"date and time", "2024-06-03 12:34:56 22.01.400.C 01F401", "2024-06-03 12:34:56 ",
     R"("time":"2024-06-03 12:34:56",)"},
    {"date with points", "03.06.2024 12:34:56.7 22.01.400.C 01F401", "03.06.2024 12:34:56.7 ",
     R"("time":"03.06.2024 12:34:56.7",)"},
    {"ISO 8601", "2024-06-03T12:34:56.789Z 22.01.400.C 01F401", "2024-06-03T12:34:56.789Z ",
     R"("time":"2024-06-03T12:34:56.789Z",)"},
    {"ISO 8601 with a zone", "2024-06-03T12:34:56+02:00 22.01.400.C 01F401", "2024-06-03T12:34:56+02:00 ",
     R"("time":"2024-06-03T12:34:56+02:00",)"},
    {"Rx", "Rx 22.01.400.C 01 F4 01", "Rx ", R"("direction":"Rx",)"},
    {"tx:", "12.5 tx: 22.01.400.C 01 F4 01", "12.5 Tx ", R"("time":"12.5","direction":"Tx",)"},
    {"arrow", "-> 22.01.400.C 01 F4 01", "-> ", R"("direction":"->",)"},
    {"source", "0101 22.01.400.C 01 F4 01", "0101 ", R"("source":"0101",)"},
    {"source and destination", "0101 0x0400 22.01.400.C 01 F4 01", "0101 -> 0400 ",
     R"("source":"0101","destination":"0400",)"},
    {"arrow between devices", "0x0101 -> 0x0400 22.01.400.C 01 F4 01", "0101 -> 0400 ",
     R"("source":"0101","destination":"0400",)"},
    {"arrow back", "0101 <- 0400 22.01.400.C 01 F4 01", "0400 -> 0101 ",
     R"("source":"0400","destination":"0101",)"},
    {"arrow without blanks", "0101->0400 22.01.400.C 01 F4 01", "0101 -> 0400 ",
     R"("source":"0101","destination":"0400",)"},
    {"arrow to a destination", "-> 0400 22.01.400.C 01 F4 01", "-> 0400 ", R"("destination":"0400",)"},
    {"everything", "2024-06-03 12:34:56.789 Rx 0101 -> 0400 22.01.400.C.3 (01 F4 01) # fast",
     "2024-06-03 12:34:56.789 Rx 0101 -> 0400 ",
     R"("time":"2024-06-03 12:34:56.789","direction":"Rx","source":"0101","destination":"0400",)"},
    {"names", "Amp.01.Volume.Status 01 F4 01"},
    {"names in any case", "amp.1.VOLUME.status (01 F4 01)"},
    {"names without instance", "Amp.Volume.Status (01 F4 01)"},
    {"names and numbers", "22.01.Volume.C 01 F4 01"},
    {"line of the text report", "12.5 22.01.400.C (01 F4 01) Amp.Volume.Status", "12.5 ",
     R"("time":"12.5",)"},
    {"table with commas", "fblock,inst,fkt,optype,data\n22,01,400,C,01F401", "", "", 2},
    {"table with semicolons", "Time;FBlockID;InstID;FktID;OPType;Length;Data\n12.5;22;01;400;C;3;01 F4 01",
     "12.5 ", R"("time":"12.5",)", 2},
    {"table with tabs and quotes",
     "data\tsource\ttarget\top type\tfunction\tfblock id\n\"01,F4,01\"\t0101\t0x400\tStatus\tVolume\tAmp",
     "0101 -> 0400 ", R"("source":"0101","destination":"0400",)", 2},
    {"table with a column for each byte", "message,length,data,,\n22.01.400.C,3,01,F4,01", "", "", 2},
    {"object with numbers", R"({"fBlockID":34,"instanceID":1,"fktID":1024,"opType":12,"data":[1,244,1]})"},
    {"object with 0x texts",
     R"({"fblockid":"0x22","INSTANCEID":"0x01","FktID":"0x400","optype":"0xC","data":["0x01","F4","1"]})"},
    {"object with hexadecimal texts",
     R"({"fBlockID":"22","instanceID":"01","fktID":"400","opType":"C","data":"01 F4 01","telId":0,"telLen":3})"},
    {"object with a buffer",
     R"({"fBlockID":34,"instanceID":1,"fktID":1024,"opType":12,"data":{"type":"Buffer","data":[1,244,1]}})"},
    {"object with time and devices",
     R"({"timestamp":12.5,"fBlockID":34,"instanceID":1,"fktID":1024,"opType":12,"data":"01F401",)"
     R"("sourceAddrHigh":1,"sourceAddrLow":"01","targetAddrHigh":4,"targetAddrLow":0})",
     "12.5 0101 -> 0400 ", R"("time":"12.5","source":"0101","destination":"0400",)"},
    {"semicolon behind the address", "22.01.400.C;01;F4;01"},
    {"semicolon and length behind the address", "22.01.400.C;3;01 F4 01"},
    {"semicolon and parentheses behind the address", "22.01.400.C;(01 F4 01)"},
    {"semicolons in front, too", "12.5;Rx;22.01.400.C;3;01 F4 01", "12.5 Rx ",
     R"("time":"12.5","direction":"Rx",)"},
    {"commas in front, too", "12.5,Rx,22.01.400.C,[3],01,F4,01", "12.5 Rx ",
     R"("time":"12.5","direction":"Rx",)"},
    {"fraction behind a comma", "2024-06-03T12:34:56,789Z 22.01.400.C 01F401", "2024-06-03T12:34:56,789Z ",
     R"("time":"2024-06-03T12:34:56,789Z",)"},
    {"time of day with a comma", "12:34:56,789 Rx 22.01.400.C 01F401", "12:34:56,789 Rx ",
     R"("time":"12:34:56,789","direction":"Rx",)"},
    {"time of day and a device", "12:34:56,0101,22.01.400.C 01F401", "12:34:56 0101 ",
     R"("time":"12:34:56","source":"0101",)"},
    {"seconds with a comma", "12,345 22.01.400.C 01F401", "12,345 ", R"("time":"12,345",)"},
    {"ISO 8601 with a short zone", "2024-06-03T12:34:56+02 22.01.400.C 01F401", "2024-06-03T12:34:56+02 ",
     R"("time":"2024-06-03T12:34:56+02",)"},
    {"table with an empty first value", "time;fblock;inst;fkt;optype;length;data\n;22;01;400;C;3;01F401", "",
     "", 2},
    {"table whose first column is a mark", "#,Time,FBlock,Inst,Fkt,OPType,Data\n#1,12.5,22,01,400,C,01F401",
     "12.5 ", R"("time":"12.5",)", 2},
    {"table with an empty first name", "\tmessage\tdata\n1\t22.01.400.C\t01F401", "", "", 2},
    {"table with numbered bytes", "message,data,b2,b3,checksum\n22.01.400.C,01,F4,01,7A", "", "", 2},
    {"table with bytes numbered from 0", "message,data0,data1,data2\n22.01.400.C,01,F4,01", "", "", 2},
    {"table with a unit", "Timestamp [ms],message,data\n70001,22.01.400.C,01F401", "70001 ",
     R"("time":"70001",)", 2},
    {"table with date and time", "Date;Time;Message;Data\n03.06.2024;12:34:56;22.01.400.C;01F401",
     "03.06.2024 12:34:56 ", R"("time":"03.06.2024 12:34:56",)", 2},
    {"message between the rows of a table", "fblock,inst,fkt,optype,data\n22.01.400.C 01,F4,01,,,", "", "",
     2},
    {"object with names",
     R"({"functionBlock":"Amp","function":"Volume","operation":"Status","data":"01F401"})"},
    {"object over several lines",
     "{\n  \"fBlockID\": 34, \"instanceID\": 1,\n  \"fktID\": 1024, \"opType\": 12,\n  \"data\": [\n    1,\n "
     "   244,\n"
     "    1\n  ]\n}"},
    {"array in one line", R"([{"fBlockID":34,"instanceID":1,"fktID":1024,"opType":12,"data":[1,244,1]}])"},
    {"array over several lines",
     "[\n  {\"fBlockID\":34,\n   \"instanceID\":1,\"fktID\":1024,\"opType\":12,\"data\":[1,244,1]}\n]", "",
     "", 2},
    {"line of the JSON report",
     R"({"line":5,"message":"22.01.400.C","data":"01F401","function_block":"Amp","function":null,"items":[]})"},
    {"time in quotes", "\"Mon 12h\" 22.01.400.C 01F401", "\"Mon 12h\" ", R"("time":"Mon 12h",)"},
    {"time and direction in quotes", "\"1234\" \"in\" 22.01.400.C 01F401", "\"1234\" \"in\" ",
     R"("time":"1234","direction":"in",)"},
    {"direction in quotes behind a time", "12.5 \"in\" 0101 22.01.400.C 01F401", "12.5 \"in\" 0101 ",
     R"("time":"12.5","direction":"in","source":"0101",)"},
    {"direction in quotes alone", "\"\" \"in\" 22.01.400.C 01F401", "\"\" \"in\" ", R"("direction":"in",)"},
    {"quotes about a time that needs none", "\"12.5\" 22.01.400.C 01F401", "12.5 ", R"("time":"12.5",)"},
    {"table with a counter of four digits", "time,message,data\n1234,22.01.400.C,01F401", "\"1234\" ",
     R"("time":"1234",)", 2},
    {"object with a time in words", R"({"time":"\"a\" # b","message":"22.01.400.C","data":"01F401"})",
     "\"'a' # b\" ", R"("time":"\"a\" # b",)"},
    {"object with a direction like a device",
     R"({"time":"2024-06-03","direction":"0101","message":"22.01.400.C","data":"01F401"})",
     "2024-06-03 \"0101\" ", R"("time":"2024-06-03","direction":"0101",)"},
    {"object with an arrow alone", R"({"direction":"<-","message":"22.01.400.C","data":"01F401"})", "<- ",
     R"("direction":"<-",)"},
    {"object with an arrow and devices",
     R"({"direction":"<-","source":"0101","destination":"0400","message":"22.01.400.C","data":"01F401"})",
     "\"\" \"<-\" 0101 -> 0400 ", R"("direction":"<-","source":"0101","destination":"0400",)"},
    {"arrow in quotes and devices", "\"\" \"<-\" 0101 -> 0400 22.01.400.C 01F401",
     "\"\" \"<-\" 0101 -> 0400 ", R"("direction":"<-","source":"0101","destination":"0400",)"},
    {"byte order mark",
     "\xEF\xBB\xBF"
     "22.01.400.C 01 F4 01"},
};

constexpr const char* kText =
    "22.01.400.C (01 F4 01) Amp.Volume.Status\n"
    "  Speed = 50.0 km/h\n"
    "  Mode = On (0x01)\n";
constexpr const char* kJson =
    R"("message":"22.01.400.C","data":"01F401","function_block":"Amp","function":"Volume","operation":"Status",)"
    R"("items":[{"name":"Speed","type":"number","offset":0,"bytes":"01F4","text":"50.0","raw":500,"unit":"km/h"},)"
    R"j({"name":"Mode","type":"enumeration","offset":2,"bytes":"01","text":"On (0x01)","raw":1,"value":"On"}],)j"
    "\"errors\":[]}\n";

TEST(Styles, EachIsRecognised) {
    const ZMTCatalog& catalog = *Amp().Import().catalog;
    for (const StyleRow& row : kStyles) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(ReportOfCapture(catalog, row.capture, TextReport()), std::string(row.prefix) + kText);
        EXPECT_EQ(ReportOfCapture(catalog, row.capture, JsonReport()),
                  "{\"line\":" + std::to_string(row.line) + "," + row.origin + kJson);
    }
}

TEST(Styles, MayChangeFromLineToLine) {
    std::string capture;
    std::string expected;
    for (const StyleRow& row : kStyles) {
        if (std::string_view(row.capture).starts_with('\xEF')) {
            continue;  // a mark in the middle is none
        }
        capture.append(row.capture).append("\n\n# a note\n");
        expected.append(row.prefix).append(kText);
    }
    EXPECT_EQ(ReportOfCapture(*Amp().Import().catalog, capture, TextReport()), expected);
}

TEST(Styles, TextReportIsACaptureAgain) {
    const ZMTCatalog& catalog = *Amp().Import().catalog;
    for (const StyleRow& row : kStyles) {
        SCOPED_TRACE(row.what);
        const std::string report = ReportOfCapture(catalog, row.capture, TextReport());
        EXPECT_EQ(ReportOfCapture(catalog, report.substr(0, report.find('\n')), TextReport()), report);
        const std::string json = ReportOfCapture(catalog, row.capture, JsonReport());
        EXPECT_EQ(ReportOfCapture(catalog, json, TextReport()), report);
    }
}

struct ColumnsRow {
    const char* columns;
    const char* capture;
    const char* prefix;
};
constexpr ColumnsRow kColumnLists[] = {
    {"time,fblock,inst,fkt,optype,length,data", "12.5,22,01,400,C,3,01F401", "12.5 "},
    {"time,fblock,inst,fkt,optype,length,data", "12.5;22;01;400;C;3;01F401", "12.5 "},
    {"time,fblock,inst,fkt,optype,length,data", "12.5\t22\t01\t400\tC\t3\t01\tF4\t01", "12.5 "},
    {"-,-,direction,message,-,data", "1,bus,Rx,22.01.400.C,3,01 F4 01", "Rx "},
    {"-,fblock,function,operation,data", "x;Amp;Volume;Status;01F401", ""},
    {"time,fblock,inst,fkt,optype,data", "12.5;22;01;400;C;01,F4,,,,,01", "12.5 "},
    {"message,data", "22.01.400.C\t01;F4;01", ""},
};

TEST(Styles, TablesWithoutAHeaderHaveTheirColumnsFromAList) {
    for (const ColumnsRow& row : kColumnLists) {
        SCOPED_TRACE(row.capture);
        EXPECT_EQ(ReportOfCapture(*Amp().Import().catalog, row.capture, TextReport(), row.columns),
                  std::string(row.prefix) + kText);
    }
    EXPECT_FALSE(TableColumns::FromList(""));
    EXPECT_FALSE(TableColumns::FromList("time,fblock,inst,fkt,optype"));
    EXPECT_FALSE(TableColumns::FromList("fblock,inst,optype,data"));
}

/// What can't be read: the capture, the line and what is said of it.
struct BrokenRow {
    const char* capture;
    int line;
    const char* fault;
};
constexpr const char* kHeader = "fblock,inst,fkt,optype,length,data,source,telid\n";

constexpr BrokenRow kBroken[] = {
    {"hello", 1, "no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'hello'"},
    {"12.5 hello", 1,
     "no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'hello'"},
    {"12.5", 1, "no valid FktID, expected FBlockID.InstID.FktID.OPType"},
    {"Apm.01.Volume.Status 01", 1,
     "no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'Apm' (Amp?)"},
    {"Amp.01.Volme.Status 01", 1,
     "no valid FktID, expected FBlockID.InstID.FktID.OPType: unknown function 'Volme' (Volume?)"},
    {"Amp.01.Volume.Statu 01", 1,
     "no valid OPType, expected FBlockID.InstID.FktID.OPType: unknown operation 'Statu' (Status?)"},
    {"Amp.0x1FF.Volume.Status 01", 1, "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"22.01.400.C 01 F", 1, "half a data byte in 'F', expected two hexadecimal digits"},
    {"22.01.400.C 01,G4", 1, "no data byte 'G4', expected two hexadecimal digits"},
    {"22.01.400.C (01 F4", 1, "no closing parenthesis"},
    {"22.01.400.C (01) (02)", 1, "'(02)' behind the data, expected a comment"},
    {"22.01.400.C.0x4 01 F4 01", 1, "length 0x4, but 3 data bytes"},
    {"01 02 22.01.400.C 01", 1, "no valid InstID, expected FBlockID.InstID.FktID.OPType"},
    {"12345 0101 0102 0103 22.01.400.C", 1, "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"{\"fBlockID\":34,\"instanceID\":1,\"fktID\":1024,\"opType\":12,\"data\":[1,256]}", 1,
     "no valid 'data', expected bytes"},
    {"{\"fBlockID\":300,\"instanceID\":1,\"fktID\":1024,\"opType\":12,\"data\":[]}", 1,
     "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"{\"fBlockID\":-1,\"fktID\":1024,\"opType\":12,\"data\":[]}", 1,
     "no valid 'fBlockID', expected a number or a text"},
    {"{\"fktID\":1024,\"opType\":12,\"data\":[]}", 1,
     "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"{\"fBlockID\":34,\"sourceAddrHigh\":256}", 1, "no valid 'sourceAddrHigh', expected a byte"},
    {"{\"fBlockID\":34,}", 1,
     "no valid JSON, expected an object with fBlockID, instanceID, fktID, opType and data"},
    {"\n{\"fBlockID\":34,\n\"data\":[1]", 2, "the object does not end"},
    {"{\"fBlockID\":34,\"data\":\"01", 1, "the text has no closing quotation mark"},
    {"{\"data\":[1}", 1, "a bracket closes another one"},
    {"[\n{\"fBlockID\":34\n{\"fBlockID\":35}\n]", 2, "the object has no closing brace"},
    {"{ logger started", 1,
     "no valid JSON, expected an object with fBlockID, instanceID, fktID, opType and data"},
    {"{\"fBlockID\":34,\"data\":[50]", 1, "the object does not end"},
    {"{\"fBlockID\":34,\"data\":[", 1, "the object does not end"},
    {"{\"fBlockID\":34,\"data\":", 1, "the object does not end"},
    {"{\"message\":\"22.01.400.C\" \"data\":[1]}", 1,
     "no valid JSON, expected an object with fBlockID, instanceID, fktID, opType and data"},
    {"{\n\"fBlockID\":34,\n\"data\":[\n1,\n2\n3\n],\n\"opType\":1\n}", 1, "the object does not end"},
    {"[]\n]", 2, "no valid FBlockID, expected FBlockID.InstID.FktID.OPType"},
    {"fblock,inst,fkt,optype,length,data,source,telid\n22,01,400,C,4,01F401,,", 2,
     "length 4, but 3 data bytes"},
    {"fblock,inst,fkt,optype,length,data,source,telid\n22,01,400,C,,01F401,10000,", 2,
     "no valid source address '10000', expected up to four hexadecimal digits"},
    {"fblock,inst,fkt,optype,length,data,source,telid\n22,01,400,C,,01F401,,4", 2,
     "no valid telegram identifier '4', expected 0, 1, 2 or 3"},
    {"fblock,inst,fkt,optype,length,data,source,telid\n22,01,400,16,,01F401,,", 2,
     "no valid OPType, expected FBlockID.InstID.FktID.OPType"},
    {"fblock,inst,fkt,optype,length,data,source,telid\n22,01,400,C,01F401", 2,
     "5 values, but the table has 8 columns"},
    {"message,data,length\n22.01.400.C,01,F4,01,3", 2, "length F4, but 1 data byte"},
    {"message,data,direction\n22.01.400.C,01,Rx,01,3", 2, "5 values, but the table has 3 columns"},
    {"time;fblock;inst;fkt;optype;length;data\n;22;01;400;C;2;01F401", 2, "length 2, but 3 data bytes"},
    {"fblock,inst,fkt,optype\n22,01,400,C", 1,
     "no valid FBlockID, expected FBlockID.InstID.FktID.OPType: unknown function block 'fblock'"},
};

TEST(Styles, WhatCannotBeReadIsToldWithItsLineAndStopsNothing) {
    for (const BrokenRow& row : kBroken) {
        SCOPED_TRACE(row.capture);
        const std::string report = ReportOfCapture(
            *Amp().Import().catalog, std::string(row.capture) + "\n22.01.400.C 01F401\n", TextReport());
        const std::string told = "\n  error: line " + std::to_string(row.line) + ": " + row.fault + "\n";
        EXPECT_NE(report.find(told), std::string::npos) << report;
        EXPECT_TRUE(report.ends_with(kText)) << report;
    }
}

struct LostRow {
    const char* what;
    const char* capture;
    int messages;
    int unreadable;
};
constexpr LostRow kOpenObjects[] = {
    {"a stray brace", "{ logger started\n22.01.400.C 01F401\n22.01.400.C 01F401", 2, 1},
    {"no closing brace", "{\"message\":\"22.01.400.C\",\"data\":[1]\n22.01.400.C 01F401", 1, 1},
    {"cut behind a bracket",
     "{\"data\":[\n{\"message\":\"22.01.400.C\",\"data\":\"01F401\"}\n22.01.400.C 01F401", 2, 1},
    {"cut behind a colon, at the end", "{\"data\":\n{\"message\":\"22.01.400.C\",\n\"data\":\"01F401\"}\n", 1,
     1},
    {"cut behind a comma in a list",
     "{\"data\":[1,\n{\"message\":\"22.01.400.C\",\"data\":\"01F401\"},\n"
     "{\"message\":\"22.01.400.C\",\"data\":\"01F401\"}",
     2, 1},
    {"objects that begin in each other", "{\"a\":[\n{\"a\":[\n{\"a\":[\n22.01.400.C 01F401", 1, 3},
    {"the lines of a broken object are told with it",
     "{\n\"message\":\"22.01.400.C\",\n\"data\":[\n1,\n244\n1\n]\n}\n22.01.400.C 01F401", 1, 1},
    {"but not what stands behind it", "{\n\"data\":[\n1\n2\n]\n}\n22.01.400.C 01F401\n}\n", 1, 2},
    {"a comment with the mark of the table", "message;data\n; no row\n;22.01.400.C\n22.01.400.C;01F401", 1,
     0},
};

TEST(Styles, WhatIsBrokenTakesNothingElseWithIt) {
    for (const LostRow& row : kOpenObjects) {
        SCOPED_TRACE(row.what);
        const std::string report = ReportOfCapture(*Amp().Import().catalog, row.capture, TextReport());
        const auto count = [&](std::string_view text) {
            int found = 0;
            for (std::size_t at = report.find(text); at < report.size(); at = report.find(text, at + 1)) {
                ++found;
            }
            return found;
        };
        EXPECT_EQ(count(kText), row.messages) << report;
        EXPECT_EQ(count("  error: "), row.unreadable) << report;
    }
}

TEST(Styles, LongLineOfObjectsComesInPieces) {
    class Sink : public MessageSink {
      public:
        void TakeMessage(const CapturedMessage& message) override {
            text += std::to_string(message.line) + "=" + std::to_string(message.data.size()) + " ";
        }
        void TakeBroken(const CapturedMessage& /*message*/, std::string_view /*fault*/) override {}
        void TakeUnreadable(std::uint64_t line, std::string_view /*text*/, std::string_view fault) override {
            text += std::to_string(line) + "!" + std::string(fault) + " ";
        }
        std::string text;
    };
    const std::string line =
        R"([{"message":"22.01.400.C","data":"01F401"}, {"message":"22.01.400.C","data":[1,22]}])";
    for (std::size_t cut = 2; cut < line.size(); ++cut) {
        Sink sink;
        const AddressNames names(nullptr);
        CaptureReader reader(names, nullptr, sink);
        reader.TakeLine(line.substr(0, cut), true);
        ASSERT_TRUE(reader.WantsMore());
        reader.TakeMore(line.substr(cut, 1), true);
        reader.TakeMore(line.substr(cut + 1), false);
        reader.TakeLine("22.01.400.C 01", true);
        EXPECT_FALSE(reader.WantsMore());
        reader.TakeLine("22.01.400.C 01 02 03 04");
        reader.Finish();
        EXPECT_EQ(sink.text, "1=3 1=2 2!the line is too long 3=4 ") << cut;
    }
}

TEST(Styles, LinesAreReadAgainABoundedNumberOfTimes) {
    // Each line opens two levels: so the object of each ends behind 75 others.
    std::string capture;
    for (int i = 0; i < 1000; ++i) {
        capture += "{\"a\":[\n";
    }
    const std::string report =
        ReportOfCapture(*Amp().Import().catalog, capture + "22.01.400.C 01F401", TextReport());
    EXPECT_TRUE(report.ends_with(kText));
    EXPECT_EQ(std::ranges::count(report, '\n'), 2003);
}

/// The time that a table or an object has between two segments; 5 seconds are allowed.
struct UnitRow {
    const char* capture;
    bool isJoined;
};
constexpr UnitRow kUnits[] = {
    {"time,message,telid,data\n7,22.01.400.C,1,0001F4\n9,22.01.400.C,3,0101", true},
    {"time,message,telid,data\n7,22.01.400.C,1,0001F4\n20,22.01.400.C,3,0101", false},
    {"Time (ms),message,telid,data\n7,22.01.400.C,1,0001F4\n2007,22.01.400.C,3,0101", true},
    {"Time (ms),message,telid,data\n7,22.01.400.C,1,0001F4\n5008,22.01.400.C,3,0101", false},
    {"Timestamp [us],message,telid,data\n7,22.01.400.C,1,0001F4\n4000007,22.01.400.C,3,0101", true},
    {"Timestamp (s),message,telid,data\n7,22.01.400.C,1,0001F4\n13,22.01.400.C,3,0101", false},
    {"{\"timestamp\":1717416000000,\"message\":\"22.01.400.C\",\"telID\":1,\"data\":\"0001F4\"}\n"
     "{\"timestamp\":1717416004020,\"message\":\"22.01.400.C\",\"telID\":3,\"data\":\"0101\"}",
     true},
    {"{\"timeMs\":1000,\"message\":\"22.01.400.C\",\"telID\":1,\"data\":\"0001F4\"}\n"
     "{\"timeMs\":6001,\"message\":\"22.01.400.C\",\"telID\":3,\"data\":\"0101\"}",
     false},
    {"date,time,message,telid,data\n2024-06-03,23:59:59,22.01.400.C,1,0001F4\n"
     "2024-06-04,00:00:01,22.01.400.C,3,0101",
     true},
};

TEST(Styles, TimesHaveTheUnitOfTheirColumn) {
    for (const UnitRow& row : kUnits) {
        SCOPED_TRACE(row.capture);
        const std::string report = ReportOfCapture(*Amp().Import().catalog, row.capture, TextReport());
        EXPECT_EQ(report.find("Mode = On") != std::string::npos, row.isJoined) << report;
        EXPECT_EQ(report.find("within the time for it") != std::string::npos, !row.isJoined) << report;
    }
}

TEST(Styles, TableMayFollowAnother) {
    EXPECT_EQ(
        ReportOfCapture(*Amp().Import().catalog,
                        std::string(kHeader) + "22,01,400,C,3,01F401,,\ndata;message\n01F401;22.01.400.C\n",
                        TextReport()),
        std::string(kText) + kText);
}

}  // namespace
}  // namespace tarvex::test::styles_test
