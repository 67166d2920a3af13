#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <new>
#include <unistd.h>

#include "driver/driver.h"
#include "driver/exit_status.h"

namespace {

/// Where a standard stream is closed, the next file that is opened would take its number, and the texts for
/// the console would go there. What is put in its place can be read and written no more than a closed one.
bool FillClosedStreams() {
    int descriptor = STDIN_FILENO;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = ::open("/", O_PATH);
    }
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return descriptor >= 0;
}

/// Where there is not even room for an exception. Other ends without a handler stay what they are.
[[noreturn]] void EndAtOnce() {
    if (std::current_exception() != nullptr) {
        std::abort();
    }
    tarvex::TellMemoryEnded();
    std::_Exit(tarvex::kExitFailure);
}

/// The allocator itself needs some memory for its first block. Where that fails, it does not survive `new`.
// NOLINTBEGIN(*-no-malloc, *-owning-memory): that is what is tried
bool CanAllocate() {
    constexpr std::size_t kBlock = std::size_t{1} << 16;
    void* const block = std::malloc(kBlock);
    const volatile bool isThere = block != nullptr;  // not left out with the block
    std::free(block);
    return isThere;
}
// NOLINTEND(*-no-malloc, *-owning-memory)

}  // namespace

int main(int argc, char** argv) {
    if (!FillClosedStreams()) {
        return tarvex::kExitFailure;
    }
    std::set_terminate(EndAtOnce);
    if (!CanAllocate()) {
        tarvex::TellMemoryEnded();
        return tarvex::kExitFailure;
    }
    // A pipe that nobody reads and a file that may not grow are failed writes like any other.
    (void)std::signal(SIGPIPE, SIG_IGN);
    (void)std::signal(SIGXFSZ, SIG_IGN);
    int status = tarvex::kExitFailure;
    try {
        status = tarvex::Run({argv, static_cast<std::size_t>(argc)});
    } catch (const std::bad_alloc&) {
        tarvex::TellMemoryEnded();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "TARVEX: %s\n", exception.what());
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fprintf(stderr, "TARVEX: can't write to the standard output\n");
        return tarvex::kExitFailure;
    }
    return status;
}
