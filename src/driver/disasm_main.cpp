#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command_line/command_line.h"
#include "disasm/csv_report.h"
#include "disasm/json_report.h"
#include "disasm/text_report.h"
#include "driver/disasm_run.h"
#include "import/text/program_end.h"
#include "import/text/shown_text.h"
#include "import/text/wording.h"
#include "versions.h"

namespace {

/// What is wrong with a text for a time span; empty for one.
std::string WrongSeconds(const std::string& text) {
    double seconds = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, seconds);
    const bool isGood = error == std::errc() && last == end && std::isfinite(seconds) && seconds >= 0;
    return isGood ? std::string() : "'" + tarvex::ShownText(text) + "', expected a number of seconds";
}

int Run(int argc, char** argv) {
    std::string catalog;
    std::vector<std::string> captures;
    std::string format = "text";
    std::string settingsPath;
    bool wantsStats = false;
    double segmentSeconds = 0;
    tarvex::DisasmOptions options;
    CLI::App app(
        "Tells what MOST messages say. A capture has lines such as 22.01.400.C (32), names in place of the "
        "numbers, tables with a header, or JSON objects; blank lines and lines that begin with # are "
        "skipped.");
    app.add_option("CATALOG", catalog, "the function catalog")->required();
    app.add_option("FILE", captures, "captures; - or none: standard input");
    app.add_option("--format", format,
                   "text: a block of lines per message; json: an object per line; csv: a row per value")
        ->check(CLI::IsMember({"text", "json", "csv"}))
        ->capture_default_str();
    app.add_option("--only", options.only,
                   "FAULTY, or the beginning of an address (22.01, 22.*.400) or a name (AudioAmp.Volume)")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("--stats", wantsStats, "how many messages each address has, in place of the messages");
    app.add_option("--columns", options.columns,
                   "columns of tables without a header: time,fblock,inst,function,optype,length,data,...");
    CLI::Option* timeout = app.add_option("--segment-timeout", segmentSeconds,
                                          "seconds until the next segment of a message is given up (5)")
                               ->check(WrongSeconds);
    app.add_option(
        "--settings", settingsPath,
        "read the catalog as the [Import] section of this TARVEX.ini says; else all forms, not validated");
    app.set_version_flag("--version", std::string("tarvex-disasm ") + tarvex::kProgramVersion);
    app.footer("Exit status: 0 every line was a message that fits the catalog, 1 some were not, 2 trouble.");
    if (const std::optional<int> status = tarvex::ReadCommandLine(app, argc, argv)) {
        return *status;
    }
    std::unique_ptr<tarvex::Report> report;
    tarvex::StatsFormat stats = tarvex::StatsFormat::Text;
    if (format == "json") {
        report = std::make_unique<tarvex::JsonReport>();
        stats = tarvex::StatsFormat::Json;
    } else if (format == "csv") {
        report = std::make_unique<tarvex::CsvReport>();
        stats = tarvex::StatsFormat::Csv;
    } else {
        report = std::make_unique<tarvex::TextReport>();
    }
    if (wantsStats) {
        options.stats = stats;
    }
    if (timeout->count() > 0) {
        options.segmentSeconds = segmentSeconds;
    }
    if (!settingsPath.empty() && !tarvex::ReadForms(settingsPath, options.forms)) {
        tarvex::Complain("tarvex-disasm", "can't read '" + tarvex::Shown(settingsPath) + "'");
        return tarvex::kDisasmTrouble;
    }
    return tarvex::RunDisasm(catalog, captures, *report, options);
}

constexpr char kProgram[] = "tarvex-disasm";
[[gnu::init_priority(tarvex::kFirstObject)]] const tarvex::ProgramEnd<kProgram> kEnd;

}  // namespace

int main(int argc, char** argv) {
    return tarvex::RunProgram<kProgram>([&] { return Run(argc, argv); });
}
