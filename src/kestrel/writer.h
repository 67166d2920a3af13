/// Writes databases to files, in the format that the path asks for.

#pragma once

#include "kestrel/errors.h"
#include "kestrel/format.h"

namespace kestrel {

class AtomicFile;
class Database;

/// Writes a database into an open file, which the caller commits. A failed write shows in the file.
using WriteFunction = void (*)(const Database& database, AtomicFile& file);

/// The writer of a format.
WriteFunction WriterOf(Format format);

/// Replaces a file in one step, in the format of the path's extension. A SQLite file beside which a journal
/// of another program lies is not replaced. `kKestrelCannotOpen` or `kKestrelWriteFailed` on failure; the old
/// file is then unchanged.
KestrelError WriteDatabase(const Database& database, const char* path);

}  // namespace kestrel
