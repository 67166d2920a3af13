/// The question before a file is overwritten.

#pragma once

#include <string>

#include "driver/write_permission.h"

namespace tarvex {

/// Asks on the console before an existing file is overwritten, and makes the file writable when the answer is
/// "y" or "Y", for as long as the permission lives. True when there is no such file or the user agrees; false
/// for any other key, at the end of standard input, or when the file cannot be made writable.
bool MayOverwrite(const std::string& path, WritePermission& permission);

}  // namespace tarvex
