#include "driver/console_posix.h"

#include <cerrno>
#include <termios.h>
#include <unistd.h>

namespace tarvex {
namespace {

/// Makes a terminal deliver single keys, unseen, for as long as it lives. Ctrl-C is a key like any other
/// meanwhile: it refuses, and the terminal is left as it was found.
class SingleKeyMode {
  public:
    explicit SingleKeyMode(int terminal) : terminal_(terminal) {
        isTerminal_ = ::tcgetattr(terminal_, &saved_) == 0;
        if (isTerminal_) {
            termios mode = saved_;
            mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
            mode.c_cc[VMIN] = 1;
            mode.c_cc[VTIME] = 0;
            ::tcsetattr(terminal_, TCSANOW, &mode);
        }
    }
    SingleKeyMode(const SingleKeyMode&) = delete;
    SingleKeyMode& operator=(const SingleKeyMode&) = delete;
    ~SingleKeyMode() {
        if (isTerminal_) {
            // What else was typed, such as the rest of an arrow key, is not left for the shell.
            ::tcsetattr(terminal_, TCSAFLUSH, &saved_);
        }
    }

  private:
    int terminal_;
    bool isTerminal_ = false;
    termios saved_ = {};
};

}  // namespace

std::optional<char> ReadKey() {
    const SingleKeyMode mode(STDIN_FILENO);
    char key = 0;
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, &key, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1 ? std::optional(key) : std::nullopt;
}

}  // namespace tarvex
