#pragma once

#include <optional>
#include <termios.h>

namespace tarvex {

/// Reads single keys from standard input. On a terminal they are read without echo and without Enter for as
/// long as the object lives, from before a question appears, so that no answer is too fast. Ctrl-C is a key
/// like any other meanwhile: it refuses, and the terminal is left as it was found.
class KeyReader {
  public:
    KeyReader();
    KeyReader(const KeyReader&) = delete;
    KeyReader& operator=(const KeyReader&) = delete;
    ~KeyReader();

    /// Waits for a key, or reads one byte where standard input is no terminal. None at the end of the input.
    std::optional<char> Read();

  private:
    bool isTerminal_ = false;
    termios saved_ = {};
};

}  // namespace tarvex
