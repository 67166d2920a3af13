#include "kestrel/json_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include <nlohmann/json.hpp>

namespace kestrel {

namespace {

/// Whether the character stands for itself in a JSON string, with no need to look at its neighbours.
bool IsPlain(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
}

/// Nearly every text is plain, and there are millions: so without a branch for each letter.
bool IsPlain(std::string_view text) {
    bool isPlain = true;
    for (const char character : text) {
        isPlain &= IsPlain(character);
    }
    return isPlain;
}

bool IsContinuationByte(char character) {
    return (static_cast<unsigned char>(character) & 0xC0U) == 0x80;
}

/// Bytes of the UTF-8 character that starts with this byte; 1 for a byte that starts none.
std::size_t CharacterLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0xF0 && byte < 0xF8) {
        return 4;
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        return 3;
    }
    if (byte >= 0xC0 && byte < 0xE0) {
        return 2;
    }
    return 1;
}

}  // namespace

void AppendQuoted(std::string& json, std::string_view text) {
    if (IsPlain(text)) {
        json += '"';
        json += text;
        json += '"';
        return;
    }
    json += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void AppendNumber(std::string& json, double number) {
    if (!std::isfinite(number)) {
        json += "null";
        return;
    }
    if (number == 0) {
        number = 0;  // a minus in front of it would get lost in reading
    }
    // Room for the longest whole number, its sign included.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 2> digits{};
    char* const end = digits.data() + digits.size();
    const auto result = std::trunc(number) == number
                            ? std::to_chars(digits.data(), end, number, std::chars_format::fixed)
                            : std::to_chars(digits.data(), end, number);
    json.append(digits.data(), result.ptr);
}

void AppendShortNumber(std::string& json, double number) {
    constexpr double kManyDigits = 1e15;
    if (!std::isfinite(number) || std::fabs(number) < kManyDigits) {
        AppendNumber(json, number);
        return;
    }
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    json.append(digits.data(), result.ptr);
}

void AppendInteger(std::string& json, std::uint32_t number) {
    std::array<char, std::numeric_limits<std::uint32_t>::digits10 + 1> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    json.append(digits.data(), result.ptr);
}

std::string_view WithoutCutCharacter(std::string_view name, std::size_t size) {
    if (name.size() < size) {
        return name;
    }
    // The last character starts at most three bytes before the last byte.
    std::size_t start = name.size() - 1;
    while (start > name.size() - 4 && IsContinuationByte(name[start])) {
        --start;
    }
    return start + CharacterLength(name[start]) > name.size() ? name.substr(0, start) : name;
}

}  // namespace kestrel
