#include "import/text/parse_value.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>

#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::string_view kDecimalCharacters = "-0123456789";

/// Cuts the text at the first separator that occurs in it and reads both parts.
bool ParseBounds(std::string_view text, std::string_view separator, std::int32_t& outMin,
                 std::int32_t& outMax) {
    const std::size_t at = text.find(separator);
    if (ParseInteger(text.substr(0, at), outMin) &&
        ParseInteger(text.substr(at + separator.size()), outMax)) {
        return true;
    }
    outMin = outMax = 0;
    return false;
}

}  // namespace

bool ParseDecimal(std::string_view text, std::int32_t& out) {
    out = 0;
    if (text.find_first_not_of(kDecimalCharacters) != std::string_view::npos) {
        return false;
    }
    std::int32_t value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range) {
        value = text.front() == '-' ? std::numeric_limits<std::int32_t>::min()
                                    : std::numeric_limits<std::int32_t>::max();
    }
    out = value;
    return true;
}

bool ParseHex(std::string_view text, std::uint32_t& out) {
    out = 0;
    if (text.find_first_not_of("0123456789abcdefABCDEF") != std::string_view::npos) {
        return false;
    }
    std::uint32_t value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value, 16).ec ==
        std::errc::result_out_of_range) {
        value = std::numeric_limits<std::uint32_t>::max();
    }
    out = value;
    return true;
}

bool ParseBinary(std::string_view text, std::uint32_t& out) {
    out = 0;
    if (text.find_first_not_of("01") != std::string_view::npos) {
        return false;
    }
    for (const char digit : text) {
        out = out * 2 + (digit == '1' ? 1U : 0U);
    }
    return true;
}

bool ParseInteger(std::string_view text, std::int32_t& out) {
    const std::string lower = ToLower(text);
    const std::string_view trimmed = Trim(lower);
    std::uint32_t bits = 0;
    bool ok = false;
    if (const std::size_t hex = trimmed.find("0x"); hex != std::string_view::npos) {
        ok = ParseHex(trimmed.substr(hex + 2), bits);
    } else if (const std::size_t binary = trimmed.find("0b"); binary != std::string_view::npos) {
        ok = ParseBinary(trimmed.substr(binary + 2), bits);
    } else {
        return ParseDecimal(trimmed, out);
    }
    out = static_cast<std::int32_t>(bits);
    return ok;
}

std::int32_t IntegerOrZero(std::string_view text) {
    std::int32_t value = 0;
    ParseInteger(text, value);
    return value;
}

double ParseFloat(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

bool IsFloat(const std::string& text) {
    char* end = nullptr;
    std::strtod(text.c_str(), &end);
    return end != text.c_str() &&
           std::string_view(end).find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool ParseRange(std::string_view text, std::int32_t& outMin, std::int32_t& outMax) {
    outMin = outMax = 0;
    if (text.empty() || NamesEqual(text, "#NULL#")) {
        return true;
    }
    if (text.find_first_of(kDecimalCharacters) == std::string_view::npos) {
        return false;
    }
    if (const std::size_t above = text.find('>'); above != std::string_view::npos) {
        if (!ParseInteger(text.substr(above + 1), outMin)) {
            return false;
        }
        outMax = kOpenRangeEnd;
        return true;
    }
    for (const std::string_view separator : {"...", ".."}) {
        if (text.find(separator) != std::string_view::npos) {
            return ParseBounds(text, separator, outMin, outMax);
        }
    }
    const bool ok = ParseInteger(text, outMin);
    outMax = outMin;
    return ok;
}

std::string ToLower(std::string_view text) {
    std::string lower(text.substr(0, kMaxNumberText));
    std::ranges::transform(lower, lower.begin(), FoldCase);
    return lower;
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace tarvex
