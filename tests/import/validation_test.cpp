/// Document types: validation, DTDs that are missing, standalone documents, defaulted attributes.

#include <filesystem>
#include <string>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/catalog_dtd.h"
#include "import/test_texts.h"
#include "support/catalog_import.h"

namespace tarvex::test::validation_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

constexpr const char* kLocalDtd = R"(SYSTEM "fcat.dtd")";
constexpr bool kBoth[] = {false, true};

/// One import of a catalog beside which a DTD may lie.
class Document : public ManagerRun {
  public:
    Document(std::string_view xml, bool validate, const char* dtd = nullptr)
        : path(dir.Write("Cat.xml", xml)), logPath(dir.File("Cat.log")) {
        if (dtd != nullptr) {
            dir.Write("fcat.dtd", dtd);
        }
        manager.Validate = validate;
        ok = Import(path, logPath);
        for (std::size_t i = 0; i + 1 < console.size(); ++i) {
            if (console[i] == SinkText{"Parser:", 1}) {
                complaints = console[i + 1].text;
            }
        }
    }

    std::string Log() const { return ReadFile(logPath); }

    std::string path;
    std::string logPath;
    bool ok = false;
    /// What the parser said.
    std::string complaints;
};

TEST(Validation, ValidCatalogPasses) {
    for (const bool validate : kBoth) {
        SCOPED_TRACE(validate);
        const Document document(WithDoctype(CleanCatalog(), kLocalDtd), validate, kCatalogDtd);
        EXPECT_TRUE(document.ok);
        EXPECT_THAT(document.console, ElementsAre(SinkText{"Parsing XML '" + document.path + "'", 1}));
    }
}

TEST(Validation, InvalidCatalogFailsOnlyWithValidation) {
    std::string catalog = CleanCatalog();
    const std::string_view kOptional = "<FBlockID>0x22</FBlockID>";
    catalog.insert(catalog.find(kOptional), "<Extra/>");
    const Document strict(WithDoctype(catalog, kLocalDtd), true, kCatalogDtd);
    EXPECT_FALSE(strict.ok);
    EXPECT_THAT(strict.complaints, MatchesRegex("Error at file '" + strict.path +
                                                "': Line: [0-9]+, Char: [0-9]+\n  Message: [^\n]+(.|\n)* "));
    EXPECT_EQ(strict.console.back(), (SinkText{"Error(s) occured, XML database not available", 1}));
    EXPECT_THAT(strict.Log(), Not(HasSubstr("Parse done")));
    EXPECT_THAT(strict.Log(), HasSubstr("Parser messages:\nError at file '" + strict.path + "': Line: "));

    const Document lax(WithDoctype(catalog, kLocalDtd), false, kCatalogDtd);
    EXPECT_TRUE(lax.ok);
    EXPECT_EQ(lax.complaints, "");
}

TEST(Validation, DocumentWithoutDoctypeIsNeverValidated) {
    for (const bool validate : kBoth) {
        SCOPED_TRACE(validate);
        const Document document(CleanCatalog(), validate);
        EXPECT_TRUE(document.ok);
        EXPECT_EQ(document.complaints, "");
    }
}

TEST(Validation, InternalSubsetIsValidatedToo) {
    const std::string subset = "[" + std::string(kCatalogDtd) + "]";
    EXPECT_TRUE(Document(WithDoctype(CleanCatalog(), subset), true).ok);
    std::string catalog = CleanCatalog();
    catalog.replace(catalog.find("<Function>"), 10, "<Function Odd=\"1\">");
    EXPECT_FALSE(Document(WithDoctype(catalog, subset), true).ok);
    EXPECT_TRUE(Document(WithDoctype(catalog, subset), false).ok);
}

TEST(Validation, ParserWarningAloneDoesNotFailTheImport) {
    // declared twice: the first declaration holds, the parser warns
    const std::string dtd = std::string(kCatalogDtd) + R"(<!ATTLIST TString MaxSize CDATA "20">)";
    const Document document(WithDoctype(CleanCatalog(), kLocalDtd), true, dtd.c_str());
    EXPECT_TRUE(document.ok);
    EXPECT_THAT(document.complaints, MatchesRegex("Warning at file '" + document.dir.File("fcat.dtd") +
                                                  "': Line: [0-9]+, Char: [0-9]+\n  Message: [^\n]+ "));
    // in the log the complaints keep their line feed, and the line its own
    EXPECT_THAT(document.Log(), HasSubstr("Parser messages:\n" +
                                          document.complaints.substr(0, document.complaints.size() - 1) +
                                          "\n\nParse done\n"));
}

