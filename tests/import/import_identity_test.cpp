/// Which catalog a manager holds after several imports: names, paths, groups, files that failed.

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/test_texts.h"
#include "support/catalog_import.h"

namespace tarvex::test::import_identity_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointee;
using testing::Property;

class CatalogList : public testing::Test {
  protected:
    ZMTCatalog* Find(const std::string& name) const { return run_.manager.FindCatalog(name); }

    ManagerRun run_;
    std::string a_ = run_.dir.Write("A.xml", CleanCatalog());
    std::string b_ = run_.dir.Write("B.xml", CleanCatalog());
    std::string broken_ = run_.dir.Write("Broken.xml", "<FunctionCatalog>");
};

TEST_F(CatalogList, IsEmptyAndUnchangedAtFirst) {
    EXPECT_FALSE(run_.manager.IsChanged());
    EXPECT_FALSE(run_.manager.IsCleared());
    EXPECT_EQ(Find("A"), nullptr);
    EXPECT_EQ(run_.manager.FindCatalogByPath(a_), nullptr);
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), IsEmpty());
}

TEST_F(CatalogList, ImportedCatalogIsFoundByNameAndByPath) {
    ASSERT_TRUE(run_.ImportAs("Radio", a_));
    ASSERT_NE(Find("Radio"), nullptr);
    EXPECT_EQ(Find("rADIO"), Find("Radio"));
    EXPECT_EQ(Find("Radi"), nullptr);
    EXPECT_EQ(run_.manager.FindCatalogByPath(a_), Find("Radio"));
    EXPECT_EQ(run_.manager.FindCatalogByPath(b_), nullptr);
    EXPECT_EQ(Find("Radio")->AbsPath(), a_);
    EXPECT_EQ(Find("Radio")->GetPath(), "/Radio");
    EXPECT_TRUE(run_.manager.IsChanged());
    EXPECT_FALSE(run_.manager.IsCleared());
}

TEST_F(CatalogList, SamePathTwiceIsImportedOnce) {
    ASSERT_TRUE(run_.Import(a_));
    const ZMTCatalog* catalog = Find("A");
    run_.console.clear();
    std::filesystem::remove(a_);
    EXPECT_TRUE(run_.Import(a_));
    EXPECT_EQ(Find("A"), catalog);
    EXPECT_THAT(run_.console, IsEmpty());
    EXPECT_THAT(run_.manager.CatalogsOfGroup(1), ElementsAre(catalog));
}

TEST_F(CatalogList, SamePathTwiceDoesNotTouchTheLog) {
    const std::string log = run_.dir.File("A.log");
    ASSERT_TRUE(run_.Import(a_, log));
    run_.dir.Write("A.log", "read and annotated");
    EXPECT_TRUE(run_.Import(a_, log));
    EXPECT_EQ(ReadFile(log), "read and annotated");
}

TEST_F(CatalogList, SameNameForAnotherPathDropsTheFirst) {
    ASSERT_TRUE(run_.ImportAs("Radio", a_));
    ASSERT_TRUE(run_.ImportAs("Radio", b_));
    EXPECT_EQ(Find("Radio")->AbsPath(), b_);
    EXPECT_EQ(run_.manager.FindCatalogByPath(a_), nullptr);
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), ElementsAre(Find("Radio")));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(1), ElementsAre(Find("Radio")));
}

TEST_F(CatalogList, SameNameForABrokenFileDropsTheFirstAsWell) {
    ASSERT_TRUE(run_.ImportAs("Radio", a_));
    EXPECT_FALSE(run_.ImportAs("Radio", broken_));
    EXPECT_EQ(Find("Radio"), nullptr);
    EXPECT_EQ(run_.manager.FindCatalogByPath(a_), nullptr);
}

