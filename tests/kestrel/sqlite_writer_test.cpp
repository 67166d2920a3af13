/// The tables of a database written as SQLite.

#include <string>

#include <gtest/gtest.h>

#include "full_database.h"
#include "sqlite_file.h"
#include "support.h"

namespace {

struct TableCase {
    const char* query;
    const char* rows;
};

class SqliteTables : public FullDatabase {
  protected:
    SqliteTables() : file_(WriteAs("out.sqlite")) {}

    SqliteFile file_;
};

constexpr TableCase kColumns[] = {
    // name, type, whether NULL is forbidden, whether it is the primary key
    {"database", "'name' 'TEXT' 1 0\n"},
    {"attribute_definition",
     "'id' 'INTEGER' 0 1\n'object' 'TEXT' 1 0\n'name' 'TEXT' 1 0\n'type' 'TEXT' 1 0\n"
     "'minimum' 'REAL' 0 0\n'maximum' 'REAL' 0 0\n'default_value' '' 0 0\n"},
    {"attribute_choice", "'definition_id' 'INTEGER' 1 0\n'position' 'INTEGER' 1 0\n'name' 'TEXT' 1 0\n"},
    {"node", "'id' 'INTEGER' 0 1\n'name' 'TEXT' 1 0\n"},
    {"message",
     "'id' 'INTEGER' 0 1\n'identifier' 'INTEGER' 1 0\n'extended' 'INTEGER' 1 0\n'name' 'TEXT' 1 0\n"
     "'length' 'INTEGER' 1 0\n'node_id' 'INTEGER' 0 0\n"},
    {"signal",
     "'id' 'INTEGER' 0 1\n'message_id' 'INTEGER' 1 0\n'name' 'TEXT' 1 0\n'start_bit' 'INTEGER' 1 0\n"
     "'length' 'INTEGER' 1 0\n'byte_order' 'TEXT' 1 0\n'signed' 'INTEGER' 1 0\n"
     "'multiplexor' 'INTEGER' 1 0\n'multiplexer_value' 'INTEGER' 0 0\n"},
    {"value_description",
     "'signal_id' 'INTEGER' 1 0\n'position' 'INTEGER' 1 0\n'value' 'INTEGER' 1 0\n'text' 'TEXT' 1 0\n"},
    {"database_attribute", "'definition_id' 'INTEGER' 1 0\n'value' '' 0 0\n"},
    {"node_attribute", "'node_id' 'INTEGER' 1 0\n'definition_id' 'INTEGER' 1 0\n'value' '' 0 0\n"},
    {"message_attribute", "'message_id' 'INTEGER' 1 0\n'definition_id' 'INTEGER' 1 0\n'value' '' 0 0\n"},
};

TEST_F(SqliteTables, HaveTheirColumns) {
    for (const auto& [table, columns] : kColumns) {
        EXPECT_EQ(file_.Rows("SELECT name, type, \"notnull\", pk FROM pragma_table_info('" +
                             std::string(table) + "') ORDER BY cid"),
                  columns)
            << table;
    }
}

TEST_F(SqliteTables, AreAllThereAndNoOthers) {
    EXPECT_EQ(file_.Rows("SELECT name FROM sqlite_master WHERE type <> 'index' ORDER BY name"),
              "'attribute_choice'\n'attribute_definition'\n'database'\n'database_attribute'\n'message'\n"
              "'message_attribute'\n'node'\n'node_attribute'\n'signal'\n'signals'\n'value_description'\n");
}

TEST_F(SqliteTables, ReferToEachOther) {
    EXPECT_EQ(file_.Rows("SELECT m.name, f.\"from\", f.\"table\" FROM sqlite_master m, "
                         "pragma_foreign_key_list(m.name) f WHERE m.type = 'table' ORDER BY 1, 2"),
              "'attribute_choice' 'definition_id' 'attribute_definition'\n"
              "'database_attribute' 'definition_id' 'attribute_definition'\n"
              "'message' 'node_id' 'node'\n"
              "'message_attribute' 'definition_id' 'attribute_definition'\n"
              "'message_attribute' 'message_id' 'message'\n"
              "'node_attribute' 'definition_id' 'attribute_definition'\n"
              "'node_attribute' 'node_id' 'node'\n"
              "'signal' 'message_id' 'message'\n"
              "'value_description' 'signal_id' 'signal'\n");
    EXPECT_EQ(file_.Rows("PRAGMA foreign_key_check"), "");
}

TEST_F(SqliteTables, HaveFiveIndexes) {
    EXPECT_EQ(file_.Rows("SELECT m.tbl_name, i.name FROM sqlite_master m, pragma_index_info(m.name) i "
                         "WHERE m.type = 'index' ORDER BY 1, 2"),
              "'message' 'identifier'\n'message' 'name'\n'signal' 'message_id'\n'signal' 'name'\n"
              "'value_description' 'signal_id'\n");
}

TEST_F(SqliteTables, AreMarkedAndSound) {
    EXPECT_EQ(file_.Rows("PRAGMA application_id"), "1448038990\n");  // "VORN": 0x564F524E
    EXPECT_EQ(file_.Rows("PRAGMA user_version"), "1\n");
    EXPECT_EQ(file_.Rows("PRAGMA integrity_check"), "'ok'\n");
}

constexpr TableCase kContents[] = {
    {"SELECT * FROM database", "'cabin'\n"},
    {"SELECT * FROM attribute_definition ORDER BY id",
     "1 'database' 'Author' 'string' NULL NULL ''\n"
     "2 'database' 'Revision' 'integer' 0.0 9.00719925474099e+15 1\n"
     "3 'database' 'Stage' 'enumeration' NULL NULL 'Draft'\n"
     "4 'node' 'Maker' 'string' NULL NULL 'nobody'\n"
     "5 'node' 'Slot' 'integer' -1.0 65535.0 65535\n"
     "6 'node' 'Power' 'enumeration' NULL NULL ''\n"
     "7 'message' 'Topic' 'string' NULL NULL 'General'\n"
     "8 'message' 'Period' 'integer' 0.5 2.25 1.75\n"
     "9 'message' 'Kind' 'enumeration' NULL NULL 'None'\n"},
    {"SELECT * FROM attribute_choice ORDER BY rowid", "3 0 'Draft'\n3 1 'Final'\n9 0 'Only'\n"},
    {"SELECT * FROM node ORDER BY id", "1 'Radio'\n2 'Bare'\n3 'Größe €'\n"},
    {"SELECT * FROM message ORDER BY id",
     "1 2236420 1 'Radio_Volume_Status' 65535 1\n"
     "2 2147483647 0 'Plain' 0 NULL\n"
     "3 2147483647 0 'Plain' 1 3\n"},
    {"SELECT * FROM signal ORDER BY id",
     "1 1 'Level' 7 8 'big_endian' 0 0 NULL\n"
     "2 1 'PosX' 0 16 'little_endian' 0 1 NULL\n"
     "3 1 'Track_M1' 65535 1 'big_endian' 1 0 4294967295\n"
     "4 3 'Ä' 0 8 'little_endian' 1 0 NULL\n"},
    {"SELECT * FROM value_description ORDER BY rowid",
     "1 0 1 'Loud'\n1 1 0 'Off'\n1 2 4294967295 'Any'\n1 3 1 'Loud again'\n3 0 0 'Zero'\n"},
    {"SELECT * FROM database_attribute ORDER BY rowid", "3 'Final'\n1 'Ada \"Gräfin\" L.\n'\n2 100000\n"},
    {"SELECT * FROM node_attribute ORDER BY rowid", "1 5 -1\n1 4 'Works'\n1 6 ''\n3 4 ''\n"},
    {"SELECT * FROM message_attribute ORDER BY rowid", "1 7 'Sound'\n1 9 'Only'\n1 8 0.75\n2 9 'None'\n"},
};

TEST_F(SqliteTables, HoldEverythingWithIdsAndPositionsInTheOrderOfCreation) {
    for (const auto& [query, rows] : kContents) {
        EXPECT_EQ(file_.Rows(query), rows) << query;
    }
}

TEST_F(SqliteTables, AreTheSameBytesUnderEveryExtensionAndEachTime) {
    const std::string first = ReadFile(directory_ / "out.sqlite");
    for (const char* name : {"again.sqlite", "out.sqlite3", "out.db", "out.DB"}) {
        EXPECT_EQ(ReadFile(WriteAs(name)), first) << name;
    }
}

TEST_F(SqliteTables, AreAloneInTheDirectory) {
    EXPECT_EQ(directory_.Names(), std::vector<std::string>{"out.sqlite"});
}

class SqliteWriter : public DatabaseTest {
  protected:
    std::string Rows(const std::string& query) {
        const std::string path = directory_ / "out.db";
        EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelOk);
        return SqliteFile(path).Rows(query);
    }
};

