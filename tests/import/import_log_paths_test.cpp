/// Where the import log and the tree log may be written.

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/test_texts.h"
#include "support/catalog_import.h"

namespace tarvex::test::import_log_paths_test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class LogPaths : public testing::Test {
  protected:
    LogPaths() { run_.manager.ProtectedPaths = {output_}; }

    SinkText NotCreated(const std::string& path) const {
        return {"Unable to create log file '" + path + "'", 1};
    }

    ManagerRun run_;
    std::string catalog_ = run_.dir.Write("Cat.xml", CleanCatalog());
    std::string output_ = run_.dir.Write("out.vorn", "older output");
    const SinkText parsing_{"Parsing XML '" + catalog_ + "'", 1};
    const SinkText writing_{"Writing internal data structure...", 3};
};

struct LinkCase {
    const char* what;
    /// Makes the path lead to the target.
    void (*link)(const std::string& target, const std::string& path);
};

constexpr LinkCase kLinks[] = {
    {"hard link",
     [](const std::string& target, const std::string& path) { fs::create_hard_link(target, path); }},
    {"symbolic link",
     [](const std::string& target, const std::string& path) { fs::create_symlink(target, path); }},
    {"link to a link",
     [](const std::string& target, const std::string& path) {
         fs::create_symlink(target, path + "-2");
         fs::create_symlink(path + "-2", path);
     }},
};

TEST_F(LogPaths, ImportLogOverTheCatalogOrTheOutputIsRefused) {
    for (const std::string& path :
         {catalog_, output_, run_.dir.Path() + "/./Cat.xml", run_.dir.Path() + "//out.vorn"}) {
        SCOPED_TRACE(path);
        run_.manager.Clear();
        run_.console.clear();
        EXPECT_TRUE(run_.Import(catalog_, path)) << "the import goes on without a log";
        EXPECT_THAT(run_.console, ElementsAre(NotCreated(path), parsing_));
        EXPECT_EQ(ReadFile(catalog_), CleanCatalog());
        EXPECT_EQ(ReadFile(output_), "older output");
    }
}

TEST_F(LogPaths, ImportLogOverTheDtdIsRefused) {
    const std::string text = "<!ENTITY volume 'Volume'>";
    const std::string dtd = run_.dir.Write("Cat.dtd", text);
    const std::string link = run_.dir.File("Cat.log");
    fs::create_symlink(dtd, link);
    std::string xml = CleanCatalog();
    xml.insert(xml.find("<FunctionCatalog"), "<!DOCTYPE FunctionCatalog SYSTEM \"Cat.dtd\">");
    const std::string catalog = run_.dir.Write("Dtd.xml", xml);
    for (const std::string& path : {dtd, link}) {
        SCOPED_TRACE(path);
        run_.manager.Clear();
        run_.console.clear();
        EXPECT_TRUE(run_.Import(catalog, path)) << "the import goes on without a log";
        EXPECT_THAT(run_.console,
                    ElementsAre(SinkText{"Parsing XML '" + catalog + "'", 1}, NotCreated(path)));
        EXPECT_EQ(ReadFile(dtd), text);
    }
}

TEST_F(LogPaths, ImportLogOverALinkToThemIsRefused) {
    for (const auto& [what, link] : kLinks) {
        for (const std::string& target : {catalog_, output_}) {
            SCOPED_TRACE(std::string(what) + " to " + target);
            const std::string path = run_.dir.File(fs::path(target).filename().string() + " " + what);
            link(target, path);
            run_.manager.Clear();
            run_.console.clear();
            EXPECT_TRUE(run_.Import(catalog_, path));
            EXPECT_THAT(run_.console, ElementsAre(NotCreated(path), parsing_));
            EXPECT_EQ(ReadFile(catalog_), CleanCatalog());
            EXPECT_EQ(ReadFile(output_), "older output");
        }
    }
}

TEST_F(LogPaths, ImportLogOverAnOutputStillToComeIsRefused) {
    fs::remove(output_);
    fs::create_symlink(output_, run_.dir.File("link.log"));
    for (const std::string& path : {output_, run_.dir.File("link.log")}) {
        SCOPED_TRACE(path);
        run_.manager.Clear();
        run_.console.clear();
        EXPECT_TRUE(run_.Import(catalog_, path));
        EXPECT_THAT(run_.console, ElementsAre(NotCreated(path), parsing_));
        EXPECT_FALSE(FileExists(output_));
    }
}

TEST_F(LogPaths, ImportLogThatCannotBeCreatedIsReportedAndTheImportGoesOn) {
    const Deadline deadline;
    const std::string fifo = run_.dir.File("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {run_.dir.File("missing/Cat.log"), run_.dir.Path(), fifo}) {
        SCOPED_TRACE(path);
        run_.manager.Clear();
        run_.console.clear();
        EXPECT_TRUE(run_.Import(catalog_, path));
        EXPECT_THAT(run_.console, ElementsAre(NotCreated(path), parsing_));
    }
}

