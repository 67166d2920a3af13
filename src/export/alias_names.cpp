#include "export/alias_names.h"

namespace tarvex {

ConfigFile AliasNames::Read(const std::string& path) {
    std::map<std::string, std::string> aliases;
    const ConfigFile file = ReadConfigLines(
        path, [&](std::string_view name, std::string_view alias) { aliases[std::string(name)] = alias; });
    if (file != ConfigFile::Missing) {
        aliases_ = std::move(aliases);
    }
    return file;
}

}  // namespace tarvex
