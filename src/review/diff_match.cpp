#include "review/diff_match.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <unordered_map>

#include "import/text/keyed_hash.h"
#include "import/text/names.h"

namespace tarvex::review {
namespace {

constexpr std::size_t kNothing = std::numeric_limits<std::size_t>::max();

/// What things are matched by.
struct Key {
    std::uint64_t number = 0;
    std::string_view name;

    bool operator==(const Key& other) const { return number == other.number && NamesEqual(name, other.name); }
};
struct KeyHash {
    std::size_t operator()(const Key& key) const {
        KeyedHash hash;
        for (const unsigned shift : {0U, 16U, 32U, 48U}) {
            hash.Add(static_cast<std::uint16_t>(key.number >> shift));
        }
        for (const char c : key.name) {
            hash.Add(static_cast<unsigned char>(FoldCase(c)));
        }
        return hash.Value();
    }
};

/// Pairs what is not paired yet, step by step.
class Matcher {
  public:
    Matcher(std::size_t before, std::size_t after) : partners_(before, kNothing), isTaken_(after) {}

    void Pair(std::size_t before, std::size_t after) {
        partners_[before] = after;
        isTaken_[after] = true;
    }

    /// Pairs things of equal keys, the first with the first; those without a key stay as they are.
    template <class KeyBefore, class KeyAfter>
    void PairByKey(const KeyBefore& keyBefore, const KeyAfter& keyAfter, const AreAlike& areAlike) {
        struct Queue {
            std::vector<std::size_t> things;
            std::size_t next = 0;
        };
        std::unordered_map<Key, Queue, KeyHash> queues;
        for (std::size_t after = 0; after < isTaken_.size(); ++after) {
            if (const std::optional<Key> key = isTaken_[after] ? std::nullopt : keyAfter(after)) {
                queues[*key].things.push_back(after);
            }
        }
        for (std::size_t before = 0; !queues.empty() && before < partners_.size(); ++before) {
            const std::optional<Key> key = partners_[before] == kNothing ? keyBefore(before) : std::nullopt;
            const auto found = key ? queues.find(*key) : queues.end();
            if (found == queues.end() || found->second.next == found->second.things.size()) {
                continue;
            }
            const std::size_t after = found->second.things[found->second.next];
            if (!areAlike || areAlike(before, after)) {
                Pair(before, after);
                ++found->second.next;
            }
        }
    }

    /// Everything before has a partner, and everything after is one.
    bool IsComplete() const {
        return partners_.size() == isTaken_.size() &&
               std::ranges::find(partners_, kNothing) == partners_.end();
    }
    std::size_t PartnerOf(std::size_t before) const { return partners_[before]; }

    Matches Result() const {
        Matches matches;
        for (std::size_t before = 0; before < partners_.size(); ++before) {
            if (partners_[before] == kNothing) {
                matches.removed.push_back(before);
            } else {
                matches.pairs.emplace_back(before, partners_[before]);
            }
        }
        for (std::size_t after = 0; after < isTaken_.size(); ++after) {
            if (!isTaken_[after]) {
                matches.added.push_back(after);
            }
        }
        return matches;
    }

  private:
    std::vector<std::size_t> partners_;  // of each thing before
    std::vector<bool> isTaken_;          // each thing after
};

std::optional<Key> KeyOfName(std::string_view name, std::uint64_t number = 0) {
    return name.empty() ? std::nullopt : std::optional(Key{number, name});
}

/// For each thing the last one in front of it that has a partner, counted as before.
std::vector<std::size_t> MatchedInFront(std::size_t size, const std::vector<std::size_t>& ownNumbers) {
    std::vector<std::size_t> inFront(size, kNothing);
    for (std::size_t i = 1; i < size; ++i) {
        inFront[i] = ownNumbers[i - 1] != kNothing ? ownNumbers[i - 1] : inFront[i - 1];
    }
    return inFront;
}

/// Those of one form that stand behind the same thing.
void PairInGaps(std::span<const Placed> before, std::span<const Placed> after, Matcher& matcher) {
    std::vector<std::size_t> numbersBefore(before.size(), kNothing);
    std::vector<std::size_t> numbersAfter(after.size(), kNothing);
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (const std::size_t partner = matcher.PartnerOf(i); partner != kNothing) {
            numbersBefore[i] = i;
            numbersAfter[partner] = i;
        }
    }
    // The form goes into the number, whose upper half is free.
    constexpr unsigned kHalf = 32;
    const auto keys = [](std::span<const Placed> things, std::vector<std::size_t> inFront) {
        return [things, inFront = std::move(inFront)](std::size_t i) {
            return std::optional(Key{(things[i].form << kHalf) ^ (inFront[i] + 1), ""});
        };
    };
    matcher.PairByKey(keys(before, MatchedInFront(before.size(), numbersBefore)),
                      keys(after, MatchedInFront(after.size(), numbersAfter)), nullptr);
}

/// Which elements of a sequence of different numbers belong to a longest ascending part of it.
std::vector<bool> LongestAscending(const std::vector<std::size_t>& numbers) {
    std::vector<std::size_t> ends;  // of the best part of each length
    std::vector<std::size_t> previous(numbers.size(), kNothing);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto place =
            std::ranges::lower_bound(ends, numbers[i], {}, [&](std::size_t end) { return numbers[end]; });
        previous[i] = place == ends.begin() ? kNothing : *(place - 1);
        if (place == ends.end()) {
            ends.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> belongs(numbers.size());
    for (std::size_t i = ends.empty() ? kNothing : ends.back(); i != kNothing; i = previous[i]) {
        belongs[i] = true;
    }
    return belongs;
}

/// The pairs in another order. `of`: what they are in the order of, `to`: what may be out of it.
template <class Of, class To>
std::vector<Matches::Pair> Moved(std::vector<Matches::Pair> pairs, Of of, To to) {
    std::ranges::sort(pairs, {}, of);
    std::vector<std::size_t> numbers(pairs.size());
    std::ranges::transform(pairs, numbers.begin(), to);
    const std::vector<bool> stays = LongestAscending(numbers);
    std::vector<Matches::Pair> moved;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (!stays[i]) {
            moved.push_back(pairs[i]);
        }
    }
    return moved;
}

}  // namespace

