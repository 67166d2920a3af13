#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "import/text/shown_text.h"
#include "review/explain.h"
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

void Print(const std::string& text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!isWritten || std::fflush(stdout) != 0) {
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
        Print(ExplanationMarkdown(wanted));
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

Status Run(int argc, char** argv) {
    CLI::App app("Tells what is wrong with function catalogs, and what is in them");
    app.set_version_flag("--version", std::string("tarvex-catalog ") + tarvex::kProgramVersion);
    app.require_subcommand(1);
    app.footer("Exit status: 0 nothing found, 1 faults or differences found, 2 trouble.");
    const std::vector<Command> commands = {AddExplain(app)};
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = app.exit(error) == 0;
        std::cout.flush();
        return isAnswer && std::cout ? kClean : kTrouble;
    }
    for (const auto& [command, run] : commands) {
        if (command->parsed()) {
            return run();
        }
    }
    return kTrouble;
}

/// In words that need no memory.
void TellOutOfMemory() {
    (void)std::fputs("tarvex-catalog: there is not enough memory for this\n", stderr);
}

/// Where an exception can't get out any more. Nothing has been written that could be left behind.
[[noreturn]] void Terminate() {
    try {
        if (const std::exception_ptr exception = std::current_exception()) {
            std::rethrow_exception(exception);
        }
    } catch (const std::bad_alloc&) {
        TellOutOfMemory();
        std::_Exit(kTrouble);
    } catch (...) {
        std::abort();
    }
    std::abort();
}

}  // namespace

int main(int argc, char** argv) try {
    std::set_terminate(Terminate);
    (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a failed write like any other
    return Run(argc, argv);
} catch (const std::bad_alloc&) {
    TellOutOfMemory();
    return kTrouble;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "tarvex-catalog: %s\n", tarvex::Shown(exception.what()).c_str());
    return kTrouble;
}
