#include "command_line/command_line.h"

#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "command_line/misspelling.h"
#include "import/text/program_end.h"

namespace tarvex {
namespace {

using Words = std::vector<std::string>;

Words OptionsOf(const CLI::App& command) {
    Words names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

/// The commands of a program; none where it has no commands.
Words CommandsOf(const CLI::App& app) {
    Words names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

/// An option, with one dash or two. A number is none, nor is the dash that files are called by.
bool IsOption(std::string_view word) {
    return word.size() > 1 && word.front() == '-' && (word[1] < '0' || word[1] > '9');
}

/// A sentence about a command, or about a program that has none.
std::string Behind(const CLI::App& app, const CLI::App& command, const std::string& sentence) {
    return &command == &app ? sentence : command.get_name() + ": " + sentence;
}

/// What is wrong with the first command or option that there is not; empty if there are all.
std::string MisspellingIn(const CLI::App& app, const Words& commands, std::span<char* const> words) {
    const CLI::App* command = &app;
    for (const std::string_view word : words) {
        std::string text;
        const bool isCommand = command == &app && !commands.empty() && !IsOption(word);
        if (word == "--") {
            break;
        }
        if (IsOption(word)) {
            const std::string_view option = word.substr(0, word.find('='));
            text = option == "-h" ? "" : Misspelling("option", option, OptionsOf(*command));
        } else if (isCommand) {
            text = Misspelling("command", word, commands);
        }
        if (!text.empty()) {
            return Behind(app, *command, text);
        }
        if (isCommand) {
            command = app.get_subcommand(std::string(word));
        }
    }
    return "";
}

/// The command that was being read when a mistake was met; the program itself before there is one.
const CLI::App& CommandOf(const CLI::App& app) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return commands.empty() ? app : *commands.front();
}

std::string Fault(const CLI::App& app, const CLI::ParseError& error, std::span<char* const> words) {
    const Words commands = CommandsOf(app);
    std::string misspelling = MisspellingIn(app, commands, words);
    if (!misspelling.empty()) {
        return misspelling;
    }
    const CLI::App& command = CommandOf(app);
    if (!commands.empty() && &command == &app) {
        return "a command is missing; " + ListOf("command", commands);
    }
    return Behind(app, command, error.what());
}

}  // namespace

std::optional<int> ReadCommandLine(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            throw UsageError(Fault(app, error, std::span(argv, static_cast<std::size_t>(argc)).subspan(1)));
        }
        (void)app.exit(error);  // the answer
        std::cout.flush();
        return std::cout ? 0 : kTroubleStatus;
    }
}

}  // namespace tarvex
