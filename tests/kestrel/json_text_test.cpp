/// JSON values as text.

#include "kestrel/json_text.h"

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

struct QuoteCase {
    std::string_view text;
    std::string_view json;
};

constexpr QuoteCase kQuotes[] = {
    // clang-format off
    {"",                ""},
    {"Radio 1/2 <~>",   "Radio 1/2 <~>"},
    {"say \"yes\"",     R"(say \"yes\")"},
    {"C:\\dir",         R"(C:\\dir)"},
    {"\b\f\n\r\t",      R"(\b\f\n\r\t)"},
    {"\0\x1F\x1B"sv,    R"(\u0000\u001f\u001b)"},
    {"\x7F",            "\x7F"},
    {"ä€😀",            "ä€😀"},
    {"ä\"€\n",          R"(ä\"€\n)"},
    {"\xFF",            "\uFFFD"},
    {"a\xC3(b",         "a\uFFFD(b"},
    {"end \xE2\x82",    "end \uFFFD"},
    // clang-format on
};

TEST(JsonText, QuotesOnlyWhatJsonCannotHoldAsItIs) {
    for (const QuoteCase& row : kQuotes) {
        std::string json = "before ";
        kestrel::AppendQuoted(json, row.text);
        EXPECT_EQ(json, "before \"" + std::string(row.json) + "\"");
    }
}

constexpr double kInfinite = std::numeric_limits<double>::infinity();

struct NumberCase {
    double number;
    const char* json;
};

const NumberCase kNumbers[] = {
    // clang-format off
    {0,             "0"},
    {-0.0,          "0"},
    {-1,            "-1"},
    {100000,        "100000"},
    {65535,         "65535"},
    {4294967295,    "4294967295"},
    {1e15,          "1000000000000000"},
    {1e22,          "10000000000000000000000"},
    {0.1,           "0.1"},
    {-2.5,          "-2.5"},
    {1.0 / 3,       "0.3333333333333333"},
    {1e-7,          "1e-07"},
    {NAN,           "null"},
    {kInfinite,     "null"},
    {-kInfinite,    "null"},
    // clang-format on
};

TEST(JsonText, NumbersAreShortAndWholeOnesHaveNoPoint) {
    for (const NumberCase& row : kNumbers) {
        std::string json = "n: ";
        kestrel::AppendNumber(json, row.number);
        EXPECT_EQ(json, std::string("n: ") + row.json);
    }
}

TEST(JsonText, LargestNumbersReadBackAsTheSameValue) {
    for (const double number : {DBL_MAX, -DBL_MAX, DBL_MIN, -DBL_TRUE_MIN}) {
        std::string json;
        kestrel::AppendNumber(json, number);
        EXPECT_EQ(std::strtod(json.c_str(), nullptr), number) << json;
    }
}

TEST(JsonText, IntegersReachFrom0To32Bits) {
    std::string json;
    kestrel::AppendInteger(json, 0);
    json += ' ';
    kestrel::AppendInteger(json, 4294967295);
    EXPECT_EQ(json, "0 4294967295");
}

struct CutCase {
    std::string_view name;
    std::string_view kept;
};

constexpr CutCase kCuts[] = {
    // clang-format off
    // the whole name is cut at 32 bytes                kept
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01234",                 "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ012345",                "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123ä",                 "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123ä"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01234ä",                "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ012€",                  "ABCDEFGHIJKLMNOPQRSTUVWXYZ012€"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123€",                 "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01234€",                "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01😀",                  "ABCDEFGHIJKLMNOPQRSTUVWXYZ01😀"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ012😀",                 "ABCDEFGHIJKLMNOPQRSTUVWXYZ012"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123😀",                "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01234😀",               "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234"},
    // shorter names and bytes that begin no character stay, to be shown as U+FFFD
    {"Short\xC3",                                       "Short\xC3"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01\x80\x80\x80\x80",    "ABCDEFGHIJKLMNOPQRSTUVWXYZ01\x80\x80\x80\x80"},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ01234\xFF",             "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234\xFF"},
    // clang-format on
};

TEST(JsonText, CharacterCutAt32BytesIsDropped) {
    for (const CutCase& row : kCuts) {
        EXPECT_EQ(kestrel::WithoutCutCharacter(row.name.substr(0, 32)), row.kept);
    }
}

}  // namespace
