/// Whether the forms of newer catalogs are read.

#pragma once

#include <cstddef>

namespace tarvex {

/// Forms that catalogs of later versions have: kinds of parameters and function classes, and attributes that
/// may be missing.
class NewerForms {
  public:
    explicit NewerForms(bool areRead = false) : areRead_(areRead) {}

    bool AreRead() const { return areRead_; }
    /// One is met. False when it is not read, and counts then.
    bool Meet() {
        refused_ += areRead_ ? 0 : 1;
        return areRead_;
    }
    /// How many were met that were not read.
    std::size_t Refused() const { return refused_; }

  private:
    bool areRead_;
    std::size_t refused_ = 0;
};

}  // namespace tarvex
