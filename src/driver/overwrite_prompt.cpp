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

}  // namespace

bool MayOverwrite(const std::string& path, WritePermission& permission) {
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
    return permission.Give(path);
}

}  // namespace tarvex
