/// One catalog with a fault of every number that a catalog can cause, and the whole complaint beside it:
/// tests/data/faults.xml and tests/data/faults.log, in which "@PATH@" stands for the path of the catalog.
///
/// Not in it are those that only a parameter without its type element raises (28, 36, 41, 48, 66, 77, 86, 95,
/// 100), those that need a node to fail which never does in a catalog (23, 103, 107, 133), and 110, which
/// needs 4,097 error functions.

#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/import_manager.h"
#include "support/temp_dir.h"

namespace tarvex::test {
namespace {

const std::string kCatalogPath = std::string(TARVEX_TEST_DATA) + "/faults.xml";
const std::string kLogPath = std::string(TARVEX_TEST_DATA) + "/faults.log";

constexpr unsigned kNumbers[] = {
    1,   2,   3,   4,   5,   6,   7,   8,   9,   10,  11,             // definitions and names
    12,  13,  14,  15,  16,                                           // positions
    17,  18,  19,  20,  21,  22,  24,  25,  26,  27,                  // stream cases
    29,  30,  31,  32,  33,  35,  37,  38,  39,                       // streams
    42,  43,  44,  45,  46,  47,                                      // arrays
    49,  50,  51,  52,  53,  54,  55,  56,  57,  58,                  // records
    59,  60,  61,  62,  63,                                           // bits
    67,  68,  69,  70,  71,  72,  73,  74,                            // numbers
    75,  76,  78,  79,  80,  81,  82,  83,  85,                       // enumerations
    87,  88,  89,  90,  91,  92,  93,  94,  96,  97,  98,  101,       // strings, bit fields, booleans, voids
    102,                                                              // operations
    106, 108, 109, 111, 112, 113, 114, 115, 116, 117, 118, 119, 120,  // functions
    122, 123, 124, 126, 127, 128, 129, 130, 131, 132, 134, 135, 138,  // assignment
    139, 140, 141, 142, 143, 144, 145, 146,                           // function blocks
    148, 149, 150, 151, 152,
};

/// An import of the catalog of faults; an empty log path writes no log.
struct FaultsImport {
    explicit FaultsImport(const std::string& logPath, std::set<std::uint32_t> exclusions = {}) {
        ZMostFCatManager manager;
        manager.ImportLogExclusions = std::move(exclusions);
        manager.MessageSink = [this](const std::string& text, ImportEvent /*event*/) {
            console.push_back(text);
        };
        std::string name;
        ok = manager.Import(name, kCatalogPath, 1, logPath);
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

TEST(Faults, WholeLogIsAsWritten) {
    const TempDir dir;
    const FaultsImport import(dir.File("faults.log"));
    EXPECT_TRUE(import.ok);
    EXPECT_EQ(ReadFile(dir.File("faults.log")), ExpectedLog());
}

TEST(Faults, EveryNumberThatACatalogCanCauseIsThere) {
    EXPECT_THAT(NumbersIn(ReadFile(kLogPath)), testing::ElementsAreArray(kNumbers));
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
    std::set<unsigned> left(std::begin(kNumbers), std::end(kNumbers));
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
}  // namespace tarvex::test
