/// Signals that end the process while a file is being replaced. What they do is seen in child processes.

#include "kestrel/termination_signals.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "kestrel/atomic_file.h"
#include "kestrel/database.h"
#include "kestrel/writer.h"
#include "support.h"

namespace {

using kestrel::AtomicFile;
using kestrel::TerminationSignals;
using Names = std::vector<std::string>;

std::vector<int> Signals() {
    std::vector<int> signals = {SIGHUP,    SIGINT,  SIGQUIT, SIGTERM, SIGXCPU, SIGALRM,  SIGPROF,
                                SIGVTALRM, SIGUSR1, SIGUSR2, SIGPWR,  SIGIO,   SIGSTKFLT};
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) {
        signals.push_back(signal);
    }
    return signals;
}

/// Besides, two that the C library keeps for itself: its functions neither send, ignore nor hold them back.
std::vector<int> SignalsOfTheKernel() {
    std::vector<int> signals = Signals();
    signals.insert(signals.end(), {32, 33});
    return signals;
}

/// Exit status of a child in which something was not as it should be.
constexpr int kWrong = 1;

/// A child starts with nothing ignored or held back, whoever runs the tests, and leaves no core file.
void StartChild(int signal) {
    const rlimit noCore{};
    setrlimit(RLIMIT_CORE, &noCore);
    (void)std::signal(signal, SIG_DFL);
    sigset_t none{};
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
}

void Demand(bool isRight) {
    if (!isRight) {
        std::_Exit(kWrong);
    }
}

/// As the kernel says it: the C library has no word for two of the signals.
bool IsHeldBack(int signal) {
    std::uint64_t held = 0;
    syscall(SYS_rt_sigprocmask, SIG_BLOCK, nullptr, &held, sizeof(held));
    return (held >> static_cast<unsigned>(signal - 1) & 1U) != 0;
}

volatile std::sig_atomic_t handled = 0;

void Handle(int /*signal*/) {
    handled = handled + 1;
}

class Replacement : public testing::Test {
  protected:
    Replacement() { MakeFile(path_, "old"); }

    void ExpectUntouched() const {
        EXPECT_EQ(ReadFile(path_), "old");
        EXPECT_EQ(directory_.Names(), Names{"out.vorn"});
    }

    TemporaryDirectory directory_;
    std::string path_ = directory_ / "out.vorn";
};

TEST_F(Replacement, SignalEndsTheProcessOnceTheTemporaryFileIsGone) {
    for (const int signal : SignalsOfTheKernel()) {
        SCOPED_TRACE(signal);
        const auto write = [&] {
            StartChild(signal);
            {
                AtomicFile file;
                Demand(file.Open(path_));
                file.Append("new");
                Demand(!file.Interrupted());
                Demand(kill(getpid(), signal) == 0);
                Demand(file.Interrupted());
                Demand(!file.Commit());
            }
            std::_Exit(0);  // not reached
        };
        EXPECT_EXIT(write(), testing::KilledBySignal(signal), "");
        ExpectUntouched();
    }
}

TEST_F(Replacement, SignalStopsTheWriterOfEveryFormatOnItsWay) {
    for (const kestrel::Format format :
         {kestrel::Format::Vorn, kestrel::Format::Sqlite, kestrel::Format::Kcd}) {
        SCOPED_TRACE(static_cast<int>(format));
        const auto write = [&] {
            StartChild(SIGTERM);
            kestrel::Database database("cabin");
            for (int number = 0; number < 50'000; ++number) {
                SetName(database.CreateNode().name, "Radio");
                SetName(database.CreateMessage(0).name, "RadioState");
            }
            {
                AtomicFile file;
                Demand(file.Open(path_));
                (void)std::raise(SIGTERM);
                kestrel::WriterOf(format)(database, file);
                Demand(file.Failed());
            }
            std::_Exit(0);  // not reached
        };
        EXPECT_EXIT(write(), testing::KilledBySignal(SIGTERM), "");
        ExpectUntouched();
    }
}

