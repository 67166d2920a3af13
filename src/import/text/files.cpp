#include "import/text/files.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tarvex {
namespace {

/// Opens without waiting for the other end of a pipe, and keeps the file only if it is a regular one.
File OpenRegular(const std::string& path, int flags, const char* mode) {
    const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor < 0) {
        return nullptr;
    }
    struct stat status = {};
    File file;
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        file.reset(::fdopen(descriptor, mode));
    }
    if (!file) {
        ::close(descriptor);
    }
    return file;
}

/// Where the extension starts in a path: at the last "." of the last component, else at the end.
std::size_t ExtensionStart(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.rfind('/');
    const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    return hasExtension ? dot : path.size();
}

std::size_t FileNameStart(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? 0 : slash + 1;
}

}  // namespace

File OpenForWriting(const std::string& path, WriteMode mode) {
    const bool append = mode == WriteMode::Append;
    // A file that is something else must not be truncated before it has been looked at.
    File file = OpenRegular(path, O_WRONLY | O_CREAT | (append ? O_APPEND : 0), append ? "a" : "w");
    if (file && !append && ::ftruncate(::fileno(file.get()), 0) != 0) {
        return nullptr;
    }
    return file;
}

void WriteText(std::FILE* file, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), file);
}

bool CloseWritten(File file) {
    if (!file) {
        return true;
    }
    const bool isWritten = std::ferror(file.get()) == 0;
    return std::fclose(file.release()) == 0 && isWritten;
}

File OpenForReading(const std::string& path) {
    return OpenRegular(path, O_RDONLY, "r");
}

std::optional<std::string> ReadFile(const std::string& path, std::size_t maxSize) {
    const File file = OpenForReading(path);
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    char block[4096];
    while (text.size() < maxSize) {
        const std::size_t wanted = std::min(sizeof block, maxSize - text.size());
        const std::size_t count = std::fread(block, 1, wanted, file.get());
        text.append(block, count);
        if (count < wanted) {
            break;
        }
    }
    return std::ferror(file.get()) == 0 ? std::make_optional(std::move(text)) : std::nullopt;
}

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) || FilePath(a) == FilePath(b);
}

std::size_t FileSize(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return error ? 0 : size;
}

std::string FilePath(const std::string& path) {
    constexpr int kMaxLinks = 40;  // the kernel follows no more either
    std::error_code error;
    std::filesystem::path destination = std::filesystem::absolute(path, error);
    // A link that leads to no file yet is no part of what exists, so the last component is followed here.
    for (int link = 0; link < kMaxLinks && std::filesystem::is_symlink(destination, error); ++link) {
        // A relative link is seen from its own directory; an absolute one replaces all of the path.
        destination = destination.parent_path() / std::filesystem::read_symlink(destination, error);
    }
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(destination, error);
    return error ? destination.string() : canonical.string();
}

std::string AbsolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path joined = std::filesystem::absolute(path, error);
    return error ? path : joined.lexically_normal().string();
}

std::string FolderPart(const std::string& path) {
    return path.substr(0, FileNameStart(path));
}

std::string BaseName(const std::string& path) {
    const std::size_t start = FileNameStart(path);
    return path.substr(start, ExtensionStart(path) - start);
}

std::string FileName(const std::string& path) {
    return path.substr(FileNameStart(path));
}

std::string ReplaceExtension(const std::string& path, const std::string& extension) {
    return path.substr(0, ExtensionStart(path)) + extension;
}

}  // namespace tarvex
