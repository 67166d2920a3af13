/// What a catalog says of its blocks and functions to people. It has to be read with descriptions.

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "review/catalog_reading.h"

namespace tarvex::review {

/// A text that is shown many times: so many bytes of it, without what a terminal might obey.
std::string ShownName(std::string_view name);

struct Version {
    std::string release;
    std::string date;
};

/// "3.1 of 2024-06-03"; what the catalog does not say is left out.
std::string VersionText(const Version& version);

/// All texts are those of the catalog, in one line each; empty where it says nothing.
struct BlockTexts {
    std::string name;  ///< As the catalog writes it.
    std::string kind;
    std::string description;
    Version version;
};

struct FunctionTexts {
    std::string name;           ///< As the catalog writes it.
    std::string functionClass;  ///< The element of the class: "PUnclassified".
    std::string section;        ///< "Coordination"
    std::string description;
};

/// "property", "method"; "function" for what is neither.
std::string_view ClassName(ClassKind kind);

/// Texts by the nodes that they are about.
class CatalogTexts {
  public:
    explicit CatalogTexts(const CatalogReading& reading);

    const Version& CatalogVersion() const { return version_; }
    BlockTexts Of(const ZMTFBlock& block) const;
    /// A copy has those of its original.
    static FunctionTexts Of(const ZMTFunction& function);

  private:
    Version version_;
    std::map<std::uint32_t, const Element*> blocks_;  // by FBlockID
};

}  // namespace tarvex::review
