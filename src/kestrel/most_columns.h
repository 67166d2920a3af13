/// What tables say of a message besides its record: its MOST address and some of its attributes.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kestrel/database.h"
#include "kestrel/model_text.h"

namespace kestrel {

/// The address that an identifier is made of: "22.402.C", block, function and operation in hexadecimal
/// digits. Empty for an identifier of more than 24 bits, which is made of no address.
std::string AddressText(std::uint32_t identifier);

/// "0x22402C"
std::string HexadecimalText(std::uint32_t number);

/// Attributes that have a column of their own.
enum class MostColumn { FBlock, Function, OpType, Layout };
inline constexpr const char* kMostColumnNames[] = {"FBlock", "Function", "OpType", "Layout"};

inline constexpr std::size_t kMostColumnSize = 200;

/// The attributes of the messages of one database.
class MostColumns {
  public:
    explicit MostColumns(const Database& database);

    /// The value that was set, else the default, at most so many bytes of it; empty where there is no such
    /// attribute.
    std::string Of(const Message& message, MostColumn column);

    /// The same, with all of a text that is the message's own. Many messages may share a default or the name
    /// of an enumeration's value, of which no more is worth looking at in each.
    std::string WholeOf(const Message& message, MostColumn column);

  private:
    const AttrValues::Value* ValueOf(const Message& message, MostColumn column) const;

    std::array<const AttrDef*, std::size(kMostColumnNames)> definitions_ = {};
    std::array<std::string, std::size(kMostColumnNames)> defaults_;
    ValueTexts values_;
};

}  // namespace kestrel