TEST(Validation, MissingDtdIsAWarningWithoutValidation) {
    const Document document(WithDoctype(CleanCatalog(), kLocalDtd), false);
    EXPECT_TRUE(document.ok);
    EXPECT_THAT(document.complaints,
                MatchesRegex("Warning at file '" + document.path +
                             "': Line: [0-9]+, Char: [0-9]+\n  Message: [^\n]*fcat.dtd[^\n]* "));
    EXPECT_THAT(document.console, ElementsAre(SinkText{"Parsing XML '" + document.path + "'", 1},
                                              SinkText{"Parser:", 1}, SinkText{document.complaints, 1}));
}

TEST(Validation, MissingDtdIsFatalWithValidation) {
    const Document document(WithDoctype(CleanCatalog(), kLocalDtd), true);
    EXPECT_FALSE(document.ok);
    EXPECT_THAT(document.complaints, HasSubstr("Fatal error at file '" + document.path + "': Line: "));
    EXPECT_THAT(document.complaints, HasSubstr("fcat.dtd"));
}

TEST(Validation, DtdThatIsNoRegularFileCountsAsMissing) {
    const Deadline deadline;
    const TempDir elsewhere;
    const std::string fifo = elsewhere.File("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {elsewhere.Path(), fifo}) {
        for (const bool validate : kBoth) {
            SCOPED_TRACE(path + (validate ? ", validating" : ""));
            const Document document(WithDoctype(CleanCatalog(), "SYSTEM \"" + path + "\""), validate);
            EXPECT_EQ(document.ok, !validate);
        }
    }
}

TEST(Validation, BrokenDtdIsFatalEitherWay) {
    for (const bool validate : kBoth) {
        SCOPED_TRACE(validate);
        const Document document(WithDoctype(CleanCatalog(), kLocalDtd), validate,
                                "<!ELEMENT FunctionCatalog");
        EXPECT_FALSE(document.ok);
        EXPECT_THAT(document.complaints, HasSubstr("Fatal error at file "));
    }
}

constexpr const char* kStandalone = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";

TEST(Validation, StandaloneDocumentMayBeIndentedAndUseDefaults) {
    std::string catalog = CatalogOfParams(Param("Title", "<TString/>"));
    const Document document(WithDoctype(catalog, kLocalDtd, kStandalone), true, kCatalogDtd);
    EXPECT_TRUE(document.ok);
    EXPECT_THAT(document.complaints, MatchesRegex("(Warning at file '" + document.path +
                                                  "': Line: [0-9]+, Char: [0-9]+\n  Message: [^\n]+[\n ])+"));
    EXPECT_THAT(document.complaints, Not(HasSubstr("Error at file")));
    EXPECT_THAT(document.Log(), HasSubstr("fatal errors: 0  errors: 0  warnings: 0\n"))
        << "the defaults belong to the catalog, and warnings of the parser are not the importer's";
}

TEST(Validation, StandaloneDocumentIsStillValidated) {
    std::string catalog = CleanCatalog();
    catalog.replace(catalog.find("<Function>"), 10, "<Function Odd=\"1\">");
    EXPECT_FALSE(Document(WithDoctype(catalog, kLocalDtd, kStandalone), true, kCatalogDtd).ok);
}

TEST(Validation, StandaloneDocumentWithoutValidationGivesNoWarning) {
    const Document document(
        WithDoctype(CatalogOfParams(Param("Title", "<TString/>")), kLocalDtd, kStandalone), false,
        kCatalogDtd);
    EXPECT_TRUE(document.ok);
    EXPECT_EQ(document.complaints, "");
}

TEST(Validation, DefaultedAttributesReachTheCatalogEitherWay) {
    const std::string catalog = CatalogOfParams(Param("Title", "<TString/>"));
    for (const bool validate : kBoth) {
        SCOPED_TRACE(validate);
        const Document document(WithDoctype(catalog, kLocalDtd), validate, kCatalogDtd);
        EXPECT_TRUE(document.ok);
        EXPECT_THAT(document.Log(),
                    HasSubstr("Importer messages (Version 1.0.11):\n\nfatal errors: 0  errors: 0"));
    }
    const Document without(catalog, false);
    EXPECT_THAT(without.Log(), HasSubstr("Error #0087 in '/Cat/Amp/Volume/Title':\n"
                                         "  Missing required attribute MaxSize\n"))
        << "it is the DTD that fills the gap";
}

struct PlaceCase {
    const char* what;
    const char* dir;
    const char* file;
    const char* systemId;
};

