#include "import/text/wording.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "import/text/shown_text.h"
#include "import/text/utf8.h"

namespace tarvex {
namespace {

constexpr std::size_t kMaxShown = 200;

constexpr char kDigits[] = "0123456789ABCDEF";

}  // namespace

std::string ByteCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string HexText(std::span<const std::uint8_t> bytes, std::string_view separator) {
    std::string text;
    AppendHex(text, bytes, separator);
    return text;
}

void AppendHex(std::string& out, std::span<const std::uint8_t> bytes, std::string_view separator) {
    if (bytes.empty()) {
        return;
    }
    const std::size_t begin = out.size();
    out.resize(begin + bytes.size() * (2 + separator.size()) - separator.size());
    char* at = out.data() + begin;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0) {
            at = std::copy(separator.begin(), separator.end(), at);
        }
        *at++ = kDigits[bytes[i] >> 4];
        *at++ = kDigits[bytes[i] & 0xF];
    }
}

void AppendHexNumber(std::string& out, std::uint32_t number, unsigned digits) {
    constexpr unsigned kMost = 8;
    for (unsigned left = kMost; left > 0; --left) {
        const std::uint32_t rest = number >> 4 * (left - 1);
        if (left <= digits || rest != 0) {
            out += kDigits[rest & 0xF];
        }
    }
}

void AppendNumber(std::string& out, std::int64_t number) {
    std::array<char, std::numeric_limits<std::int64_t>::digits10 + 2> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    out.append(digits.data(), result.ptr);
}

std::string ShownText(std::string_view text) {
    return Shown(CutAtCharacter(text, kMaxShown)) + (text.size() > kMaxShown ? "..." : "");
}

std::string ShownName(std::string_view name) {
    std::string shown;
    AppendShownName(shown, name);
    return shown;
}

void AppendShownName(std::string& out, std::string_view name) {
    out.append(CutAtCharacter(name, kMaxShown)).append(name.size() > kMaxShown ? "..." : "");
}

}  // namespace tarvex
