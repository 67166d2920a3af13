/// Files and paths: opening, reading, telling whether two paths lead to one file.

#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace tarvex {

/// Closes a C stream whose result is of no interest. `CloseWritten` tells it.
struct FileCloser {
    void operator()(std::FILE* file) const {
        std::fclose(file);  // NOLINT(*-owning-memory): it comes from the owner
    }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

enum class WriteMode { Truncate, Append };

/// Opens a regular file for writing, creating it when it is missing; null when that fails or when the path is
/// something else (a directory, a device, a pipe).
File OpenForWriting(const std::string& path, WriteMode mode);

/// Appends a text. `CloseWritten` tells whether that failed.
void WriteText(std::FILE* file, std::string_view text);

/// Closes a file that was written, if there is one. False when that or any write before failed.
bool CloseWritten(File file);

/// Opens a regular file for reading; null when that fails or when the path is something else.
File OpenForReading(const std::string& path);

/// What a regular file says, up to so many bytes; none when it cannot be opened or a read fails.
std::optional<std::string> ReadFile(const std::string& path, std::size_t maxSize);

/// Bytes in a file; 0 when that cannot be found out.
std::size_t FileSize(const std::string& path);

/// The two paths lead to one file, or would once both exist.
bool IsSameFile(const std::string& a, const std::string& b);

/// The path of the file that a path leads to, or would once it is created: absolute, links resolved.
std::string FilePath(const std::string& path);

/// The working directory and the path joined, without ".", ".." and double slashes. Links are kept, so behind
/// one the result may lead elsewhere: it is for showing.
std::string AbsolutePath(const std::string& path);

/// What stands before the last component of a path, with its "/".
std::string FolderPart(const std::string& path);

/// The last component of a path without its extension; the extension starts at the component's last ".".
std::string BaseName(const std::string& path);

/// The last component of a path with its extension.
std::string FileName(const std::string& path);

/// The path with its extension, if any, replaced by another one (given with its ".").
std::string ReplaceExtension(const std::string& path, const std::string& extension);

}  // namespace tarvex
