#include "capture/data_bytes.h"

#include <algorithm>

#include "capture/captured_message.h"
#include "capture/hexadecimal.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr std::string_view kBetweenBytes = " \t\r,;";

constexpr const char* kTwoDigits = ", expected two hexadecimal digits";

std::string ReadToken(std::string_view token, std::vector<std::uint8_t>& out) {
    const std::string_view digits = WithoutHexMark(token);
    if (digits.size() % 2 != 0) {
        return "half a data byte in '" + ShownText(token) + "'" + kTwoDigits;
    }
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const int high = HexDigit(digits[i]);
        const int low = HexDigit(digits[i + 1]);
        if (high < 0 || low < 0) {
            return "no data byte '" + ShownText(digits.substr(i, 2)) + "'" + kTwoDigits;
        }
        if (out.size() == kMaxMessageBytes) {
            return "more than " + std::to_string(kMaxMessageBytes) + " data bytes";
        }
        out.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return {};
}

}  // namespace

std::string ReadDataBytes(std::string_view text, std::vector<std::uint8_t>& out, std::string_view* wrong) {
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(kBetweenBytes), text.size()));
        if (text.empty()) {
            return {};
        }
        const std::size_t end = std::min(text.find_first_of(kBetweenBytes), text.size());
        if (std::string fault = ReadToken(text.substr(0, end), out); !fault.empty()) {
            if (wrong != nullptr) {
                *wrong = text.substr(0, end);
            }
            return fault;
        }
        text.remove_prefix(end);
    }
}

std::string CheckLength(std::optional<std::string_view> length, std::size_t size) {
    if (!length) {
        return {};
    }
    const auto decimal = DigitsOf(*length, 10);
    const auto hexadecimal = HexOf(*length);
    if ((decimal && *decimal == size) || (hexadecimal && *hexadecimal == size)) {
        return {};
    }
    return "length " + ShownText(*length) + ", but " + std::to_string(size) +
           (size == 1 ? " data byte" : " data bytes");
}

}  // namespace tarvex
