/// What of a catalog somebody means.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/catalog.h"

namespace tarvex::review {

/// A block, one of its functions, or an operation of that.
struct Target {
    const ZMTFBlock* block = nullptr;
    const ZMTFunction* function = nullptr;
    std::optional<unsigned> opType = std::nullopt;

    bool operator==(const Target&) const = default;
};

/// The target of an address in hexadecimal digits: "22", "22.402", "22.402.C", in any case, with or without
/// "0x". An instance behind the block ("22.01.402.C") says nothing about a catalog. Nothing for another text
/// and where the catalog has nothing. An operation that has lost all of its parameters is there.
std::optional<Target> FindByAddress(const ZMTCatalog& catalog, std::string_view what);

/// The targets of a name: of a block, a block and a function, or these and an operation, with points between
/// them, as the catalog or the databases write it, in any case. "*" stands for any letters and "?" for one; a
/// single part that has them also names functions of all blocks.
std::vector<Target> FindByName(const ZMTCatalog& catalog, std::string_view what);

/// Why an address leads to nothing, where the catalog has something that could not be imported; else empty.
std::string WhyLost(const ZMTCatalog& catalog, std::string_view what);

/// The three names that are most like one that is not found, the nearest first: of blocks, functions and
/// parameters, or, if it has points, of as many parts as it has.
std::vector<std::string> NearestTo(const ZMTCatalog& catalog, std::string_view what);

}  // namespace tarvex::review
