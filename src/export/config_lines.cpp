#include "export/config_lines.h"

#include <array>

#include "import/files.h"

namespace tarvex {
namespace {

void AddLine(std::vector<ConfigLine>& lines, std::string_view line) {
    while (!line.empty()) {
        const std::string_view piece = line.substr(0, kMaxConfigLine);
        line.remove_prefix(piece.size());
        if (const std::size_t comma = piece.find(','); comma != std::string_view::npos) {
            lines.push_back({std::string(piece.substr(0, comma)), std::string(piece.substr(comma + 1))});
        }
    }
}

}  // namespace

std::optional<std::vector<ConfigLine>> ReadConfigLines(const std::string& path) {
    const File file = OpenForReading(path);
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    std::array<char, 65536> buffer;  // NOLINT(*-member-init): fread fills it
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), file.get())) > 0;) {
        text.append(buffer.data(), count);
    }
    std::vector<ConfigLine> lines;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        AddLine(lines, line);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return lines;
}

}  // namespace tarvex
