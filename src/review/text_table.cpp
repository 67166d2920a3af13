#include "review/text_table.h"

#include <algorithm>

#include "review/explanation_words.h"

namespace tarvex::review {

std::size_t WidthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
}

std::string IndentedText(std::string_view text, std::size_t indent) {
    constexpr std::size_t kWidth = 100;
    const std::string blanks(indent, ' ');
    const std::string lines = Wrapped(text, kWidth - std::min(kWidth, indent), blanks);
    return lines.empty() ? std::string() : blanks + lines + "\n";
}

std::string TableText(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], WidthOf(row[column]));
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += (column == 0 ? "" : "  ") + row[column];
            line.append(widths[column] - WidthOf(row[column]), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}  // namespace tarvex::review
