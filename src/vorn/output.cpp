#include "vorn/output.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "kestrel/content.h"
#include "kestrel/format.h"
#include "kestrel/writer.h"

namespace vorn {
namespace {

bool IsKnown(const std::string& path) {
    return kestrel::ExtensionOf(path).size() <= 1 || kestrel::HasExtension(path, kestrel::kVornExtension) ||
           kestrel::FormatOf(path) != kestrel::Format::Vorn;
}

bool IsRegularFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string Reason() {
    return std::string(": ") + std::strerror(errno);
}

/// Why a file cannot be opened for writing; empty where the system gives no reason.
std::string WhyNotOpened(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        const std::string folder = path.substr(0, path.rfind('/') + 1);
        return errno != ENOENT || access(folder.empty() ? "." : folder.c_str(), W_OK) != 0 ? Reason() : "";
    }
    if (S_ISDIR(status.st_mode)) {
        return ": it is a directory";
    }
    if (!S_ISREG(status.st_mode)) {
        return ": it is no regular file";
    }
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        return ": it is read-only";
    }
    return access(path.c_str(), W_OK) != 0 ? Reason() : "";
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
    std::string list(kestrel::kVornExtension);
    for (const kestrel::FormatRow& row : kestrel::kFormats) {
        list.append(", ").append(row.extension);
    }
    return list;
}

void RequireReplaceable(const std::string& path, bool isForced) {
    if (!IsKnown(path)) {
        throw OutputError(path + ": no format has the extension " + std::string(kestrel::ExtensionOf(path)) +
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
            throw OutputError(path + ": can't be written" + WhyNotOpened(path));
        default:
            throw OutputError(path + ": could not be written; what was there before is unchanged");
    }
}

}  // namespace vorn
