#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "driver/settings.h"
#include "import/text/program_end.h"
#include "review/check.h"
#include "review/diff_run.h"
#include "review/explain.h"
#include "review/fault_text.h"
#include "review/show.h"
#include "versions.h"

namespace {

using namespace tarvex::review;

/// The exit status: as other programs that look for faults have it.
enum Status : int { kClean = 0, kFound = 1, kTrouble = 2 };

/// Ends the program with a text on standard error.
class Trouble : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A command of the program, and what it does once its arguments are read.
using Command = std::pair<CLI::App*, std::function<Status()>>;

/// It reaches the output in large pieces, at the latest at the end.
void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        throw Trouble(std::string("can't write the output: ") + std::strerror(errno));
    }
}

void Flush() {
    if (std::fflush(stdout) != 0) {
        throw Trouble(std::string("can't write the output: ") + std::strerror(errno));
    }
}

struct ExplainArguments {
    std::vector<std::string> words;
    bool areAllWanted = false;
    std::string format = "text";
};

Explanations Wanted(const ExplainArguments& arguments) {
    if (arguments.areAllWanted) {
        return AllExplanations();
    }
    if (arguments.words.empty()) {
        throw Trouble("explain needs the number of a message, or --all");
    }
    Explanations wanted;
    for (const std::string& word : arguments.words) {
        const Explanations found = FindExplanations(word);
        if (found.empty()) {
            throw Trouble(NotExplained(word));
        }
        wanted.insert(wanted.end(), found.begin(), found.end());
    }
    return wanted;
}

Status Explain(const ExplainArguments& arguments) {
    const Explanations wanted = Wanted(arguments);
    if (arguments.format == "json") {
        Print(ExplanationJson(wanted));
    } else if (arguments.format == "markdown") {
        Print(arguments.areAllWanted ? MessagesDocument() : ExplanationMarkdown(wanted));
    } else {
        Print(ExplanationText(wanted));
    }
    return kClean;
}

Command AddExplain(CLI::App& app) {
    auto arguments = std::make_shared<ExplainArguments>();
    CLI::App& command = *app.add_subcommand(
        "explain", "tells what messages of the importer mean, what becomes of the element, and what to do");
    CLI::Option* words = command.add_option("NUMBER", arguments->words,
                                            "as the import log has it; or: fatal, for errors without one");
    command.add_flag("--all", arguments->areAllWanted, "all messages")->excludes(words);
    command.add_option("--format", arguments->format, "text, json or markdown")
        ->check(CLI::IsMember({"text", "json", "markdown"}))
        ->capture_default_str();
    return {&command, [arguments] { return Explain(*arguments); }};
}

struct CheckArguments {
    std::vector<std::string> catalogs;
    std::string settingsPath;
    std::string format = "text";
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
        return MakeCheckJson(Print);
    }
    if (arguments.format == "sarif") {
        return MakeCheckSarif(Print, tarvex::kProgramVersion);
    }
    return arguments.isGrouped ? MakeCheckGroups(Print) : MakeCheckText(Print);
}

/// How catalogs are read by the [Import] section of a file; by default without one.
ReadingOptions ReadingBy(const std::string& settingsPath) {
    ReadingOptions reading;
    if (!settingsPath.empty()) {
        const tarvex::IniFile ini(settingsPath);
        if (!ini.IsRead()) {
            throw Trouble("can't read '" + settingsPath + "'");
        }
        const tarvex::Settings settings = tarvex::ReadSettings(ini);
        reading.areNewerRead = settings.importNewer;
        reading.isValidated = settings.importValidate;
    }
    return reading;
}

Status Check(CheckArguments arguments) {
    if (arguments.isGrouped && arguments.format != "text") {
        throw Trouble("--group tells faults as text; it can't be had with --format " + arguments.format);
    }
    arguments.options.reading = ReadingBy(arguments.settingsPath);
    arguments.options.failOn = FailOnOf(arguments.failOn);
    arguments.options.ignored.insert(arguments.ignored.begin(), arguments.ignored.end());
    const auto report = MakeReport(arguments);
    return CheckCatalogs(arguments.catalogs, arguments.options, *report) ? kFound : kClean;
}

/// What all commands that read catalogs have.
void AddSettings(CLI::App& command, std::string& settingsPath) {
    command.add_option(
        "--settings", settingsPath,
        "read catalogs as the [Import] section of this TARVEX.ini says; else all forms, not validated");
}

