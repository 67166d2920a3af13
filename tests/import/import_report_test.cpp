/// What an import writes into its log and sends to the message sink, to the byte.

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/test_texts.h"
#include "support/catalog_import.h"

namespace tarvex::test::import_report_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

class ImportReport : public testing::Test {
  protected:
    ManagerRun run_;
    std::string log_ = run_.dir.File("Cat.log");
    int files_ = 0;
};

TEST_F(ImportReport, CleanImport) {
    const std::string path = run_.dir.Write("Cat.xml", CleanCatalog());
    EXPECT_TRUE(run_.Import(path, log_));
    EXPECT_THAT(run_.console, ElementsAre(SinkText{"Parsing XML '" + path + "'", 1}));
    EXPECT_EQ(ReadFile(log_), WithPath("XML import log file created by Ferrow\n"
                                       "XML file:\n"
                                       "@PATH@\n"
                                       " \n"
                                       "Parser messages:\n"
                                       "Parse done\n"
                                       "\n"
                                       "\n"
                                       "Importer messages (Version 1.0.11):\n"
                                       "\n"
                                       "fatal errors: 0  errors: 0  warnings: 0\n"
                                       "\n"
                                       "\n"
                                       "Import of file @PATH@ completed\n"
                                       "\n"
                                       "\n",
                                       path));
}

TEST_F(ImportReport, ErrorsAndWarningsLeaveTheResultTrue) {
    const std::string path = run_.dir.Write("Cat.xml", CatalogWithOneErrorAndFourWarnings());
    EXPECT_TRUE(run_.Import(path, log_));
    EXPECT_THAT(run_.console, ElementsAre(SinkText{"Parsing XML '" + path + "'", 1},
                                          SinkText{"Import result: errors: 1  warnings: 4", 2}));
    EXPECT_EQ(ReadFile(log_), WithPath("XML import log file created by Ferrow\n"
                                       "XML file:\n"
                                       "@PATH@\n"
                                       " \n"
                                       "Parser messages:\n"
                                       "Parse done\n"
                                       "\n"
                                       "\n"
                                       "Importer messages (Version 1.0.11):\n"
                                       "Warning #0067 in '/Cat/Amp/Volume/Level':\n"
                                       "  Can not find element <Exponent>\n"
                                       "Warning #0068 in '/Cat/Amp/Volume/Level':\n"
                                       "  Can not find element <RangeMin>\n"
                                       "Warning #0069 in '/Cat/Amp/Volume/Level':\n"
                                       "  Can not find element <RangeMax>\n"
                                       "Warning #0070 in '/Cat/Amp/Volume/Level':\n"
                                       "  Can not find element <Step>\n"
                                       "Error #0128 in '/Cat/Amp/Volume':\n"
                                       "  Unknown parameter type in <PUParam>\n"
                                       "\n"
                                       "fatal errors: 0  errors: 1  warnings: 4\n"
                                       "\n"
                                       "\n"
                                       "Import of file @PATH@ completed\n"
                                       "\n"
                                       "\n",
                                       path));
}

TEST_F(ImportReport, ExcludedMessagesStayOutOfTheLogButInTheTotals) {
    const std::string path = run_.dir.Write("Cat.xml", CatalogWithOneErrorAndFourWarnings());
    run_.manager.ImportLogExclusions = {67, 69, 70, 128};
    EXPECT_TRUE(run_.Import(path, log_));
    EXPECT_EQ(run_.console.back(), (SinkText{"Import result: errors: 1  warnings: 4", 2}));
    EXPECT_THAT(ReadFile(log_), HasSubstr("Importer messages (Version 1.0.11):\n"
                                          "Warning #0068 in '/Cat/Amp/Volume/Level':\n"
                                          "  Can not find element <RangeMin>\n"
                                          "\n"
                                          "fatal errors: 0  errors: 1  warnings: 4\n"));
    EXPECT_THAT(run_.manager.ImportLogExclusions, ElementsAre(67U, 69U, 70U, 128U));
}

struct ResultCase {
    const char* what;
    std::string catalog;
    const char* result;
};

TEST_F(ImportReport, WithoutLogTheSinkStillGetsTheResult) {
    const ResultCase kCases[] = {
        {"warnings", CatalogWithFourWarnings(), "Import result: warnings: 4"},
        {"error", CatalogWithOneErrorAndFourWarnings(), "Import result: errors: 1  warnings: 4"},
    };
    for (const auto& [what, catalog, result] : kCases) {
        SCOPED_TRACE(what);
        ManagerRun run;
        const std::string path = run.dir.Write("Cat.xml", catalog);
        EXPECT_TRUE(run.Import(path));
        EXPECT_THAT(run.console, ElementsAre(SinkText{"Parsing XML '" + path + "'", 1}, SinkText{result, 2}));
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(run.dir.Path()), {}), 1)
            << "nothing but the catalog lies in the directory";
    }
}

