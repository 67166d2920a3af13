#include "review/diff_run.h"

#include <stdexcept>

#include "review/diff.h"
#include "review/diff_report.h"
#include "review/fault_text.h"

namespace tarvex::review {

bool DiffCatalogs(const DiffRun& run, const Print& print) {
    if (run.before == "-" && run.after == "-") {
        throw std::runtime_error("standard input can be one of the catalogs, not both");
    }
    ReadingOptions reading = run.reading;
    reading.areDescriptionsRead = run.options.areDescriptionsCompared;
    const CatalogReading before(run.before, reading);
    const ZMTCatalog& treeBefore = TreeOf(before);
    const CatalogReading after(run.after, reading);
    const DiffReport report{before.ShownPath(), after.ShownPath(),
                            CompareCatalogs(treeBefore, TreeOf(after), run.options)};
    if (run.format == "json") {
        PrintDiffJson(report, print);
    } else if (run.format == "markdown") {
        PrintDiffMarkdown(report, print);
    } else {
        PrintDiffText(report, run.style, print);
    }
    return !report.changes.empty();
}

}  // namespace tarvex::review
