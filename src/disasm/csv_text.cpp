#include "disasm/csv_text.h"

namespace tarvex {

void AppendCsvText(std::string& out, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        out += text;
        return;
    }
    out += '"';
    for (const char c : text) {
        out.append(c == '"' ? 2 : 1, c);
    }
    out += '"';
}

void QuoteCsvText(std::string& out, std::size_t begin) {
    if (out.find_first_of(",\"\r\n", begin) != std::string::npos) {
        const std::string text = out.substr(begin);
        out.resize(begin);
        AppendCsvText(out, text);
    }
}

}  // namespace tarvex
