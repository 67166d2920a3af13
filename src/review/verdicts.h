/// What became of a catalog: how much of it is in the tree, and how much of its messages is known.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "params/layout.h"
#include "review/catalog_reading.h"

namespace tarvex::review {

/// An operation of a function of a block, on the bus.
struct Address {
    std::uint32_t fBlockID = 0;
    std::uint32_t functionID = 0;
    unsigned opType = 0;

    auto operator<=>(const Address&) const = default;
};

/// "22.402.C", as engineers write it without an instance.
std::string AddressText(const Address& address);

struct Verdicts {
    // In the tree.
    std::size_t blocks = 0;
    std::size_t functions = 0;
    /// Also those that have lost all of their parameters. They are incomplete, and in databases with the safe
    /// layout.
    std::size_t messages = 0;
    // Of the messages.
    std::size_t complete = 0;
    std::size_t open = 0;
    std::vector<Address> incomplete;
    // In the catalog and not in the tree.
    std::size_t lostBlocks = 0;
    std::size_t lostFunctions = 0;
    /// Operations of functions that are lost, or have a class that nobody knows.
    std::size_t lostMessages = 0;
};

/// Counts. Without a tree everything is lost that the catalog has.
Verdicts VerdictsOf(const CatalogReading& reading);

}  // namespace tarvex::review
