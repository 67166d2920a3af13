#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "disasm/json_report.h"
#include "disasm/text_report.h"
#include "driver/disasm_run.h"
#include "driver/settings.h"
#include "import/text/shown_text.h"
#include "versions.h"

int main(int argc, char** argv) try {
    std::string catalog;
    std::vector<std::string> captures;
    std::string format = "text";
    std::string settingsPath;
    CLI::App app(
        "Tells what MOST messages say. Each line of a capture is FBlockID.InstID.FktID.OPType, all "
        "hexadecimal, "
        "and the data bytes; blank lines and lines that begin with # are skipped.");
    app.add_option("CATALOG", catalog, "the function catalog")->required();
    app.add_option("FILE", captures, "captures; - or none: standard input");
    app.add_option("--format", format, "text: a block of lines per message; json: one object per line")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    app.add_option(
        "--settings", settingsPath,
        "read the catalog as the [Import] section of this TARVEX.ini says; else all forms, not validated");
    app.set_version_flag("--version", std::string("tarvex-disasm ") + tarvex::kProgramVersion);
    app.footer("Exit status: 0 every line was a message that fits the catalog, 1 some were not, 2 trouble.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = app.exit(error) == 0;
        std::cout.flush();
        return isAnswer && std::cout ? tarvex::kDisasmClean : tarvex::kDisasmTrouble;
    }
    std::unique_ptr<tarvex::Report> report;
    if (format == "json") {
        report = std::make_unique<tarvex::JsonReport>();
    } else {
        report = std::make_unique<tarvex::TextReport>();
    }
    tarvex::CatalogForms forms;
    if (!settingsPath.empty()) {
        const tarvex::IniFile ini(settingsPath);
        if (!ini.IsRead()) {
            std::fprintf(stderr, "tarvex-disasm: can't read '%s'\n", tarvex::Shown(settingsPath).c_str());
            return tarvex::kDisasmTrouble;
        }
        const tarvex::Settings settings = tarvex::ReadSettings(ini);
        forms = {settings.importNewer, settings.importValidate};
    }
    return tarvex::RunDisasm(catalog, captures, *report, forms);
} catch (const std::exception& exception) {
    std::fprintf(stderr, "tarvex-disasm: %s\n", exception.what());
    return tarvex::kDisasmTrouble;
}
