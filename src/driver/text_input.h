/// Text from files and pipes, in UTF-8 whatever it was.

#pragma once

#include <cstddef>
#include <string>
#include <sys/types.h>

namespace tarvex {

/// Reads a stream piece by piece. One that begins with a byte order mark of UTF-16 is turned into UTF-8.
class TextInput {
  public:
    /// The descriptor is not owned.
    explicit TextInput(int descriptor) : descriptor_(descriptor) {}

    /// Reads what is there, of `size` bytes at most; waits for something. 0 at the end, negative for an
    /// error.
    ssize_t Read(char* out, std::size_t size);

  private:
    enum class Encoding : unsigned { Unknown, Bytes, Utf16Little, Utf16Big };

    ssize_t ReadBytes(char* out, std::size_t size) const;
    bool FindEncoding();
    void Transcode();
    ssize_t Give(char* out, std::size_t size);

    int descriptor_;
    Encoding encoding_ = Encoding::Unknown;
    bool isAtEnd_ = false;
    std::string raw_;   // what was read of UTF-16 and not turned
    std::string text_;  // what is to be given
};

}  // namespace tarvex
