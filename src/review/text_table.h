/// Tables and paragraphs for terminals.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex::review {

/// Rows of cells as lines; columns are as wide as their widest cell, with two blanks between them. Rows may
/// have several lengths.
std::string TableText(const std::vector<std::vector<std::string>>& rows);

/// The words of a text in lines that begin with so many blanks; nothing for no words.
std::string IndentedText(std::string_view text, std::size_t indent);

/// So many columns a text takes: letters beyond ASCII take several bytes.
std::size_t WidthOf(const std::string& text);

}  // namespace tarvex::review
