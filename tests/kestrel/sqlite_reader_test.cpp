/// SQLite files read back, and SQLite files with one fault each.

#include <cstddef>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "full_database.h"
#include "sqlite_file.h"
#include "support.h"

namespace {

namespace fs = std::filesystem;

class SqliteReader : public FullDatabase {
  protected:
    /// What is wrong with the full database's file after a statement.
    std::string ErrorAfter(const char* sql) {
        const std::string path = WriteAs("bad.sqlite");
        SqliteFile(path).Run("DROP VIEW signals; " + std::string(sql));  // which needs its columns
        return ErrorOf(path);
    }
};

TEST_F(SqliteReader, EverythingIsReadBack) {
    for (const char* name : {"out.sqlite", "out.sqlite3", "out.DB"}) {
        EXPECT_EQ(ReadAsVorn(WriteAs(name)), kFullVorn) << name;
    }
}

TEST_F(SqliteReader, SqliteGoesToSqliteByteForByte) {
    const std::string copy = directory_ / "copy.db";
    const std::string path = WriteAs("out.db");
    ASSERT_EQ(kestrel::WriteDatabase(*kestrel::ReadDatabase(path), copy.c_str()), kKestrelOk);
    EXPECT_EQ(ReadFile(copy), ReadFile(path));
}

TEST_F(SqliteReader, EmptyDatabaseIsReadBack) {
    manager_.CreateDatabase("", &key_, nullptr);
    const std::string vorn = ReadFile(WriteAs("out.vorn"));
    EXPECT_EQ(ReadAsVorn(WriteAs("out.sqlite")), vorn);
}

TEST_F(SqliteReader, ReadingChangesNothing) {
    const std::string path = WriteAs("out.sqlite");
    const std::string before = ReadFile(path);
    fs::permissions(path, fs::perms::owner_read);
    EXPECT_EQ(ErrorOf(path), "");
    EXPECT_EQ(ReadFile(path), before);
    EXPECT_EQ(directory_.Names(), std::vector<std::string>{"out.sqlite"});
}

TEST_F(SqliteReader, PathsThatLookLikeAddressesOrSwitchesAreFiles) {
    const fs::path before = fs::current_path();
    WriteAs("file:a?mode=memory.db");
    WriteAs(":memory:.db");
    fs::current_path(directory_.Path());
    const std::string address = ErrorOf("file:a?mode=memory.db");
    const std::string memory = ErrorOf(":memory:.db");
    fs::current_path(before);
    EXPECT_EQ(address, "");
    EXPECT_EQ(memory, "");
}

constexpr const char* kHarmless[] = {
    // Ids and positions with gaps, rows and columns in another order, and what another program adds.
    "UPDATE signal SET id = id * 10 + 1000; UPDATE value_description SET signal_id = signal_id * 10 + 1000",
    "UPDATE node SET id = id + 100; UPDATE node_attribute SET node_id = node_id + 100;"
    "UPDATE message SET node_id = node_id + 100",
    "UPDATE value_description SET position = position * 7 - 3",
    "CREATE TABLE t AS SELECT * FROM value_description ORDER BY position DESC; DELETE FROM value_description;"
    "INSERT INTO value_description SELECT * FROM t; DROP TABLE t",
    "ALTER TABLE node RENAME TO old; CREATE TABLE node (comment, name TEXT, id INTEGER PRIMARY KEY);"
    "INSERT INTO node (id, name) SELECT id, name FROM old ORDER BY id DESC; DROP TABLE old",
    "DROP INDEX message_name; DROP INDEX value_description_signal_id; CREATE INDEX more ON node(name)",
    "CREATE TABLE notes (text); INSERT INTO notes VALUES ('hello')",
    "CREATE TABLE notes (checksum UNIQUE, recheck DEFAULT 1); CREATE INDEX noted ON notes(recheck)",
    "CREATE VIEW names AS SELECT name FROM node",
    "CREATE TRIGGER t AFTER INSERT ON node BEGIN DELETE FROM signal; END",
    "PRAGMA journal_mode = WAL; VACUUM; PRAGMA journal_mode = DELETE",
    "PRAGMA page_size = 512; VACUUM",
    "UPDATE signal SET multiplexor = 0 WHERE multiplexor = 0",
};

TEST_F(SqliteReader, WhatMakesNoDifferenceIsRead) {
    for (const char* sql : kHarmless) {
        const std::string path = WriteAs("changed.sqlite");
        SqliteFile(path).Run(sql);
        EXPECT_EQ(ErrorOf(path), "") << sql;
        if (ErrorOf(path).empty()) {
            EXPECT_EQ(ReadAsVorn(path), kFullVorn) << sql;
        }
    }
}

struct DamageCase {
    const char* sql;
    const char* error;
};

// clang-format off
constexpr DamageCase kDamages[] = {
    {"PRAGMA application_id = 0", "the file holds no bus database"},
    {"PRAGMA application_id = -1", "the file holds no bus database"},
    {"PRAGMA user_version = 0", "version 0 of the tables is not known"},
    {"PRAGMA user_version = 2", "version 2 of the tables is not known"},

    {"DROP TABLE database", "table database is missing"},
    {"DROP TABLE attribute_definition", "table attribute_definition is missing"},
    {"DROP TABLE attribute_choice", "table attribute_choice is missing"},
    {"DROP TABLE node", "table node is missing"},
    {"DROP TABLE message", "table message is missing"},
    {"DROP TABLE signal", "table signal is missing"},
    {"DROP TABLE value_description", "table value_description is missing"},
    {"DROP TABLE database_attribute", "table database_attribute is missing"},
    {"DROP TABLE node_attribute", "table node_attribute is missing"},
    {"DROP TABLE message_attribute", "table message_attribute is missing"},
    {"ALTER TABLE signal DROP COLUMN multiplexer_value", "table signal: no such column: multiplexer_value"},
    {"ALTER TABLE node_attribute RENAME COLUMN value TO val", "table node_attribute: no such column: value"},
    {"ALTER TABLE value_description DROP COLUMN position", "table value_description: no such column: position"},

    {"DROP TABLE node; CREATE VIEW node AS SELECT 1 AS id, 'Radio' AS name", "table node is no stored table"},
    {"DROP TABLE node; CREATE VIRTUAL TABLE node USING fts5(id, name)", "table node is no stored table"},

    {"UPDATE database SET name = x'00'", "table database, row 1: name is no text"},
    {"UPDATE database SET name = 'a' || char(0)", "table database, row 1: the database's name has a zero character"},

    {"UPDATE attribute_definition SET object = 'car' WHERE id = 2", "table attribute_definition, row 2: 'car' is no kind of object"},
    {"UPDATE attribute_definition SET object = x'00' WHERE id = 2", "table attribute_definition, row 2: object is no text"},
    {"UPDATE attribute_definition SET name = x'00' WHERE id = 1", "table attribute_definition, row 1: name is no text"},
    {"UPDATE attribute_definition SET type = x'00' WHERE id = 1", "table attribute_definition, row 1: type is no text"},
    {"UPDATE attribute_definition SET type = 'float' WHERE id = 1", "table attribute_definition, row 1: 'float' is no type of attribute"},
    {"UPDATE attribute_definition SET minimum = NULL WHERE id = 8", "table attribute_definition, row 8: minimum is no number"},
    {"UPDATE attribute_definition SET maximum = 'a lot' WHERE id = 8", "table attribute_definition, row 8: maximum is no number"},
    {"UPDATE attribute_definition SET default_value = NULL WHERE id = 8", "table attribute_definition, row 8: default_value is no number"},
    {"UPDATE attribute_definition SET default_value = '1' WHERE id = 8", "table attribute_definition, row 8: default_value is no number"},
    {"UPDATE attribute_definition SET default_value = 1 WHERE id = 7", "table attribute_definition, row 7: default_value is no text"},
    {"UPDATE attribute_definition SET default_value = NULL WHERE id = 9", "table attribute_definition, row 9: default_value is no text"},
    {"UPDATE attribute_definition SET default_value = 'a' || char(0) WHERE id = 7",
     "table attribute_definition, row 7: a text has a zero character"},
    {"UPDATE attribute_definition SET name = 'a' || char(0) || 'b' WHERE id = 1",
     "table attribute_definition, row 1: a name has a zero character"},
    {"UPDATE attribute_definition SET name = '123456789 123456789 123456789 1ä' WHERE id = 1",
     "table attribute_definition, row 1: the name '123456789 123456789 123456789 1ä' is longer than 32 bytes"},
    {"UPDATE attribute_definition SET name = 'Maker' WHERE id = 5",
     "table attribute_definition, row 5: the attribute 'Maker' is defined twice"},

    {"UPDATE attribute_choice SET definition_id = 'x' WHERE rowid = 2", "table attribute_choice, row 3: definition_id is no id"},
    {"UPDATE attribute_choice SET definition_id = 10 WHERE rowid = 2", "table attribute_choice: there is no definition 10"},
    {"UPDATE attribute_choice SET name = x'00' WHERE rowid = 2", "table attribute_choice, row 2: name is no text"},
    {"UPDATE attribute_choice SET name = '' WHERE rowid = 3",
     "table attribute_definition, row 9: an enumeration has one value without a name"},
    {"UPDATE attribute_choice SET name = 'a' || char(10) || 'b' WHERE rowid = 3",
     "table attribute_definition, row 9: the name of a value has a line feed"},
    {"UPDATE attribute_choice SET name = 'a' || char(0) WHERE rowid = 3",
     "table attribute_definition, row 9: a text has a zero character"},

    {"UPDATE node SET name = x'00' WHERE id = 2", "table node, row 2: name is no text"},
    {"UPDATE node SET name = '123456789 123456789 123456789 123' WHERE id = 3",
     "table node, row 3: the name '123456789 123456789 123456789 123' is longer than 32 bytes"},
    {"UPDATE node SET name = char(0) WHERE id = 3", "table node, row 3: a name has a zero character"},

    {"UPDATE message SET identifier = -1 WHERE id = 2", "table message, row 2: identifier is no whole number from 0 to 4294967295"},
    {"UPDATE message SET identifier = 4294967296 WHERE id = 2", "table message, row 2: identifier is no whole number from 0 to 4294967295"},
    {"UPDATE message SET identifier = 1.5 WHERE id = 2", "table message, row 2: identifier is no whole number from 0 to 4294967295"},
    {"UPDATE message SET identifier = 'x' WHERE id = 2", "table message, row 2: identifier is no whole number from 0 to 4294967295"},
    {"UPDATE message SET identifier = 2147483648 WHERE id = 2", "table message, row 2: the identifier is out of range"},
    {"UPDATE message SET extended = 2 WHERE id = 1", "table message, row 1: extended is no 0 or 1"},
    {"UPDATE message SET extended = -1 WHERE id = 1", "table message, row 1: extended is no 0 or 1"},
    {"UPDATE message SET extended = 'yes' WHERE id = 1", "table message, row 1: extended is no 0 or 1"},
    {"UPDATE message SET name = x'00' WHERE id = 1", "table message, row 1: name is no text"},
    {"UPDATE message SET name = '123456789 123456789 123456789 123' WHERE id = 1",
     "table message, row 1: the name '123456789 123456789 123456789 123' is longer than 32 bytes"},
    {"UPDATE message SET length = 65536 WHERE id = 3", "table message, row 3: length is no whole number from 0 to 65535"},
    {"UPDATE message SET length = -1 WHERE id = 3", "table message, row 3: length is no whole number from 0 to 65535"},
    {"UPDATE message SET node_id = 4 WHERE id = 3", "table message, row 3: node_id is no id of another table's row"},
    {"UPDATE message SET node_id = 'Radio' WHERE id = 3", "table message, row 3: node_id is no id"},

    {"UPDATE signal SET message_id = 99 WHERE id = 4", "table signal, row 4: message_id is no id of another table's row"},
    {"UPDATE signal SET message_id = 'x' WHERE id = 4", "table signal, row 4: message_id is no id"},
    {"UPDATE signal SET name = x'00' WHERE id = 2", "table signal, row 2: name is no text"},
    {"UPDATE signal SET name = '123456789 123456789 123456789 123' WHERE id = 2",
     "table signal, row 2: the name '123456789 123456789 123456789 123' is longer than 32 bytes"},
    {"UPDATE signal SET start_bit = 65536 WHERE id = 3", "table signal, row 3: start_bit is no whole number from 0 to 65535"},
    {"UPDATE signal SET start_bit = -1 WHERE id = 3", "table signal, row 3: start_bit is no whole number from 0 to 65535"},
    {"UPDATE signal SET length = 'x' WHERE id = 3", "table signal, row 3: length is no whole number from 0 to 65535"},
    {"UPDATE signal SET byte_order = 'middle_endian' WHERE id = 1", "table signal, row 1: 'middle_endian' is no byte order"},
    {"UPDATE signal SET byte_order = '' WHERE id = 1", "table signal, row 1: '' is no byte order"},
    {"UPDATE signal SET byte_order = x'00' WHERE id = 1", "table signal, row 1: byte_order is no text"},
    {"UPDATE signal SET signed = 'x' WHERE id = 1", "table signal, row 1: signed is no 0 or 1"},
    {"UPDATE signal SET multiplexor = -1 WHERE id = 1", "table signal, row 1: multiplexor is no 0 or 1"},
    {"UPDATE signal SET multiplexer_value = -1 WHERE id = 3",
     "table signal, row 3: multiplexer_value is no whole number from 0 to 4294967295"},
    {"UPDATE signal SET multiplexer_value = 4294967296 WHERE id = 3",
     "table signal, row 3: multiplexer_value is no whole number from 0 to 4294967295"},

    {"UPDATE value_description SET signal_id = 99 WHERE rowid = 5",
     "table value_description, row 5: signal_id is no id of another table's row"},
    {"UPDATE value_description SET value = -1 WHERE rowid = 3",
     "table value_description, row 3: value is no whole number from 0 to 4294967295"},
    {"UPDATE value_description SET value = 4294967296 WHERE rowid = 3",
     "table value_description, row 3: value is no whole number from 0 to 4294967295"},
    {"UPDATE value_description SET text = x'00' WHERE rowid = 1", "table value_description, row 1: text is no text"},
    {"UPDATE value_description SET text = '123456789 123456789 123456789 1ä' WHERE rowid = 1",
     "table value_description, row 1: the name '123456789 123456789 123456789 1ä' is longer than 32 bytes"},

    {"UPDATE database_attribute SET definition_id = 99 WHERE rowid = 1",
     "table database_attribute, row 1: definition_id is no id of attribute_definition"},
    {"UPDATE database_attribute SET definition_id = 'x' WHERE rowid = 1",
     "table database_attribute, row 1: definition_id is no id"},
    {"UPDATE database_attribute SET definition_id = 4 WHERE rowid = 1",
     "table database_attribute, row 1: the attribute belongs to another kind of object"},
    {"UPDATE database_attribute SET value = NULL WHERE rowid = 3", "table database_attribute, row 3: value is no number"},
    {"UPDATE database_attribute SET value = 9e999 WHERE rowid = 3", "table database_attribute, row 3: value is no finite number"},
    {"UPDATE attribute_definition SET maximum = 9e999 WHERE id = 2", "table attribute_definition, row 2: maximum is no finite number"},
    {"UPDATE attribute_definition SET minimum = -9e999 WHERE id = 2", "table attribute_definition, row 2: minimum is no finite number"},
    {"UPDATE attribute_definition SET default_value = 9e999 WHERE id = 2",
     "table attribute_definition, row 2: default_value is no finite number"},
    {"UPDATE database_attribute SET value = x'00' WHERE rowid = 3", "table database_attribute, row 3: value is no number"},
    {"UPDATE database_attribute SET value = '1' WHERE rowid = 3",
     "table database_attribute, row 3: the attribute 'Revision' is a number"},
    {"UPDATE database_attribute SET value = 1 WHERE rowid = 1",
     "table database_attribute, row 1: the attribute 'Stage' is no number"},
    {"UPDATE database_attribute SET value = 'Ready' WHERE rowid = 1",
     "table database_attribute, row 1: the attribute 'Stage' has no value 'Ready'"},
    {"UPDATE database_attribute SET value = 'a' || char(0) WHERE rowid = 2",
     "table database_attribute, row 2: a text has a zero character"},
    {"UPDATE node_attribute SET node_id = 99 WHERE rowid = 4",
     "table node_attribute, row 4: node_id is no id of another table's row"},
    {"UPDATE node_attribute SET definition_id = 7 WHERE rowid = 2",
     "table node_attribute, row 2: the attribute belongs to another kind of object"},
    {"UPDATE message_attribute SET message_id = 99 WHERE rowid = 2",
     "table message_attribute, row 2: message_id is no id of another table's row"},
    {"UPDATE message_attribute SET definition_id = 99 WHERE rowid = 2",
     "table message_attribute, row 2: definition_id is no id of attribute_definition"},
    {"UPDATE message_attribute SET value = 'Many' WHERE rowid = 4",
     "table message_attribute, row 4: the attribute 'Kind' has no value 'Many'"},
};
// clang-format on

TEST_F(SqliteReader, EveryFaultIsFoundWithItsTableAndRow) {
    for (const auto& [sql, error] : kDamages) {
        EXPECT_EQ(ErrorAfter(sql), error) << sql;
    }
}

/// The text of a table, or of what only seems to be one, in place of that of an empty table.
std::string TableWith(const std::string& sql) {
    return "CREATE TABLE t (a); INSERT INTO t VALUES (1); PRAGMA writable_schema = ON;"
           "UPDATE sqlite_master SET sql = '" +
           sql + "' WHERE name = 't'";
}

/// Looks for a text of 8 MB at every place of one of 16 MB.
const std::string kEndless = "instr(hex(zeroblob(8000000)), hex(zeroblob(4000000)) || a)";

struct AttackCase {
    std::string sql;
    const char* error;
};

const AttackCase kAttacks[] = {
    {TableWith("CREATE TABLE t (a, b NOT NULL AS (" + kEndless + "))"), "table t has a generated column"},
    {TableWith("CREATE TABLE t (a, b AS (" + kEndless + ") STORED)"), "table t has a generated column"},
    {"ALTER TABLE node RENAME COLUMN name TO a; ALTER TABLE node ADD COLUMN name AS (" + kEndless + ")",
     "table node has a generated column"},
    // Listed under another name, or as another kind.
    {TableWith("CREATE TABLE other (a, b NOT NULL AS (" + kEndless + "))"), "malformed database schema (t)"},
    {TableWith("CREATE TABLE t (a, CHECK (" + kEndless + " = 0))"), "table t has a CHECK constraint"},
    {TableWith("CREATE TABLE t (a/**/check(" + kEndless + " = 0))"), "table t has a CHECK constraint"},
    {TableWith("CREATE table t (a)"), "table t is no stored table"},
    {"CREATE VIRTUAL TABLE t USING fts5(a)", "table t is no stored table"},
    {"DROP TABLE node;" + TableWith("CREATE VIEW node AS SELECT 1 AS id, 2 AS name"),
     "malformed database schema (t)"},
};

TEST_F(SqliteReader, TablesThatComputeAreRefused) {
    for (const auto& [sql, error] : kAttacks) {
        const std::string path = WriteAs("bad.sqlite");
        SqliteFile(path).Run(sql);
        alarm(120);  // ends the program where it would compute for hours
        EXPECT_EQ(ErrorOf(path), error) << sql;
        alarm(0);
    }
}

TEST_F(SqliteReader, WorkOutOfProportionIsGivenUp) {
    // Each row has 500 columns that are only in the table's text: 10 million values in less than 300 KB.
    std::string columns;
    for (int column = 0; column < 500; ++column) {
        columns += ", c" + std::to_string(column) + " NOT NULL DEFAULT 1";
    }
    const std::string path = WriteAs("bad.sqlite");
    SqliteFile(path).Run(TableWith("CREATE TABLE t (a" + columns + ")") +
                         "; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000)"
                         "INSERT INTO t SELECT NULL FROM n");
    EXPECT_EQ(ErrorOf(path), "reading this takes more work than a file of its size needs");
}

TEST_F(SqliteReader, LongTextOfATableIsRefused) {
    const std::string path = WriteAs("bad.sqlite");
    SqliteFile(path).Run("CREATE TABLE t (a /*" + std::string(20'000, 'x') + "*/)");
    EXPECT_NE(ErrorOf(path), "");
}

TEST_F(SqliteReader, PipesAreNotWaitedFor) {
    const std::string pipe = directory_ / "pipe.sqlite";
    const std::string path = WriteAs("out.sqlite");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf(pipe), "Not a regular file");
    for (const char* suffix : {"-journal", "-wal"}) {
        ASSERT_EQ(mkfifo((path + suffix).c_str(), 0600), 0);
        EXPECT_EQ(ErrorOf(path), "Not a regular file") << suffix;
        fs::remove(path + suffix);
    }
    EXPECT_EQ(ErrorOf(path), "");
}

TEST_F(SqliteReader, JournalsOfALinkAreThoseOfTheFileItLeadsTo) {
    const std::string path = WriteAs("out.sqlite");
    const std::string link = directory_ / "link.sqlite";
    fs::create_symlink("out.sqlite", link);
    fs::create_directory_symlink(".", directory_ / "folder");
    for (const char* suffix : {"-journal", "-wal"}) {
        // Beside the link there may be anything.
        ASSERT_EQ(mkfifo((link + suffix).c_str(), 0600), 0);
        EXPECT_EQ(ErrorOf(link), "") << suffix;
        ASSERT_EQ(mkfifo((path + suffix).c_str(), 0600), 0);
        alarm(120);  // ends the program where it would wait without end
        EXPECT_EQ(ErrorOf(link), "Not a regular file") << suffix;
        EXPECT_EQ(ErrorOf(directory_ / "folder/link.sqlite"), "Not a regular file") << suffix;
        alarm(0);
        fs::remove(path + suffix);
    }
}

/// The names of files that are made for addresses, of which SQLite takes one.
TEST_F(SqliteReader, PathMayHaveAnyCharacter) {
    for (const char* name :
         {"50%20off.sqlite", "a?mode=memory.sqlite", "a#b.sqlite", "file:a.sqlite", "a&b=c.db"}) {
        EXPECT_EQ(ReadAsVorn(WriteAs(name)), kFullVorn) << name;
        EXPECT_EQ(ReadAsVorn("/" + directory_ / name), kFullVorn) << name;
        EXPECT_TRUE(fs::exists(directory_ / name)) << name;
    }
}

TEST_F(SqliteReader, FileWithAWriteAheadLogIsReadAndNothingStaysBesideIt) {
    const std::string path = WriteAs("out.sqlite");
    SqliteFile(path).Run("PRAGMA journal_mode = WAL; UPDATE node SET name = 'Fan' WHERE id = 1");
    const auto before = directory_.Names();
    EXPECT_EQ(ErrorOf(path), "");
    EXPECT_EQ(directory_.Names(), before);
    EXPECT_NE(ReadAsVorn(path).find("{\"name\": \"Fan\""), std::string::npos);
}

TEST_F(SqliteReader, ChangesThatOnlyTheLogHasAreNotPassedOver) {
    const std::string path = WriteAs("out.sqlite");
    SqliteFile writer(path);
    writer.Run("PRAGMA journal_mode = WAL; UPDATE node SET name = 'Fan' WHERE id = 1");
    const auto before = directory_.Names();
    EXPECT_TRUE(ErrorOf(path).starts_with("another program has changes for it in ")) << ErrorOf(path);
    EXPECT_EQ(directory_.Names(), before);
}

/// A row has 16,000 letters, of which the file has none.
TEST_F(SqliteReader, TextsThatATableGivesToAllRowsAreBounded) {
    const std::string path = WriteAs("bad.sqlite");
    SqliteFile(path).Run(
        "DROP TABLE node_attribute; CREATE TABLE node_attribute (node_id, definition_id);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000)"
        "INSERT INTO node_attribute SELECT 1, 4 FROM n;"
        "ALTER TABLE node_attribute ADD COLUMN value DEFAULT '" +
        std::string(16'000, 'x') + "'");
    const std::string error = ErrorOf(path);
    EXPECT_TRUE(error.starts_with("table node_attribute, row ")) << error;
    EXPECT_TRUE(error.ends_with(": the texts of the file take more than 2 times its size")) << error;
}

TEST_F(SqliteReader, EnumerationWithAValueTwiceKeepsItsValues) {
    const std::string path = WriteAs("out.sqlite");
    SqliteFile(path).Run(
        "INSERT INTO attribute_choice VALUES (9, 1, 'Only'), (9, 2, 'Last');"
        "UPDATE message_attribute SET value = 'Last' WHERE definition_id = 9");
    EXPECT_NE(ReadAsVorn(path).find("{\"Topic\": \"Sound\", \"Kind\": \"Last\", \"Period\": 0.75}"),
              std::string::npos);
}

TEST_F(SqliteReader, EmptyValueOfAnEnumerationIsReadAfterItWasWritten) {
    DefineEnumeration(AttrObject::Node, "Blank", "a\n", "a");  // its second value is the empty text
    EXPECT_EQ(ErrorOf(WriteAs("out.sqlite")), "");
    EXPECT_EQ(ErrorOf(WriteAs("out.vorn")), "");
}

TEST_F(SqliteReader, VeryLongTextsAreReadBack) {
    const std::string text(1'000'000, 'x');
    const std::string path = WriteAs("out.sqlite");
    SqliteFile(path).Run("UPDATE database_attribute SET value = '" + text + "' WHERE rowid = 2");
    EXPECT_NE(ReadAsVorn(path).find("\"Author\": \"" + text + "\""), std::string::npos);
    SqliteFile(path).Run("UPDATE node SET name = '" + text + "' WHERE id = 2");
    EXPECT_EQ(ErrorOf(path),
              "table node, row 2: the name '" + text.substr(0, 200) + "...' is longer than 32 bytes");
}

TEST_F(SqliteReader, OtherSqliteFilesAreRefused) {
    MakeFile(directory_ / "other.db", "");
    SqliteFile(directory_ / "other.db").Run("CREATE TABLE node (id INTEGER PRIMARY KEY, name TEXT)");
    EXPECT_EQ(ErrorOf(directory_ / "other.db"), "the file holds no bus database");
}

TEST_F(SqliteReader, OtherFilesAreRefused) {
    MakeFile(directory_ / "text.db", "hello");
    MakeFile(directory_ / "empty.sqlite3", "");
    fs::create_directory(directory_ / "dir.sqlite");
    for (const char* name : {"text.db", "empty.sqlite3", "dir.sqlite"}) {
        EXPECT_NE(ErrorOf(directory_ / name), "") << name;
    }
    EXPECT_EQ(ErrorOf(directory_ / "dir.sqlite"), "Is a directory");
    EXPECT_EQ(ErrorOf(directory_ / "none.sqlite"), "No such file or directory");
    EXPECT_FALSE(fs::exists(directory_ / "none.sqlite"));
}

TEST_F(SqliteReader, FileCutAnywhereIsRefused) {
    const std::string whole = ReadFile(WriteAs("out.sqlite"));
    for (std::size_t part = 0; part < 100; ++part) {
        MakeFile(directory_ / "cut.sqlite", whole.substr(0, whole.size() * part / 100));
        EXPECT_NE(ErrorOf(directory_ / "cut.sqlite"), "") << part;
    }
}

TEST_F(SqliteReader, PageOfRubbishIsRefused) {
    const std::string whole = ReadFile(WriteAs("out.sqlite"));
    constexpr std::size_t kPage = 4096;
    ASSERT_EQ(whole.size() % kPage, 0U);
    // Ten tables and five indexes besides the first page, and two for what does not fit there.
    ASSERT_EQ(whole.size() / kPage, 18U);
    for (std::size_t page = 0; page < whole.size(); page += kPage) {
        std::string damaged = whole;
        damaged.replace(page, kPage, kPage, '\xA5');
        MakeFile(directory_ / "bad.sqlite", damaged);
        EXPECT_NE(ErrorOf(directory_ / "bad.sqlite"), "") << page / kPage;
    }
}

}  // namespace