TEST_F(CatalogList, SamePathUnderAnotherNameIsImportedAgain) {
    ASSERT_TRUE(run_.ImportAs("Radio", a_));
    ASSERT_TRUE(run_.ImportAs("Tuner", a_));
    EXPECT_EQ(run_.CountOfTexts("Parsing XML "), 2U);
    EXPECT_EQ(Find("Radio"), nullptr);
    ASSERT_NE(Find("Tuner"), nullptr);
    EXPECT_EQ(run_.manager.FindCatalogByPath(a_), Find("Tuner"));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), ElementsAre(Find("Tuner")));
}

TEST_F(CatalogList, NameOfOneCatalogAndPathOfAnotherReplaceBoth) {
    ASSERT_TRUE(run_.ImportAs("Radio", a_));
    ASSERT_TRUE(run_.ImportAs("Tuner", b_));
    ASSERT_TRUE(run_.ImportAs("Tuner", a_));
    EXPECT_EQ(Find("Radio"), nullptr);
    EXPECT_EQ(Find("Tuner")->AbsPath(), a_);
    EXPECT_EQ(run_.manager.FindCatalogByPath(b_), nullptr);
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), ElementsAre(Find("Tuner")));
}

TEST_F(CatalogList, KeepsCatalogsOfDifferentNamesAndPaths) {
    ASSERT_TRUE(run_.Import(a_));
    ASSERT_TRUE(run_.Import(b_));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), ElementsAre(Find("A"), Find("B")));
}

TEST_F(CatalogList, FileThatFailedIsNotTriedAgain) {
    EXPECT_FALSE(run_.Import(broken_));
    EXPECT_FALSE(run_.manager.IsChanged());
    run_.dir.Write("Broken.xml", CleanCatalog());
    run_.console.clear();
    EXPECT_FALSE(run_.Import(broken_));
    EXPECT_THAT(run_.console, IsEmpty());
}

TEST_F(CatalogList, FileThatFailedUnderOneNameIsTriedUnderAnother) {
    EXPECT_FALSE(run_.ImportAs("Radio", broken_));
    run_.dir.Write("Broken.xml", CleanCatalog());
    EXPECT_TRUE(run_.ImportAs("Tuner", broken_));
    EXPECT_FALSE(run_.ImportAs("Radio", broken_));
}

TEST_F(CatalogList, MissingFileCountsAsFailed) {
    const std::string path = run_.dir.File("Late.xml");
    EXPECT_FALSE(run_.Import(path));
    run_.dir.Write("Late.xml", CleanCatalog());
    EXPECT_FALSE(run_.Import(path));
}

TEST_F(CatalogList, ClearForgetsCatalogsGroupsAndFailures) {
    ASSERT_TRUE(run_.Import(a_));
    ASSERT_FALSE(run_.Import(broken_));
    run_.manager.Clear();
    EXPECT_TRUE(run_.manager.IsCleared());
    EXPECT_TRUE(run_.manager.IsChanged());
    EXPECT_EQ(Find("A"), nullptr);
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), IsEmpty());
    EXPECT_THAT(run_.manager.CatalogsOfGroup(1), IsEmpty());
    run_.dir.Write("Broken.xml", CleanCatalog());
    EXPECT_TRUE(run_.Import(broken_));
    EXPECT_TRUE(run_.Import(a_));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(1), ElementsAre(Find("Broken"), Find("A")));
}

struct GroupCase {
    std::uint16_t group;
    bool registers;
};

TEST_F(CatalogList, GroupsZeroToFourRegisterInTheirOwnListAndInGroupZero) {
    constexpr GroupCase kCases[] = {{0, true}, {1, true},  {2, true},     {3, true},
                                    {4, true}, {5, false}, {65535, false}};
    for (const auto& [group, registers] : kCases) {
        SCOPED_TRACE(group);
        ManagerRun run;
        ASSERT_TRUE(run.ImportAs("A", run.dir.Write("A.xml", CleanCatalog()), group));
        const std::vector<ZMTCatalog*> all = {run.manager.FindCatalog("A")};
        ASSERT_NE(all[0], nullptr) << "kept, registered or not";
        for (std::uint16_t other = 0; other <= 5; ++other) {
            const bool isListed = registers && (other == group || other == 0);
            EXPECT_EQ(run.manager.CatalogsOfGroup(other), isListed ? all : std::vector<ZMTCatalog*>())
                << other;
        }
        EXPECT_THAT(run.manager.CatalogsOfGroup(65535), IsEmpty());
    }
}