TEST_F(SqliteWriter, EmptyDatabaseHasEmptyTables) {
    EXPECT_EQ(Rows("SELECT name FROM database"), "'cabin'\n");
    for (const auto& [table, columns] : kColumns) {
        if (std::string(table) == "database") {
            continue;
        }
        EXPECT_EQ(Rows("SELECT count(*) FROM " + std::string(table)), "0\n") << table;
    }
}

TEST_F(SqliteWriter, NamesCutWithinACharacterLoseItsRest) {
    const char* cut = "123456789 123456789 123456789 1ä";  // 33 bytes
    DefineInteger(AttrObject::Node, cut, 0, 1, 0);
    AddNode(cut);
    AddSignal(AddMessage(1, cut), cut).value_descriptions = Describe(0, cut);
    for (const char* query :
         {"SELECT name FROM attribute_definition", "SELECT name FROM node", "SELECT name FROM message",
          "SELECT name FROM signal", "SELECT text FROM value_description"}) {
        EXPECT_EQ(Rows(query), "'123456789 123456789 123456789 1'\n") << query;
    }
}

TEST_F(SqliteWriter, NameOf32BytesIsWrittenWhole) {
    AddNode("123456789 123456789 123456789 ä");
    EXPECT_EQ(Rows("SELECT name FROM node"), "'123456789 123456789 123456789 ä'\n");
}

