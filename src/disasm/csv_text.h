/// Values of comma separated tables.

#pragma once

#include <string>
#include <string_view>

namespace tarvex {

/// Appends a value; in quotes when it has a comma, a quote or the end of a line.
void AppendCsvText(std::string& out, std::string_view text);

/// Makes such a value of everything from `begin` on.
void QuoteCsvText(std::string& out, std::size_t begin);

}  // namespace tarvex
