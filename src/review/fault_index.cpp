#include "review/fault_index.h"

#include <algorithm>
#include <functional>
#include <string>

namespace tarvex::review {
FaultIndex::FaultIndex(const CatalogReading& reading) {
    byPath_.reserve(reading.Faults().size());
    for (const Fault& fault : reading.Faults()) {
        byPath_.push_back(&fault);
    }
    std::ranges::stable_sort(byPath_, {}, &Fault::path);
}

std::vector<const Fault*> FaultIndex::About(std::string_view path) const {
    const std::string below = std::string(path) + "/";
    const auto isBefore = [](std::string_view what) {
        return [what](const Fault* fault) { return fault->path < what; };
    };
    const auto own = std::partition_point(byPath_.begin(), byPath_.end(), isBefore(path));
    const auto ownEnd =
        std::partition_point(own, byPath_.end(), [&](const Fault* fault) { return fault->path == path; });
    const auto first = std::partition_point(ownEnd, byPath_.end(), isBefore(below));
    const auto last = std::partition_point(
        first, byPath_.end(), [&](const Fault* fault) { return fault->path.starts_with(below); });
    std::vector<const Fault*> faults(own, ownEnd);
    faults.insert(faults.end(), first, last);
    std::ranges::sort(faults, std::less<>());  // all stand in one list
    return faults;
}

}  // namespace tarvex::review
