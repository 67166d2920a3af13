/// Databases and messages in words.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/style.h"
#include "kestrel/database.h"

namespace vorn {

/// "0x22400C", and " extended" behind it where that applies.
std::string IdentifierText(std::uint32_t identifier);

/// One line of an overview for each message.
std::string MessageList(const std::vector<const kestrel::Message*>& messages);

/// The whole database: its attributes, nodes and messages.
std::string DatabaseText(const kestrel::Database& database, const Style& style);

/// One message: its address, a drawing of its bytes and bits, its signals with scaling and values, its
/// attributes. A message with multiplexed signals has a drawing for each value of the multiplexor.
std::string MessageText(const kestrel::Message& message, const Style& style);

}  // namespace vorn
