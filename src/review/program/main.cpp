#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "command_line/command_line.h"
#include "import/text/program_end.h"
#include "review/program/command.h"
#include "versions.h"

namespace {

using namespace tarvex::review;

int Run(int argc, char** argv) {
    CLI::App app("Tells what is wrong with function catalogs, and what is in them");
    app.set_version_flag("--version", std::string("tarvex-catalog ") + tarvex::kProgramVersion);
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 good, 1 faults or differences found, or nothing that was asked for, 2 trouble.");
    const std::vector<Command> commands = {AddCheck(app), AddDiff(app), AddExplain(app), AddPage(app),
                                           AddShow(app)};
    if (const std::optional<int> status = tarvex::ReadCommandLine(app, argc, argv)) {
        return *status;
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
[[gnu::init_priority(tarvex::kFirstObject)]] const tarvex::ProgramEnd<kProgram> kEnd;

}  // namespace

int main(int argc, char** argv) {
    return tarvex::RunProgram<kProgram>([&] { return Run(argc, argv); });
}
