#include "import/text/nearest_name.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::size_t kMaxDistance = 3;

/// Nobody mistypes longer names; they would take their time.
constexpr std::size_t kMaxLength = 64;

/// What of the second name counts.
enum class Part { Whole, Best };

/// How many letters have to be changed, added or taken away, or change places with their neighbour, to make
/// the second name of the first, or the part of it that is most like it.
std::size_t Distance(std::string_view a, std::string_view b, Part part) {
    // From what has been seen of a to each start of b: now, one letter before and two letters before.
    std::vector<std::size_t> row(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> lastButOne(b.size() + 1);
    const auto areEqual = [&](std::size_t i, std::size_t j) { return FoldCase(a[i]) == FoldCase(b[j]); };
    if (part == Part::Whole) {
        std::iota(row.begin(), row.end(), std::size_t{0});
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        lastButOne.swap(last);
        last.swap(row);
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            row[j + 1] = std::min({last[j] + (areEqual(i, j) ? 0 : 1), last[j + 1] + 1, row[j] + 1});
            if (i > 0 && j > 0 && areEqual(i, j - 1) && areEqual(i - 1, j)) {
                row[j + 1] = std::min(row[j + 1], lastButOne[j - 1] + 1);
            }
        }
    }
    return part == Part::Whole ? row.back() : *std::ranges::min_element(row);
}

std::size_t DifferenceOfLengths(std::string_view a, std::string_view b) {
    return std::max(a.size(), b.size()) - std::min(a.size(), b.size());
}

}  // namespace

std::string_view NearestName(std::string_view given, std::span<const std::string_view> names) {
    std::string_view nearest;
    std::size_t least = kMaxDistance + 1;
    if (given.size() > kMaxLength) {
        return nearest;
    }
    for (const std::string_view name : names) {
        if (DifferenceOfLengths(given, name) >= least) {
            continue;
        }
        const std::size_t distance = Distance(given, name, Part::Whole);
        if (distance < least && 2 * distance < name.size()) {
            nearest = name;
            least = distance;
        }
    }
    return nearest;
}

std::vector<std::string_view> NearestNames(std::string_view given, std::span<const std::string_view> names,
                                           std::size_t count) {
    struct Candidate {
        std::pair<std::size_t, std::size_t> distance;
        std::string_view name;
    };
    std::vector<Candidate> best;
    if (given.size() > kMaxLength) {
        return {};
    }
    for (const std::string_view name : names) {
        if (name.size() > kMaxLength || std::ranges::find(best, name, &Candidate::name) != best.end()) {
            continue;
        }
        const Candidate candidate{{Distance(given, name, Part::Best), DifferenceOfLengths(given, name)},
                                  name};
        best.insert(std::ranges::upper_bound(best, candidate.distance, {}, &Candidate::distance), candidate);
        best.resize(std::min(best.size(), count));
    }
    std::vector<std::string_view> nearest;
    std::ranges::transform(best, std::back_inserter(nearest), &Candidate::name);
    return nearest;
}

}  // namespace tarvex