TEST_F(CatalogList, GroupZeroHoldsTheCatalogsOfAllGroups) {
    ASSERT_TRUE(run_.ImportAs("A", a_, 2));
    ASSERT_TRUE(run_.ImportAs("B", b_, 4));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(0), ElementsAre(Find("A"), Find("B")));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(2), ElementsAre(Find("A")));
    EXPECT_THAT(run_.manager.CatalogsOfGroup(4), ElementsAre(Find("B")));
}

TEST_F(CatalogList, EmptyPathFailsAtOnce) {
    std::string name;
    EXPECT_FALSE(run_.manager.Import(name, "", 1, run_.dir.File("new.log")));
    EXPECT_EQ(name, "");
    EXPECT_THAT(run_.console, IsEmpty());
    EXPECT_FALSE(FileExists(run_.dir.File("new.log")));
}

struct NameCase {
    const char* file;
    const char* name;
};

TEST_F(CatalogList, EmptyNameBecomesTheBaseNameOfTheFile) {
    constexpr NameCase kCases[] = {
        {"Cat.xml", "Cat"},          {"Cat.v2.xml", "Cat.v2"}, {"Cat", "Cat"},           {"d.ir/Cat", "Cat"},
        {".xml", "FunctionCatalog"}, {"a b.xml", "a b"},       {"%n%s%d.xml", "%n%s%d"},
    };
    for (const auto& [file, expected] : kCases) {
        SCOPED_TRACE(file);
        ManagerRun run;
        std::filesystem::create_directory(run.dir.File("d.ir"));
        std::string name;
        EXPECT_TRUE(run.manager.Import(name, run.dir.Write(file, CleanCatalog()), 1, ""));
        EXPECT_EQ(name, expected);
        EXPECT_THAT(run.manager.FindCatalog(expected), Pointee(Property(&ZMTCatalog::GetName, expected)));
    }
}

TEST_F(CatalogList, NameIsFilledInEvenWhenTheImportFails) {
    std::string name;
    EXPECT_FALSE(run_.manager.Import(name, run_.dir.File("Missing.xml"), 1, ""));
    EXPECT_EQ(name, "Missing");
}

TEST_F(CatalogList, ImportFromInsideTheMessageSinkIsRefused) {
    ManagerRun other;
    std::vector<bool> results;
    run_.manager.MessageSink = [&](const std::string& /*text*/, ImportEvent /*event*/) {
        std::string name;
        results.push_back(run_.manager.Import(name, b_, 1, ""));
        results.push_back(other.Import(b_));
    };
    EXPECT_TRUE(run_.Import(a_));
    EXPECT_THAT(results, ElementsAre(false, false))
        << "once: \"Parsing XML\" is all that a clean import says";
    EXPECT_EQ(Find("B"), nullptr);

    run_.manager.MessageSink = nullptr;
    EXPECT_TRUE(run_.Import(b_)) << "a refused import is no failed one";
    EXPECT_TRUE(other.Import(b_));
}

TEST_F(CatalogList, ImportIsPossibleAgainAfterAFailure) {
    EXPECT_FALSE(run_.Import(broken_));
    EXPECT_TRUE(run_.Import(a_));
}

TEST_F(CatalogList, ImportWorksWithoutAnyMessageSink) {
    run_.manager.MessageSink = nullptr;
    EXPECT_TRUE(run_.Import(a_));
    EXPECT_FALSE(run_.Import(broken_));
    EXPECT_FALSE(run_.Import(run_.dir.File("missing")));
}

TEST_F(CatalogList, ValidationIsOnUnlessSwitchedOff) {
    EXPECT_TRUE(ZMostFCatManager().Validate);
}

}  // namespace
}  // namespace tarvex::test::import_identity_test
