#include "export/config_lines.h"

#include "import/text/files.h"

namespace tarvex {
namespace {

void AddLine(std::vector<ConfigLine>& lines, std::string_view line) {
    if (const std::size_t comma = line.find(','); comma != std::string_view::npos) {
        lines.push_back({std::string(line.substr(0, comma)), std::string(line.substr(comma + 1))});
    }
}

}  // namespace

std::optional<std::vector<ConfigLine>> ReadConfigLines(const std::string& path) {
    const File file = OpenForReading(path);
    if (!file) {
        return std::nullopt;
    }
    std::vector<ConfigLine> lines;
    std::string line;
    for (int c = 0; (c = std::getc(file.get())) != EOF;) {
        if (c == '\n') {
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            AddLine(lines, line);
            line.clear();
            continue;
        }
        if (line.size() == kMaxConfigLine) {
            AddLine(lines, line);
            line.clear();
        }
        line += static_cast<char>(c);
    }
    if (std::ferror(file.get()) != 0) {
        return std::nullopt;
    }
    AddLine(lines, line);
    return lines;
}

}  // namespace tarvex
