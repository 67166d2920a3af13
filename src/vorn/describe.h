/// Databases and messages in words.

#pragma once

#include <string>
#include <string_view>

#include "kestrel/database.h"
#include "vorn/style.h"

namespace vorn {

/// "0x22400C", and " extended" behind it where that applies.
std::string IdentifierText(std::uint32_t identifier);

/// One line of an overview for each message, of those that are sent by a node (if one is named) and whose
/// name matches a pattern as the shell has them: "*", "?" and "[abc]" (if one is given).
std::string MessageList(const kestrel::Database& database, const std::string& node,
                        const std::string& pattern);

/// The whole database: its attributes, nodes and messages.
std::string DatabaseText(const kestrel::Database& database, const Style& style);

/// The message of that name or identifier (hexadecimal with "0x", or decimal); null if there is none.
const kestrel::Message* FindMessage(const kestrel::Database& database, std::string_view nameOrIdentifier);

/// One message: a drawing of its bytes and bits, its signals with scaling and values, its attributes. A
/// message with multiplexed signals has a drawing for each value of the multiplexor.
std::string MessageText(const kestrel::Message& message, const Style& style);

}  // namespace vorn
