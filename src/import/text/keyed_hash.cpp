#include "import/text/keyed_hash.h"

#include <random>

namespace tarvex {

std::uint64_t KeyedHash::Place() {
    static const std::uint64_t place = [] {
        std::random_device source;
        return ((static_cast<std::uint64_t>(source()) << 32U) | source()) % (kPrime - 1) + 1;
    }();
    return place;
}

}  // namespace tarvex
