/// JSON objects in lines: several in one, one in several, alone or in an array.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvex {

/// An object of more bytes is no message. One of as many bytes as a message can have, with a line for each,
/// takes less.
inline constexpr std::size_t kMaxJsonObject = std::size_t{1} << 20;
/// An object has so many levels at most: those of a report whose parameters stand in each other as deep as a
/// catalog may have them take two each.
inline constexpr std::size_t kMaxJsonLevels = 150;

inline constexpr std::string_view kNoJsonObject =
    "no valid JSON, expected an object with fBlockID, instanceID, fktID, opType and data";

/// A line of a capture, or the beginning of a very long one.
struct CaptureLine {
    std::uint64_t number = 0;
    std::string text;
    /// There is more of it.
    bool isCut = false;
};

/// Cuts lines into objects. An object ends at the latest where something stands that can't stand in one.
class JsonSplitter {
  public:
    /// What was found.
    struct Piece {
        std::string_view text;  ///< until the next call; of what is wrong its first line
        std::uint64_t line = 0;
        /// Nothing for a whole object; else what is wrong with the text.
        std::string_view fault = {};
        /// The lines below the first one that had been taken for parts of it, the last of all included: they
        /// may be something else.
        std::vector<CaptureLine> others = {};
    };

    /// An object is open.
    bool IsOpen() const { return !nesting_.empty(); }
    /// The line belongs to JSON: an object is open, or it begins with what an object or an array of them
    /// does.
    bool Wants(std::string_view line) const;
    /// Takes a line; its pieces come out of Next. `isCut`: there is more of it, for TakeMore.
    void Take(std::string_view line, std::uint64_t number, bool isCut = false);
    void TakeMore(std::string_view more, bool isCut);
    bool Next(Piece& piece);
    /// The capture ends; Next may give an object that has not ended.
    void Finish();

  private:
    enum class Want : unsigned { Value, ValueOrEnd, Key, KeyOrEnd, Colon, CommaOrEnd };
    /// Where a line begins in what was read of an object.
    struct LineStart {
        std::uint64_t number;
        std::size_t at;
    };

    bool Open(Piece& piece);
    void TakeText();
    bool TakeMark(Piece& piece);
    bool Fits(char c);
    bool Close(Piece& piece);
    std::string_view FaultAt(char c) const;
    bool Fail(Piece& piece, std::string_view fault);

    std::string_view rest_;         // of the line
    std::uint64_t number_ = 0;      // of the line
    bool isCut_ = false;            // there is more of the line
    std::string object_;            // as far as it was read
    std::string given_;             // to the caller
    std::uint64_t begin_ = 0;       // the line in which it begins
    std::vector<LineStart> lines_;  // the others that it goes on in
    std::string nesting_;           // the brackets that are open in it
    Want want_ = Want::Value;
    bool isInText_ = false;
    bool isEscaped_ = false;
    bool isInWord_ = false;  // a number, true, false or null
    bool isInArray_ = false;
    bool isFinished_ = false;
};

}  // namespace tarvex
