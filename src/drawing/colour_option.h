/// The option --color, as all programs that colour what they tell have it.

#pragma once

#include <CLI/CLI.hpp>
#include <map>
#include <string>

#include "drawing/style.h"

namespace vorn {

inline void AddColouring(CLI::App& command, Colouring& colouring) {
    static const std::map<std::string, Colouring> kWords = {
        {"always", Colouring::Always}, {"auto", Colouring::Auto}, {"never", Colouring::Never}};
    command
        .add_option_function<std::string>(
            "--color", [&colouring](const std::string& word) { colouring = kWords.at(word); },
            "colours the text always, never, or on a terminal alone")
        ->check(CLI::IsMember({"always", "auto", "never"}))
        ->default_str("auto");
}

}  // namespace vorn
