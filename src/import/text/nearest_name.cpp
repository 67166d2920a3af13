#include "import/text/nearest_name.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::size_t kMaxDistance = 3;

/// Nobody mistypes longer names; they would take their time.
constexpr std::size_t kMaxLength = 64;

/// How many letters have to be changed, added or taken away to make one name of the other.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);  // from what has been seen of a to each start of b
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (FoldCase(a[i]) == FoldCase(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, diagonal + 1, row[j] + 1});
        }
    }
    return row[b.size()];
}

}  // namespace

std::string_view NearestName(std::string_view given, std::span<const std::string_view> names) {
    std::string_view nearest;
    std::size_t least = kMaxDistance + 1;
    if (given.size() > kMaxLength) {
        return nearest;
    }
    for (const std::string_view name : names) {
        const std::size_t difference =
            std::max(given.size(), name.size()) - std::min(given.size(), name.size());
        if (difference >= least) {
            continue;
        }
        const std::size_t distance = Distance(given, name);
        if (distance < least && 2 * distance < name.size()) {
            nearest = name;
            least = distance;
        }
    }
    return nearest;
}

}  // namespace tarvex
