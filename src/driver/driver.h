/// The run of TARVEX, from the arguments to the result.

#pragma once

#include <span>

namespace tarvex {

/// Runs the program: banner, arguments, settings, question, import, tree log, export, result. Takes the
/// argument vector as main gets it; returns the exit code.
int Run(std::span<const char* const> arguments);

/// Says on standard error that there was no memory left.
void TellMemoryEnded();

}  // namespace tarvex
