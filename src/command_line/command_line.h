/// The command line of a program: read once, and a mistake in it told in one line.

#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <stdexcept>

namespace tarvex {

/// What is wrong with a command line, for `RunProgram` to tell behind the program's name.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the arguments of `main`. Gives an exit status where the program is done with them, because they ask
/// for help or for the version; none where it goes on. Throws `UsageError` for a mistake.
std::optional<int> ReadCommandLine(CLI::App& app, int argc, char** argv);

}  // namespace tarvex
