/// The faults of a catalog by what they are about.

#pragma once

#include <string_view>
#include <vector>

#include "review/catalog_reading.h"

namespace tarvex::review {

/// Finds the faults of a node without a look at all others. The reading outlives it.
class FaultIndex {
  public:
    explicit FaultIndex(const CatalogReading& reading);

    /// Faults about the node of that path, or about something in it, in the order in which they were told.
    std::vector<const Fault*> About(std::string_view path) const;

  private:
    std::vector<const Fault*> byPath_;  // those of one path in the order in which they were told
};

}  // namespace tarvex::review
