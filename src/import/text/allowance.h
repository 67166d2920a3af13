/// Bounds that grow with the input, so that a small catalog cannot ask for any amount of time, memory or
/// output.

#pragma once

#include <cstddef>

namespace tarvex {

/// How much of something an input of a certain size may use: so much in any case, and `amount` more for each
/// `perBytes` bytes.
struct Bound {
    std::size_t least = 0;
    std::size_t amount = 0;
    std::size_t perBytes = 1;

    constexpr std::size_t For(std::size_t inputBytes) const { return least + inputBytes / perBytes * amount; }
};

/// What is left of a bound.
class Allowance {
  public:
    constexpr explicit Allowance(std::size_t amount) : left_(amount) {}
    constexpr Allowance(const Bound& bound, std::size_t inputBytes) : Allowance(bound.For(inputBytes)) {}

    /// False when so much is not left, and from then on.
    bool Take(std::size_t amount) {
        isSpent_ = isSpent_ || amount > left_;
        left_ -= isSpent_ ? 0 : amount;
        return !isSpent_;
    }
    /// Gives nothing from here on.
    void End() { isSpent_ = true; }
    /// More was asked for than was left.
    bool IsSpent() const { return isSpent_; }
    std::size_t Left() const { return left_; }

  private:
    std::size_t left_;
    bool isSpent_ = false;
};

}  // namespace tarvex
