/// The network file: nodes and their MOST addresses.

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "export/config_lines.h"

namespace tarvex {

/// The names of nodes by their MOST node address, ascending.
using NodeAddresses = std::map<std::int32_t, std::string>;

/// A node takes more than two hundred bytes in a database, and a bus has 64 of them.
inline constexpr std::size_t kMaxNetworkNodes = std::size_t{1} << 18;

/// Reads a network-configuration file: per line a node name, a comma and an address, hexadecimal right behind
/// a "0x" and else decimal; other lines are ignored. A later line with the same address replaces the earlier
/// one. Of a file with more than kMaxNetworkNodes addresses the first ones count, and it is cut. Of a file
/// that is missing nothing is taken.
ConfigFile ReadNodeAddresses(const std::string& path, NodeAddresses& nodes);

}  // namespace tarvex
