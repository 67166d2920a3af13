#include <algorithm>
#include <utility>

#include "asm/asm_value.h"
#include "capture/data_bytes.h"
#include "capture/hexadecimal.h"
#include "import/text/names.h"
#include "import/text/wording.h"
#include "params/members.h"

namespace tarvex {
namespace {

constexpr std::string_view kBytesMark = "hex:";

struct EncodingMark {
    std::string_view mark;
    StringEncoding encoding;
};
constexpr EncodingMark kEncodingMarks[] = {{"utf16:", kUtf16}, {"latin9:", kLatin9}, {"utf8:", kUtf8}};

constexpr bool IsGap(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// Reads one line from left to right.
class ValueParser {
  public:
    ValueParser(std::string_view text, std::size_t column) : text_(text), column_(column) {}

    bool BeginsWithField() {
        SkipGaps();
        return Here() != '(' && NameEnd(at_) != std::string_view::npos;
    }
    std::optional<AsmFault> ParseAll(std::vector<AsmField>& out) {
        for (SkipGaps(); at_ < text_.size() && !fault_ && !IsComment(at_); SkipGaps()) {
            AsmField field;
            if (!ParseField(field, 0)) {
                break;
            }
            out.push_back(std::move(field));
        }
        return std::move(fault_);
    }

  private:
    bool Fail(std::size_t at, std::string text) {
        fault_ = {std::move(text), PlaceOf(at)};
        return false;
    }
    AsmPlace PlaceOf(std::size_t at) const { return {0, column_ + at}; }
    char Here() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    void SkipGaps() {
        while (at_ < text_.size() && IsGap(text_[at_])) {
            ++at_;
        }
    }
    bool IsComment(std::size_t at) const {
        return (at == 0 || IsGap(text_[at - 1])) && at < text_.size() && text_[at] == '#';
    }
    bool TakeMark(std::string_view mark) {
        const bool isThere = text_.substr(at_).starts_with(mark);
        at_ += isThere ? mark.size() : 0;
        return isThere;
    }

    /// "Name=value", "[2]Name=value".
    bool ParseField(AsmField& out, std::size_t depth) {
        const std::size_t begin = at_;
        const std::size_t equals = NameEnd(begin);
        if (equals == std::string_view::npos) {
            const std::size_t end = std::min(text_.find_first_of(" \t,]}", begin), text_.size());
            return Fail(begin, "'" + ShownText(text_.substr(begin, std::max<std::size_t>(end - begin, 1))) +
                                   "', expected a name and =");
        }
        std::string_view name = TrimBlanks(text_.substr(begin, equals - begin));
        out.place = PlaceOf(begin);
        out.entry = TakeEntry(name);
        out.name = name;
        at_ = equals + 1;
        return ParseValue(out.value, depth);
    }
    /// The "=" behind a name that begins there; none for anything else.
    std::size_t NameEnd(std::size_t at) const {
        constexpr std::string_view kMarks = "_-[]()";
        std::size_t end = at;
        while (end < text_.size() && (kMarks.find(text_[end]) != std::string_view::npos ||
                                      HexDigit(text_[end]) >= 0 || IsLetter(text_[end]))) {
            ++end;
        }
        const bool hasName = end > at;
        while (end < text_.size() && IsGap(text_[end])) {
            ++end;
        }
        return hasName && end < text_.size() && text_[end] == '=' ? end : std::string_view::npos;
    }
    static bool IsLetter(char c) { return FoldCase(c) >= 'a' && FoldCase(c) <= 'z'; }
    /// The number in brackets in front of a name.
    static unsigned TakeEntry(std::string_view& name) {
        const std::size_t close = name.find(']');
        const auto number = name.starts_with('[') && close != std::string_view::npos
                                ? DigitsOf(name.substr(1, close - 1), 10)
                                : std::nullopt;
        if (number) {
            name = TrimBlanks(name.substr(close + 1));
        }
        return number.value_or(0);
    }

    bool ParseValue(AsmValue& out, std::size_t depth) {
        SkipGaps();
        out.place = PlaceOf(at_);
        if (depth > kMaxNesting) {
            return Fail(at_, "too many levels");
        }
        for (const EncodingMark& mark : kEncodingMarks) {
            if (text_.substr(at_).starts_with(std::string(mark.mark) + '"') && TakeMark(mark.mark)) {
                out.encoding = mark.encoding;
            }
        }
        switch (Here()) {
            case '"':
                return ParseQuoted(out);
            case '[':
                return ParseList(out, depth);
            case '{':
                return ParseRecord(out, depth);
            default:
                return ParseWord(out, depth);
        }
    }
    bool ParseQuoted(AsmValue& out) {
        out.form = AsmValue::Form::Quoted;
        const std::size_t begin = at_++;
        while (Here() != '"') {
            if (at_ >= text_.size()) {
                return Fail(begin, "no closing quotation mark");
            }
            if (Here() == '\\' && at_ + 1 < text_.size()) {
                ++at_;
            }
            out.text += text_[at_++];
        }
        ++at_;
        return true;
    }
    bool ParseList(AsmValue& out, std::size_t depth) {
        out.form = AsmValue::Form::List;
        const std::size_t begin = at_++;
        for (SkipGaps(); Here() != ']'; SkipGaps()) {
            AsmValue value;
            if (!ParseValue(value, depth + 1) || !TakeSeparator(']', begin)) {
                return false;
            }
            out.list.push_back(std::move(value));
        }
        ++at_;
        return true;
    }
    bool ParseRecord(AsmValue& out, std::size_t depth) {
        out.form = AsmValue::Form::Fields;
        const std::size_t begin = at_++;
        for (SkipGaps(); Here() != '}'; SkipGaps()) {
            AsmField field;
            if (!ParseField(field, depth + 1) || !TakeSeparator('}', begin)) {
                return false;
            }
            out.fields.push_back(std::move(field));
        }
        ++at_;
        return true;
    }
    /// Behind a part of a list stands a comma or its end.
    bool TakeSeparator(char end, std::size_t begin) {
        SkipGaps();
        if (Here() == ',') {
            ++at_;
            return true;
        }
        if (Here() == end) {
            return true;
        }
        return at_ < text_.size() ? Fail(at_, std::string("expected , or ") + end)
                                  : Fail(begin, std::string("no closing ") + end);
    }
    bool ParseWord(AsmValue& out, std::size_t depth) {
        const std::size_t begin = at_;
        while (at_ < text_.size() && !EndsWord(depth)) {
            ++at_;
        }
        const std::string_view word = TrimBlanks(text_.substr(begin, at_ - begin));
        if (!word.starts_with(kBytesMark)) {
            out.text = word;
            return true;
        }
        out.form = AsmValue::Form::Bytes;
        const std::string fault = ReadDataBytes(word.substr(kBytesMark.size()), out.bytes);
        return fault.empty() || Fail(begin, fault);
    }
    bool EndsWord(std::size_t depth) const {
        if (depth > 0) {
            return Here() == ',' || Here() == ']' || Here() == '}';
        }
        const bool isAtBegin = at_ > 0 && IsGap(text_[at_ - 1]) && !IsGap(text_[at_]);
        return isAtBegin && (IsComment(at_) || NameEnd(at_) != std::string_view::npos);
    }

    std::string_view text_;
    std::size_t column_;
    std::size_t at_ = 0;
    std::optional<AsmFault> fault_;
};

}  // namespace

bool BeginsWithField(std::string_view text) {
    return ValueParser(text, 1).BeginsWithField();
}

std::optional<AsmFault> ParseFields(std::string_view text, std::size_t column, std::vector<AsmField>& out) {
    return ValueParser(text, column).ParseAll(out);
}

}  // namespace tarvex
