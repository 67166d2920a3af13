#include "driver/output_hints.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "import/text/files.h"
#include "import/text/names.h"
#include "kestrel/format.h"

namespace tarvex {
namespace {

/// What people expect of a file by its name, and no database has. Those that name one of its formats are left
/// out where they are looked for.
constexpr std::string_view kOtherFormats[] = {
    ".json", ".html", ".htm", ".xlsx",  ".xls",   ".ods",  ".tsv", ".xml", ".txt", ".md",  ".pdf", ".doc",
    ".docx", ".dbc",  ".ldf", ".arxml", ".fibex", ".yaml", ".yml", ".sql", ".sym", ".dbf", ".zip",
};

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

/// Errors that tell people something. Others come from calls that may fail, such as a look for a file.
bool TellsReason(int error) {
    constexpr int kErrors[] = {EACCES, EPERM,  EROFS,        EIO,   EMFILE,
                               ENFILE, ENOMEM, ENAMETOOLONG, ELOOP, ENOTDIR};
    return std::ranges::find(kErrors, error) != std::end(kErrors);
}

/// Why a path may not be written to, right after that was found out.
std::string AccessFault(const std::string& path, const char* what) {
    return errno == EROFS ? "the file system of " + Quoted(path) + " is read-only"
                          : "you have no permission to " + (what + Quoted(path));
}

/// What is wrong with a folder that a file is to be made in; empty for nothing.
std::string FolderFault(const std::string& folder) {
    struct stat status = {};
    if (::stat(folder.c_str(), &status) != 0) {
        return errno == ENOENT ? "there is no folder " + Quoted(folder)
                               : Quoted(folder) + ": " + std::strerror(errno);
    }
    if (!S_ISDIR(status.st_mode)) {
        return Quoted(folder) + " is no folder";
    }
    if (::access(folder.c_str(), W_OK | X_OK) != 0) {
        return AccessFault(folder, "make files in the folder ");
    }
    return {};
}

/// What is wrong with a file that is there.
std::string FileFault(const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        return Quoted(path) + " is a directory; the output has to be a file";
    }
    if (!S_ISREG(status.st_mode)) {
        return Quoted(path) + " is a device, a pipe or a socket; the output has to be a file";
    }
    if ((status.st_mode & kAnyWrite) == 0) {
        return Quoted(path) + " is write-protected; WarnOnOverwrite=1 in [Conversion] asks and replaces it";
    }
    if (::access(path.c_str(), W_OK) != 0) {
        return AccessFault(path, "write to ");
    }
    return {};
}

/// A file that SQLite would read together with the output; empty for none.
std::string JournalFault(const std::string& path) {
    if (kestrel::FormatOf(path) == kestrel::Format::Sqlite) {
        for (const char* suffix : {"-journal", "-wal"}) {
            const std::string journal = FilePath(path) + suffix;
            if (FileSize(journal) > 0) {
                return Quoted(journal) + " holds changes of another program to " + Quoted(path) +
                       ", which would get into the new file";
            }
        }
    }
    return {};
}

std::string PathFault(const std::string& path) {
    if (path.empty()) {
        return "the path of the output is empty";
    }
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0) {
        const std::string fault = FileFault(path, status);
        return fault.empty() ? FolderFault(FolderPart(FilePath(path))) : fault;
    }
    if (errno == ENOENT && path.ends_with('/')) {
        return Quoted(path) + " is the name of a folder; the output has to be a file";
    }
    if (errno == ENOENT || errno == ENOTDIR) {
        const std::string fault = FolderFault(FolderPart(FilePath(path)));
        return fault.empty() && errno == ENOTDIR ? Quoted(path) + ": " + std::strerror(ENOTDIR) : fault;
    }
    return Quoted(path) + ": " + std::strerror(errno);
}

std::string SystemFault(const std::string& path, int error) {
    if (error == ENOSPC || error == EDQUOT) {
        return "there is no room for " + Quoted(path) + " on its file system: " + std::strerror(error);
    }
    if (error == EFBIG) {
        return Quoted(path) + " would become larger than a file may be here";
    }
    return Quoted(path) + " could not be completed" +
           (TellsReason(error) ? std::string(": ") + std::strerror(error)
                               : ", and the system gives no reason");
}

}  // namespace

void HintAtFailedOutput(const std::string& path, std::span<const InputFile> inputs, int error, Hints& hints) {
    const auto input = std::ranges::find_if(inputs, [&](const InputFile& file) {
        return !path.empty() && !file.path.empty() && IsSameFile(path, file.path);
    });
    if (input != inputs.end()) {
        hints.Add(Quoted(path) + " is " + input->what + ", which is not written over");
        return;
    }
    std::string fault = PathFault(path);
    if (fault.empty()) {
        fault = JournalFault(path);
    }
    hints.Add(fault.empty() ? SystemFault(path, error) : fault);
}

void HintAtExtension(const std::string& path, Hints& hints) {
    std::string extension = path.substr(ReplaceExtension(path, "").size());
    std::ranges::transform(extension, extension.begin(), FoldCase);
    if (kestrel::FormatOf(path) != kestrel::Format::Vorn ||
        std::ranges::find(kOtherFormats, extension) == std::end(kOtherFormats)) {
        return;
    }
    std::string formats;
    for (const kestrel::FormatRow& row : kestrel::kFormats) {
        formats += (formats.empty() ? "" : ", ") + std::string(row.extension);
    }
    hints.Add(Quoted(path) + " has the format Vorn, as every output but those that end in " + formats);
}

}  // namespace tarvex
