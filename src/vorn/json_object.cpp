#include "vorn/json_object.h"

#include "kestrel/json_text.h"

namespace vorn {

void AppendKey(std::string& json, std::string_view key) {
    json += json.back() == '{' ? "" : ", ";
    kestrel::AppendQuoted(json, key);
    json += ": ";
}

void AppendMember(std::string& json, std::string_view key, std::string_view value) {
    AppendKey(json, key);
    kestrel::AppendQuoted(json, value);
}

void AppendNumber(std::string& json, std::string_view key, std::uint32_t value) {
    AppendKey(json, key);
    kestrel::AppendInteger(json, value);
}

void AppendFlag(std::string& json, std::string_view key, bool value) {
    AppendKey(json, key);
    json += value ? "true" : "false";
}

}  // namespace vorn
