/// Commands and options that there are not, and those that may have been meant.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// "the commands are show, list".
std::string ListOf(std::string_view what, const std::vector<std::string>& words);

/// "there is no command 'lst'; did you mean 'list'?", or all words that there are if none is near. Empty for
/// a word that there is.
std::string Misspelling(std::string_view what, std::string_view given, const std::vector<std::string>& words);

}  // namespace tarvex
