#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "import/text/shown_text.h"
#include "review/check.h"
#include "review/program/command.h"
#include "versions.h"

namespace tarvex::review {
namespace {

struct CheckArguments {
    std::vector<std::string> catalogs;
    std::string settingsPath;
    std::string format = "text";
    vorn::Colouring colouring = vorn::Colouring::Auto;
    bool isGrouped = false;
    CheckOptions options;
    std::string failOn = "warning";
    std::vector<unsigned> ignored;
};

constexpr const char* kFailOns[] = {"error", "warning", "never"};

FailOn FailOnOf(const std::string& word) {
    const auto* found = std::ranges::find(kFailOns, word);
    return static_cast<FailOn>(found - std::begin(kFailOns));
}

std::unique_ptr<CheckReport> MakeReport(const CheckArguments& arguments) {
    if (arguments.format == "json") {
        return MakeCheckJson(PrintOut);
    }
    if (arguments.format == "sarif") {
        return MakeCheckSarif(PrintOut, kProgramVersion);
    }
    const vorn::Style style = vorn::Style::OfStandardOutput(arguments.colouring);
    return arguments.isGrouped ? MakeCheckGroups(PrintOut, style) : MakeCheckText(PrintOut, style);
}

Status Check(CheckArguments arguments) {
    if (arguments.isGrouped && arguments.format != "text") {
        throw Trouble("--group tells faults as text; it can't be had with --format " + arguments.format);
    }
    arguments.options.reading = ReadingBy(arguments.settingsPath);
    arguments.options.failOn = FailOnOf(arguments.failOn);
    arguments.options.ignored = ExclusionsBy(arguments.settingsPath);
    arguments.options.ignored.insert(arguments.ignored.begin(), arguments.ignored.end());
    const auto report = MakeReport(arguments);
    const CheckResult result = CheckCatalogs(arguments.catalogs, arguments.options, *report);
    for (const std::string& trouble : result.troubles) {
        std::fprintf(stderr, "tarvex-catalog: %s\n", Shown(trouble).c_str());
    }
    if (!result.troubles.empty()) {
        return kTrouble;
    }
    return result.hasFailed ? kFound : kClean;
}

}  // namespace

Command AddCheck(CLI::App& app) {
    auto arguments = std::make_shared<CheckArguments>();
    CheckOptions& options = arguments->options;
    CLI::App& command =
        *app.add_subcommand("check", "tells every fault of catalogs with its place, and what it cost");
    command.add_option("CATALOG", arguments->catalogs, "catalogs; - for standard input")->required();
    AddFormat(command, arguments->format, {"text", "json", "sarif"});
    command.add_flag("--group", arguments->isGrouped, "by number, with cause and cure");
    CLI::Option* baseline = command.add_option("--baseline", options.baselinePath,
                                               "only faults count that this file does not have");
    command.add_flag("--write-baseline", options.writesBaseline, "put all faults into the baseline")
        ->needs(baseline);
    command.add_option("--fail-on", arguments->failOn, "which faults count: error, warning or never")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(kFailOns), std::end(kFailOns))))
        ->capture_default_str();
    command.add_option("--ignore", arguments->ignored, "numbers of messages that are not told, as in 68,69")
        ->delimiter(',')
        ->check(CLI::PositiveNumber);
    vorn::AddColouring(command, arguments->colouring);
    AddSettings(command, arguments->settingsPath);
    return {&command, [arguments] { return Check(*arguments); }};
}

}  // namespace tarvex::review
