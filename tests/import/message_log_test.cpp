/// Counting of messages, the bytes of the import log and of the tree log.

#include "import/log/message_log.h"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "import/test_texts.h"

namespace tarvex::test::message_log_test {
namespace {

class MessageLog : public testing::Test {
  protected:
    TempDir dir_;
    std::string path_ = dir_.File("import.log");
    ZMostFCatLog log_;
};

TEST_F(MessageLog, StartsWithNothingCountedAndNothingOpen) {
    EXPECT_EQ(log_.FatalCount(), 0U);
    EXPECT_EQ(log_.ErrorCount(), 0U);
    EXPECT_EQ(log_.WarningCount(), 0U);
    EXPECT_EQ(log_.LoggedErrorCount(), 0U);
    EXPECT_EQ(log_.LoggedWarningCount(), 0U);
    EXPECT_FALSE(log_.IsLogOpen());
    EXPECT_TRUE(log_.IsLogged(1));
}

TEST_F(MessageLog, CountsEveryMessageButLogsOnlyThoseNotExcluded) {
    log_.SetExclusions({3, 80});
    log_.Error(2, "text", "/Cat");
    log_.Error(2, "text", "/Cat");
    log_.Error(80, "text", "/Cat");
    log_.Warning(3, "text", "/Cat");
    log_.Warning(1, "text", "/Cat");
    log_.Fatal("text", "/Cat");
    EXPECT_EQ(log_.FatalCount(), 1U);
    EXPECT_EQ(log_.ErrorCount(), 3U);
    EXPECT_EQ(log_.LoggedErrorCount(), 2U);
    EXPECT_EQ(log_.WarningCount(), 2U);
    EXPECT_EQ(log_.LoggedWarningCount(), 1U);
}

TEST_F(MessageLog, CountingAloneTellsWhetherTheNumberIsLogged) {
    log_.SetExclusions({80});
    EXPECT_TRUE(log_.CountError(79));
    EXPECT_FALSE(log_.CountError(80));
    EXPECT_TRUE(log_.CountWarning(79));
    EXPECT_FALSE(log_.CountWarning(80));
    EXPECT_TRUE(log_.IsLogged(79));
    EXPECT_FALSE(log_.IsLogged(80));
    EXPECT_EQ(log_.ErrorCount(), 2U);
    EXPECT_EQ(log_.LoggedErrorCount(), 1U);
    EXPECT_EQ(log_.WarningCount(), 2U);
    EXPECT_EQ(log_.LoggedWarningCount(), 1U);
}

TEST_F(MessageLog, WritesEveryEntryWithNumberAndPlace) {
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.SetExclusions({62, 80});
    log_.WriteLine("Importer messages (Version 1.0.11):");
    log_.Fatal("Not enough memory", "/Cat");
    log_.Error(7, "Failed to import element <TypeDef>", "/Cat//");
    log_.Error(80, "Missing required attribute TypeRef", "/Cat/Amp");
    log_.Warning(102, "Gap in parameter set before parameter 'B'", "/Cat/Amp/Volume/Status");
    log_.Warning(62, "Can not find element <BitTrueDesc>", "/Cat/Amp");
    log_.Error(152, "Cannot find unit definition", "/Cat/Amp/Volume/Level");
    log_.WriteSummary();
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), R"(Importer messages (Version 1.0.11):
Fatal error in '/Cat':
  Not enough memory
Error #0007 in '/Cat//':
  Failed to import element <TypeDef>
Warning #0102 in '/Cat/Amp/Volume/Status':
  Gap in parameter set before parameter 'B'
Error #0152 in '/Cat/Amp/Volume/Level':
  Cannot find unit definition

fatal errors: 1  errors: 3  warnings: 2
)");
}

TEST_F(MessageLog, FatalErrorsCannotBeExcluded) {
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.SetExclusions({0, 18151});
    log_.Fatal("Not enough memory", "");
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), "Fatal error in '':\n  Not enough memory\n");
}

TEST_F(MessageLog, PercentSignsInNamesAndTextsStand) {
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.Error(1, "100%d", "/%n%s");
    log_.Fatal("%s", "%n");
    log_.WriteLine("%n%s%%");
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), "Error #0001 in '/%n%s':\n  100%d\nFatal error in '%n':\n  %s\n%n%s%%\n");
}

