/// The file formats of databases, chosen by the output path's extension.

#pragma once

#include <string_view>

namespace kestrel {

/// A switch over the formats names each, without a default, so that the compiler finds every place for a new
/// one.
enum class Format { Vorn, Sqlite, Kcd, Csv };

struct FormatRow {
    std::string_view extension;  ///< With its point, in small letters.
    Format format;
};
/// The extensions that ask for a format. Help texts are made of them.
inline constexpr FormatRow kFormats[] = {
    {".sqlite", Format::Sqlite}, {".sqlite3", Format::Sqlite}, {".db", Format::Sqlite},
    {".kcd", Format::Kcd},       {".csv", Format::Csv},
};

/// The extension of Vorn, which is also written without one.
inline constexpr std::string_view kVornExtension = ".vorn";

/// The extension of a path's last component, with its point; empty without one.
std::string_view ExtensionOf(std::string_view path);

/// Whether the extension is this one, in any case.
bool HasExtension(std::string_view path, std::string_view extension);

/// The format that a path's extension asks for, in any case; Vorn for every extension that asks for no other.
Format FormatOf(std::string_view path);

}  // namespace kestrel
