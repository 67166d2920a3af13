#include "export/alias_names.h"

#include "export/config_lines.h"

namespace tarvex {

bool AliasNames::Read(const std::string& path) {
    auto lines = ReadConfigLines(path);
    if (!lines) {
        return false;
    }
    for (ConfigLine& line : *lines) {
        aliases_[line.name] = std::move(line.value);
    }
    return true;
}

}  // namespace tarvex
