/// JSON objects in lines: several in one, one in several, alone or in an array.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvex {

/// An object of more bytes is no message. One of as many bytes as a message can have, with a line for each,
/// takes less.
inline constexpr std::size_t kMaxJsonObject = std::size_t{1} << 20;

/// Cuts lines into objects.
class JsonSplitter {
  public:
    /// What was found.
    struct Piece {
        std::string_view text;  ///< until the next call
        std::uint64_t line = 0;
        /// Nothing for a whole object; else what is wrong with the text.
        std::string_view fault;
    };

    /// The line belongs to JSON: an object is open, or it begins with what an object or an array of them
    /// does.
    bool Wants(std::string_view line) const;
    /// Takes a line; its pieces come out of Next.
    void Take(std::string_view line, std::uint64_t number);
    bool Next(Piece& piece);
    /// The capture ends; Next may give an object that has not ended.
    void Finish();

  private:
    bool Open(Piece& piece);
    bool Goes(Piece& piece);
    bool Fail(Piece& piece, std::string_view fault);

    std::string_view rest_;     // of the line
    std::uint64_t number_ = 0;  // of the line
    std::string object_;        // as far as it was read
    std::string given_;         // to the caller
    std::uint64_t begin_ = 0;   // the line in which it begins
    std::string nesting_;       // the brackets that are open in it
    bool isInText_ = false;
    bool isEscaped_ = false;
    char last_ = '\0';  // in front of a brace, less blanks
    bool isInArray_ = false;
    bool isFinished_ = false;
};

}  // namespace tarvex
