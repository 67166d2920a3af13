/// One catalog with a fault of every number that a catalog can cause, and the whole complaint beside it:
/// tests/data/faults.xml and tests/data/faults.log, in which "@PATH@" stands for the path of the catalog.

#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/import_manager.h"
#include "import/log/messages.h"
#include "support/temp_dir.h"

namespace tarvex::test::faults_test {
namespace {

const std::string kCatalogPath = std::string(TARVEX_TEST_DATA) + "/faults.xml";
const std::string kLogPath = std::string(TARVEX_TEST_DATA) + "/faults.log";
/// The same for the forms of newer catalogs.
const std::string kNewerCatalogPath = std::string(TARVEX_TEST_DATA) + "/newer_faults.xml";
const std::string kNewerLogPath = std::string(TARVEX_TEST_DATA) + "/newer_faults.log";

/// The numbers that no catalog can cause, or none of a size that fits here.
constexpr unsigned kElsewhere[] = {
    28,  36,  41,  48,  66,  77,
    86,  95,  100, 201, 204,  // a parameter without its type element, which is none of its kind
    23,  103, 107, 133,       // a node that fails and never does in a catalog
    110,                      // 4,097 error functions
};

/// An import of the catalog of faults; an empty log path writes no log.
struct FaultsImport {
    explicit FaultsImport(const std::string& logPath, std::set<std::uint32_t> exclusions = {},
                          bool isNewer = false) {
        ZMostFCatManager manager;
        manager.ReadNewer = isNewer;
        manager.ImportLogExclusions = std::move(exclusions);
        manager.MessageSink = [this](const std::string& text, ImportEvent /*event*/) {
            console.push_back(text);
        };
        std::string name;
        ok = manager.Import(name, isNewer ? kNewerCatalogPath : kCatalogPath, 1, logPath);
    }

    bool ok = false;
    std::vector<std::string> console;
};

std::set<unsigned> NumbersIn(const std::string& log) {
    const std::regex entry(R"((?:Error|Warning) #(\d{4}) in )");
    std::set<unsigned> numbers;
    for (std::sregex_iterator match(log.begin(), log.end(), entry), end; match != end; ++match) {
        numbers.insert(static_cast<unsigned>(std::stoul((*match)[1])));
    }
    return numbers;
}

std::string ExpectedLog() {
    return std::regex_replace(ReadFile(kLogPath), std::regex("@PATH@"), kCatalogPath);
}

std::string ExpectedNewerLog() {
    return std::regex_replace(ReadFile(kNewerLogPath), std::regex("@PATH@"), kNewerCatalogPath);
}

TEST(Faults, WholeLogIsAsWritten) {
    const TempDir dir;
    const FaultsImport import(dir.File("faults.log"));
    EXPECT_TRUE(import.ok);
    EXPECT_EQ(ReadFile(dir.File("faults.log")), ExpectedLog());
}

TEST(Faults, WholeLogOfANewerCatalogIsAsWritten) {
    const TempDir dir;
    const FaultsImport import(dir.File("faults.log"), {}, true);
    EXPECT_TRUE(import.ok);
    EXPECT_EQ(ReadFile(dir.File("faults.log")), ExpectedNewerLog());
}

TEST(Faults, EveryNumberThatACatalogCanCauseIsThere) {
    std::set<unsigned> numbers;
    for (const Message* message : kMessages) {
        if (message->kind != Kind::Fatal) {
            numbers.insert(message->number);
        }
    }
    for (const unsigned number : kElsewhere) {
        EXPECT_EQ(numbers.erase(number), 1U) << number;
    }
    std::set<unsigned> found = NumbersIn(ReadFile(kLogPath));
    found.merge(NumbersIn(ReadFile(kNewerLogPath)));
    EXPECT_EQ(found, numbers);
}

TEST(Faults, ConsoleTellsOnlyTheTotals) {
    const TempDir dir;
    const FaultsImport import(dir.File("faults.log"));
    EXPECT_THAT(import.console, testing::ElementsAre("Parsing XML '" + kCatalogPath + "'",
                                                     "Import result: errors: 157  warnings: 34"));
}

TEST(Faults, AreCountedWithoutALog) {
    const FaultsImport import("");
    EXPECT_TRUE(import.ok);
    EXPECT_THAT(import.console, testing::Contains("Import result: errors: 157  warnings: 34"));
}

TEST(Faults, ThatAreExcludedAreCountedButNotWritten) {
    const TempDir dir;
    const FaultsImport import(dir.File("faults.log"), {145, 1, 9, 4000});
    EXPECT_THAT(import.console, testing::Contains("Import result: errors: 157  warnings: 34"));
    std::set<unsigned> left = NumbersIn(ReadFile(kLogPath));
    for (const unsigned excluded : {145U, 1U, 9U}) {
        left.erase(excluded);
    }
    const std::string log = ReadFile(dir.File("faults.log"));
    EXPECT_EQ(NumbersIn(log), left);
    EXPECT_THAT(log, testing::HasSubstr("\nfatal errors: 0  errors: 157  warnings: 34\n"));
}

TEST(Faults, TwoImportsGiveTheSameBytes) {
    const TempDir dir;
    const FaultsImport first(dir.File("first.log"));
    const FaultsImport second(dir.File("second.log"));
    EXPECT_EQ(ReadFile(dir.File("first.log")), ReadFile(dir.File("second.log")));
}

}  // namespace
}  // namespace tarvex::test::faults_test