Matches MatchNumbered(std::span<const Numbered> before, std::span<const Numbered> after,
                      const AreAlike& areAlike) {
    Matcher matcher(before.size(), after.size());
    const auto steps = [&](const auto& keyOf, const AreAlike& condition = nullptr) {
        if (!matcher.IsComplete()) {
            matcher.PairByKey([&](std::size_t i) { return keyOf(before[i]); },
                              [&](std::size_t i) { return keyOf(after[i]); }, condition);
        }
    };
    const auto byBoth = [](const Numbered& thing) { return std::optional(Key{thing.number, thing.name}); };
    const auto byName = [](const Numbered& thing) { return KeyOfName(thing.name); };
    const auto byNumber = [](const Numbered& thing) { return std::optional(Key{thing.number, ""}); };
    // Most lists begin alike.
    const std::size_t shorter = std::min(before.size(), after.size());
    for (std::size_t i = 0; i < shorter && *byBoth(before[i]) == *byBoth(after[i]); ++i) {
        matcher.Pair(i, i);
    }
    steps(byBoth);
    steps(byName, areAlike);
    steps(byNumber);
    steps(byName);
    return matcher.Result();
}

Matches MatchPlaced(std::span<const Placed> before, std::span<const Placed> after) {
    Matcher matcher(before.size(), after.size());
    const auto areEqual = [](const Placed& a, const Placed& b) {
        return a.form == b.form && NamesEqual(a.name, b.name);
    };
    if (std::ranges::equal(before, after, areEqual)) {
        for (std::size_t i = 0; i < before.size(); ++i) {
            matcher.Pair(i, i);
        }
        return matcher.Result();
    }
    const auto step = [&](const auto& keyOf) {
        matcher.PairByKey([&](std::size_t i) { return keyOf(before[i]); },
                          [&](std::size_t i) { return keyOf(after[i]); }, nullptr);
    };
    step([](const Placed& thing) { return KeyOfName(thing.name, thing.form); });
    step([](const Placed& thing) { return KeyOfName(thing.name); });
    PairInGaps(before, after, matcher);
    return matcher.Result();
}

std::vector<Matches::Pair> OutOfOrder(std::span<const Placed> before, std::span<const Placed> after,
                                      const Matches& matches) {
    std::vector<Matches::Pair> pairs = matches.pairs;
    if (std::ranges::is_sorted(pairs, {}, &Matches::Pair::second)) {
        return {};
    }
    // Of several longest parts the same one is found both ways: the names decide from which side it is
    // sought.
    std::vector<std::string_view> namesBefore;
    std::vector<std::string_view> namesAfter;
    namesBefore.reserve(pairs.size());
    namesAfter.reserve(pairs.size());
    for (const auto& [i, j] : pairs) {
        namesBefore.push_back(before[i].name);
    }
    std::ranges::sort(pairs, {}, &Matches::Pair::second);
    for (const auto& [i, j] : pairs) {
        namesAfter.push_back(after[j].name);
    }
    return namesBefore <= namesAfter ? Moved(pairs, &Matches::Pair::first, &Matches::Pair::second)
                                     : Moved(pairs, &Matches::Pair::second, &Matches::Pair::first);
}

}  // namespace tarvex::review
