/// How names crowd in the hash tables of the XML parser.

#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include "import/xml/transcode.h"

namespace tarvex {

/// Stands for one of the parser's tables of names. The parser's hash has no key, so names can be made up that
/// all come into one bucket, and each look-up goes through all of them. This counts the names in each bucket,
/// by the parser's own hash and rule of growth.
class NameBuckets {
  public:
    /// No table of an ordinary catalog comes near it: of 200,000 numbered names, hexadecimal names, pairs of
    /// numbers or words in threes the fullest bucket ever had 18.
    static constexpr std::size_t kMostNames = 64;

    /// A table grows when it has so many names for each four buckets.
    enum class Load : std::size_t { ThreeQuarters = 3, Four = 16 };

    /// A table that starts with so many buckets.
    explicit NameBuckets(std::size_t buckets, Load load = Load::ThreeQuarters)
        : counts_(buckets), load_(static_cast<std::size_t>(load)) {}

    /// False when a bucket has more than kMostNames names. A name that is there already changes nothing.
    bool Add(const XMLCh* name);

  private:
    /// The names themselves are found by a hash that nobody can foresee.
    struct TextHash {
        std::size_t operator()(const DomText& name) const;
    };

    void Count(std::size_t hash);
    void Grow();

    std::unordered_set<DomText, TextHash> names_;
    std::vector<std::size_t> hashes_;  // the parser's, of all names
    std::vector<unsigned> counts_;     // by bucket
    std::size_t load_;
    unsigned fullest_ = 0;
};

}  // namespace tarvex
