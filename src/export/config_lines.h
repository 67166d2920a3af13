/// The lines of the alias file and of the network file.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// The longest line of an alias or network file in characters. A longer one is read in pieces of this length,
/// and each piece counts as a line.
inline constexpr std::size_t kMaxConfigLine = 99;

/// A line of such a file: what stands before its first comma, and what stands after it.
struct ConfigLine {
    std::string name;
    std::string value;
};

/// The lines of a file that have a comma; none when the file cannot be opened or not be read to
/// its end. Lines end with LF or CR LF.
std::optional<std::vector<ConfigLine>> ReadConfigLines(const std::string& path);

}  // namespace tarvex
