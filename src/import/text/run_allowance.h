/// What the conversion of one catalog may use up altogether.

#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>

#include "import/text/allowance.h"

namespace tarvex {

/// What a piece of work takes, roughly: steps of some 25 ns, bytes of memory that stay, bytes of files.
struct Cost {
    std::size_t steps = 0;
    std::size_t memory = 0;
    std::size_t written = 0;
};

/// The end of an import whose catalog asks for more work than a run may take.
class AllowanceSpent : public std::exception {
  public:
    const char* what() const noexcept override { return "The catalog asks for too much work"; }
};

/// What is left of one run, from its import to its database. Everything whose amount a small catalog could
/// drive up draws from it, on top of the bounds that single things have: each of them may be asked for in
/// full, but not all of them together.
class RunAllowance {
  public:
    static constexpr Bound kSteps{std::size_t{48} << 20, 10};
    static constexpr Bound kMemory{std::size_t{288} << 20, 32};
    static constexpr Bound kWritten{std::size_t{128} << 20, 64};

    /// `inputBytes`: of the catalog with its DTD and other entities.
    explicit RunAllowance(std::size_t inputBytes = 0)
        : left_{kSteps.For(inputBytes), kMemory.For(inputBytes), kWritten.For(inputBytes)} {}
    explicit RunAllowance(const Cost& left) : left_(left) {}

    /// False, and nothing is taken, when so much is not left.
    bool Take(const Cost& cost) {
        if (cost.steps > left_.steps || cost.memory > left_.memory || cost.written > left_.written) {
            return false;
        }
        left_.steps -= cost.steps;
        left_.memory -= cost.memory;
        left_.written -= cost.written;
        return true;
    }
    /// For work that cannot be left out. Throws AllowanceSpent when so many steps are not left.
    void TakeSteps(std::size_t steps) {
        if (!Take({steps, 0, 0})) {
            throw AllowanceSpent();
        }
    }
    /// Takes memory that is in use already, as far as there is any left; returns how much it took.
    std::size_t TakeUsed(std::size_t memory) {
        const std::size_t taken = std::min(memory, left_.memory);
        left_.memory -= taken;
        return taken;
    }
    /// Takes a part of what is left, three quarters of everything, for one purpose.
    RunAllowance TakeMost() {
        const auto most = [](std::size_t amount) { return amount / 4 * 3; };
        const Cost part{most(left_.steps), most(left_.memory), most(left_.written)};
        Take(part);
        return RunAllowance(part);
    }
    /// Memory that is free again.
    void GiveBack(std::size_t memory) { left_.memory += memory; }

    const Cost& Left() const { return left_; }

  private:
    Cost left_;
};

}  // namespace tarvex
