/// The tree log as a file.

#include "import/log/tree_log.h"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "import/test_texts.h"
#include "support/temp_dir.h"

namespace tarvex::test::tree_log_test {
namespace {

class TreeLog : public testing::Test {
  protected:
    TempDir dir_;
    std::string treePath_ = dir_.File("tree.log");
    ZMostTreeLog log_;
};

TEST_F(TreeLog, TreeLinesAreIndentedByTabsAndUsedAsFormat) {
    ASSERT_TRUE(log_.OpenTreeLog(treePath_));
    log_.WriteTreeLine("CATALOG: Cat", 0);
    log_.WriteTreeLine("FBLOCK: Amp", 1);
    log_.WriteTreeLine("FUNCTION: 100%", 2);
    log_.WriteTreeLine("100%% %d %n%s%c.", 3);
    log_.WriteTreeLine("", 1);
    log_.CloseTreeLog();
    EXPECT_EQ(ReadFile(treePath_), "CATALOG: Cat\n\tFBLOCK: Amp\n\t\tFUNCTION: 100%\n\t\t\t100% 0 .\n\t\n");
}

TEST_F(TreeLog, TreeLogIsAppendedTo) {
    for (const char* line : {"one", "two"}) {
        ZMostTreeLog log;
        ASSERT_TRUE(log.OpenTreeLog(treePath_));
        log.WriteTreeLine(line, 0);
        log.CloseTreeLog();
    }
    EXPECT_EQ(ReadFile(treePath_), "one\ntwo\n");
}

TEST_F(TreeLog, SecondOpenTreeLogFailsAndTheFirstGoesOn) {
    ASSERT_TRUE(log_.OpenTreeLog(treePath_));
    EXPECT_FALSE(log_.OpenTreeLog(treePath_));
    log_.WriteTreeLine("one", 0);
    log_.CloseTreeLog();
    log_.WriteTreeLine("not written", 0);
    EXPECT_EQ(ReadFile(treePath_), "one\n");
}

TEST_F(TreeLog, LogThatIsNoRegularFileIsRefused) {
    const Deadline deadline;
    const std::string fifo = dir_.File("fifo");
    const std::string readFifo = dir_.File("read-fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(readFifo.c_str(), 0600), 0);
    const int reader = ::open(readFifo.c_str(), O_RDONLY | O_NONBLOCK);
    for (const std::string& path :
         {dir_.Path(), fifo, readFifo, dir_.File("missing/tree.log"), std::string()}) {
        EXPECT_FALSE(log_.OpenTreeLog(path)) << path;
    }
    ::close(reader);
}

TEST_F(TreeLog, LinesBeyondTheRoomAreLeftOut) {
    // The tabs and the line feed of a line count: two lines of 7 bytes and one of 2 fill the room of 16.
    ZMostTreeLog log(Allowance(16));
    ASSERT_TRUE(log.OpenTreeLog(treePath_));
    log.WriteTreeLine("lines", 1);
    log.WriteTreeLine("lines", 1);
    log.WriteTreeLine("u", 0);
    log.WriteTreeLine("v", 0);
    log.WriteTreeLine("", 0);
    ASSERT_TRUE(log.CloseTreeLog());
    EXPECT_EQ(ReadFile(treePath_),
              "\tlines\n\tlines\nu\nThe log would become too large, further lines are left out!\n");
}

}  // namespace
}  // namespace tarvex::test::tree_log_test
