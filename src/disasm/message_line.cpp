#include "disasm/message_line.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "disasm/wording.h"
#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::string_view kBlanks = " \t\r";

bool ParseNumber(std::string_view text, int base, std::uint32_t& out) {
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, out, base);
    return error == std::errc() && last == end;
}

/// The parts of an address, the length that may stand behind it last.
struct Field {
    const char* name;
    std::uint32_t max;
    std::uint32_t CapturedMessage::*member;
};
constexpr Field kFields[] = {
    {"FBlockID", 0xFF, &CapturedMessage::fBlockID},
    {"InstID", 0xFF, &CapturedMessage::instID},
    {"FktID", 0xFFF, &CapturedMessage::fktID},
    {"OPType", 0xF, &CapturedMessage::opType},
};

/// Cuts the first field off an address.
std::optional<std::string_view> NextField(std::optional<std::string_view>& rest) {
    if (!rest) {
        return std::nullopt;
    }
    const std::size_t point = rest->find('.');
    const std::string_view field = rest->substr(0, point);
    rest = point == std::string_view::npos ? std::nullopt : std::optional(rest->substr(point + 1));
    return field;
}

std::string ParseAddress(std::string_view text, CapturedMessage& out,
                         std::optional<std::string_view>& length) {
    std::optional<std::string_view> rest = text;
    for (const Field& field : kFields) {
        const auto value = NextField(rest);
        if (!value || !ParseNumber(*value, 16, out.*field.member) || out.*field.member > field.max) {
            return std::string("no valid ") + field.name;
        }
    }
    length = rest;
    return {};
}

std::string ParseData(std::string_view text, std::vector<std::uint8_t>& out) {
    for (const std::string_view token : SplitTokens(text, kBlanks)) {
        if (token.size() % 2 != 0) {
            return "half a data byte in '" + ShownText(token) + "'";
        }
        for (std::size_t i = 0; i < token.size(); i += 2) {
            std::uint32_t byte = 0;
            if (!ParseNumber(token.substr(i, 2), 16, byte)) {
                return "no data byte '" + ShownText(token.substr(i, 2)) + "'";
            }
            if (out.size() == kMaxMessageBytes) {
                return "more than " + std::to_string(kMaxMessageBytes) + " data bytes";
            }
            out.push_back(static_cast<std::uint8_t>(byte));
        }
    }
    return {};
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

/// Takes the length off the data, and the parentheses.
std::string SplitData(std::string_view& data, std::optional<std::string_view>& length) {
    const std::size_t open = data.find('(');
    if (open != std::string_view::npos) {
        if (data.back() != ')') {
            return "no closing parenthesis";
        }
        const std::string_view before = TrimBlanks(data.substr(0, open));
        if (!before.empty()) {
            length = LengthIn(before);
        }
        data = data.substr(open + 1, data.size() - open - 2);
        return {};
    }
    const std::string_view token = data.substr(0, data.find_first_of(kBlanks));
    const std::string_view marked = LengthIn(token);
    if (token.size() == 1 || marked.size() < token.size()) {
        length = marked;
        data.remove_prefix(token.size());
    }
    return {};
}

/// Captures give the length in either system.
bool IsLength(std::string_view text, std::size_t size) {
    std::uint32_t decimal = 0;
    std::uint32_t hexadecimal = 0;
    return (ParseNumber(text, 10, decimal) && decimal == size) ||
           (ParseNumber(text, 16, hexadecimal) && hexadecimal == size);
}

std::string CheckLength(std::optional<std::string_view> length, std::size_t size) {
    if (!length || IsLength(*length, size)) {
        return {};
    }
    return "length " + ShownText(*length) + ", but " + std::to_string(size) +
           (size == 1 ? " data byte" : " data bytes");
}

}  // namespace

bool IsCommentLine(std::string_view line) {
    const std::string_view text = TrimBlanks(line);
    return text.empty() || text.front() == '#';
}

std::string ParseMessageLine(std::string_view line, CapturedMessage& out) {
    out = {};
    const std::string_view text = TrimBlanks(line);
    const std::size_t addressEnd = std::min(text.find_first_of(" \t("), text.size());
    std::optional<std::string_view> fifthField;
    std::string fault = ParseAddress(text.substr(0, addressEnd), out, fifthField);
    std::string_view data = TrimBlanks(text.substr(addressEnd));
    std::optional<std::string_view> length;
    if (fault.empty()) {
        fault = SplitData(data, length);
    }
    if (fault.empty()) {
        fault = ParseData(data, out.data);
    }
    if (fault.empty()) {
        fault = CheckLength(fifthField, out.data.size());
    }
    if (fault.empty()) {
        fault = CheckLength(length, out.data.size());
    }
    return fault;
}

}  // namespace tarvex
