#include "driver/console_posix.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tarvex {

KeyReader::KeyReader() {
    isTerminal_ = ::tcgetattr(STDIN_FILENO, &saved_) == 0;
    if (isTerminal_) {
        HoldSignals();
        termios mode = saved_;
        mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
        mode.c_cc[VMIN] = 1;
        mode.c_cc[VTIME] = 0;
        ::tcsetattr(STDIN_FILENO, TCSANOW, &mode);
    }
}

KeyReader::~KeyReader() {
    if (isTerminal_) {
        // What else was typed, such as the rest of an arrow key, is not left for the shell.
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &saved_);
    }
    if (signals_ >= 0) {
        ::close(signals_);
    }
}

void KeyReader::HoldSignals() {
    held_.emplace();
    // The kernel is asked, as the C library would leave out the signals that it keeps for itself.
    const std::uint64_t signals = held_->Held();
    signals_ =
        static_cast<int>(::syscall(SYS_signalfd4, -1, &signals, sizeof(signals), O_CLOEXEC | O_NONBLOCK));
    if (signals_ < 0) {
        held_.reset();
    }
}

/// False when a signal has come; it is not taken, only seen.
bool KeyReader::WaitFor(int descriptor, short event) const {
    pollfd watched[] = {{signals_, POLLIN, 0}, {descriptor, event, 0}};
    while (::poll(watched, std::size(watched), -1) < 0) {
        if (errno != EINTR && errno != EAGAIN) {
            return false;
        }
    }
    return watched[0].revents == 0;
}

bool KeyReader::WaitForConsole() const {
    return WaitFor(STDOUT_FILENO, POLLOUT);
}

std::optional<char> KeyReader::Read() {
    char key = 0;
    ssize_t count = 0;
    do {
        count = WaitFor(STDIN_FILENO, POLLIN) ? ::read(STDIN_FILENO, &key, 1) : 0;
    } while (count < 0 && (errno == EINTR || errno == EAGAIN));
    return count == 1 ? std::optional(key) : std::nullopt;
}

}  // namespace tarvex
