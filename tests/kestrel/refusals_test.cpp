/// What is refused or left out so that no other program stumbles over a file, and no file exhausts the
/// machine.

#include <cmath>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "full_database.h"
#include "sqlite_file.h"
#include "support.h"

namespace {

class Refusals : public FullDatabase {
  protected:
    std::string ErrorAfter(const char* sql) {
        const std::string path = WriteAs("bad.sqlite");
        SqliteFile(path).Run(sql);
        return ErrorOf(path);
    }
};

TEST_F(Refusals, SqliteFileBesideAJournalIsNotReplaced) {
    for (const char* journal : {"a.db-journal", "a.db-wal"}) {
        MakeFile(directory_ / "a.db", "old");
        MakeFile(directory_ / journal, "");
        EXPECT_EQ(manager_.WriteDatabase(key_, (directory_ / "a.db").c_str()), kKestrelOk) << journal;
        MakeFile(directory_ / "a.db", "old");
        MakeFile(directory_ / journal, "pages");
        EXPECT_EQ(manager_.WriteDatabase(key_, (directory_ / "a.db").c_str()), kKestrelCannotOpen) << journal;
        EXPECT_EQ(ReadFile(directory_ / "a.db"), "old") << journal;
        std::filesystem::remove(std::string(directory_ / journal));
    }
}

TEST_F(Refusals, FileThatTheProcessHasOpenIsNotReplacedThroughItsDescriptor) {
    MakeFile(directory_ / "log", "old");
    const int descriptor = open(std::string(directory_ / "log").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    EXPECT_EQ(manager_.WriteDatabase(key_, path.c_str()), kKestrelCannotOpen);
    EXPECT_EQ(ReadFile(directory_ / "log"), "old");
    close(descriptor);
}

TEST_F(Refusals, NumbersThatNoFileCanHoldBecomeTheNearestOnes) {
    const double infinity = std::numeric_limits<double>::infinity();
    DefineInteger(AttrObject::Node, "Wide", -infinity, infinity, NAN);
    const std::string vorn = ReadFile(WriteAs("out.vorn"));
    EXPECT_NE(vorn.find(R"("name": "Wide", "type": "integer", "minimum": -17976931348623157)"),
              std::string::npos);
    EXPECT_EQ(vorn.find(R"(": null, "maximum")"), std::string::npos);
    EXPECT_EQ(ReadAsVorn(directory_ / "out.vorn"), vorn);
    EXPECT_EQ(ReadAsVorn(WriteAs("out.sqlite")), vorn);
}

TEST_F(Refusals, VornWithAZeroByteIsRefused) {
    std::string text = ReadFile(WriteAs("out.vorn"));
    text.insert(text.find("\"version\""), 1, '\0');
    MakeFile(directory_ / "zero.vorn", text);
    EXPECT_EQ(ErrorOf(directory_ / "zero.vorn"), "line 3: the file has a zero byte");
}

TEST_F(Refusals, DefinitionsBeyondThousandAreRefused) {
    // The full database has nine.
    for (int i = 9; i < 1000; ++i) {
        DefineString(AttrObject::Node, "D" + std::to_string(i), "");
    }
    EXPECT_EQ(ErrorOf(WriteAs("most.vorn")), "");
    DefineString(AttrObject::Node, "D1000", "");
    EXPECT_NE(ErrorOf(WriteAs("more.vorn")).find("there are too many definitions"), std::string::npos);
}

TEST_F(Refusals, SqliteHasOneRowForTheDatabase) {
    const char* const kError = "table database: there has to be one row";
    EXPECT_EQ(ErrorAfter("DELETE FROM database"), kError);
    EXPECT_EQ(ErrorAfter("INSERT INTO database VALUES ('second')"), kError);
}

TEST_F(Refusals, SqliteIdsStandOnce) {
    EXPECT_EQ(ErrorAfter("CREATE TABLE copy AS SELECT * FROM node; DROP TABLE node;"
                         "CREATE TABLE node (id INTEGER, name TEXT); INSERT INTO node SELECT * FROM copy;"
                         "UPDATE node SET id = 1 WHERE id = 2"),
              "table node, row 2: the id stands twice");
}

TEST_F(Refusals, TextsThatSqliteComputesAreBounded) {
    EXPECT_NE(ErrorAfter("CREATE TABLE copy AS SELECT * FROM node; DROP TABLE node;"
                         "CREATE TABLE node (id INTEGER, name AS (printf('%.20000000c', 'x')));"
                         "INSERT INTO node (id) SELECT id FROM copy")
                  .find("table node"),
              std::string::npos);
}

TEST_F(Refusals, KcdLeavesOutWhatNoFrameCanHave) {
    AddMessage(0x9FFFFFFF, "Widest");
    AddMessage(0xA0000000, "Wider");
    const std::string xml = ReadFile(WriteAs("out.kcd"));
    EXPECT_NE(xml.find("name=\"Widest\""), std::string::npos);
    EXPECT_EQ(xml.find("name=\"Wider\""), std::string::npos);
}

/// Bits 7 to 4 of byte 0: counted from the lowest, the signal begins at 4.
TEST_F(Refusals, BigEndianMultiplexorInAByteIsPlacedAsReadersCount) {
    sigblk& high = AddSignal(AddMessage(0x123, "M"), "High");
    high.start_bit = 7;
    high.length = 4;
    high.flags = kSignalBigEndian | kSignalMultiplexor;
    const std::string xml = ReadFile(WriteAs("out.kcd"));
    EXPECT_NE(xml.find(R"(<Multiplex name="High" offset="4" length="4"/>)"), std::string::npos);
}

}  // namespace
