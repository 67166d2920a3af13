/// What of a function a fault is about.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "import/log/fault_list.h"
#include "import/xml/element.h"
#include "review/function_view.h"

namespace tarvex::review {

/// At most one of them is there: a fault with neither is about the function.
struct FaultPlace {
    std::optional<std::size_t> parameter;  ///< Among those of the view.
    std::optional<unsigned> opType;
};

/// Tells what faults of a function are about. Parameters may have the names of others, and of operations:
/// they are told apart by the element that a fault stands in, and by what is there in the operation of its
/// path.
class FaultPlaces {
  public:
    /// The view and its elements outlive the places.
    explicit FaultPlaces(const FunctionView& view);

    FaultPlace PlaceOf(const Fault& fault) const;

  private:
    /// Line and column.
    using Position = std::pair<std::uint64_t, std::uint64_t>;
    /// The element of a parameter, or of one that the import left out.
    struct Written {
        Position begin;
        const Element* element;
        std::optional<std::size_t> parameter;
    };

    void Add(const Element& element, std::optional<std::size_t> parameter);
    void AddLost();
    std::vector<const Written*> WrittenAt(const Fault& fault) const;
    std::optional<std::size_t> Named(const std::vector<const Written*>& around, std::string_view name,
                                     const OperationView* operation) const;
    const OperationView* OperationNamed(std::string_view name) const;

    const FunctionView& view_;
    std::size_t path_;
    std::vector<Written> written_;  // in the order of the document
};

}  // namespace tarvex::review
