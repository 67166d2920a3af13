/// Single keys from the console, for the question before a file is overwritten.

#pragma once

#include <optional>
#include <termios.h>

#include "kestrel/termination_signals.h"

namespace tarvex {

/// Reads single keys from standard input. On a terminal they are read without echo and without Enter for as
/// long as the object lives. Made before the question is printed, it does not lose a key that is pressed at
/// once. Ctrl-C is a key like any other meanwhile, and so refuses. A signal from outside waits until the
/// object is gone, and ends the process then; so the terminal is left as it was found.
class KeyReader {
  public:
    KeyReader();
    KeyReader(const KeyReader&) = delete;
    KeyReader& operator=(const KeyReader&) = delete;
    ~KeyReader();

    /// Waits until standard output takes a question: it may be stopped by Ctrl-S, or a pipe that is full.
    /// False when a signal has come.
    bool WaitForConsole() const;

    /// Waits for a key, or reads one byte where standard input is no terminal. None at the end of the input,
    /// when the terminal goes away, and when a signal has come.
    std::optional<char> Read();

  private:
    void HoldSignals();
    bool WaitFor(int descriptor, short event) const;

    bool isTerminal_ = false;
    termios saved_ = {};
    /// The signals that wait until the terminal is restored, and the descriptor that tells of them; -1 where
    /// none waits.
    std::optional<kestrel::TerminationSignals> held_;
    int signals_ = -1;
};

}  // namespace tarvex
