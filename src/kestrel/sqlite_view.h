/// The view "signals" of a database in SQLite: the table of comma-separated values.

#pragma once

#include <string>

namespace kestrel {

/// The statement that makes the view. The numbers of scalings are NULL without a table of them.
std::string SqliteSignalsView(bool hasScalings);

}  // namespace kestrel
