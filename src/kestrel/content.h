/// What a file is, whatever its name.

#pragma once

#include <string>

namespace kestrel {

enum class Content { Empty, Vorn, Sqlite, Kcd, Csv, OtherJson, OtherSqlite, OtherXml, Other };

/// Looks at the beginning of a file. Throws `ReadError` for one that cannot be opened, or is no regular file.
Content ContentOf(const std::string& path);

}  // namespace kestrel
