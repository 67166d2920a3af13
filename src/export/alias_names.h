/// The alias file: other names for the database.

#pragma once

#include <map>
#include <string>

#include "export/config_lines.h"

namespace tarvex {

/// The names that function blocks, functions, operations and parameters have in the database instead of their
/// own. A name without an alias stands for itself.
class AliasNames {
  public:
    /// Reads an alias-names file: per line a name, a comma and an alias, both as they stand. A later line for
    /// the same name replaces the earlier one. Of a file that is missing nothing is taken.
    ConfigFile Read(const std::string& path);

    const std::string& Of(const std::string& name) const {
        const auto found = aliases_.find(name);
        return found == aliases_.end() ? name : found->second;
    }

  private:
    std::map<std::string, std::string> aliases_;
};

}  // namespace tarvex