TEST_F(ImportReport, WrongDocumentElement) {
    const std::string path =
        run_.dir.Write("Cat.xml", "<functioncatalog><FunctionCatalog/></functioncatalog>");
    EXPECT_FALSE(run_.Import(path, log_));
    EXPECT_THAT(run_.console,
                ElementsAre(SinkText{"Parsing XML '" + path + "'", 1},
                            SinkText{"Import result: fatal errors: 1  errors: 0  warnings: 0", 2},
                            SinkText{"Error(s) occured, XML database not available", 1}));
    EXPECT_EQ(ReadFile(log_), WithPath("XML import log file created by Ferrow\n"
                                       "XML file:\n"
                                       "@PATH@\n"
                                       " \n"
                                       "Parser messages:\n"
                                       "Parse done\n"
                                       "\n"
                                       "\n"
                                       "Importer messages (Version 1.0.11):\n"
                                       "Fatal error in '':\n"
                                       "  Can not find element <FunctionCatalog>\n"
                                       "\n"
                                       "fatal errors: 1  errors: 0  warnings: 0\n"
                                       "\n"
                                       "\n"
                                       "Import of file @PATH@ failed\n"
                                       "\n"
                                       "\n",
                                       path));
    EXPECT_EQ(run_.manager.FindCatalog("Cat"), nullptr);
}

TEST_F(ImportReport, FindingsAreThoseOfTheLastImport) {
    const auto findings = [&](const std::string& text) {
        run_.Import(run_.dir.Write("Cat" + std::to_string(++files_) + ".xml", text));
        return run_.manager.Findings();
    };
    const ImportFindings faulty = findings(CatalogWithOneErrorAndFourWarnings());
    EXPECT_EQ(faulty.errors, 1U);
    EXPECT_EQ(faulty.warnings, 4U);
    EXPECT_FALSE(faulty.isRootUnknown);
    EXPECT_FALSE(faulty.namesSchema);
    const ImportFindings broken = findings("<FunctionCatalog>");
    EXPECT_TRUE(broken.complaints.isFatal);
    EXPECT_EQ(broken.errors, 0U);
    EXPECT_TRUE(findings("<Catalog/>").isRootUnknown);
    EXPECT_TRUE(findings("<FunctionCatalog xmlns='urn:a'/>").namesSchema);
    const std::string unchecked = "<!DOCTYPE FunctionCatalog SYSTEM 'no.dtd'><FunctionCatalog/>";
    run_.manager.Validate = true;
    EXPECT_EQ(findings(unchecked).missingDtd, "no.dtd");
    run_.manager.Validate = false;
    EXPECT_EQ(findings(unchecked).missingDtd, "");
    const ImportFindings clean = findings(CleanCatalog());
    EXPECT_EQ(clean.errors + clean.warnings + clean.complaints.errors, 0U);
    EXPECT_EQ(clean.missingDtd, "");
    EXPECT_FALSE(clean.complaints.isFatal || clean.isRootUnknown || clean.namesSchema);
}

TEST_F(ImportReport, FileThatIsNotWellFormed) {
    const std::string path = run_.dir.Write("Cat.xml", "<FunctionCatalog>\n  <FBlock>\n</FunctionCatalog>\n");
    EXPECT_FALSE(run_.Import(path, log_));

    ASSERT_EQ(run_.console.size(), 4U);
    EXPECT_EQ(run_.console[0], (SinkText{"Parsing XML '" + path + "'", 1}));
    EXPECT_EQ(run_.console[1], (SinkText{"Parser:", 1}));
    const std::string complaint = run_.console[2].text;
    EXPECT_THAT(complaint, MatchesRegex("Fatal error at file '" + path +
                                        "': Line: 3, Char: [0-9]+\n  Message: [^\n]+ "));
    EXPECT_EQ(run_.console[2].level, 1);
    EXPECT_EQ(run_.console[3], (SinkText{"Error(s) occured, XML database not available", 1}));

    EXPECT_EQ(ReadFile(log_), WithPath("XML import log file created by Ferrow\n"
                                       "XML file:\n"
                                       "@PATH@\n"
                                       " \n"
                                       "Parser messages:\n" +
                                           complaint.substr(0, complaint.size() - 1) +
                                           "\n"
                                           "\n"
                                           "\n"
                                           "fatal errors: 0  errors: 0  warnings: 0\n"
                                           "\n"
                                           "\n"
                                           "Import of file @PATH@ failed\n"
                                           "\n"
                                           "\n",
                                       path));
}

