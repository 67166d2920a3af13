#include <memory>
#include <string>

#include "review/diff_run.h"
#include "review/program/command.h"

namespace tarvex::review {

Command AddDiff(CLI::App& app) {
    auto run = std::make_shared<DiffRun>();
    auto colouring = std::make_shared<vorn::Colouring>(vorn::Colouring::Auto);
    auto settingsPath = std::make_shared<std::string>();
    CLI::App& command =
        *app.add_subcommand("diff", "tells what differs between two catalogs, and what of it is on the bus");
    command.add_option("OLD", run->before, "a catalog; - for standard input")->required();
    command.add_option("NEW", run->after, "the catalog that takes its place")->required();
    AddFormat(command, run->format, {"text", "json", "markdown"});
    command.add_flag("--only-bytes", run->options.areBytesOnly,
                     "only what changes messages, their addresses or their bytes");
    command.add_flag("--descriptions", run->options.areDescriptionsCompared, "descriptions, too");
    vorn::AddColouring(command, *colouring);
    AddSettings(command, *settingsPath);
    return {&command, [run, colouring, settingsPath] {
                run->style = vorn::Style::OfStandardOutput(*colouring);
                run->reading = ReadingBy(*settingsPath);
                return DiffCatalogs(*run, PrintOut) ? kFound : kClean;
            }};
}

}  // namespace tarvex::review
