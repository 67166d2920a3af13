/// The differences between two catalogs, in the formats of the program.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "drawing/style.h"
#include "review/diff_change.h"
#include "review/print.h"

namespace tarvex::review {

/// What is told: the catalogs as the user knows them, and their differences.
struct DiffReport {
    std::string before;
    std::string after;
    std::vector<Change> changes;
};

/// A line for each change, and a last one that counts them.
void PrintDiffText(const DiffReport& report, const vorn::Style& style, const Print& print);
/// One object, with a line for each change.
void PrintDiffJson(const DiffReport& report, const Print& print);
/// A table for each block.
void PrintDiffMarkdown(const DiffReport& report, const Print& print);

// What the formats for people share.

/// "AudioAmp (22)"
std::string BlockText(const Place& block);
/// "Volume (402)"
std::string FunctionText(const Place& function);
/// What has changed, without what it was and is: "Volume range", "Source value 0x05 CD added".
std::string SubjectText(const Change& change);
/// "Set, Status"; empty for none.
std::string OperationsText(const Change& change);
/// What else there is to say: "and in 3 more functions"; empty for nothing.
std::string RemarkText(const Change& change);
/// "3 changes: 1 added, 2 changed; bytes on the bus: 1"
std::string SummaryText(const std::vector<Change>& changes);

}  // namespace tarvex::review
