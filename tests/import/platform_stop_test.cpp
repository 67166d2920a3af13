/// The end of the real XML platform. It can happen once in a process, so this test has a program of its own.

#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>

#include "import/test_texts.h"
#include "import/xml/dom_error_handler.h"

namespace tarvex::test::platform_stop_test {
namespace {

using testing::ElementsAre;

/// The real reader, whose second parse throws.
class SecondReadThrows : public DocumentReader {
  public:
    void StartPlatform() override { reader_->StartPlatform(); }
    void StopPlatform() override { reader_->StopPlatform(); }
    const Element* Read(const std::string& path, bool validate, ZDOMErrorHandler& handler) override {
        const Element* document = reader_->Read(path, validate, handler);
        if (++reads_ == 2) {
            throw std::runtime_error("in the middle of a parse");
        }
        return document;
    }
    void Release() override { reader_->Release(); }

  private:
    std::unique_ptr<DocumentReader> reader_ = MakeXercesReader();
    int reads_ = 0;
};

bool IsPlatformRunning() {
    return xercesc::XMLPlatformUtils::fgMemoryManager != nullptr;
}

std::vector<SinkText> FailedParse(const std::string& path) {
    return {{"Parsing XML '" + path + "'", 1},
            {"Error during parsing '" + path + "'\n", 1},
            {"Error(s) occured, XML database not available", 1}};
}

/// Stands first, since the platform does not run any more after the other.
TEST(PlatformStop, WaitsForTheDocumentsOfOtherReaders) {
    TempDir dir;
    ZDOMErrorHandler handler;
    const std::unique_ptr<DocumentReader> reader = MakeXercesReader();
    reader->StartPlatform();
    ASSERT_NE(reader->Read(dir.Write("First.xml", CleanCatalog()), false, handler), nullptr);
    MakeXercesReader()->StopPlatform();
    EXPECT_TRUE(IsPlatformRunning());
    reader->Release();
    EXPECT_NE(reader->Read(dir.Write("Second.xml", CleanCatalog()), false, handler), nullptr);
}

TEST(PlatformStop, NothingIsParsedAnyMoreAfterAParseHasThrown) {
    ManagerRun run(std::make_unique<SecondReadThrows>());
    const std::string first = run.dir.Write("First.xml", CleanCatalog());
    const std::string second = run.dir.Write("Second.xml", CleanCatalog());
    const std::string third = run.dir.Write("Third.xml", CleanCatalog());
    const std::string tree = run.dir.File("tree");

    ASSERT_TRUE(run.Import(first));
    ASSERT_TRUE(IsPlatformRunning());

    run.console.clear();
    EXPECT_FALSE(run.Import(second));
    EXPECT_EQ(run.console, FailedParse(second));
    EXPECT_FALSE(IsPlatformRunning());

    run.console.clear();
    EXPECT_FALSE(run.Import(third));
    EXPECT_EQ(run.console, FailedParse(third));
    EXPECT_FALSE(IsPlatformRunning()) << "the platform is not started again";

    ManagerRun other;
    const std::string fourth = other.dir.Write("Fourth.xml", CleanCatalog());
    EXPECT_FALSE(other.Import(fourth)) << "the platform belongs to the process, not to the manager";
    EXPECT_EQ(other.console, FailedParse(fourth));
    EXPECT_FALSE(IsPlatformRunning());

    ASSERT_NE(run.manager.FindCatalog("First"), nullptr) << "catalogs do not need the platform";
    run.console.clear();
    run.manager.WriteTreeLog(tree);
    EXPECT_THAT(run.console, ElementsAre(SinkText{"Writing internal data structure...", 3}));
    EXPECT_TRUE(ReadFile(tree).starts_with("CATALOG: First\n"));
}

}  // namespace
}  // namespace tarvex::test::platform_stop_test
