#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command_line/command_line.h"
#include "drawing/colour_option.h"
#include "import/text/program_end.h"
#include "versions.h"
#include "vorn/commands.h"
#include "vorn/output.h"

namespace {

using vorn::Arguments;
using vorn::Status;

/// Adds a command with its database.
CLI::App& AddCommand(CLI::App& app, const char* name, const char* what, const char* databaseName,
                     Arguments& arguments) {
    CLI::App& command = *app.add_subcommand(name, what);
    command
        .add_option(databaseName, arguments.database, "a database: Vorn or SQLite, whatever its extension")
        ->required();
    return command;
}

/// Adds options that choose messages. Each may be given several times.
void AddSelection(CLI::App& command, vorn::Selection& selection) {
    const auto add = [&](const char* names, std::vector<std::string>& texts, const char* what) {
        command.add_option(names, texts, what)->allow_extra_args(false)->type_name("TEXT");
    };
    add("--message,--match", selection.messages,
        "only those with this name, identifier (0x... or decimal) or address (22.402.C)");
    add("--fblock", selection.fblocks, "only those of this function block: its name, or its number (0x22)");
    add("--function", selection.functions, "only those of this function: its name, or its number (0x402)");
    add("--optype", selection.opTypes, "only those of this operation: its name, or its number (0xC)");
    add("--node", selection.nodes, "only those that this node sends");
    command.footer(
        "Names and addresses are found in any case, and may have * ? [abc] as the shell has them.");
}

/// Adds a database that is written.
void AddOutput(CLI::App& command, Arguments& arguments) {
    command
        .add_option("OUT", arguments.output,
                    "its extension chooses the format: " + vorn::OutputExtensions() + "; Vorn without one")
        ->required();
    command.add_flag("--force", arguments.isForced, "replaces a file that is no database, too");
}

void AddFormat(CLI::App& command, std::string& format, const std::vector<std::string>& formats) {
    command.add_option("--format", format)->check(CLI::IsMember(formats))->capture_default_str();
}

/// A command and what it does.
using Command = std::pair<CLI::App*, Status (*)(const Arguments&)>;

std::vector<Command> AddCommands(CLI::App& app, Arguments& arguments) {
    CLI::App& show =
        AddCommand(app, "show", "shows a database, or messages with their bits", "DB", arguments);
    AddSelection(show, arguments.selection);
    vorn::AddColouring(show, arguments.colouring);
    CLI::App& list = AddCommand(app, "list", "lists messages", "DB", arguments);
    AddSelection(list, arguments.selection);
    AddFormat(list, arguments.format, {"text", "json", "csv"});
    CLI::App& convert = AddCommand(app, "convert", "writes a database in another format", "IN", arguments);
    AddOutput(convert, arguments);
    CLI::App& diff = AddCommand(app, "diff", "tells what differs between two databases", "OLD", arguments);
    diff.add_option("NEW", arguments.other, "the other database")->required();
    AddFormat(diff, arguments.format, {"text", "json", "markdown"});
    diff.add_flag("--names", arguments.withNames,
                  "also tells of names that differ only in what makes them unique");
    vorn::AddColouring(diff, arguments.colouring);
    CLI::App& check = AddCommand(app, "check", "looks for faults in a database", "DB", arguments);
    AddFormat(check, arguments.format, {"text", "json"});
    CLI::App& subset = AddCommand(app, "subset", "writes some messages of a database", "IN", arguments);
    AddOutput(subset, arguments);
    AddSelection(subset, arguments.selection);
    subset.add_flag("--except", arguments.isExcept, "writes all messages but those");
    CLI::App& merge = AddCommand(app, "merge", "writes two databases as one", "A", arguments);
    merge.add_option("B", arguments.other, "the other database")->required();
    AddOutput(merge, arguments);
    merge.add_option("--prefer", arguments.preferred, "what is taken where they differ")
        ->check(CLI::IsMember({"first", "second"}));
    vorn::AddColouring(merge, arguments.colouring);
    return {{&show, vorn::Show},   {&list, vorn::List},     {&convert, vorn::Convert}, {&diff, vorn::Diff},
            {&check, vorn::Check}, {&subset, vorn::Subset}, {&merge, vorn::Merge}};
}

int Run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Looks into bus databases, converts, compares and joins them");
    app.set_version_flag("--version", std::string("vorn ") + tarvex::kProgramVersion);
    app.require_subcommand(1);
    app.footer(
        "Exit status: 0 nothing found, 1 differences or faults found, or nothing that was looked for, "
        "2 trouble.");
    const std::vector<Command> commands = AddCommands(app, arguments);
    if (const std::optional<int> status = tarvex::ReadCommandLine(app, argc, argv)) {
        return *status;
    }
    for (const auto& [command, run] : commands) {
        if (command->parsed()) {
            return run(arguments);
        }
    }
    return vorn::kTrouble;
}

constexpr char kProgram[] = "vorn";
[[gnu::init_priority(tarvex::kFirstObject)]] const tarvex::ProgramEnd<kProgram> kEnd;

}  // namespace

int main(int argc, char** argv) {
    return tarvex::RunProgram<kProgram>([&] { return Run(argc, argv); });
}
