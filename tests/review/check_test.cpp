/// Checks of a catalog in every form.

#include "review/check.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "review/fault_text.h"
#include "support/temp_dir.h"

namespace tarvex::test::check_test {
namespace {

using namespace review;
using nlohmann::json;
using testing::HasSubstr;

/// A type without a name, a function whose type nobody knows, and one without a number.
constexpr const char* kCatalog = R"(<?xml version="1.0"?>
<FunctionCatalog>
  <FBlock><FBlockID>0x22</FBlockID><FBlockName>Amp</FBlockName>
    <Function><FunctionID>0x200</FunctionID><FunctionName>Flags</FunctionName>
      <FunctionClass ClassRef="c"><Property><PUnclassified>
        <PUParam><ParamName>Bits</ParamName>
          <PUParamOPType><PReportStatus><ParamPos>1</ParamPos></PReportStatus></PUParamOPType>
          <PUParamType><TBitField TypeRef="t" Length="8"><TBoolField BitPos="9"><BitTrueDesc>on</BitTrueDesc><BitFalseDesc>off</BitFalseDesc></TBoolField></TBitField></PUParamType>
        </PUParam>
      </PUnclassified></Property></FunctionClass></Function>
    <Function><FunctionID>0x201</FunctionID><FunctionName>Odd</FunctionName>
      <FunctionClass ClassRef="c"><Property><PUnclassified>
        <PUParam><ParamName>What</ParamName>
          <PUParamOPType><PReportStatus><ParamPos>1</ParamPos></PReportStatus></PUParamOPType>
          <PUParamType><TMystery TypeRef="t"/></PUParamType></PUParam>
      </PUnclassified></Property></FunctionClass></Function>
    <Function><FunctionID>here</FunctionID><FunctionName>NoNumber</FunctionName></Function>
  </FBlock>
  <Definition><TypeDef TypeID="t"><TDefSize>1</TDefSize></TypeDef></Definition>
</FunctionCatalog>
)";

/// What a check of the catalog says.
struct Checked {
    bool hasFailed = false;
    std::string text;
    std::vector<std::string> troubles;
};

using Make = std::unique_ptr<CheckReport> (*)(Print);

Checked CheckFile(const std::string& path, Make make, const CheckOptions& options = {}) {
    Checked checked;
    const auto report = make([&](const std::string& text) { checked.text += text; });
    const CheckResult result = CheckCatalogs({path}, options, *report);
    checked.hasFailed = result.hasFailed;
    checked.troubles = result.troubles;
    return checked;
}

std::unique_ptr<CheckReport> MakeText(Print print) {
    return MakeCheckText(std::move(print), vorn::Style(false));
}

std::unique_ptr<CheckReport> MakeGroups(Print print) {
    return MakeCheckGroups(std::move(print), vorn::Style(false));
}

std::unique_ptr<CheckReport> MakeSarif(Print print) {
    return MakeCheckSarif(std::move(print), "1.2.3");
}

class ReviewCheck : public testing::Test {
  protected:
    TempDir dir_;
    std::string path_ = dir_.Write("amp.xml", kCatalog);
};

TEST_F(ReviewCheck, TextHasALinePerFaultAndWhatItCost) {
    const Checked checked = CheckFile(path_, MakeText);
    EXPECT_TRUE(checked.hasFailed);
    EXPECT_EQ(checked.text,
              path_ + ":19:15: warning 1: Can not find element <TDefName> (<TypeDef>) [/amp///]\n" + path_ +
                  ":15:24: error 128: Unknown parameter type in <PUParam> (<TMystery>) [/amp/Amp/Odd]\n" +
                  path_ +
                  ":17:15: error 113: Failed to analyze value 'here' (<FunctionID>) [/amp/Amp/NoNumber]\n" +
                  path_ + ":17:5: error 145: Failed to import element <Function> [/amp/Amp]\n" + path_ +
                  ":11:5: error 123: Function contains no valid operation (<Function>) [/amp/Amp/Odd]\n" +
                  path_ + ": 4 errors, 1 warning\n" +  //
                  path_ + ": 1 function lost; 1 of 2 messages incomplete\n");
}

TEST_F(ReviewCheck, GroupsHaveCauseAndCure) {
    const std::string text = CheckFile(path_, MakeGroups).text;
    EXPECT_THAT(text, HasSubstr("warning 1, 1 time:\n  " + path_ + ":19:15: warning 1: "));
    EXPECT_THAT(text, HasSubstr("error 145, 1 time:\n"));
    EXPECT_THAT(text, HasSubstr("  Cause: "));
    EXPECT_THAT(text, HasSubstr("  Cure: "));
}

TEST_F(ReviewCheck, GroupsShowTheFirstThreePlaces) {
    std::string catalog = kCatalog;
    const std::string function =
        "<Function><FunctionID>here</FunctionID><FunctionName>NoNumber</FunctionName></Function>\n";
    catalog.insert(catalog.find("  </FBlock>"), function + function + function);
    const std::string text = CheckFile(dir_.Write("more.xml", catalog), MakeGroups).text;
    const std::size_t group = text.find("error 113, 4 times:\n");
    ASSERT_NE(group, std::string::npos);
    EXPECT_THAT(text.substr(group), HasSubstr("  and 1 more\n  Cause: "));
}

TEST_F(ReviewCheck, JsonHasFaultsAndVerdicts) {
    const json checked = json::parse(CheckFile(path_, MakeCheckJson).text);
    const json& catalog = checked["catalogs"][0];
    EXPECT_EQ(catalog["file"], path_);
    EXPECT_EQ(catalog["is_imported"], true);
    EXPECT_EQ(catalog["faults"].size(), 5U);
    EXPECT_EQ(catalog["faults"][1], json({{"file", path_},
                                          {"line", 15},
                                          {"column", 24},
                                          {"kind", "error"},
                                          {"source", "importer"},
                                          {"number", 128},
                                          {"text", "Unknown parameter type in <PUParam>"},
                                          {"element", "TMystery"},
                                          {"path", "/amp/Amp/Odd"}}));
    EXPECT_EQ(catalog["verdicts"], json({{"blocks", 1},
                                         {"functions", 2},
                                         {"messages", 2},
                                         {"complete", 1},
                                         {"open", 0},
                                         {"incomplete", {"22.201.C"}},
                                         {"lost_blocks", 0},
                                         {"lost_functions", 1},
                                         {"lost_messages", 0}}));
}

/// What the format asks for: the names that have to be there, where they have to be, and what they may be.
TEST_F(ReviewCheck, SarifHasWhatTheFormatAsksFor) {
    const json log = json::parse(CheckFile(path_, MakeSarif).text);
    EXPECT_EQ(log["version"], "2.1.0");
    ASSERT_EQ(log["runs"].size(), 1U);
    const json& run = log["runs"][0];
    const json& driver = run["tool"]["driver"];
    EXPECT_EQ(driver["name"], "tarvex-catalog");
    EXPECT_EQ(driver["version"], "1.2.3");
    EXPECT_EQ(driver["rules"][0]["shortDescription"]["text"], "A TypeDef has no TDefName, or an empty one.");
    EXPECT_EQ(run["columnKind"], "utf16CodeUnits");
    ASSERT_EQ(run["results"].size(), 5U);
    for (const json& result : run["results"]) {
        const json& rule = driver["rules"].at(result["ruleIndex"].get<std::size_t>());
        EXPECT_EQ(rule["id"], result["ruleId"]);
        EXPECT_THAT(rule["shortDescription"]["text"].get<std::string>(), testing::Not(testing::IsEmpty()));
        EXPECT_THAT(result["level"].get<std::string>(), testing::AnyOf("warning", "error"));
        EXPECT_THAT(result["message"]["text"].get<std::string>(), testing::Not(testing::IsEmpty()));
        ASSERT_EQ(result["locations"].size(), 1U);
        const json& place = result["locations"][0]["physicalLocation"];
        EXPECT_EQ(place["artifactLocation"]["uri"], "file://" + path_);
        EXPECT_GE(place["region"]["startLine"].get<int>(), 1);
        EXPECT_GE(place["region"]["startColumn"].get<int>(), 1);
    }
    EXPECT_EQ(run["results"][1]["locations"][0]["logicalLocations"][0]["fullyQualifiedName"], "/amp/Amp/Odd");
}

TEST_F(ReviewCheck, SarifOfNothingIsWhole) {
    const std::string clean = dir_.Write("a b%.xml",
                                         "<FunctionCatalog><FBlock><FBlockID>1</FBlockID><FBlockName>A</"
                                         "FBlockName></FBlock></FunctionCatalog>");
    CheckOptions options;
    const json one = json::parse(CheckFile(clean, MakeSarif, options).text);
    EXPECT_EQ(one["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"],
              "file://" + dir_.Path() + "/a%20b%25.xml");
    options.ignored = {0};
    const json none = json::parse(CheckFile(clean, MakeSarif, options).text);
    EXPECT_EQ(none["runs"][0]["results"], json::array());
    EXPECT_EQ(none["runs"][0]["tool"]["driver"]["rules"], json::array());
}

TEST_F(ReviewCheck, FaultsCountAsAskedFor) {
    const std::string warnings = dir_.Write("warning.xml", [] {
        std::string catalog = kCatalog;
        const std::size_t begin = catalog.find("    <Function><FunctionID>0x201");
        return catalog.erase(begin, catalog.find("  </FBlock>") - begin);
    }());
    const struct {
        const std::string& path;
        FailOn failOn;
        std::set<unsigned> ignored;
        bool hasFailed;
    } rows[] = {
        {path_, FailOn::Error, {}, true},        {path_, FailOn::Error, {113, 123, 128, 145}, false},
        {path_, FailOn::Never, {}, false},       {warnings, FailOn::Warning, {}, true},
        {warnings, FailOn::Warning, {1}, false}, {warnings, FailOn::Error, {}, false},
    };
    for (const auto& row : rows) {
        CheckOptions options;
        options.failOn = row.failOn;
        options.ignored = row.ignored;
        EXPECT_EQ(CheckFile(row.path, MakeText, options).hasFailed, row.hasFailed) << row.path;
    }
}

TEST_F(ReviewCheck, OnlyNewFaultsCountAgainstABaseline) {
    CheckOptions options;
    options.baselinePath = dir_.File("known");
    options.writesBaseline = true;
    EXPECT_FALSE(CheckFile(path_, MakeText, options).hasFailed);
    options.writesBaseline = false;
    const std::string blank = dir_.Write("amp2.xml", [] {
        std::string catalog = kCatalog;
        return catalog.insert(catalog.find("<FunctionCatalog>"), std::string(50, '\n'));
    }());
    const Checked moved = CheckFile(blank, MakeText, options);
    EXPECT_FALSE(moved.hasFailed);
    EXPECT_EQ(moved.text,
              blank + ": nothing new, 5 known\n" + blank + ": 1 function lost; 1 of 2 messages incomplete\n");
    const std::string worse = dir_.Write("amp3.xml", [] {
        std::string catalog = kCatalog;
        return catalog.replace(catalog.find("<TDefSize>1</TDefSize>"), 22, "");
    }());
    const Checked added = CheckFile(worse, MakeText, options);
    EXPECT_TRUE(added.hasFailed);
    EXPECT_EQ(added.text,
              worse + ":19:15: warning 3: Can not find element <TDefSize> (<TypeDef>) [/amp3///]\n" + worse +
                  ": 1 warning new, 5 known\n" + worse + ": 1 function lost; 1 of 2 messages incomplete\n");
}

/// A function of a class that nobody knows, one without a number whose elements name Set, Get and Status (Get
/// twice), and one that has nothing to lose.
TEST_F(ReviewCheck, MessagesOfLostFunctionsAreLost) {
    const std::string operations =
        "<PUnclassified><PUParam><ParamName>A</ParamName><PUParamOPType><PCmdSet/><PCmdGet/></PUParamOPType>"
        "</PUParam><PUParam><ParamName>B</ParamName><PUParamOPType><PCmdGet/><PReportStatus/></PUParamOPType>"
        "</PUParam></PUnclassified>";
    const std::string weird =
        "<PWeird><PWParam><ParamName>A</ParamName><PWParamOPType><PCmdSet/><PReportStatus/></PWParamOPType>"
        "</PWParam></PWeird>";
    const auto function = [](const char* id, const char* name, const std::string& functionClass) {
        return std::string("<Function><FunctionID>") + id + "</FunctionID><FunctionName>" + name +
               "</FunctionName><FunctionClass><Property>" + functionClass +
               "</Property></FunctionClass></Function>";
    };
    std::string catalog = kCatalog;
    catalog.insert(catalog.find("  </FBlock>"), function("0x300", "Weird", weird) +
                                                    function("none", "Lost", operations) +
                                                    function("0x301", "Empty", "<PUnclassified/>"));
    const std::string path = dir_.Write("lost.xml", catalog);
    const json verdicts = json::parse(CheckFile(path, MakeCheckJson).text)["catalogs"][0]["verdicts"];
    EXPECT_EQ(verdicts["lost_functions"], 2);  // this one and that of kCatalog
    EXPECT_EQ(verdicts["lost_messages"], 2 + 3);
    EXPECT_EQ(verdicts["messages"], 2);
    EXPECT_THAT(CheckFile(path, MakeText).text,
                testing::EndsWith(path + ": 2 functions, 5 messages lost; 1 of 2 messages incomplete\n"));
}

TEST_F(ReviewCheck, OneBaselineServesSeveralCatalogs) {
    const std::string again = dir_.Write("again.xml", kCatalog);
    const std::string twice = dir_.Write("twice.xml", [] {
        std::string catalog = kCatalog;
        return catalog.insert(catalog.find("  </FBlock>"),
                              "<Function><FunctionID>here</FunctionID><FunctionName>NoNumber</FunctionName>"
                              "</Function>");
    }());
    CheckOptions options;
    options.baselinePath = dir_.File("known");
    options.writesBaseline = true;
    const auto report = MakeText([](const std::string&) {});
    CheckCatalogs({path_, again}, options, *report);
    options.writesBaseline = false;
    EXPECT_FALSE(CheckCatalogs({again, path_}, options, *report).hasFailed);
    // Both have the fault once, so no catalog has it twice.
    const Checked checked = CheckFile(twice, MakeText, options);
    EXPECT_TRUE(checked.hasFailed);
    EXPECT_THAT(checked.text, HasSubstr(twice + ": 2 errors new, 5 known\n"));
}

TEST_F(ReviewCheck, OnlyBaselinesAreReplacedByOne) {
    CheckOptions options;
    options.writesBaseline = true;
    for (const char* content : {kCatalog, "tarvex-catalog baseline 12\n", "tarvex-catalog baseline"}) {
        options.baselinePath = dir_.Write("mine", content);
        EXPECT_THROW(CheckFile(path_, MakeText, options), std::runtime_error) << content;
        EXPECT_EQ(test::ReadFile(options.baselinePath), content);
    }
    for (const char* content : {"", "tarvex-catalog baseline 1\n1\tdamaged"}) {
        options.baselinePath = dir_.Write("known", content);
        EXPECT_FALSE(CheckFile(path_, MakeText, options).hasFailed) << content;
        EXPECT_THAT(test::ReadFile(options.baselinePath),
                    testing::StartsWith("tarvex-catalog baseline 1\n1\t"));
    }
}

TEST_F(ReviewCheck, DocumentsThatCannotBeReadAreFaultsOfTheParser) {
    const std::string broken = dir_.Write("broken.xml", "<FunctionCatalog>\n  <FBlock>\n");
    const Checked checked = CheckFile(broken, MakeText);
    EXPECT_TRUE(checked.hasFailed);
    EXPECT_THAT(checked.text, testing::StartsWith(broken + ":3:1: fatal error: "));
    EXPECT_THAT(checked.text,
                testing::EndsWith(broken + ": 1 fatal error\n" + broken + ": could not be imported\n"));
    const json catalog = json::parse(CheckFile(broken, MakeCheckJson).text)["catalogs"][0];
    EXPECT_EQ(catalog["is_imported"], false);
    EXPECT_EQ(catalog["faults"][0]["source"], "parser");
    EXPECT_EQ(catalog["faults"][0]["number"], nullptr);
}

TEST_F(ReviewCheck, FatalErrorsOfTheImporterHaveAPlace) {
    const std::string other = dir_.Write("other.xml", "<!-- not ours -->\n<html/>\n");
    EXPECT_EQ(CheckFile(other, MakeText).text,
              other + ":2:1: fatal error: Can not find element <FunctionCatalog> (<html>)\n" + other +
                  ": 1 fatal error\n" + other + ": could not be imported\n");
}

TEST_F(ReviewCheck, AFileThatIsNotThereIsNoFault) {
    const Checked checked = CheckFile(dir_.File("missing.xml"), MakeText);
    EXPECT_FALSE(checked.hasFailed);
    EXPECT_EQ(checked.text, "");
    EXPECT_THAT(checked.troubles, testing::ElementsAre("can't read '" + dir_.File("missing.xml") + "'"));
}

}  // namespace
}  // namespace tarvex::test::check_test
