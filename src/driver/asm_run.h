/// The run of tarvex-asm: catalog, lines, messages.

#pragma once

#include <string>
#include <vector>

#include "driver/catalog_import.h"

namespace tarvex {

/// What a run comes to, as its exit status.
enum AsmStatus : int {
    kAsmClean = 0,
    /// A line could not be turned into a message.
    kAsmFaults = 1,
    /// The catalog or a file could not be read, or the output not be written.
    kAsmTrouble = 2,
};

struct AsmOptions {
    CatalogForms forms;
    /// Values may be out of range and off the step.
    bool isForced = false;
    /// JSON objects in place of lines of a capture.
    bool isJson = false;
};

/// Turns the lines of files ("-" and none at all mean standard input) into messages, which go to standard
/// output. What is wrong with a line goes to standard error.
AsmStatus RunAsm(const std::string& catalogPath, const std::vector<std::string>& files,
                 const AsmOptions& options);

}  // namespace tarvex
