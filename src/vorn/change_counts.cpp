#include "vorn/change_counts.h"

#include <algorithm>

namespace vorn {
namespace {

std::size_t PlaceOf(std::string_view object) {
    return static_cast<std::size_t>(std::ranges::find(kObjects, object) - std::begin(kObjects));
}

/// Whether there is anything in the changes that counts.
bool Count(const std::vector<Change>& changes, ChangeCounts& counts) {
    bool isAny = false;
    for (const Change& change : changes) {
        const bool isInParts = Count(change.parts, counts);
        const bool isInFields =
            std::ranges::any_of(change.fields, [](const FieldChange& field) { return !field.isUniqueness; });
        if (change.kind != ChangeKind::Changed || isInFields || isInParts) {
            ++counts[PlaceOf(change.object)][static_cast<std::size_t>(change.kind)];
            isAny = true;
        }
    }
    return isAny;
}

}  // namespace

std::string_view NameOf(ChangeKind kind) {
    switch (kind) {
        case ChangeKind::Added:
            return "added";
        case ChangeKind::Removed:
            return "removed";
        case ChangeKind::Moved:
            return "moved";
        case ChangeKind::Changed:
            return "changed";
    }
    return "";
}

ChangeCounts CountChanges(const Comparison& comparison) {
    ChangeCounts counts = {};
    Count(comparison.changes, counts);
    return counts;
}

}  // namespace vorn
