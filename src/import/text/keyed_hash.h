/// A hash that nobody can foresee, for tables of names that come from files.

#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvex {

/// Hashes a text letter by letter: the value of a polynomial, whose coefficients are the letters, at a place
/// that each process draws for itself. Whoever makes up names cannot make them collide: two different ones do
/// so with a probability of their length in 2^61.
class KeyedHash {
  public:
    KeyedHash() : place_(Place()) {}
    void Add(std::uint16_t letter) { value_ = Reduce(static_cast<Wide>(value_) * place_ + letter + 1); }
    std::size_t Value() const { return value_; }

  private:
    __extension__ using Wide = unsigned __int128;
    static constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61) - 1;

    /// The remainder of a division by the prime, which is a sum of the parts.
    static std::uint64_t Reduce(Wide number) {
        const std::uint64_t sum =
            static_cast<std::uint64_t>(number & kPrime) + static_cast<std::uint64_t>(number >> 61U);
        return sum >= kPrime ? sum - kPrime : sum;
    }
    static std::uint64_t Place();

    std::uint64_t place_;
    std::uint64_t value_ = 0;
};

}  // namespace tarvex
