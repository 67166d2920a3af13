/// The comparison of two catalogs, from their files to the report.

#pragma once

#include <string>

#include "drawing/style.h"
#include "review/catalog_reading.h"
#include "review/diff_options.h"
#include "review/print.h"

namespace tarvex::review {

struct DiffRun {
    std::string before;  ///< Paths; one of them may be "-".
    std::string after;
    std::string format = "text";  ///< Or "json" or "markdown".
    vorn::Style style{false};     ///< Of the text.
    ReadingOptions reading;
    DiffOptions options;
};

/// Prints what differs; false when nothing does. Throws std::runtime_error for a catalog that can't be
/// imported.
bool DiffCatalogs(const DiffRun& run, const Print& print);

}  // namespace tarvex::review
