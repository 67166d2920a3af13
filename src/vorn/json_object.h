/// JSON objects as text, key by key.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

/// Appends a key to an object: `json` ends with "{" before the first. The value is appended next.
void AppendKey(std::string& json, std::string_view key);

/// Appends a key with its value.
void AppendMember(std::string& json, std::string_view key, std::string_view value);
void AppendNumber(std::string& json, std::string_view key, std::uint32_t value);
void AppendFlag(std::string& json, std::string_view key, bool value);

}  // namespace vorn
