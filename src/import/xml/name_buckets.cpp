#include "import/xml/name_buckets.h"

#include <algorithm>
#include <limits>

#include <xercesc/util/XMLString.hpp>

#include "import/text/keyed_hash.h"

namespace tarvex {

std::size_t NameBuckets::TextHash::operator()(const DomText& name) const {
    tarvex::KeyedHash hash;
    for (const XMLCh c : name) {
        hash.Add(c);
    }
    return hash.Value();
}

bool NameBuckets::Add(const XMLCh* name) {
    if (names_.emplace(name).second) {
        if (hashes_.size() * 4 >= counts_.size() * load_) {
            Grow();
        }
        // With the largest divisor the hash comes out as it is.
        hashes_.push_back(xercesc::XMLString::hash(name, std::numeric_limits<XMLSize_t>::max()));
        Count(hashes_.back());
    }
    return fullest_ <= kMostNames;
}

void NameBuckets::Count(std::size_t hash) {
    fullest_ = std::max(fullest_, ++counts_[hash % counts_.size()]);
}

void NameBuckets::Grow() {
    counts_.assign(counts_.size() * 2 + 1, 0);
    for (const std::size_t hash : hashes_) {
        Count(hash);
    }
}

}  // namespace tarvex