TEST_F(MessageLog, LongTextsAreWrittenWhole) {
    const std::string text(5000, 'x');
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.Error(1, text, text);
    log_.WriteLine(text);
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), "Error #0001 in '" + text + "':\n  " + text + "\n" + text + "\n");
}

TEST_F(MessageLog, EveryLineEndsWithALineFeedOfItsOwn) {
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.WriteLine("");
    log_.WriteLine(" ");
    log_.WriteLine("\n");
    log_.WriteLine("end");
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), "\n \n\n\nend\n");
}

TEST_F(MessageLog, SummaryInTheLogAlwaysHasAllThreeCounts) {
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.WriteSummary();
    log_.Warning(1, "text", "/Cat");
    log_.CountError(2);
    log_.WriteSummary();
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), R"(
fatal errors: 0  errors: 0  warnings: 0
Warning #0001 in '/Cat':
  text

fatal errors: 0  errors: 1  warnings: 1
)");
}

struct SummaryCase {
    unsigned fatal;
    unsigned errors;
    unsigned warnings;
    const char* text;
};

TEST_F(MessageLog, SummaryTextBeginsWithTheGravestKind) {
    constexpr SummaryCase kCases[] = {
        {0, 0, 0, "no warnings"},
        {0, 0, 1, "warnings: 1"},
        {0, 0, 12, "warnings: 12"},
        {0, 1, 0, "errors: 1  warnings: 0"},
        {0, 3, 2, "errors: 3  warnings: 2"},
        {1, 0, 0, "fatal errors: 1  errors: 0  warnings: 0"},
        {2, 3, 4, "fatal errors: 2  errors: 3  warnings: 4"},
        {1, 0, 4, "fatal errors: 1  errors: 0  warnings: 4"},
    };
    for (const auto& [fatal, errors, warnings, text] : kCases) {
        SCOPED_TRACE(text);
        ZMostFCatLog log;
        log.SetExclusions({1});  // the totals hold excluded messages as well
        for (unsigned i = 0; i < fatal; ++i) {
            log.Fatal("text", "");
        }
        for (unsigned i = 0; i < errors; ++i) {
            log.CountError(1);
        }
        for (unsigned i = 0; i < warnings; ++i) {
            log.Warning(1, "text", "");
        }
        EXPECT_EQ(log.SummaryText(), text);
    }
}

TEST_F(MessageLog, WithoutOpenLogNothingIsWritten) {
    log_.WriteLine("text");
    log_.Error(1, "text", "/Cat");
    log_.WriteSummary();
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.CloseLog();
    log_.WriteLine("text");
    log_.Fatal("text", "/Cat");
    log_.WriteSummary();
    EXPECT_FALSE(log_.IsLogOpen());
    EXPECT_EQ(ReadFile(path_), "");
    EXPECT_EQ(log_.ErrorCount(), 1U);
    EXPECT_EQ(log_.FatalCount(), 1U);
}

TEST_F(MessageLog, FaultsAreListedWithTheirPlacesWithoutALog) {
    FaultList faults;
    EXPECT_FALSE(log_.IsRead(68));
    log_.SetExclusions({68});
    log_.SetFaults(&faults);
    EXPECT_TRUE(log_.IsRead(68));
    log_.Warning(68, "w", "/Cat/A", {"TNumber", 12, 9});
    log_.Error(113, "e", "/Cat/B", {"FunctionID", 40, 3});
    log_.Fatal("f", "");
    ASSERT_EQ(faults.All().size(), 3U);
    const Fault& warning = faults.All()[0];
    EXPECT_EQ(warning.kind, Kind::Warning);
    EXPECT_EQ(warning.number, 68U);
    EXPECT_EQ(warning.text, "w");
    EXPECT_EQ(warning.path, "/Cat/A");
    EXPECT_EQ(warning.element, "TNumber");
    EXPECT_EQ(warning.line, 12U);
    EXPECT_EQ(warning.column, 9U);
    EXPECT_EQ(faults.All()[1].kind, Kind::Error);
    EXPECT_EQ(faults.All()[1].line, 40U);
    EXPECT_EQ(faults.All()[2].kind, Kind::Fatal);
    EXPECT_EQ(faults.All()[2].line, 0U);
}

