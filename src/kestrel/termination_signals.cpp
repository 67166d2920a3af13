#include "kestrel/termination_signals.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <iterator>
#include <sys/syscall.h>
#include <unistd.h>

namespace kestrel {

namespace {

// The C library keeps the first real-time signals to itself: its functions can neither hold them back nor
// tell about them, but they end the process like any other. So the kernel is asked.

using Set = std::uint64_t;
constexpr int kSignalCount = 64;
constexpr int kFirstRealTime = 32;

constexpr Set BitOf(int signal) {
    return Set{1} << static_cast<unsigned>(signal - 1);
}

/// Those that come from outside. What tells of a fault in the program itself, such as SIGSEGV, cannot wait.
constexpr int kSignals[] = {SIGHUP,    SIGINT,  SIGQUIT, SIGTERM, SIGXCPU, SIGALRM,  SIGPROF,
                            SIGVTALRM, SIGUSR1, SIGUSR2, SIGPWR,  SIGIO,   SIGSTKFLT};

bool ComesFromOutside(int signal) {
    return signal >= kFirstRealTime ||
           std::find(std::begin(kSignals), std::end(kSignals), signal) != std::end(kSignals);
}

bool EndsTheProcess(int signal) {
    // What the kernel fills in begins with the handler and is no longer than this.
    std::array<std::uint64_t, 8> action{};
    if (syscall(SYS_rt_sigaction, signal, nullptr, action.data(), sizeof(Set)) != 0) {
        return false;
    }
    void (*handler)(int) = nullptr;
    std::memcpy(&handler, action.data(), sizeof(handler));
    return handler == SIG_DFL;
}

/// Changes the signals that are held back; returns those that were before.
Set ChangeMask(int how, Set signals) {
    Set before = 0;
    syscall(SYS_rt_sigprocmask, how, &signals, &before, sizeof(Set));
    return before;
}

}  // namespace

TerminationSignals::TerminationSignals() {
    const Set heldBefore = ChangeMask(SIG_BLOCK, 0);
    for (int signal = 1; signal <= kSignalCount; ++signal) {
        // Linux would let an ignored signal wait like any other.
        if (ComesFromOutside(signal) && EndsTheProcess(signal) && (heldBefore & BitOf(signal)) == 0) {
            held_ |= BitOf(signal);
        }
    }
    ChangeMask(SIG_BLOCK, held_);
}

TerminationSignals::~TerminationSignals() {
    ChangeMask(SIG_UNBLOCK, held_);
}

bool TerminationSignals::HaveCome() const {
    Set waiting = 0;
    return syscall(SYS_rt_sigpending, &waiting, sizeof(Set)) == 0 && (waiting & held_) != 0;
}

}  // namespace kestrel