TEST_F(ImportReport, FilesThatAreNoDocumentsFail) {
    const Deadline deadline;
    const std::pair<const char*, std::string> kCases[] = {
        {"empty", ""},
        {"text", "no XML at all"},
        {"zero bytes", std::string(1000, '\0')},
        {"two document elements", "<FunctionCatalog/><FunctionCatalog/>"},
        {"cut off", CleanCatalog().substr(0, 500)},
        {"unknown entity", "<FunctionCatalog>&unknown;</FunctionCatalog>"},
        {"unknown encoding", R"(<?xml version="1.0" encoding="EBCDIC-XX"?><FunctionCatalog/>)"},
        {"no UTF-8", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><FunctionCatalog>\xE4\xFF</FunctionCatalog>"},
        {"element never closed", "<FunctionCatalog " + std::string(100'000, 'a')},
    };
    for (const auto& [what, text] : kCases) {
        SCOPED_TRACE(what);
        ManagerRun run;
        EXPECT_FALSE(run.Import(run.dir.Write("Cat.xml", text)));
        ASSERT_EQ(run.console.size(), 4U);
        EXPECT_EQ(run.console[1].text, "Parser:");
        EXPECT_THAT(run.console[2].text,
                    testing::StartsWith("Fatal error at file '" + run.dir.File("Cat.xml")));
    }
}

TEST_F(ImportReport, MissingFileWritesNoLog) {
    const std::string path = run_.dir.File("Cat.xml");
    EXPECT_FALSE(run_.Import(path, log_));
    EXPECT_THAT(run_.console, ElementsAre(SinkText{"The file '" + path + "' does not exist", 1},
                                          SinkText{"Error(s) occured, XML database not available", 1}));
    EXPECT_FALSE(FileExists(log_));
}

TEST_F(ImportReport, DirectoryIsNoCatalog) {
    EXPECT_FALSE(run_.Import(run_.dir.Path(), log_));
    EXPECT_THAT(run_.console, ElementsAre(SinkText{"The file '" + run_.dir.Path() + "' does not exist", 1},
                                          SinkText{"Error(s) occured, XML database not available", 1}));
    EXPECT_FALSE(FileExists(log_));
}

TEST_F(ImportReport, SecondImportTruncatesTheLogOfTheFirst) {
    run_.dir.Write("Cat.log", std::string(100'000, 'x'));
    EXPECT_TRUE(run_.Import(run_.dir.Write("Cat.xml", CleanCatalog()), log_));
    EXPECT_EQ(ReadFile(log_).find("xxx"), std::string::npos);
}

TEST_F(ImportReport, CatalogNamedLikeAFormatDoesNoHarm) {
    const std::string path = run_.dir.Write("%n%s%d.xml", CleanCatalog());
    const std::string tree = run_.dir.File("tree");
    EXPECT_TRUE(run_.Import(path, log_));
    run_.manager.WriteTreeLog(tree);
    EXPECT_THAT(run_.console, ElementsAre(SinkText{"Parsing XML '" + path + "'", 1},
                                          SinkText{"Writing internal data structure...", 3}));
    EXPECT_THAT(ReadFile(log_), HasSubstr("XML file:\n" + path + "\n"));
    EXPECT_THAT(ReadFile(log_), HasSubstr("Import of file " + path + " completed\n"));
    // in the tree log the name is a format: %n and %s print nothing, %d prints 0
    EXPECT_THAT(ReadFile(tree),
                testing::StartsWith("CATALOG: 0\n.AbsPath: " + run_.dir.File("0.xml") + "\n"));
}

TEST_F(ImportReport, LongPathsStandWholeInTheLogAndAreCutInFormattedTexts) {
    std::string path = run_.dir.Path();
    for (int i = 0; i < 8; ++i) {
        path += "/" + std::string(150, 'd');
    }
    std::filesystem::create_directories(path);
    path += "/Cat.xml";
    std::filesystem::copy_file(run_.dir.Write("Cat.xml", CleanCatalog()), path);
    EXPECT_TRUE(run_.Import(path, log_));
    EXPECT_THAT(run_.console, ElementsAre(SinkText{("Parsing XML '" + path).substr(0, 979), 1}));
    EXPECT_THAT(ReadFile(log_), HasSubstr("XML file:\n" + path + "\n \n"));
}

}  // namespace
}  // namespace tarvex::test::import_report_test
