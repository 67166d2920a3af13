/// Writes a database as a KCD file, an open XML description of bus networks, for tools that load it.
///
/// KCD has no attributes: they go into the `Notes` of their object, one per line. A multiplexor becomes a
/// `Multiplex` with a `MuxGroup` for each value; multiplexed signals of a message without a multiplexor
/// become plain ones. A scaling goes into the `Value` of its signal, but for the step. A message whose
/// identifier has more than 29 bits is left out: readers would refuse the whole file.

#pragma once

namespace kestrel {

class AtomicFile;
class Database;

/// Writes the database to an open file, which the caller commits. A failed write shows in the file.
void WriteKcd(const Database& database, AtomicFile& file);

}  // namespace kestrel
