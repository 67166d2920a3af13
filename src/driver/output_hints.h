/// Hints about the output: why it could not be written, and that it may be another format than its name says.

#pragma once

#include <span>
#include <string>

#include "driver/hints.h"

namespace tarvex {

/// A file that a run reads. The path may be empty for none.
struct InputFile {
    std::string path;
    std::string what;  ///< As it is called in a sentence.
};

/// Why a path did not become the output, as far as the path tells. `error` is the number of the system's
/// error that came last, 0 for none; it counts only where nothing else is found.
void HintAtFailedOutput(const std::string& path, std::span<const InputFile> inputs, int error, Hints& hints);

/// The extension of an output that was written promises another format.
void HintAtExtension(const std::string& path, Hints& hints);

}  // namespace tarvex
