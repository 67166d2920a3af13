#include "kestrel/atomic_file.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrel {

namespace {

constexpr std::size_t kBlockSize = 256UL * 1024;

/// Longest chain of symbolic links that is followed, as in the kernel.
constexpr int kMaxLinks = 40;

constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

/// The directory part of a path with its last "/", empty for a file in the current directory.
std::string DirectoryPart(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

/// Follows `path` while it is a symbolic link. Its end need not exist. Nothing when there are too many links.
std::optional<std::string> FollowLinks(std::string path) {
    for (int links = 0; links < kMaxLinks; ++links) {
        std::array<char, PATH_MAX> text{};
        // A link there means a file that the process has open, such as its standard output.
        if (path.starts_with("/proc/")) {
            return std::nullopt;
        }
        const ssize_t length = readlink(path.c_str(), text.data(), text.size());
        if (length < 0) {
            return path;  // not a link, or not there
        }
        const std::string pointee(text.data(), static_cast<std::size_t>(length));
        path = (pointee.starts_with('/') ? "" : DirectoryPart(path)).append(pointee);
    }
    return std::nullopt;
}

/// The permissions that the process takes away from new files.
mode_t CurrentUmask() {
    // umask() can only be read by changing it, which other threads would notice; Linux also has it as text.
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        constexpr std::string_view kKey = "Umask:";
        if (line.starts_with(kKey)) {
            return static_cast<mode_t>(std::strtoul(line.c_str() + kKey.size(), nullptr, 8));
        }
    }
    const mode_t mask = umask(S_IRWXG | S_IRWXO);
    umask(mask);
    return mask;
}

/// Makes a rename in the directory last. The new file is in place already, so a failure is not reported: some
/// file systems cannot do this at all.
void FlushDirectory(const std::string& directory) {
    const int descriptor =
        open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

AtomicFile::~AtomicFile() {
    Close();
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

bool AtomicFile::Open(std::string_view path) {
    const std::optional<std::string> target = FollowLinks(std::string(path));
    if (!target || target->empty()) {
        return false;
    }
    target_ = *target;

    struct stat existing {};
    if (lstat(target_.c_str(), &existing) == 0) {
        // The bits are looked at as well, since root may write to any file.
        if (!S_ISREG(existing.st_mode) || (existing.st_mode & kAnyWrite) == 0) {
            return false;
        }
        if (access(target_.c_str(), W_OK) != 0) {
            return false;
        }
        oldFile_ =
            OldFile{existing.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO), existing.st_uid, existing.st_gid};
    } else if (errno != ENOENT) {
        return false;
    }

    std::string temporary = DirectoryPart(target_) + ".kestrel-XXXXXX";
    signals_.emplace();
    descriptor_ = mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor_ < 0) {
        signals_.reset();
        return false;
    }
    temporary_ = std::move(temporary);
    // Whatever the umask takes away: another library may have to open the file once more.
    if (fchmod(descriptor_, S_IRUSR | S_IWUSR) != 0) {
        return false;
    }
    buffer_.reserve(kBlockSize);
    return true;
}

std::string AtomicFile::TemporaryPath() const {
    return temporary_.starts_with('/') ? temporary_ : "./" + temporary_;
}

void AtomicFile::Append(std::string_view text) {
    if (buffer_.size() + text.size() > kBlockSize) {
        WriteOut(buffer_);
        buffer_.clear();
    }
    if (text.size() > kBlockSize) {
        WriteOut(text);
    } else {
        buffer_ += text;
    }
}

void AtomicFile::WriteOut(std::string_view text) {
    failed_ = failed_ || Interrupted();
    while (!text.empty() && !failed_) {
        const ssize_t written = write(descriptor_, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            failed_ = true;
        }
    }
}

bool AtomicFile::SetOwnerAndMode() const {
    if (!oldFile_) {
        const mode_t everybody = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
        return fchmod(descriptor_, everybody & ~CurrentUmask()) == 0;
    }
    // Only root may give a file away; others may still keep its group.
    if (fchown(descriptor_, oldFile_->user, oldFile_->group) != 0) {
        (void)!fchown(descriptor_, static_cast<uid_t>(-1), oldFile_->group);
    }
    return fchmod(descriptor_, oldFile_->mode) == 0;
}

bool AtomicFile::Close() {
    if (descriptor_ < 0) {
        return true;
    }
    const int descriptor = descriptor_;
    descriptor_ = -1;
    return close(descriptor) == 0;
}

bool AtomicFile::Commit() {
    if (descriptor_ < 0) {
        return false;
    }
    WriteOut(buffer_);
    buffer_.clear();
    if (failed_ || !SetOwnerAndMode() || fsync(descriptor_) != 0 || !Close()) {
        return false;
    }
    if (Interrupted() || std::rename(temporary_.c_str(), target_.c_str()) != 0) {
        return false;
    }
    temporary_.clear();
    FlushDirectory(DirectoryPart(target_));
    signals_.reset();
    return true;
}

}  // namespace kestrel
