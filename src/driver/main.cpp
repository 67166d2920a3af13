#include <csignal>
#include <cstdio>
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

}  // namespace

int main(int argc, char** argv) {
    if (!FillClosedStreams()) {
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
