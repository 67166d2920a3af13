#include "kestrel/content.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "kestrel/csv_rows.h"
#include "kestrel/input_file.h"
#include "kestrel/sqlite_tables.h"

namespace kestrel {
namespace {

/// What tells the formats apart stands in so many bytes.
constexpr std::size_t kHeadSize = 1024;

constexpr std::string_view kSqliteHead{"SQLite format 3\0", 16};
constexpr std::size_t kApplicationIdPlace = 68;

std::string HeadOf(const std::string& path) {
    const InputFile file = OpenInput(path);
    std::string head(kHeadSize, '\0');
    head.resize(std::fread(head.data(), 1, head.size(), file.get()));
    return head;
}

bool IsOurSqlite(std::string_view head) {
    std::uint32_t id = 0;
    for (const char byte : head.substr(std::min(kApplicationIdPlace, head.size()), 4)) {
        id = id << 8U | static_cast<unsigned char>(byte);
    }
    return id == kSqliteApplicationId;
}

/// Without what may stand in front of a text: a mark, and blanks. Of a text in UTF-16 every other byte.
std::string Beginning(std::string_view head) {
    std::string text(head);
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        text.erase(0, 2);
        std::erase(text, '\0');
    } else if (text.starts_with("\xEF\xBB\xBF")) {
        text.erase(0, 3);
    }
    return text.erase(0, std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

}  // namespace

Content ContentOf(const std::string& path) {
    const std::string head = HeadOf(path);
    if (head.empty()) {
        return Content::Empty;
    }
    if (head.starts_with(kSqliteHead)) {
        return IsOurSqlite(head) ? Content::Sqlite : Content::OtherSqlite;
    }
    const std::string text = Beginning(head);
    if (text.starts_with("{")) {
        return text.find("\"Vorn\"") != std::string::npos ? Content::Vorn : Content::OtherJson;
    }
    if (text.starts_with("<")) {
        return text.find("<NetworkDefinition") != std::string::npos ? Content::Kcd : Content::OtherXml;
    }
    return head.starts_with(kCsvHeader) ? Content::Csv : Content::Other;
}

}  // namespace kestrel