TEST_F(MessageLog, AListOfFaultsHasItsRoom) {
    FaultList faults;
    faults.SetRoom(Allowance(2 * (sizeof(Fault) + 8)));
    log_.SetFaults(&faults);
    for (int i = 0; i < 3; ++i) {
        log_.Error(7, "text", "/Cat");  // 8 bytes
    }
    EXPECT_FALSE(faults.HasRoom());
    EXPECT_FALSE(log_.IsRead(7));
    EXPECT_EQ(faults.All().size(), 2U);
    EXPECT_EQ(log_.ErrorCount(), 3U);
}

TEST_F(MessageLog, MessagesBeyondTheRoomAreCountedAndNotWritten) {
    // Text and path count: 3 entries of 8 bytes, one of 6 that fills the room of 30, and none of one byte.
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.SetRoom(Allowance(30));
    for (int i = 0; i < 3; ++i) {
        log_.Error(7, "text", "/Cat");
    }
    log_.Warning(8, "uu", "/Cat");
    EXPECT_TRUE(log_.IsLogOpen());
    log_.Error(9, "v", "");
    EXPECT_FALSE(log_.IsLogOpen());
    log_.Warning(10, "", "");
    EXPECT_EQ(log_.ErrorCount(), 4U);
    EXPECT_EQ(log_.WarningCount(), 2U);
    log_.WriteSummary();
    ASSERT_TRUE(log_.CloseLog());
    EXPECT_EQ(ReadFile(path_),
              "Error #0007 in '/Cat':\n  text\n"
              "Error #0007 in '/Cat':\n  text\n"
              "Error #0007 in '/Cat':\n  text\n"
              "Warning #0008 in '/Cat':\n  uu\n"
              "The log would become too large, further messages are left out!\n"
              "\n"
              "fatal errors: 0  errors: 4  warnings: 2\n");
}

TEST(LogBytes, GrowWithTheCatalog) {
    EXPECT_EQ(kLogBytes.For(0), 64U << 20);
    EXPECT_EQ(kLogBytes.For(10), (64U << 20) + 640);
}

TEST_F(MessageLog, OpenLogTruncatesAnOlderOne) {
    dir_.Write("import.log", std::string(10'000, 'x'));
    ASSERT_TRUE(log_.OpenLog(path_));
    EXPECT_TRUE(log_.IsLogOpen());
    log_.WriteLine("new");
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), "new\n");
}

TEST_F(MessageLog, SecondOpenLogFailsAndTheFirstGoesOn) {
    ASSERT_TRUE(log_.OpenLog(path_));
    log_.WriteLine("one");
    EXPECT_FALSE(log_.OpenLog(path_));
    EXPECT_FALSE(log_.OpenLog(dir_.File("other.log")));
    log_.WriteLine("two");
    log_.CloseLog();
    EXPECT_EQ(ReadFile(path_), "one\ntwo\n");
    EXPECT_FALSE(FileExists(dir_.File("other.log")));
    EXPECT_TRUE(log_.OpenLog(path_)) << "once closed, another one may be opened";
}

TEST_F(MessageLog, LogThatIsNoRegularFileIsRefused) {
    const Deadline deadline;
    const std::string fifo = dir_.File("fifo");
    const std::string readFifo = dir_.File("read-fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(readFifo.c_str(), 0600), 0);
    const int reader = ::open(readFifo.c_str(), O_RDONLY | O_NONBLOCK);
    for (const std::string& path :
         {dir_.Path(), fifo, readFifo, dir_.File("missing/import.log"), std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(log_.OpenLog(path));
        EXPECT_FALSE(log_.IsLogOpen());
    }
    ::close(reader);
}

TEST_F(MessageLog, DestructorClosesTheLog) {
    {
        ZMostFCatLog log;
        ASSERT_TRUE(log.OpenLog(path_));
        log.WriteLine("text");
    }
    EXPECT_EQ(ReadFile(path_), "text\n");
}

}  // namespace
}  // namespace tarvex::test::message_log_test
