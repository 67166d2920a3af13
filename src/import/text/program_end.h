/// How console programs end, whatever happens.

#pragma once

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "import/text/shown_text.h"

namespace tarvex {

/// The exit status of a program that could not do what it was asked for.
inline constexpr int kTroubleStatus = 2;

/// In words that need no memory.
template <const char* kProgram>
void TellOutOfMemory() {
    (void)std::fputs(kProgram, stderr);
    (void)std::fputs(": there is not enough memory for this\n", stderr);
}

/// Less than any exception takes.
inline constexpr std::size_t kSmall = 64;

/// Where an exception can't get out any more: to take a large list apart the JSON library needs memory too,
/// and cannot say when there is none. Nothing has been written where files are read, so nothing is left
/// behind.
template <const char* kProgram>
[[noreturn]] void EndProgram() {
    try {
        if (const std::exception_ptr exception = std::current_exception()) {
            std::rethrow_exception(exception);
        }
    } catch (const std::bad_alloc&) {
        TellOutOfMemory<kProgram>();
        std::_Exit(kTroubleStatus);
    } catch (...) {
        std::abort();
    }
    const void* const volatile block = std::malloc(kSmall);  // NOLINT(*-no-malloc,*-owning-memory)
    if (block == nullptr) {                                  // there was none for the exception itself
        TellOutOfMemory<kProgram>();
        std::_Exit(kTroubleStatus);
    }
    std::abort();
}

/// A program's first object, before those that are made with memory: from here on it ends like that.
template <const char* kProgram>
struct ProgramEnd {
    ProgramEnd() noexcept { std::set_terminate(EndProgram<kProgram>); }
};

/// The place of the first object among those that are made before a program runs.
inline constexpr int kFirstObject = 101;

/// Runs a program and gives its exit status. What it throws is told on standard error, behind its name.
template <const char* kProgram, class Run>
int RunProgram(const Run& run) try {
    (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a failed write like any other
    return run();
} catch (const std::bad_alloc&) {
    TellOutOfMemory<kProgram>();
    return kTroubleStatus;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "%s: %s\n", kProgram, Shown(exception.what()).c_str());
    return kTroubleStatus;
}

}  // namespace tarvex
