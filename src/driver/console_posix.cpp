#include "driver/console_posix.h"

#include <cerrno>
#include <unistd.h>

namespace tarvex {

KeyReader::KeyReader() {
    isTerminal_ = ::tcgetattr(STDIN_FILENO, &saved_) == 0;
    if (isTerminal_) {
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
}

std::optional<char> KeyReader::Read() {
    char key = 0;
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, &key, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1 ? std::optional(key) : std::nullopt;
}

}  // namespace tarvex