struct StoredNumberCase {
    double number;
    const char* value;
};

constexpr StoredNumberCase kStoredNumbers[] = {
    {0, "'integer' 0\n"},
    {-5, "'integer' -5\n"},
    {0.25, "'real' 0.25\n"},
    {4294967295, "'integer' 4294967295\n"},
    {9007199254740992, "'integer' 9007199254740992\n"},  // 2^53: the last before whole numbers are skipped
    {1e30, "'real' 1.0e+30\n"},
};

TEST_F(SqliteWriter, WholeNumbersAreIntegers) {
    DefineInteger(AttrObject::Database, "N", 0, 1, 0);
    for (const auto& [number, value] : kStoredNumbers) {
        manager_.SetAttrValue(key_, "N", Number(number));
        EXPECT_EQ(Rows("SELECT typeof(value), value FROM database_attribute"), value) << number;
    }
}

TEST_F(SqliteWriter, TextsStayTextsWhateverTheyLookLike) {
    DefineString(AttrObject::Database, "S", "7");
    DefineEnumeration(AttrObject::Database, "E", "1\n2", "1");
    manager_.SetAttrValue(key_, "S", Text("12"));
    manager_.SetAttrValue(key_, "E", Number(1));
    AddNode("3");
    EXPECT_EQ(Rows("SELECT value FROM database_attribute ORDER BY rowid"), "'12'\n'2'\n");
    EXPECT_EQ(Rows("SELECT default_value FROM attribute_definition ORDER BY id"), "'7'\n'1'\n");
    EXPECT_EQ(Rows("SELECT name FROM node"), "'3'\n");
}

TEST_F(SqliteWriter, QuotesInTextsAreOnlyText) {
    AddNode("'); DROP TABLE node; --");
    EXPECT_EQ(Rows("SELECT name FROM node"), "''); DROP TABLE node; --'\n");
}

TEST_F(SqliteWriter, SignalsAreNumberedThroughAllMessages) {
    for (const char* name : {"A", "B"}) {
        msgblk& message = AddMessage(1, name);
        AddSignal(message, "S1");
        AddSignal(message, "S2");
    }
    EXPECT_EQ(Rows("SELECT id, message_id, name FROM signal ORDER BY id"),
              "1 1 'S1'\n2 1 'S2'\n3 2 'S1'\n4 2 'S2'\n");
}

}  // namespace
