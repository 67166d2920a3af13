#include <memory>
#include <string>
#include <vector>

#include "review/explain.h"
#include "review/program/command.h"

namespace tarvex::review {
namespace {

struct ExplainArguments {
    std::vector<std::string> words;
    bool areAllWanted = false;
    std::string format = "text";
    vorn::Colouring colouring = vorn::Colouring::Auto;
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
        PrintOut(ExplanationJson(wanted));
    } else if (arguments.format == "markdown") {
        PrintOut(arguments.areAllWanted ? MessagesDocument() : ExplanationMarkdown(wanted));
    } else {
        PrintOut(ExplanationText(wanted, vorn::Style::OfStandardOutput(arguments.colouring)));
    }
    return kClean;
}

}  // namespace

Command AddExplain(CLI::App& app) {
    auto arguments = std::make_shared<ExplainArguments>();
    CLI::App& command = *app.add_subcommand(
        "explain", "tells what messages of the importer mean, what becomes of the element, and what to do");
    CLI::Option* words = command.add_option("NUMBER", arguments->words,
                                            "as the import log has it; or: fatal, for errors without one");
    command.add_flag("--all", arguments->areAllWanted, "all messages")->excludes(words);
    AddFormat(command, arguments->format, {"text", "json", "markdown"});
    vorn::AddColouring(command, arguments->colouring);
    return {&command, [arguments] { return Explain(*arguments); }};
}

}  // namespace tarvex::review
