/// How the library tells that something failed.

#pragma once

#include <stdexcept>

/// Result of an operation that can fail. Zero is success, so a result can be compared with 0.
enum KestrelError {
    kKestrelOk = 0,
    /// A pointer that must not be null is null.
    kKestrelBadArgument = 1,
    /// No open database has this key.
    kKestrelUnknownDatabase = 2,
    /// The output file may not be replaced, or nothing can be created in its directory.
    kKestrelCannotOpen = 3,
    /// The output file could not be written or put in its place; what stood there before is unchanged.
    kKestrelWriteFailed = 4,
};

namespace kestrel {

/// What is wrong with a file, and where: the line of a Vorn file, the table of a SQLite file.
class ReadError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace kestrel
