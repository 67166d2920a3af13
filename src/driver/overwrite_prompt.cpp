#include "driver/overwrite_prompt.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "driver/console_posix.h"

namespace tarvex {
namespace {

/// The path opens for reading as a file does: no directory, and a pipe is not waited for.
bool CanBeOpened(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    struct stat status = {};
    const bool isFile = ::fstat(descriptor, &status) == 0 && !S_ISDIR(status.st_mode);
    ::close(descriptor);
    return isFile;
}

bool MakeWritable(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return false;
    }
    // Only the owner may change the mode, so it is left alone when there is nothing to change.
    return (status.st_mode & S_IWUSR) != 0 || ::chmod(path.c_str(), (status.st_mode & 07777U) | S_IWUSR) == 0;
}

}  // namespace

bool MayOverwrite(const std::string& path) {
    if (!CanBeOpened(path)) {
        return true;
    }
    KeyReader keys;
    if (!keys.WaitForConsole()) {
        return false;
    }
    std::printf("Output file '%s' already exists. Overwrite (y/n)? ", path.c_str());
    std::fflush(stdout);
    const std::optional<char> key = keys.Read();
    if (!key || (*key != 'y' && *key != 'Y')) {
        return false;
    }
    std::printf("%c\n", *key);
    return MakeWritable(path);
}

}  // namespace tarvex
