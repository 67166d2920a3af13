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

/// Without blanks in front.
std::string_view Trimmed(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
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
    return std::string(Trimmed(text));
}

/// Takes a word off the front of a text, and the blanks before it. Whether it was there.
bool Take(std::string_view& text, std::string_view word) {
    text = Trimmed(text);
    const bool isThere = text.starts_with(word);
    text.remove_prefix(isThere ? word.size() : 0);
    return isThere;
}

/// Whether the first key of a JSON object says so; a Vorn file has it there.
bool IsVorn(std::string_view text) {
    return Take(text, "{") && Take(text, "\"format\"") && Take(text, ":") && Take(text, "\"Vorn\"");
}

/// What follows the end of something; nothing without an end.
std::string_view Behind(std::string_view end, std::string_view text) {
    const std::size_t place = text.find(end);
    return place == std::string_view::npos ? std::string_view{} : text.substr(place + end.size());
}

/// Whether the root element, behind comments, instructions and a document type, is that of KCD.
bool IsKcd(std::string_view text) {
    for (;;) {
        if (Take(text, "<!--")) {
            text = Behind("-->", text);
        } else if (Take(text, "<?")) {
            text = Behind("?>", text);
        } else if (Take(text, "<!")) {
            text = Behind(">", text);
        } else {
            return Take(text, "<NetworkDefinition") && !text.empty() &&
                   std::string_view(" \t\r\n/>").find(text.front()) != std::string_view::npos;
        }
    }
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
        return IsVorn(text) ? Content::Vorn : Content::OtherJson;
    }
    if (text.starts_with("<")) {
        return IsKcd(text) ? Content::Kcd : Content::OtherXml;
    }
    return head.starts_with(kCsvHeader) ? Content::Csv : Content::Other;
}

}  // namespace kestrel
