#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "command_line/command_line.h"
#include "driver/asm_run.h"
#include "import/text/program_end.h"
#include "import/text/shown_text.h"
#include "versions.h"

namespace {

int Run(int argc, char** argv) {
    std::string catalog;
    std::vector<std::string> files;
    std::string format = "capture";
    std::string settingsPath;
    tarvex::AsmOptions options;
    CLI::App app(
        "Turns names and values into MOST messages: lines such as AudioAmp.01.Bass__Treble.Set Bass=12.5 "
        "Treble=-3, or what tarvex-disasm prints.");
    app.add_option("CATALOG", catalog, "the function catalog")->required();
    app.add_option("FILE", files, "files with lines; - or none: standard input");
    app.add_option("--format", format,
                   "capture: lines such as 22.01.402.0 (7D E2); json: one object per line")
        ->check(CLI::IsMember({"capture", "json"}))
        ->capture_default_str();
    app.add_flag("--force", options.isForced, "let values pass that are out of range or off the step");
    app.add_option(
        "--settings", settingsPath,
        "read the catalog as the [Import] section of this TARVEX.ini says; else all forms, not validated");
    app.set_version_flag("--version", std::string("tarvex-asm ") + tarvex::kProgramVersion);
    app.footer("Exit status: 0 every line became a message, 1 some did not, 2 trouble.");
    if (const std::optional<int> status = tarvex::ReadCommandLine(app, argc, argv)) {
        return *status;
    }
    if (!settingsPath.empty() && !tarvex::ReadForms(settingsPath, options.forms)) {
        tarvex::Complain("tarvex-asm", "can't read '" + tarvex::Shown(settingsPath) + "'");
        return tarvex::kAsmTrouble;
    }
    options.isJson = format == "json";
    return tarvex::RunAsm(catalog, files, options);
}

constexpr char kProgram[] = "tarvex-asm";
[[gnu::init_priority(tarvex::kFirstObject)]] const tarvex::ProgramEnd<kProgram> kEnd;

}  // namespace

int main(int argc, char** argv) {
    return tarvex::RunProgram<kProgram>([&] { return Run(argc, argv); });
}
