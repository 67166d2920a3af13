#include "capture/json_splitter.h"

#include <algorithm>
#include <utility>

#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::string_view kJsonBlanks = " \t\r";

constexpr std::size_t kDeepest = 16;

constexpr bool IsBlank(char c) {
    return kJsonBlanks.find(c) != std::string_view::npos;
}

/// Ends of a bracket.
constexpr bool Closes(char end, char begin) {
    return (end == '}' && begin == '{') || (end == ']' && begin == '[');
}

}  // namespace

bool JsonSplitter::Wants(std::string_view line) const {
    if (!nesting_.empty()) {
        return true;
    }
    const std::string_view text = TrimBlanks(line);
    if (text.starts_with('{') || text == "[" || text == "[]") {
        return true;
    }
    if (text.starts_with('[')) {
        const std::string_view inside = TrimBlanks(text.substr(1));
        return inside.starts_with('{');
    }
    return isInArray_ && (text.starts_with(']') || text.starts_with(','));
}

void JsonSplitter::Take(std::string_view line, std::uint64_t number) {
    rest_ = line;
    number_ = number;
}

bool JsonSplitter::Next(Piece& piece) {
    while (!rest_.empty()) {
        if (nesting_.empty() ? Open(piece) : Goes(piece)) {
            return true;
        }
    }
    if (!nesting_.empty() && isInText_) {  // a text goes not over the end of a line
        return Fail(piece, "the text has no closing quotation mark");
    }
    return !nesting_.empty() && isFinished_ && Fail(piece, "the object does not end");
}

void JsonSplitter::Finish() {
    isFinished_ = true;
}

/// Takes what stands between objects.
bool JsonSplitter::Open(Piece& piece) {
    const char c = rest_.front();
    if (c == '{') {
        begin_ = number_;
        object_.clear();
        last_ = ':';
        return Goes(piece);
    }
    isInArray_ = c == '[' || (isInArray_ && c != ']');
    if (c != '[' && c != ']' && c != ',' && !IsBlank(c)) {
        piece = {rest_, number_, "expected a JSON object"};
        rest_ = {};
        return true;
    }
    rest_.remove_prefix(1);
    return false;
}

/// Takes a character of an object.
bool JsonSplitter::Goes(Piece& piece) {
    const char c = rest_.front();
    if (!isInText_ && c == '{' && last_ != ':' && last_ != '[' && last_ != ',') {
        return Fail(piece, "the object has no closing brace");
    }
    if (!isInText_ && c == '{' && last_ == ',' && nesting_.back() == '{') {
        return Fail(piece, "the object has no closing brace");
    }
    if (object_.size() == kMaxJsonObject) {
        return Fail(piece, "the object is too long");
    }
    object_ += c;
    rest_.remove_prefix(1);
    if (isInText_) {
        isInText_ = isEscaped_ || c != '"';
        isEscaped_ = !isEscaped_ && c == '\\';
        return false;
    }
    last_ = IsBlank(c) ? last_ : c;
    isInText_ = c == '"';
    if (c == '{' || c == '[') {
        nesting_ += c;
        return nesting_.size() > kDeepest && Fail(piece, "the object has too many levels");
    }
    if (c != '}' && c != ']') {
        return false;
    }
    if (!Closes(c, nesting_.back())) {
        return Fail(piece, "a bracket closes another one");
    }
    nesting_.pop_back();
    if (!nesting_.empty()) {
        return false;
    }
    given_ = std::exchange(object_, {});
    piece = {given_, begin_, {}};
    return true;
}

/// Gives up what is open. A line that goes on with it may begin another one there.
bool JsonSplitter::Fail(Piece& piece, std::string_view fault) {
    given_ = std::exchange(object_, {});
    piece = {given_, begin_, fault};
    if (begin_ == number_) {  // a line of which one object is broken has no others
        rest_ = {};
    }
    nesting_.clear();
    isInText_ = false;
    isEscaped_ = false;
    last_ = '\0';
    return true;
}

}  // namespace tarvex
