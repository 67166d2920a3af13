#include "capture/json_splitter.h"

#include <algorithm>
#include <utility>

#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::string_view kJsonBlanks = " \t\r";

/// What numbers, true, false and null are made of.
constexpr std::string_view kWordCharacters = "0123456789+-.eEtrufalsn";

constexpr bool IsBlank(char c) {
    return kJsonBlanks.find(c) != std::string_view::npos;
}

/// Ends of a bracket.
constexpr bool Closes(char end, char begin) {
    return (end == '}' && begin == '{') || (end == ']' && begin == '[');
}

}  // namespace

bool JsonSplitter::Wants(std::string_view line) const {
    if (IsOpen()) {
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

void JsonSplitter::Take(std::string_view line, std::uint64_t number, bool isCut) {
    number_ = number;
    isFinished_ = false;
    isInWord_ = false;  // no word goes over the end of a line
    if (IsOpen()) {
        lines_.push_back({number, object_.size()});
    }
    TakeMore(line, isCut);
}

void JsonSplitter::TakeMore(std::string_view more, bool isCut) {
    rest_ = more;
    isCut_ = isCut;
}

bool JsonSplitter::Next(Piece& piece) {
    while (!rest_.empty()) {
        if (isInText_) {
            TakeText();
        } else if (IsOpen() ? TakeMark(piece) : Open(piece)) {
            return true;
        }
    }
    if (isInText_ && !isCut_) {  // a text goes not over the end of a line
        return Fail(piece, "the text has no closing quotation mark");
    }
    return IsOpen() && isFinished_ && Fail(piece, "the object does not end");
}

void JsonSplitter::Finish() {
    isFinished_ = true;
    rest_ = {};
    isCut_ = false;
}

/// Takes what stands between objects.
bool JsonSplitter::Open(Piece& piece) {
    const char c = rest_.front();
    if (c == '{') {
        begin_ = number_;
        object_.clear();
        lines_.clear();
        want_ = Want::Value;
        return TakeMark(piece);
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

/// Takes a text to its end or to that of the line.
void JsonSplitter::TakeText() {
    std::size_t end = 0;
    for (; end < rest_.size() && isInText_; ++end) {
        isInText_ = isEscaped_ || rest_[end] != '"';
        isEscaped_ = !isEscaped_ && rest_[end] == '\\';
    }
    object_ += rest_.substr(0, end);
    rest_.remove_prefix(end);
}

/// Takes a character of an object outside of its texts.
bool JsonSplitter::TakeMark(Piece& piece) {
    const char c = rest_.front();
    if (object_.size() >= kMaxJsonObject) {
        return Fail(piece, "the object is too long");
    }
    const bool isEnd = c == '}' || c == ']';
    if (isEnd ? !Closes(c, nesting_.back()) || want_ == Want::Key || want_ == Want::Value ||
                    want_ == Want::Colon
              : !Fits(c)) {
        return Fail(piece, FaultAt(c));
    }
    object_ += c;
    rest_.remove_prefix(1);
    if (isEnd) {
        return Close(piece);
    }
    return nesting_.size() > kMaxJsonLevels && Fail(piece, "the object has too many levels");
}

/// Whether the character may stand there; if so, what may come next.
bool JsonSplitter::Fits(char c) {
    if (kWordCharacters.find(c) != std::string_view::npos) {
        const bool fits = isInWord_ || want_ == Want::Value || want_ == Want::ValueOrEnd;
        isInWord_ = true;
        want_ = Want::CommaOrEnd;
        return fits;
    }
    isInWord_ = false;
    const bool isValue = want_ == Want::Value || want_ == Want::ValueOrEnd;
    const Want wanted = want_;
    switch (c) {
        case '{':
        case '[':
            nesting_.append(isValue ? 1 : 0, c);
            want_ = c == '{' ? Want::KeyOrEnd : Want::ValueOrEnd;
            return isValue;
        case '"':
            isInText_ = wanted != Want::Colon && wanted != Want::CommaOrEnd;
            want_ = isValue ? Want::CommaOrEnd : Want::Colon;
            return isInText_;
        case ':':
            want_ = Want::Value;
            return wanted == Want::Colon;
        case ',':
            want_ = nesting_.back() == '{' ? Want::Key : Want::Value;
            return wanted == Want::CommaOrEnd;
        default:
            return IsBlank(c);
    }
}

/// A bracket has been closed.
bool JsonSplitter::Close(Piece& piece) {
    isInWord_ = false;
    want_ = Want::CommaOrEnd;
    nesting_.pop_back();
    if (IsOpen()) {
        return false;
    }
    given_ = std::exchange(object_, {});
    piece = {given_, begin_};
    return true;
}

std::string_view JsonSplitter::FaultAt(char c) const {
    if (c == '{') {
        return "the object has no closing brace";
    }
    if ((c == '}' || c == ']') && !Closes(c, nesting_.back())) {
        return "a bracket closes another one";
    }
    return begin_ == number_ ? kNoJsonObject : "the object does not end";
}

/// Gives up what is open. A line of which one object is broken has no others.
bool JsonSplitter::Fail(Piece& piece, std::string_view fault) {
    given_ = std::exchange(object_, {});
    given_ += rest_;
    piece = {given_, begin_, fault};
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const std::size_t end = i + 1 < lines_.size() ? lines_[i + 1].at : given_.size();
        piece.others.push_back({lines_[i].number, given_.substr(lines_[i].at, end - lines_[i].at)});
    }
    if (!lines_.empty()) {
        piece.text = piece.text.substr(0, lines_.front().at);
        piece.others.back().isCut = isCut_;
    }
    rest_ = {};
    lines_.clear();
    nesting_.clear();
    isInText_ = false;
    isEscaped_ = false;
    isInWord_ = false;
    return true;
}

}  // namespace tarvex
