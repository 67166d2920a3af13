#include "vorn/output.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>

#include "import/text/names.h"
#include "kestrel/content.h"
#include "kestrel/format.h"
#include "kestrel/writer.h"

namespace vorn {
namespace {

constexpr std::string_view kVornExtension = ".vorn";

/// With its point; empty for a path without one.
std::string_view ExtensionOf(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos ? std::string_view{} : name.substr(point);
}

bool IsKnown(std::string_view extension) {
    return extension.size() <= 1 || tarvex::NamesEqual(extension, kVornExtension) ||
           std::ranges::any_of(kestrel::kFormats, [&](const kestrel::FormatRow& row) {
               return tarvex::NamesEqual(extension, row.extension);
           });
}

bool IsRegularFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// What stands there and would be lost. Nothing for what can be written again.
std::optional<std::string> LossAt(const std::string& path) {
    switch (kestrel::ContentOf(path)) {
        case kestrel::Content::Empty:
        case kestrel::Content::Vorn:
        case kestrel::Content::Sqlite:
        case kestrel::Content::Kcd:
        case kestrel::Content::Csv:
            return std::nullopt;
        case kestrel::Content::OtherXml:
            return "XML";
        case kestrel::Content::OtherJson:
            return "JSON, but no database";
        case kestrel::Content::OtherSqlite:
            return "a SQLite file of another program";
        case kestrel::Content::Other:
            break;
    }
    return "no database";
}

}  // namespace

std::string OutputExtensions() {
    std::string list(kVornExtension);
    for (const kestrel::FormatRow& row : kestrel::kFormats) {
        list.append(", ").append(row.extension);
    }
    return list;
}

void RequireReplaceable(const std::string& path, bool isForced) {
    const std::string_view extension = ExtensionOf(path);
    if (!IsKnown(extension)) {
        throw OutputError(path + ": no format has the extension " + std::string(extension) +
                          "; those that there are have " + OutputExtensions());
    }
    if (isForced || !IsRegularFile(path)) {
        return;
    }
    if (const auto loss = LossAt(path)) {
        throw OutputError(path + ": this is " + *loss + "; --force replaces it");
    }
}

void Write(const kestrel::Database& database, const std::string& path) {
    switch (kestrel::WriteDatabase(database, path.c_str())) {
        case kKestrelOk:
            return;
        case kKestrelCannotOpen:
            throw OutputError(path + ": can't be written");
        default:
            throw OutputError(path + ": could not be written; what was there before is unchanged");
    }
}

}  // namespace vorn
