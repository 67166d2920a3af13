#include "kestrel/termination_signals.h"

#include <algorithm>
#include <iterator>

namespace kestrel {

namespace {

/// Those that come from outside. What tells of a fault in the program itself, such as SIGSEGV, cannot wait.
constexpr int kSignals[] = {SIGHUP,    SIGINT,  SIGQUIT, SIGTERM, SIGXCPU, SIGALRM,  SIGPROF,
                            SIGVTALRM, SIGUSR1, SIGUSR2, SIGPWR,  SIGIO,   SIGSTKFLT};

bool ComesFromOutside(int signal) {
    const bool isRealTime = signal >= SIGRTMIN && signal <= SIGRTMAX;
    return isRealTime || std::find(std::begin(kSignals), std::end(kSignals), signal) != std::end(kSignals);
}

bool EndsTheProcess(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL;
}

}  // namespace

TerminationSignals::TerminationSignals() {
    sigset_t heldBefore{};
    sigemptyset(&heldBefore);
    pthread_sigmask(SIG_BLOCK, nullptr, &heldBefore);
    sigemptyset(&held_);
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        // Linux would let an ignored signal wait like any other.
        if (ComesFromOutside(signal) && EndsTheProcess(signal) && sigismember(&heldBefore, signal) == 0) {
            sigaddset(&held_, signal);
        }
    }
    pthread_sigmask(SIG_BLOCK, &held_, nullptr);
}

TerminationSignals::~TerminationSignals() {
    pthread_sigmask(SIG_UNBLOCK, &held_, nullptr);
}

bool TerminationSignals::HaveCome() const {
    sigset_t waiting{};
    if (sigpending(&waiting) != 0) {
        return false;
    }
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        if (sigismember(&held_, signal) == 1 && sigismember(&waiting, signal) == 1) {
            return true;
        }
    }
    return false;
}

}  // namespace kestrel