TEST_F(Replacement, IgnoredSignalStaysIgnored) {
    for (const int signal : Signals()) {
        SCOPED_TRACE(signal);
        MakeFile(path_, "old");
        const auto write = [&] {
            StartChild(signal);
            (void)std::signal(signal, SIG_IGN);
            AtomicFile file;
            Demand(file.Open(path_));
            (void)std::raise(signal);
            file.Append("new");
            Demand(file.Commit());
            std::_Exit(0);
        };
        EXPECT_EXIT(write(), testing::ExitedWithCode(0), "");
        EXPECT_EQ(ReadFile(path_), "new");
    }
}

TEST_F(Replacement, HandledSignalIsHandledAtOnce) {
    for (const int signal : {SIGTERM, SIGIO, SIGRTMIN}) {
        SCOPED_TRACE(signal);
        MakeFile(path_, "old");
        const auto write = [&] {
            StartChild(signal);
            (void)std::signal(signal, Handle);
            AtomicFile file;
            Demand(file.Open(path_));
            (void)std::raise(signal);
            Demand(handled == 1);
            file.Append("new");
            Demand(file.Commit());
            std::_Exit(0);
        };
        EXPECT_EXIT(write(), testing::ExitedWithCode(0), "");
        EXPECT_EQ(ReadFile(path_), "new");
    }
}

TEST_F(Replacement, SignalThatTheCallerHoldsBackIsLeftToIt) {
    const auto write = [&] {
        StartChild(SIGTERM);
        sigset_t termination{};
        sigemptyset(&termination);
        sigaddset(&termination, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &termination, nullptr);
        {
            AtomicFile file;
            Demand(file.Open(path_));
            (void)std::raise(SIGTERM);
            file.Append("new");
            Demand(file.Commit());
        }
        Demand(IsHeldBack(SIGTERM));
        std::_Exit(0);
    };
    EXPECT_EXIT(write(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(ReadFile(path_), "new");
}

TEST_F(Replacement, SignalsAreHeldBackWhileThereIsATemporaryFile) {
    const auto write = [&](bool isCommitted) {
        StartChild(SIGTERM);
        {
            AtomicFile file;
            Demand(!IsHeldBack(SIGTERM));
            Demand(file.Open(path_));
            Demand(IsHeldBack(SIGTERM));
            if (isCommitted) {
                Demand(file.Commit());
                Demand(!IsHeldBack(SIGTERM));
            }
        }
        Demand(!IsHeldBack(SIGTERM));
        std::_Exit(0);
    };
    EXPECT_EXIT(write(false), testing::ExitedWithCode(0), "");
    ExpectUntouched();
    EXPECT_EXIT(write(true), testing::ExitedWithCode(0), "");
}

TEST_F(Replacement, FileThatCannotBeOpenedHoldsNothingBack) {
    for (const std::string& refused : {directory_ / "missing/out.vorn", directory_.Path(), std::string()}) {
        SCOPED_TRACE(refused);
        const auto write = [&] {
            StartChild(SIGTERM);
            AtomicFile file;
            Demand(!file.Open(refused));
            Demand(!IsHeldBack(SIGTERM));
            std::_Exit(0);
        };
        EXPECT_EXIT(write(), testing::ExitedWithCode(0), "");
    }
}

TEST(TerminationSignals, NestOneInAnother) {
    const auto nest = [] {
        StartChild(SIGTERM);
        {
            const TerminationSignals outer;
            {
                const TerminationSignals inner;
                (void)std::raise(SIGTERM);
                Demand(!inner.HaveCome());
            }
            Demand(IsHeldBack(SIGTERM));
            Demand(outer.HaveCome());
        }
        std::_Exit(0);  // not reached
    };
    EXPECT_EXIT(nest(), testing::KilledBySignal(SIGTERM), "");
}

TEST(TerminationSignals, FaultOfTheProgramDoesNotWait) {
    const auto fail = [] {
        StartChild(SIGABRT);
        const TerminationSignals signals;
        Demand(!IsHeldBack(SIGSEGV) && !IsHeldBack(SIGBUS) && !IsHeldBack(SIGFPE) && !IsHeldBack(SIGILL));
        std::abort();
    };
    EXPECT_EXIT(fail(), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
