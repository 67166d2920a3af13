/// The lines of the alias file and of the network file.

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tarvex {

/// The longest line of an alias or network file in characters. A longer one is read in pieces of this length,
/// and each piece counts as a line.
inline constexpr std::size_t kMaxConfigLine = 99;

/// Of the lines that have a comma so many count. A line of a few bytes takes some hundred in memory, and the
/// catalog with the most names has some ten thousand of them.
inline constexpr std::size_t kMaxConfigLines = std::size_t{1} << 20;

/// What can be said of such a file once it was read.
enum class ConfigFile {
    Missing,  ///< It cannot be opened, or not be read to its end.
    Whole,
    Cut,  ///< It has too many lines, and the last ones do not count.
};

/// Takes a line: what stands before its first comma, and what stands after it. Valid for the call only.
using ConfigLineTaker = std::function<void(std::string_view name, std::string_view value)>;

/// Hands over the lines of a file that have a comma, in their order. Lines end with LF or CR LF. What was
/// handed over of a file that turns out to be missing is void.
ConfigFile ReadConfigLines(const std::string& path, const ConfigLineTaker& take);

}  // namespace tarvex
