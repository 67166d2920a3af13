/// Writes a database as a SQLite 3 file, for queries and for programs in any language.

#pragma once

namespace kestrel {

class AtomicFile;
class Database;

/// Writes the database into an open file, which the caller commits. A failed write shows in the file.
void WriteSqlite(const Database& database, AtomicFile& file);

}  // namespace kestrel
