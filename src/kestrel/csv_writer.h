/// Writes a database as comma-separated values: a header, then a row for each signal. Lines end with CR LF,
/// the text is UTF-8 without a mark.

#pragma once

namespace kestrel {

class AtomicFile;
class Database;

/// Writes the database to an open file, which the caller commits. A failed write shows in the file.
void WriteCsv(const Database& database, AtomicFile& file);

}  // namespace kestrel