TEST(Validation, DtdIsFoundRelativeToTheCatalog) {
    constexpr PlaceCase kCases[] = {
        {"beside", "d", "d/fcat.dtd", "fcat.dtd"},
        {"spelled with a dot", "d", "d/fcat.dtd", "./fcat.dtd"},
        {"below", "d", "d/sub/fcat.dtd", "sub/fcat.dtd"},
        {"above", "d", "fcat.dtd", "../fcat.dtd"},
        {"blank in the folder", "a b", "a b/fcat.dtd", "fcat.dtd"},
        {"percent sign in the folder", "a%20b", "a%20b/fcat.dtd", "fcat.dtd"},
        {"hash in the folder", "a#b", "a#b/fcat.dtd", "fcat.dtd"},
        {"colon in the folder", "a:b", "a:b/fcat.dtd", "fcat.dtd"},
        {"question mark in the folder", "a?b", "a?b/fcat.dtd", "fcat.dtd"},
        {"umlaut in the folder", "a\xC3\xA4", "a\xC3\xA4/fcat.dtd", "fcat.dtd"},
        {"folder that is no UTF-8", "a\xE4", "a\xE4/fcat.dtd", "fcat.dtd"},
        {"blank in the name", "d", "d/f cat.dtd", "f cat.dtd"},
        {"escaped blank in the name", "d", "d/f cat.dtd", "f%20cat.dtd"},
        {"umlaut in the name", "d", "d/f\xC3\xA4.dtd", "f\xC3\xA4.dtd"},
    };
    for (const auto& [what, dir, file, systemId] : kCases) {
        SCOPED_TRACE(what);
        ManagerRun run;
        std::filesystem::create_directories(std::filesystem::path(run.dir.File(file)).parent_path());
        std::filesystem::create_directories(run.dir.File(dir));
        run.dir.Write(file, kCatalogDtd);
        const std::string xml = WithDoctype(CleanCatalog(), R"(SYSTEM ")" + std::string(systemId) + R"(")");
        const std::string path = run.dir.Write(std::string(dir) + "/Cat.xml", xml);
        run.manager.Validate = true;
        EXPECT_TRUE(run.Import(path));
        EXPECT_EQ(run.CountOfTexts("Parser:"), 0U) << testing::PrintToString(run.console);
    }
}

TEST(Validation, DtdIsFoundWhenTheCatalogIsNamedWithoutFolder) {
    ManagerRun run;
    run.dir.Write("fcat.dtd", kCatalogDtd);
    run.dir.Write("Cat.xml", WithDoctype(CleanCatalog(), kLocalDtd));
    const WorkingDir working(run.dir.Path());
    run.manager.Validate = true;
    EXPECT_TRUE(run.Import("Cat.xml"));
    EXPECT_THAT(run.console, ElementsAre(SinkText{"Parsing XML 'Cat.xml'", 1}));
}

TEST(Validation, DtdIsNotLookedForInTheWorkingDirectory) {
    const TempDir elsewhere;
    elsewhere.Write("fcat.dtd", kCatalogDtd);
    const WorkingDir working(elsewhere.Path());
    EXPECT_FALSE(Document(WithDoctype(CleanCatalog(), kLocalDtd), true).ok);
}

TEST(Validation, DtdWithAFileUriIsRead) {
    const TempDir elsewhere;
    const std::string dtd = elsewhere.Write("f cat.dtd", kCatalogDtd);
    for (const std::string& systemId : {dtd, "file://" + elsewhere.File("f%20cat.dtd"),
                                        "file://localhost" + elsewhere.File("f%20cat.dtd")}) {
        SCOPED_TRACE(systemId);
        const Document document(WithDoctype(CleanCatalog(), R"(SYSTEM ")" + systemId + R"(")"), true);
        EXPECT_TRUE(document.ok);
        EXPECT_EQ(document.complaints, "");
    }
}

TEST(Validation, PartsOfADtdAreFoundRelativeToTheDtd) {
    ManagerRun run;
    std::filesystem::create_directory(run.dir.File("sub"));
    run.dir.Write("sub/fcat.dtd", R"(<!ENTITY % all SYSTEM "all.mod">%all;)");
    run.dir.Write("sub/all.mod", kCatalogDtd);
    run.manager.Validate = true;
    EXPECT_TRUE(
        run.Import(run.dir.Write("Cat.xml", WithDoctype(CleanCatalog(), R"(SYSTEM "sub/fcat.dtd")"))));
    EXPECT_EQ(run.CountOfTexts("Parser:"), 0U) << testing::PrintToString(run.console);
}

}  // namespace
}  // namespace tarvex::test::validation_test
