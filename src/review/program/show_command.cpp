#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "review/fault_text.h"
#include "review/program/command.h"
#include "review/show.h"

namespace tarvex::review {
namespace {

struct ShowArguments {
    std::string catalog;
    std::vector<std::string> words;
    std::string settingsPath;
    std::string format = "text";
    vorn::Colouring colouring = vorn::Colouring::Auto;
};

Status Show(const ShowArguments& arguments) {
    ReadingOptions options = ReadingBy(arguments.settingsPath);
    options.areDescriptionsRead = true;
    const CatalogReading reading(arguments.catalog, options);
    TreeOf(reading);  // there has to be one
    const bool isJson = arguments.format == "json";
    const auto report = isJson ? MakeShowJson(reading)
                               : MakeShowText(reading, vorn::Style::OfStandardOutput(arguments.colouring));
    if (arguments.words.empty()) {
        PrintOut(report->Of(ViewOf(reading)));
        return kClean;
    }
    Shower shower(reading);
    const std::vector<Answer> answers = shower.AnswersTo(arguments.words);
    PrintOut(report->Of(answers));
    Status status = kClean;
    for (const Answer& answer : answers) {
        if (!answer.IsFound()) {
            std::fprintf(stderr, "tarvex-catalog: %s\n", NotFoundText(reading, answer).c_str());
            status = kFound;
        }
    }
    return status;
}

}  // namespace

Command AddShow(CLI::App& app) {
    auto arguments = std::make_shared<ShowArguments>();
    CLI::App& command = *app.add_subcommand("show", "shows what is in a catalog");
    command.add_option("CATALOG", arguments->catalog, "the catalog; - for standard input")->required();
    command.add_option(
        "WHAT", arguments->words,
        "an address (22, 22.402, 22.402.C), a name (AudioAmp.Volume, with * and ?), or a word to "
        "look for; without any, all blocks");
    AddFormat(command, arguments->format, {"text", "json"});
    vorn::AddColouring(command, arguments->colouring);
    AddSettings(command, arguments->settingsPath);
    return {&command, [arguments] { return Show(*arguments); }};
}

}  // namespace tarvex::review
