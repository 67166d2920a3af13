/// What an export does with files: when it writes the output, when it must not, and what it reports.

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "export/conversion.h"

namespace tarvex::test::exporter_output_test {
namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

constexpr mode_t kAnyWrite = 0222;

class ExportedFile : public testing::Test {
  protected:
    std::string File(std::string_view name) const { return conversion_.Dir().File(name); }
    std::string Write(std::string_view name, std::string_view content) const {
        return conversion_.Dir().Write(name, content);
    }

    /// An exporter for this output and these files.
    ZVornExporter ExporterWith(const std::string& aliases, const std::string& network) const {
        return {&conversion_.Catalog(), conversion_.output, aliases, network, {}, {}, conversion_.flags};
    }

    Conversion conversion_{Block("0x22", "Amp")};
};

TEST_F(ExportedFile, IsWrittenOncePerExporter) {
    const auto exporter = conversion_.Exporter();
    EXPECT_EQ(exporter->Export(), 0);
    Write("out.vorn", "changed since");
    EXPECT_EQ(exporter->Export(), -1);
    EXPECT_EQ(ReadFile(conversion_.output), "changed since");
    fs::remove(conversion_.output);
    EXPECT_EQ(exporter->Export(), -1);
    EXPECT_FALSE(FileExists(conversion_.output));
}

TEST_F(ExportedFile, IsNotWrittenByASecondExportAfterAFailedOne) {
    conversion_.output = File("later/out.vorn");
    const auto exporter = conversion_.Exporter();
    EXPECT_EQ(exporter->Export(), -1);
    fs::create_directory(File("later"));
    EXPECT_EQ(exporter->Export(), -1);
    EXPECT_FALSE(FileExists(conversion_.output));
    EXPECT_EQ(conversion_.Export(), 0);
}

TEST_F(ExportedFile, IsNotWrittenWithoutACatalog) {
    ZVornExporter exporter(nullptr, conversion_.output, File("missing.txt"), File("missing.txt"), {}, {},
                           conversion_.flags);
    exporter.MessageSink = [](const std::string& line) { ADD_FAILURE() << line; };
    EXPECT_EQ(exporter.Export(), -1);
    EXPECT_EQ(exporter.Export(), -1);
    EXPECT_FALSE(FileExists(conversion_.output));
}

TEST_F(ExportedFile, ReplacesAnEarlierOne) {
    Write("out.vorn", std::string(100'000, 'o'));
    const nlohmann::json database = conversion_.Database();
    EXPECT_EQ(NamesIn(database["messages"]), std::vector<std::string>{"Amp_Volume_Get"});
}

constexpr const char* kImpossibleOutputs[] = {"missing/out.vorn", "dir", "dir/", "file/out.vorn"};

TEST_F(ExportedFile, IsRefusedWhereNoFileCanBe) {
    fs::create_directory(File("dir"));
    Write("file", "a file");
    for (const char* output : kImpossibleOutputs) {
        SCOPED_TRACE(output);
        conversion_.output = File(output);
        EXPECT_EQ(conversion_.Export(), -1);
    }
    conversion_.output = "";
    EXPECT_EQ(conversion_.Export(), -1);
    EXPECT_FALSE(FileExists(File("missing")));
    EXPECT_TRUE(fs::is_empty(File("dir")));
    EXPECT_EQ(ReadFile(File("file")), "a file");
}

constexpr const char* kPathsOfTheCatalog[] = {
    "Cat.xml", "./Cat.xml", "dir/../Cat.xml", "symbolic.vorn", "symbolic2.vorn", "hard.vorn", "here/Cat.xml",
};

TEST_F(ExportedFile, IsNeverTheCatalog) {
    const std::string catalog = File("Cat.xml");
    const std::string content = ReadFile(catalog);
    const mode_t mode = ModeOf(catalog);
    fs::create_directory(File("dir"));
    fs::create_symlink("Cat.xml", File("symbolic.vorn"));
    fs::create_symlink(File("symbolic.vorn"), File("symbolic2.vorn"));
    fs::create_hard_link(catalog, File("hard.vorn"));
    fs::create_directory_symlink(".", File("here"));
    conversion_.flags.makeReadOnly = true;
    const WorkingDir workingDir(conversion_.Dir().Path());
    for (const char* path : kPathsOfTheCatalog) {
        for (const std::string& output : {std::string(path), File(path)}) {
            SCOPED_TRACE(output);
            conversion_.output = output;
            EXPECT_EQ(conversion_.Export(), -1);
            EXPECT_EQ(ReadFile(catalog), content);
            EXPECT_EQ(ModeOf(catalog), mode);
        }
    }
    EXPECT_TRUE(fs::is_symlink(File("symbolic.vorn")));
    EXPECT_TRUE(fs::is_symlink(File("symbolic2.vorn")));
    EXPECT_EQ(fs::hard_link_count(catalog), 2U);
}

TEST_F(ExportedFile, IsWritableUnlessMadeReadOnly) {
    EXPECT_EQ(conversion_.Export(), 0);
    EXPECT_TRUE(ModeOf(conversion_.output) & S_IWUSR);
    conversion_.flags.makeReadOnly = true;
    EXPECT_EQ(conversion_.Export(), 0);
    EXPECT_FALSE(ModeOf(conversion_.output) & kAnyWrite);
    EXPECT_TRUE(ModeOf(conversion_.output) & S_IRUSR);
}

TEST_F(ExportedFile, ReadOnlyMeansForEverybodyAndKeepsTheOtherPermissions) {
    Write("out.vorn", "old");
    ASSERT_EQ(::chmod(conversion_.output.c_str(), 0666), 0);
    EXPECT_EQ(conversion_.Export(), 0);
    const mode_t before = ModeOf(conversion_.output);
    conversion_.flags.makeReadOnly = true;
    EXPECT_EQ(conversion_.Export(), 0);
    EXPECT_EQ(ModeOf(conversion_.output), before & ~kAnyWrite);
}

TEST_F(ExportedFile, IsNotWrittenOverAReadOnlyOneWhoeverAsks) {
    for (const bool makeReadOnly : {false, true}) {
        SCOPED_TRACE(makeReadOnly);
        fs::remove(conversion_.output);
        Write("out.vorn", "old");
        ASSERT_EQ(::chmod(conversion_.output.c_str(), 0444), 0);
        conversion_.flags.makeReadOnly = makeReadOnly;
        EXPECT_EQ(conversion_.Export(), -1);
        EXPECT_EQ(ReadFile(conversion_.output), "old");
        EXPECT_EQ(ModeOf(conversion_.output), 0444U);
    }
}

TEST_F(ExportedFile, IsReplacedAgainOnceItIsWritable) {
    conversion_.flags.makeReadOnly = true;
    EXPECT_EQ(conversion_.Export(), 0);
    const std::string first = ReadFile(conversion_.output);
    conversion_.aliasNames = "Amp,Booster\n";
    EXPECT_EQ(conversion_.Export(), -1);
    EXPECT_EQ(ReadFile(conversion_.output), first);
    ASSERT_EQ(::chmod(conversion_.output.c_str(), 0644), 0);
    EXPECT_EQ(NamesIn(conversion_.Database()["messages"]), std::vector<std::string>{"Booster_Volume_Get"});
    EXPECT_FALSE(ModeOf(conversion_.output) & kAnyWrite);
}

struct ReportCase {
    const char* what;
    const char* aliases;  // below the directory of the catalog; empty for none
    const char* network;
    const char* report;  // "@DIR@" is that directory
};
constexpr ReportCase kReports[] = {
    {"none wanted", "", "", ""},
    {"both there", "aliases.txt", "network.txt", ""},
    {"both empty", "empty.txt", "empty.txt", ""},
    {"no alias names", "missing.txt", "", "Can not open file @DIR@/missing.txt!\n"},
    {"no network configuration", "", "missing.txt", "Can not open file @DIR@/missing.txt!\n"},
    {"neither, the alias names first", "a.txt", "n.txt",
     "Can not open file @DIR@/a.txt!\nCan not open file @DIR@/n.txt!\n"},
    {"directories", "dir", "dir", "Can not open file @DIR@/dir!\nCan not open file @DIR@/dir!\n"},
    {"a path that looks like a format", "%s%n%d.txt", "", "Can not open file @DIR@/%s%n%d.txt!\n"},
};

TEST_F(ExportedFile, IsWrittenAlsoWhenFilesToReadCannotBeOpened) {
    const std::string dir = conversion_.Dir().Path();
    fs::create_directory(File("dir"));
    Write("empty.txt", "");
    Write("aliases.txt", "Tuner,Radio\n");
    Write("network.txt", "Gateway,one\n");
    for (const ReportCase& row : kReports) {
        SCOPED_TRACE(row.what);
        const auto pathOf = [&](std::string_view name) { return name.empty() ? "" : File(name); };
        ZVornExporter exporter = ExporterWith(pathOf(row.aliases), pathOf(row.network));
        std::string report;
        exporter.MessageSink = [&](const std::string& line) { report += line + "\n"; };
        EXPECT_EQ(exporter.Export(), 0);
        for (std::size_t at = report.find(dir); at != std::string::npos; at = report.find(dir)) {
            report.replace(at, dir.size(), "@DIR@");
        }
        EXPECT_EQ(report, row.report);
        const auto database = nlohmann::json::parse(ReadFile(conversion_.output), nullptr, false);
        EXPECT_EQ(NamesIn(database["messages"]), std::vector<std::string>{"Amp_Volume_Get"});
        EXPECT_EQ(NamesIn(database["nodes"]), std::vector<std::string>{"Amp"});
    }
}

TEST_F(ExportedFile, FileThatCannotBeOpenedDoesNotKeepTheOtherFromBeingRead) {
    Write("aliases.txt", "Amp,Booster\n");
    Write("network.txt", "Gateway,1\n");
    EXPECT_EQ(ExporterWith(File("missing.txt"), File("network.txt")).Export(), 0);
    const auto withNetwork = nlohmann::json::parse(ReadFile(conversion_.output), nullptr, false);
    EXPECT_EQ(ExporterWith(File("aliases.txt"), File("missing.txt")).Export(), 0);
    const auto withAliases = nlohmann::json::parse(ReadFile(conversion_.output), nullptr, false);
    EXPECT_EQ(NamesIn(withNetwork["nodes"]), (std::vector<std::string>{"Gateway", "Amp"}));
    EXPECT_EQ(NamesIn(withAliases["messages"]), std::vector<std::string>{"Booster_Volume_Get"});
}

TEST_F(ExportedFile, SecondExportReadsNothing) {
    ZVornExporter exporter = ExporterWith(File("missing.txt"), File("missing.txt"));
    int count = 0;
    exporter.MessageSink = [&](const std::string& /*line*/) { ++count; };
    EXPECT_EQ(exporter.Export(), 0);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(exporter.Export(), -1);
    EXPECT_EQ(count, 2);
}

}  // namespace
}  // namespace tarvex::test::exporter_output_test
