/// Help for people on standard error: what to do about what a run has met.

#pragma once

#include <cstddef>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// The hints of one run, a line each. They change nothing of what the run does or says elsewhere.
class Hints {
  public:
    /// More lines nobody reads; the last one says how many more there are.
    static constexpr std::size_t kMost = 10;

    /// Takes a sentence without a full stop. It is one line: what comes from files is a `ShownPart`.
    void Add(std::string text);
    /// The same for a sentence that takes time to make. It is made only where it may be told.
    template <class Sentence>
    void Make(const Sentence& sentence) {
        Add(count_ < kMost ? sentence() : std::string());
    }

    /// The lines as they are told; empty without hints.
    std::string Text() const;
    /// Writes them to standard error, behind all that standard output has got so far.
    void Tell() const;

  private:
    std::vector<std::string> texts_;  // the first kMost
    std::size_t count_ = 0;
};

/// Calls what looks for hints. If there is no memory for that, the run goes on without them.
template <class Search>
void LookForHints(const Search& search) {
    try {
        search();
    } catch (const std::bad_alloc&) {
        return;
    }
}

/// A text of a file, or a path, for a hint: without anything that a terminal obeys, and cut where it is
/// longer than 200 bytes.
std::string ShownPart(std::string_view text);
/// The same in quotes.
std::string Quoted(std::string_view text);

/// "1 error", "2 errors".
std::string Counted(std::size_t count, std::string_view noun);

}  // namespace tarvex
