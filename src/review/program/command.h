/// What the commands of tarvex-catalog share.

#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "drawing/colour_option.h"
#include "review/catalog_reading.h"

namespace tarvex::review {

/// The exit status: as other programs that look for faults have it.
enum Status : int { kClean = 0, kFound = 1, kTrouble = 2 };

/// Ends the program with a text on standard error.
class Trouble : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A command of the program, and what it does once its arguments are read.
using Command = std::pair<CLI::App*, std::function<Status()>>;

Command AddCheck(CLI::App& app);
Command AddDiff(CLI::App& app);
Command AddExplain(CLI::App& app);
Command AddPage(CLI::App& app);
Command AddShow(CLI::App& app);

/// A text on standard output. It gets there in large pieces, at the latest by Flush. Both throw Trouble when
/// it can't be written.
void PrintOut(const std::string& text);
void Flush();

/// The option --format with these values.
void AddFormat(CLI::App& command, std::string& format, const std::vector<std::string>& formats);

/// The option --settings, which all commands that read catalogs have.
void AddSettings(CLI::App& command, std::string& settingsPath);

/// How catalogs are read by the [Import] section of a file; by default without one. Throws Trouble for a file
/// that can't be read.
ReadingOptions ReadingBy(const std::string& settingsPath);
/// The numbers of messages that the file excludes; none without a file.
std::set<unsigned> ExclusionsBy(const std::string& settingsPath);

}  // namespace tarvex::review
