/// A catalog as tarvex-catalog reads it: checks in every form, and against a baseline of its own faults;
/// differences from a catalog of all kinds; and what is shown of it.

#include <nlohmann/json.hpp>

#include "catalog_files.h"
#include "catalogs.h"
#include "expansion.h"
#include "import/text/format_text.h"
#include "review/check.h"
#include "review/diff.h"
#include "review/diff_report.h"
#include "review/layout_end.h"
#include "review/show.h"

using namespace tarvex;
using namespace tarvex::fuzz;
using namespace tarvex::review;

namespace {

/// Checks a catalog; what the report says of it.
template <class Make>
std::string Checked(const std::string& path, const CheckOptions& options, const Make& make) {
    std::string text;
    const auto report = make([&](const std::string& piece) { text += piece; });
    const CheckResult result = CheckCatalogs({path}, options, *report);
    for (const std::string& trouble : result.troubles) {
        Require(trouble.starts_with("can't import"), trouble);
        text.clear();
    }
    return text;
}

std::unique_ptr<CheckReport> MakeText(Print print) {
    return MakeCheckText(std::move(print), vorn::Style(false));
}

std::unique_ptr<CheckReport> MakeGroups(Print print) {
    return MakeCheckGroups(std::move(print), vorn::Style(false));
}

std::size_t CountOfLines(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

/// The lines about the differences. Both JSON and table have each of them.
std::size_t CountOfDifferences(const ZMTCatalog& before, const ZMTCatalog& after,
                               const DiffOptions& options) {
    const DiffReport report{"old", "new", CompareCatalogs(before, after, options)};
    std::string text;
    const auto print = [&](const std::string& piece) { text += piece; };
    PrintDiffText(report, vorn::Style(false), print);
    Require(CountOfLines(text) == report.changes.size() + 1, "each difference has a line");
    text.clear();
    PrintDiffJson(report, print);
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, false);
    Require(json.is_object() && json.at("changes").size() == report.changes.size(),
            "the JSON report has all differences");
    text.clear();
    PrintDiffMarkdown(report, print);
    Require(CountOfLines(text) > report.changes.size(), "each difference has a row");
    return report.changes.size();
}

void CompareWithItselfAndOthers(const std::string& path, const ReadingOptions& options, bool areBytesOnly) {
    const CatalogReading reading(path, options);
    if (const ZMTCatalog* catalog = reading.Catalog()) {
        const DiffOptions all{.areDescriptionsCompared = true};
        Require(CountOfDifferences(*catalog, *catalog, all) == 0, "a catalog does not differ from itself");
        const DiffOptions some{.areBytesOnly = areBytesOnly};
        const std::size_t there = CountOfDifferences(FixedCatalog(), *catalog, some);
        Require((there == 0) == (CountOfDifferences(*catalog, FixedCatalog(), some) == 0),
                "catalogs that differ do so both ways");
    }
}

/// The end of what is known of a message goes with the verdict on it.
void CheckEnds(const ZMTFunction& function) {
    for (const ZMTOperation& operation : function.Items()) {
        const auto end = LayoutEndOf(operation);
        const Layout layout = LayoutOf(operation);
        Require(end.has_value() == (layout != Layout::Complete), "what is open has an end");
        Require(!end || !end->isHole || layout == Layout::Incomplete, "what has a hole is incomplete");
    }
}

/// What can be asked of a catalog: each block, some functions in two spellings, a word.
std::vector<std::string> Questions(const ZMTCatalog& catalog, Draw& draw) {
    constexpr std::size_t kFunctions = 4;
    std::vector<std::string> words{"*", "a", draw.Flag() ? "*.*.*" : "?*.S*"};
    std::size_t left = kFunctions;
    for (const ZMTFBlock& block : catalog.Items()) {
        words.push_back(FormatText("%02X", block.FBlockID()));
        for (const ZMTFunction& function : block.Items()) {
            CheckEnds(function);
            if (left > 0 && draw.Flag()) {
                --left;
                words.push_back(FormatText("%02x.01.%x", block.FBlockID(), function.FunctionID() | 0x100U));
                words.push_back(FormatText("%02X.%03X", block.FBlockID(), function.FunctionID()));
            }
        }
    }
    return words;
}

void ShowAll(const std::string& path, ReadingOptions options, Draw& draw) {
    options.areDescriptionsRead = true;
    const CatalogReading reading(path, options);
    if (reading.Catalog() == nullptr) {
        return;
    }
    const std::vector<std::string> words = Questions(*reading.Catalog(), draw);
    Shower shower(reading);
    const std::vector<Answer> answers = shower.AnswersTo(words);
    for (std::size_t i = 3; i < answers.size(); ++i) {
        const bool isAddress = words[i].find(".01.") == std::string::npos;
        Require(!isAddress || answers[i].IsFound(), "what is in the tree is found by its address");
    }
    const auto json = MakeShowJson(reading);
    for (const std::string& text : {json->Of(ViewOf(reading)), json->Of(answers)}) {
        Require(nlohmann::json::parse(text, nullptr, false).is_object(), "what is shown can be read");
    }
    const auto report = MakeShowText(reading, vorn::Style(false));
    const std::string text = report->Of(ViewOf(reading)) + report->Of(answers);
    Require(text.find('\x1B') == std::string::npos, "terminals are told nothing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Draw draw(TextOf(data, size));
    const std::string path = WriteCatalog(Expanded(TextOf(data, size), kMaxCatalog));
    CheckOptions options;
    options.reading.makeReader = MakeLastingReader;
    options.reading.areNewerRead = draw.Flag();
    options.reading.isValidated = draw.Flag();
    const std::string json = Checked(path, options, MakeCheckJson);
    if (json.empty()) {
        return 0;
    }
    CompareWithItselfAndOthers(path, options.reading, draw.Flag());
    const nlohmann::json checked = nlohmann::json::parse(json, nullptr, false);
    Require(checked.is_object(), "the JSON report can be read");
    const nlohmann::json& catalog = checked.at("catalogs").at(0);
    const std::size_t faults = catalog.at("faults").size();
    Require(faults > 0 || catalog.at("is_imported") == true, "what can't be imported has a fault");

    const std::string text = Checked(path, options, MakeText);
    Require(CountOfLines(text) >= faults + 2, "each fault has a line");
    const nlohmann::json sarif = nlohmann::json::parse(
        Checked(path, options, [](Print print) { return MakeCheckSarif(std::move(print), "1"); }), nullptr,
        false);
    Require(sarif.is_object() && sarif.at("runs").at(0).at("results").size() == faults,
            "the SARIF report has all faults");
    Checked(path, options, MakeGroups);
    ShowAll(path, options.reading, draw);

    options.baselinePath = ScratchFile("review.baseline");
    options.writesBaseline = true;
    Checked(path, options, MakeText);
    options.writesBaseline = false;
    const nlohmann::json again = nlohmann::json::parse(Checked(path, options, MakeCheckJson), nullptr, false);
    Require(again.at("catalogs").at(0).at("known") == faults, "all faults are known");
    return 0;
}
