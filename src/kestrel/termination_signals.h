/// Holds back the signals that end the process, for as long as there is something to clean up.

#pragma once

#include <cstdint>

namespace kestrel {

/// From its construction to its destruction the termination signals wait. One that has come then takes its
/// usual effect. A signal that the process ignores, handles or holds back itself is left alone. Holds for the
/// thread that makes it and is destroyed there.
class TerminationSignals {
  public:
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals(TerminationSignals&&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    TerminationSignals& operator=(TerminationSignals&&) = delete;
    ~TerminationSignals();

    /// One of the signals waits, so the process is about to end.
    bool HaveCome() const;

    /// The signals that wait, a bit for each, as the kernel counts them: 1 is the lowest.
    std::uint64_t Held() const { return held_; }

  private:
    std::uint64_t held_ = 0;
};

}  // namespace kestrel
