/// Write permission that a file gets for one conversion.

#pragma once

#include <string>
#include <sys/stat.h>

namespace tarvex {

/// Gives a file write permission, and takes it back at its end: a conversion that fails leaves the file as it
/// was. One that replaces the file has nothing to fear, since the new file is another one. A mode that was
/// changed meanwhile stays.
class WritePermission {
  public:
    WritePermission() = default;
    WritePermission(const WritePermission&) = delete;
    WritePermission& operator=(const WritePermission&) = delete;
    ~WritePermission() { TakeBack(); }

    /// Makes an existing file writable for its owner; false when that can't be done. A permission that was
    /// given before is taken back.
    bool Give(const std::string& path);

  private:
    void TakeBack();

    int file_ = -1;  // while it has a permission of ours
    mode_t before_ = 0;
    mode_t given_ = 0;
};

}  // namespace tarvex
