#include "capture/message_line.h"

#include <algorithm>
#include <optional>

#include "capture/data_bytes.h"
#include "capture/hexadecimal.h"
#include "capture/line_prefix.h"
#include "import/text/names.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteGaps = " \t\r,;";

void Clear(CapturedMessage& message) {
    message.data.clear();
    message.time.clear();
    message.timeUnit = 0;
    message.direction.clear();
    message.hasFreeTexts = false;
    message.source.reset();
    message.destination.reset();
    message.telegram = Telegram::Whole;
}

constexpr bool IsCommentMark(std::string_view text) {
    return text.starts_with('#') || text.starts_with("//");
}

/// What stands behind a semicolon, up to the next gap, are bytes or nothing.
bool GoesOnWithBytes(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    const std::size_t end = std::min(text.find_first_of(" \t\r,;#/", begin), text.size());
    const std::string_view digits = WithoutHexMark(text.substr(begin, end - begin));
    return digits.size() % 2 == 0 && std::ranges::all_of(digits, [](char c) { return HexDigit(c) >= 0; });
}

/// Where a comment begins behind data. A semicolon begins one when a blank stands in front of it, or
/// something else than bytes behind it.
std::size_t FindComment(std::string_view text) {
    for (std::size_t i = text.find_first_of("#/;"); i < text.size(); i = text.find_first_of("#/;", i + 1)) {
        const bool isBehindBlank = i == 0 || kBlanks.find(text[i - 1]) != std::string_view::npos;
        if (text[i] == ';' ? isBehindBlank || !GoesOnWithBytes(text.substr(i + 1))
                           : IsCommentMark(text.substr(i))) {
            return i;
        }
    }
    return text.size();
}

/// A length that stands before the data, without its marks.
std::string_view LengthIn(std::string_view token) {
    if (token.ends_with(':')) {
        return token.substr(0, token.size() - 1);
    }
    if (token.size() > 2 && token.starts_with('[') && token.ends_with(']')) {
        return token.substr(1, token.size() - 2);
    }
    return token;
}

/// What stands behind a semicolon are bytes, in parentheses or not, their length and another separator, or
/// nothing.
bool GoesOnWithData(std::string_view text) {
    const std::string_view data = TrimBlanks(text);
    if (data.starts_with('(')) {
        return GoesOnWithBytes(data.substr(1, data.find(')') - 1));
    }
    const std::size_t end = std::min(data.find_first_of(kByteGaps), data.size());
    const std::string_view token = data.substr(0, end);
    const std::string_view length = LengthIn(token);
    const bool isLength = HexOf(length) && (token.size() == 1 || length.size() < token.size());
    return GoesOnWithBytes(text) || (isLength && end < data.size() && (data[end] == ';' || data[end] == ','));
}

/// Takes off what separates the address from its data, besides blanks. A semicolon there begins a comment
/// when something else than data stands behind it.
std::string_view WithoutSeparators(std::string_view text) {
    while (text.starts_with(',') || (text.starts_with(';') && GoesOnWithData(text.substr(1)))) {
        text.remove_prefix(1);
    }
    return TrimBlanks(text);
}

/// Behind the parentheses stands nothing, a comment, or names with points between them.
bool MayFollowData(std::string_view text) {
    text = TrimBlanks(text.substr(0, FindComment(text)));
    const auto isLetter = [](char c) { return FoldCase(c) >= 'a' && FoldCase(c) <= 'z'; };
    return text.empty() ||
           (std::ranges::all_of(text, [](char c) { return c == '.' || IsNameCharacter(c); }) &&
            text.front() != '(' && std::ranges::any_of(text, isLetter) && !HexOf(text));
}

/// Takes the length off the data, and the parentheses. `wrong`: where it fails.
std::string SplitData(std::string_view& data, std::optional<std::string_view>& length,
                      std::string_view& wrong) {
    const std::size_t open = data.find('(');
    if (open < FindComment(data)) {
        const std::size_t close = data.find(')', open);
        wrong = close == std::string_view::npos ? data.substr(open) : TrimBlanks(data.substr(close + 1));
        if (close == std::string_view::npos || !MayFollowData(data.substr(close + 1))) {
            return close == std::string_view::npos ? "no closing parenthesis"
                                                   : "'" + ShownText(TrimBlanks(data.substr(close + 1))) +
                                                         "' behind the data, expected a comment";
        }
        const std::string_view before = TrimBlanks(data.substr(0, open));
        if (!before.empty()) {
            length = LengthIn(before);
        }
        data = data.substr(open + 1, close - open - 1);
        return {};
    }
    data = TrimBlanks(data.substr(0, FindComment(data)));
    const std::string_view token = data.substr(0, data.find_first_of(kByteGaps));
    const std::string_view marked = LengthIn(token);
    if (token.size() == 1 || marked.size() < token.size()) {
        length = marked;
        data.remove_prefix(token.size());
    }
    return {};
}

/// `wrong`: where it fails.
std::string ParseFields(std::string_view text, CapturedMessage& out, const AddressNames& names,
                        std::string_view& wrong) {
    const std::size_t end = AddressEnd(text);
    std::optional<std::string_view> fifthField;
    wrong = text;
    if (std::string fault = names.Read(text.substr(0, end), out, fifthField); !fault.empty()) {
        return fault;
    }
    std::string_view data = WithoutSeparators(text.substr(end));
    std::optional<std::string_view> length;
    if (std::string fault = SplitData(data, length, wrong); !fault.empty()) {
        return fault;
    }
    if (std::string fault = ReadDataBytes(data, out.data, &wrong); !fault.empty()) {
        return fault;
    }
    for (const auto& said : {fifthField, length}) {
        if (std::string fault = CheckLength(said, out.data.size()); !fault.empty()) {
            wrong = *said;
            return fault;
        }
    }
    return {};
}

}  // namespace

std::size_t AddressEnd(std::string_view line) {
    const std::size_t end = std::min(line.find_first_of(kByteGaps), line.size());
    const std::string_view token = line.substr(0, end);
    const std::size_t lastPoint = token.rfind('.');
    return std::min(token.find('(', lastPoint == std::string_view::npos ? 0 : lastPoint), end);
}

bool IsCommentLine(std::string_view line) {
    const std::string_view text = TrimBlanks(line);
    return text.empty() || text.front() == ';' || IsCommentMark(text);
}

std::string ParseMessageLine(std::string_view line, CapturedMessage& out, const AddressNames& names,
                             std::size_t& at) {
    Clear(out);
    const std::string_view whole = TrimBlanks(line);
    std::string_view text = whole;
    TakePrefix(text, out);
    if (text.empty()) {  // what looked like a prefix is all there is
        Clear(out);
        text = whole;
    }
    std::string_view wrong = text;
    std::string fault = ParseFields(text, out, names, wrong);
    at = fault.empty() ? 0 : static_cast<std::size_t>(wrong.data() - line.data());
    return fault;
}

std::string ParseMessageLine(std::string_view line, CapturedMessage& out, const AddressNames& names) {
    std::size_t at = 0;
    return ParseMessageLine(line, out, names, at);
}

std::string ParseMessageLine(std::string_view line, CapturedMessage& out) {
    return ParseMessageLine(line, out, AddressNames(nullptr));
}

}  // namespace tarvex
