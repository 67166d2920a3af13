/// The small functions that texts of a catalog go through.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include <nlohmann/json.hpp>

#include "import/text/files.h"
#include "import/text/format_text.h"
#include "import/text/names.h"
#include "import/text/parse_value.h"
#include "import/xml/transcode.h"
#include "support.h"

using namespace tarvex;
using namespace tarvex::fuzz;

namespace {

bool IsUtf8(const std::string& text) {
    using Handler = nlohmann::json::error_handler_t;
    const nlohmann::json json(text);
    return json.dump(-1, ' ', false, Handler::replace) == json.dump(-1, ' ', false, Handler::ignore);
}

void RequireNumbers(std::string_view text) {
    std::int32_t number = 1;
    Require(ParseInteger(text, number) || number == 0, "no number is 0");
    Require(IntegerOrZero(text) == number, "both ways to a number agree");
    const bool isDecimal = ParseDecimal(text, number);
    Require(isDecimal == (text.find_first_not_of("-0123456789") == std::string_view::npos),
            "a decimal number has digits only");
    std::uint32_t bits = 1;
    Require(ParseHex(text, bits) || bits == 0, "no hexadecimal number is 0");
    Require(ParseBinary(text, bits) || bits == 0, "no binary number is 0");
    std::int32_t min = 1;
    std::int32_t max = 1;
    Require(ParseRange(text, min, max) || (min == 0 && max == 0), "no range is 0 to 0");
    ParseFloat(std::string(text));
}

void RequireNumbersReadBack(std::string_view text) {
    std::int32_t values[2] = {};
    std::memcpy(values, text.data(), std::min(text.size(), sizeof values));
    char written[64];
    for (const char* format : {"%d", " 0x%x\n", "x0X%X\t"}) {
        std::snprintf(written, sizeof written, format, values[0]);
        Require(IntegerOrZero(written) == values[0], "a number is read as it was written");
    }
    for (const char* format : {"%d..%d", "0x%X...0x%x", "%d.. %d"}) {
        std::snprintf(written, sizeof written, format, values[0], values[1]);
        std::int32_t min = 0;
        std::int32_t max = 0;
        Require(ParseRange(written, min, max) && min == values[0] && max == values[1],
                "a range is read as it was written");
    }
}

void RequireNames(std::string_view text) {
    for (const auto clean : {SanitizeName, SanitizeText}) {
        const std::string name = clean(text);
        Require(name.size() <= text.size() && clean(name) == name, "a clean name stays as it is");
        for (const char c : name) {
            const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
            Require(isLetter || std::strchr("[]()_- ", c) != nullptr, "a clean name has no other characters");
        }
    }
    Require(SanitizeName(text).find(' ') == std::string::npos, "a name has no blanks");
    const std::string lower = ToLower(text);
    const std::string_view start = text.substr(0, kMaxNumberText);
    Require(NamesEqual(lower, start) && NameHash()(lower) == NameHash()(start), "equal names hash alike");
    Require(Trim(Trim(text)) == Trim(text), "a trimmed text stays as it is");
    for (const std::string_view token : SplitTokens(text, kListSeparators)) {
        Require(!token.empty() && token.find_first_of(kListSeparators) == std::string_view::npos,
                "a token has no separators");
    }
    ParseNumberList(text);
}

void RequireTexts(const std::string& text) {
    const std::string upToZero = text.substr(0, text.find('\0'));
    const std::string transcoded = Transcode(ToDomText(text).c_str());
    Require(IsUtf8(transcoded), "a transcoded text is UTF-8");
    Require(Transcode(ToDomText(transcoded).c_str()) == transcoded, "a transcoded text stays as it is");
    Require(!IsUtf8(upToZero) || transcoded == upToZero, "a text of UTF-8 stays as it is");

    std::basic_string<XMLCh> units(text.size() / sizeof(XMLCh), 0);
    std::memcpy(units.data(), text.data(), units.size() * sizeof(XMLCh));
    const std::string utf8 = Transcode(units.c_str());
    Require(IsUtf8(utf8), "a text of UTF-16 becomes one of UTF-8");
    Require(Transcode(ToDomText(utf8).c_str()) == utf8, "a text of UTF-16 stays as it is");
}

void RequireFormats(const std::string& text) {
    constexpr std::size_t kMostOfAConversion = 512;
    const std::string rendered = RenderAsFormat(text);
    Require(rendered.size() <= text.size() * kMostOfAConversion, "a conversion is not longer than its width");
    Require(text.find('%') != std::string::npos || rendered == text, "a text without conversions stays");
    std::string escaped;
    for (const char c : text) {
        escaped.append(c == '%' ? 2 : 1, c);
    }
    Require(RenderAsFormat(escaped) == text, "doubled marks stand for single ones");
    Require(FormatText("%s", text) == text.substr(0, std::min(text.find('\0'), kFormatBufferSize - 1)),
            "a text is cut to the buffer");
}

void RequirePaths(const std::string& path) {
    const std::string absolute = AbsolutePath(path);
    Require(AbsolutePath(absolute) == absolute, "an absolute path stays as it is");
    Require(BaseName(path).find('/') == std::string::npos, "a base name is one component");
    Require(FileName(path).starts_with(BaseName(path)), "a file name begins with the base name");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(TextOf(data, size));
    RequireNumbers(text);
    RequireNumbersReadBack(text);
    RequireNames(text);
    RequireTexts(text);
    RequireFormats(text);
    RequirePaths(text);
    return 0;
}
