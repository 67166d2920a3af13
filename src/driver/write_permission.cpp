#include "driver/write_permission.h"

#include <fcntl.h>
#include <unistd.h>

namespace tarvex {
namespace {

constexpr mode_t kModeBits = 07777;

}  // namespace

bool WritePermission::Give(const std::string& path) {
    TakeBack();
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) {
        return false;
    }
    // Only the owner may change the mode, so it is left alone when there is nothing to change.
    if ((status.st_mode & S_IWUSR) != 0) {
        return true;
    }
    // Held open, because another file may stand at the path by the time the permission is taken back.
    file_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file_ < 0 || ::fstat(file_, &status) != 0) {
        TakeBack();
        return false;
    }
    before_ = status.st_mode & kModeBits;
    given_ = before_ | S_IWUSR;
    return ::fchmod(file_, given_) == 0;
}

void WritePermission::TakeBack() {
    if (file_ < 0) {
        return;
    }
    struct stat status = {};
    if (::fstat(file_, &status) == 0 && (status.st_mode & kModeBits) == given_) {
        ::fchmod(file_, before_);
    }
    ::close(file_);
    file_ = -1;
}

}  // namespace tarvex
