/// The network file: nodes and their MOST addresses.

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace tarvex {

/// The names of nodes by their MOST node address, ascending.
using NodeAddresses = std::map<std::int32_t, std::string>;

/// Reads a network-configuration file: per line a node name, a comma and an address, hexadecimal right behind
/// a "0x" and else decimal; other lines are ignored. A later line with the same address replaces the earlier
/// one. None when the file cannot be opened.
std::optional<NodeAddresses> ReadNodeAddresses(const std::string& path);

}  // namespace tarvex
