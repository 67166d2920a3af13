/// Databases as comma-separated values, and the same columns as a view in SQLite.

#include <string>

#include <gtest/gtest.h>

#include "kestrel/reader.h"
#include "kestrel/writer.h"
#include "sqlite_file.h"
#include "support.h"

namespace {

constexpr const char* kHead = R"({"format": "Vorn", "version": 1, "database": "d", "attributes": {},
"attribute_definitions": [
  {"object": "message", "name": "Function", "type": "string", "default": ""},
  {"object": "message", "name": "FBlock", "type": "string", "default": "General"},
  {"object": "node", "name": "OpType", "type": "string", "default": "of a node"},
  {"object": "message", "name": "OpType", "type": "enumeration", "values": ["Set", "Get"], "default": "Get"}],
"nodes": [{"name": "Amp, rear", "attributes": {}}], "messages": [)";
constexpr const char* kHeader =
    "address,fblock,function,optype,message,identifier,length,layout,node,signal,start_bit,bits,byte_order,"
    "signed,multiplexing,factor,minimum,maximum,step,unit,values\r\n";

std::string Message(const std::string& identity, const std::string& node, const std::string& attributes,
                    const std::string& signals) {
    return R"({"identifier": )" + identity + R"(, "name": "M", "length": 2, "node": )" + node +
           R"(, "attributes": {)" + attributes + R"(}, "signals": [)" + signals + "]}";
}

std::string Signal(const std::string& name, const std::string& more) {
    return R"({"name": ")" + name +
           R"(", "start_bit": 7, "length": 8, "byte_order": "big_endian", "signed": true)" + more + "}";
}

struct RowsCase {
    const char* what;
    std::string message;
    const char* rows;
    /// From the view, as the tests of the tables show rows.
    const char* viewed;
};

const RowsCase kRows[] = {
    {"no signals, no node, the defaults of attributes",
     Message("2244652, \"extended\": true", "null", "", ""),
     "22.402.C,General,,Get,M,0x22402C,2,,,,,,,,,,,,,,\r\n",
     "'22.402.C' 'General' '' 'Get' 'M' '0x22402C' 2 NULL NULL NULL NULL NULL NULL NULL '' NULL NULL NULL "
     "NULL NULL "
     "NULL\n"},
    {"a signal and nothing that is known of it, an identifier that is made of no address",
     Message("16777216, \"extended\": false", "\"Amp, rear\"",
             R"("FBlock": "A", "Function": "F", "OpType": "Set")", Signal("S", "")),
     ",A,F,Set,M,0x1000000,2,,\"Amp, rear\",S,7,8,big_endian,1,,,,,,,\r\n",
     "'' 'A' 'F' 'Set' 'M' '0x1000000' 2 NULL 'Amp, rear' 'S' 7 8 'big_endian' 1 '' NULL NULL NULL NULL NULL "
     "NULL\n"},
    {"everything, and texts with what ends cells",
     Message("16, \"extended\": false", "null", R"("FBlock": "say \"A\"\nB", "Function": " =1+1 ")",
             Signal("S;", R"(, "values": [[7, "Off"], [1, "On, loud"]], "multiplexor": true, "factor": 0.1,
                            "minimum": -12.5, "maximum": 1e20, "step": 0.5, "unit": "km/h")") +
                 ", " + Signal("T", R"(, "multiplexer_value": 4294967295)") + ", " +
                 Signal("U", R"(, "multiplexor": true, "multiplexer_value": 3, "factor": 1)")),
     "00.001.0,\"say \"\"A\"\"\nB\", =1+1 ,Get,M,0x10,2,,,S;,7,8,big_endian,1,M,0.1,-12.5,1e+20,0.5,km/h,"
     "\"7=Off; 1=On, loud\"\r\n"
     "00.001.0,\"say \"\"A\"\"\nB\", =1+1 ,Get,M,0x10,2,,,T,7,8,big_endian,1,m4294967295,,,,,,\r\n"
     "00.001.0,\"say \"\"A\"\"\nB\", =1+1 ,Get,M,0x10,2,,,U,7,8,big_endian,1,m3M,1,,,,,\r\n",
     "'00.001.0' 'say \"A\"\nB' ' =1+1 ' 'Get' 'M' '0x10' 2 NULL NULL 'S;' 7 8 'big_endian' 1 'M' 0.1 -12.5 "
     "1.0e+20 "
     "0.5 'km/h' '7=Off; 1=On, loud'\n"
     "'00.001.0' 'say \"A\"\nB' ' =1+1 ' 'Get' 'M' '0x10' 2 NULL NULL 'T' 7 8 'big_endian' 1 'm4294967295' "
     "NULL "
     "NULL NULL NULL NULL NULL\n"
     "'00.001.0' 'say \"A\"\nB' ' =1+1 ' 'Get' 'M' '0x10' 2 NULL NULL 'U' 7 8 'big_endian' 1 'm3M' 1.0 NULL "
     "NULL "
     "NULL NULL NULL\n"},
};

class CsvWriter : public testing::Test {
  protected:
    /// The database with these messages in another format.
    std::string WriteAs(const std::string& name, const std::string& messages) {
        MakeFile(directory_ / "in.vorn", kHead + messages + "]}\n");
        std::string path = directory_ / name;
        EXPECT_EQ(kestrel::WriteDatabase(*kestrel::ReadDatabase(directory_ / "in.vorn"), path.c_str()),
                  kKestrelOk);
        return path;
    }

    TemporaryDirectory directory_;
};

TEST_F(CsvWriter, ARowForEachSignal) {
    std::string messages;
    std::string csv = kHeader;
    std::string viewed;
    for (const auto& [what, message, rows, viewedRows] : kRows) {
        EXPECT_EQ(ReadFile(WriteAs("out.csv", message)), std::string(kHeader) + rows) << what;
        messages += (messages.empty() ? "" : ",\n") + message;
        csv += rows;
        viewed += viewedRows;
    }
    EXPECT_EQ(ReadFile(WriteAs("out.csv", messages)), csv);
    EXPECT_EQ(SqliteFile(WriteAs("out.db", messages)).Rows("SELECT * FROM signals"), viewed);
}

TEST_F(CsvWriter, ViewOfADatabaseWithoutScalingsHasTheSameColumns) {
    SqliteFile plain(WriteAs("plain.db", kRows[1].message));
    SqliteFile scaled(WriteAs("scaled.db", kRows[2].message));
    const std::string query =
        "SELECT group_concat(name) || char(13) || char(10) FROM pragma_table_info('signals')";
    EXPECT_EQ(plain.Rows(query), "'" + std::string(kHeader) + "'\n");
    EXPECT_EQ(scaled.Rows(query), "'" + std::string(kHeader) + "'\n");
    EXPECT_EQ(plain.Rows("SELECT * FROM signals"), kRows[1].viewed);
}

TEST_F(CsvWriter, LongTextsOfAttributesAreCutSoThatRowsStaySmall) {
    const std::string text(199, 'a');
    const std::string csv = ReadFile(WriteAs(
        "out.csv", Message("1, \"extended\": false", "null", R"("Function": ")" + text + "\xC3\xBC\"", "")));
    EXPECT_EQ(csv, kHeader + ("00.000.1,General," + text) + ",Get,M,0x1,2,,,,,,,,,,,,,,\r\n");
}

TEST_F(CsvWriter, AnEmptyDatabaseIsAHeader) {
    EXPECT_EQ(ReadFile(WriteAs("out.csv", "")), kHeader);
}

}  // namespace