TEST_F(LogPaths, TreeLogHoldsTheTreesOfAllCatalogsInOrder) {
    const std::string second = run_.dir.Write("Second.xml", CleanCatalog());
    ASSERT_TRUE(run_.Import(catalog_));
    ASSERT_TRUE(run_.Import(second));
    run_.console.clear();
    const std::string tree = run_.dir.File("tree");
    run_.manager.WriteTreeLog(tree);
    EXPECT_THAT(run_.console, ElementsAre(writing_, writing_));
    const std::string text = ReadFile(tree);
    EXPECT_TRUE(text.starts_with("CATALOG: Cat\n")) << text;
    const std::size_t start = text.find("\nCATALOG: Second\n");
    ASSERT_NE(start, std::string::npos);
    EXPECT_EQ(text.find("\nCATALOG: ", start + 1), std::string::npos);
}

TEST_F(LogPaths, TreeLogReplacesAnOlderOne) {
    ASSERT_TRUE(run_.Import(catalog_));
    const std::string fresh = run_.dir.File("fresh");
    run_.manager.WriteTreeLog(fresh);
    const std::string tree = run_.dir.Write("tree", std::string(1'000'000, 'x'));
    run_.manager.WriteTreeLog(tree);
    EXPECT_EQ(ReadFile(tree), ReadFile(fresh));
    run_.manager.WriteTreeLog(tree);
    EXPECT_EQ(ReadFile(tree), ReadFile(fresh)) << "twice gives the same";
}

TEST_F(LogPaths, EmptyTreeLogPathWritesNothing) {
    ASSERT_TRUE(run_.Import(catalog_));
    run_.console.clear();
    run_.manager.WriteTreeLog("");
    EXPECT_THAT(run_.console, IsEmpty());
}

TEST_F(LogPaths, TreeLogWithoutCatalogsIsOnlyDeleted) {
    const std::string tree = run_.dir.Write("tree", "older tree");
    run_.manager.WriteTreeLog(tree);
    EXPECT_FALSE(FileExists(tree));
    EXPECT_THAT(run_.console, IsEmpty());
}

TEST_F(LogPaths, TreeLogOverCatalogOutputOrImportLogIsRefused) {
    const std::string log = run_.dir.File("Cat.log");
    ASSERT_TRUE(run_.Import(catalog_, log));
    const std::string logText = ReadFile(log);
    for (const std::string& target : {catalog_, output_, log}) {
        std::vector<std::string> paths = {target};
        for (const auto& [what, link] : kLinks) {
            paths.push_back(run_.dir.File(fs::path(target).filename().string() + " " + what));
            link(target, paths.back());
        }
        for (const std::string& path : paths) {
            SCOPED_TRACE(path);
            run_.console.clear();
            run_.manager.WriteTreeLog(path);
            EXPECT_THAT(run_.console, ElementsAre(NotCreated(path)));
            EXPECT_EQ(ReadFile(catalog_), CleanCatalog());
            EXPECT_EQ(ReadFile(output_), "older output");
            EXPECT_EQ(ReadFile(log), logText);
            EXPECT_TRUE(FileExists(path));
        }
    }
}

TEST_F(LogPaths, TreeLogThatCannotBeCreatedIsReported) {
    const Deadline deadline;
    ASSERT_TRUE(run_.Import(catalog_));
    const std::string fifo = run_.dir.File("fifo");
    const std::string emptyDir = run_.dir.File("empty");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_TRUE(fs::create_directory(emptyDir));
    for (const std::string& path : {run_.dir.File("missing/tree"), run_.dir.Path(), emptyDir, fifo}) {
        SCOPED_TRACE(path);
        run_.console.clear();
        run_.manager.WriteTreeLog(path);
        EXPECT_THAT(run_.console, ElementsAre(NotCreated(path)));
    }
    EXPECT_TRUE(FileExists(emptyDir)) << "only a file may be deleted";
    EXPECT_TRUE(FileExists(fifo));
}

TEST_F(LogPaths, LogsBesideEachOtherAreBothWritten) {
    const std::string log = run_.dir.File("Cat.log");
    const std::string tree = run_.dir.File("Cat.tree");
    ASSERT_TRUE(run_.Import(catalog_, log));
    run_.manager.WriteTreeLog(tree);
    EXPECT_THAT(run_.console, Not(Contains(NotCreated(log))));
    EXPECT_THAT(run_.console, Not(Contains(NotCreated(tree))));
    EXPECT_TRUE(ReadFile(log).starts_with("XML import log file created by Ferrow\n"));
    EXPECT_TRUE(ReadFile(tree).starts_with("CATALOG: Cat\n"));
}

}  // namespace
}  // namespace tarvex::test::import_log_paths_test