Command AddCheck(CLI::App& app) {
    auto arguments = std::make_shared<CheckArguments>();
    CheckOptions& options = arguments->options;
    CLI::App& command =
        *app.add_subcommand("check", "tells every fault of catalogs with its place, and what it cost");
    command.add_option("CATALOG", arguments->catalogs, "catalogs; - for standard input")->required();
    command.add_option("--format", arguments->format, "text, json or sarif")
        ->check(CLI::IsMember({"text", "json", "sarif"}))
        ->capture_default_str();
    command.add_flag("--group", arguments->isGrouped, "by number, with cause and cure");
    CLI::Option* baseline = command.add_option("--baseline", options.baselinePath,
                                               "only faults count that this file does not have");
    command.add_flag("--write-baseline", options.writesBaseline, "put all faults into the baseline")
        ->needs(baseline);
    command.add_option("--fail-on", arguments->failOn, "which faults count: error, warning or never")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(kFailOns), std::end(kFailOns))))
        ->capture_default_str();
    command.add_option("--ignore", arguments->ignored, "numbers of messages that are not told, as in 68,69")
        ->delimiter(',');
    AddSettings(command, arguments->settingsPath);
    return {&command, [arguments] { return Check(*arguments); }};
}

Command AddDiff(CLI::App& app) {
    auto run = std::make_shared<DiffRun>();
    auto settingsPath = std::make_shared<std::string>();
    CLI::App& command =
        *app.add_subcommand("diff", "tells what differs between two catalogs, and what of it is on the bus");
    command.add_option("OLD", run->before, "a catalog; - for standard input")->required();
    command.add_option("NEW", run->after, "the catalog that takes its place")->required();
    command.add_option("--format", run->format, "text, json or markdown")
        ->check(CLI::IsMember({"text", "json", "markdown"}))
        ->capture_default_str();
    command.add_flag("--only-bytes", run->options.areBytesOnly,
                     "only what changes messages, their addresses or their bytes");
    command.add_flag("--descriptions", run->options.areDescriptionsCompared, "descriptions, too");
    AddSettings(command, *settingsPath);
    return {&command, [run, settingsPath] {
                run->reading = ReadingBy(*settingsPath);
                return DiffCatalogs(*run, Print) ? kFound : kClean;
            }};
}

struct ShowArguments {
    std::string catalog;
    std::vector<std::string> words;
    std::string settingsPath;
    std::string format = "text";
};

Status Show(const ShowArguments& arguments) {
    ReadingOptions options = ReadingBy(arguments.settingsPath);
    options.areDescriptionsRead = true;
    const CatalogReading reading(arguments.catalog, options);
    TreeOf(reading);  // there has to be one
    const bool isJson = arguments.format == "json";
    const auto report =
        isJson ? MakeShowJson(reading) : MakeShowText(reading, vorn::Style::OfStandardOutput());
    if (arguments.words.empty()) {
        Print(report->Of(ViewOf(reading)));
        return kClean;
    }
    Shower shower(reading);
    const std::vector<Answer> answers = shower.AnswersTo(arguments.words);
    Print(report->Of(answers));
    Status status = kClean;
    for (const Answer& answer : answers) {
        if (!answer.IsFound()) {
            std::fprintf(stderr, "tarvex-catalog: %s\n", NotFoundText(reading, answer).c_str());
            status = kFound;
        }
    }
    return status;
}

Command AddShow(CLI::App& app) {
    auto arguments = std::make_shared<ShowArguments>();
    CLI::App& command = *app.add_subcommand("show", "shows what is in a catalog");
    command.add_option("CATALOG", arguments->catalog, "the catalog; - for standard input")->required();
    command.add_option(
        "WHAT", arguments->words,
        "an address (22, 22.402, 22.402.C), a name (AudioAmp.Volume, with * and ?), or a word to "
        "look for; without any, all blocks");
    command.add_option("--format", arguments->format, "text or json")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    AddSettings(command, arguments->settingsPath);
    return {&command, [arguments] { return Show(*arguments); }};
}

Status Run(int argc, char** argv) {
    CLI::App app("Tells what is wrong with function catalogs, and what is in them");
    app.set_version_flag("--version", std::string("tarvex-catalog ") + tarvex::kProgramVersion);
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 good, 1 faults or differences found, or nothing that was asked for, 2 trouble.");
    const std::vector<Command> commands = {AddCheck(app), AddDiff(app), AddExplain(app), AddShow(app)};
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = app.exit(error) == 0;
        std::cout.flush();
        return isAnswer && std::cout ? kClean : kTrouble;
    }
    for (const auto& [command, run] : commands) {
        if (command->parsed()) {
            const Status status = run();
            Flush();
            return status;
        }
    }
    return kTrouble;
}

constexpr char kProgram[] = "tarvex-catalog";

}  // namespace

int main(int argc, char** argv) {
    return tarvex::RunProgram<kProgram>([&] { return Run(argc, argv); });
}
