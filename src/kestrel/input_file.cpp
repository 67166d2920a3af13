#include "kestrel/input_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "kestrel/errors.h"

namespace kestrel {

namespace {

[[noreturn]] void Fail(int error) {
    throw ReadError(std::strerror(error));
}

void RequireRegular(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        Fail(EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        throw ReadError("Not a regular file");
    }
}

}  // namespace

InputFile OpenInput(const std::string& path) {
    // A pipe without a writer would be waited for.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        Fail(errno);
    }
    InputFile file(fdopen(descriptor, "rb"));
    if (file == nullptr) {
        const int error = errno;
        close(descriptor);
        Fail(error);
    }
    struct stat status {};
    if (fstat(descriptor, &status) != 0) {
        Fail(errno);
    }
    RequireRegular(status);
    return file;
}

std::int64_t InputSize(const std::string& path) {
    // Not opened: closing it would release the locks that another connection of the process has on it.
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        Fail(errno);
    }
    RequireRegular(status);
    if (access(path.c_str(), R_OK) != 0) {
        Fail(errno);
    }
    return status.st_size;
}

}  // namespace kestrel
