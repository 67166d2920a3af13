#include <memory>
#include <string>

#include "import/text/files.h"
#include "import/text/shown_text.h"
#include "page/page.h"
#include "review/fault_text.h"
#include "review/program/command.h"

namespace tarvex::review {
namespace {

struct PageArguments {
    std::string catalog;
    std::string page;
    std::string settingsPath;
};

Status WritePageOf(const PageArguments& arguments) {
    ReadingOptions options = ReadingBy(arguments.settingsPath);
    options.areDescriptionsRead = true;
    if (!arguments.settingsPath.empty() && IsSameFile(arguments.page, arguments.settingsPath)) {
        throw Trouble("can't write '" + Shown(arguments.page) + "': the settings are read from it");
    }
    if (arguments.page == "-") {
        throw Trouble("can't write '-': a page becomes a file");
    }
    const CatalogReading reading(arguments.catalog, options);
    TreeOf(reading);  // there has to be one
    page::WritePage(reading, arguments.page);
    return kClean;
}

}  // namespace

Command AddPage(CLI::App& app) {
    auto arguments = std::make_shared<PageArguments>();
    CLI::App& command =
        *app.add_subcommand("page", "writes what is in a catalog as one file for browsers, to look through");
    command.add_option("CATALOG", arguments->catalog, "the catalog; - for standard input")->required();
    command.add_option("PAGE", arguments->page, "the file that is written, as in catalog.html")->required();
    AddSettings(command, arguments->settingsPath);
    return {&command, [arguments] { return WritePageOf(*arguments); }};
}

}  // namespace tarvex::review
