/// The file formats of databases, chosen by the output path's extension.

#pragma once

#include <string_view>

namespace kestrel {

enum class Format { Vorn, Sqlite, Kcd };

/// The format that a path's extension asks for, in any case; Vorn for every extension that asks for no other.
Format FormatOf(std::string_view path);

}  // namespace kestrel
