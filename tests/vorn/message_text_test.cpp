/// One message in words.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample.h"
#include "vorn/describe.h"

namespace vorn::test {
namespace {

using testing::HasSubstr;

constexpr std::uint32_t kMarked = kExtendedIdentifier;

struct IdentifierCase {
    std::uint32_t identifier;
    const char* text;
};

constexpr IdentifierCase kIdentifiers[] = {
    {0, "0x0"},
    {0x7FF, "0x7FF"},
    {0xABCDEF, "0xABCDEF"},
    {0x7FFFFFFF, "0x7FFFFFFF"},
    {kMarked, "0x0 extended"},
    {kMarked | 0x22400C, "0x22400C extended"},
    {0xFFFFFFFF, "0x7FFFFFFF extended"},
};

TEST(IdentifierText, IsHexadecimal) {
    for (const auto& [identifier, text] : kIdentifiers) {
        EXPECT_EQ(IdentifierText(identifier), text);
    }
}

struct DrawnMessageCase {
    const char* what;
    Sample sample;  // the text is that of its first message
    const char* text;
};

const DrawnMessageCase kDrawnMessages[] = {
    {"nothing but a name", {.messages = {{0x7FF, "Ping", 0}}}, R"(Ping  00.07F.F  0x7FF, 0 bytes

         7 6 5 4 3 2 1 0
)"},
    {"a node, attributes of every type, a signal with values",
     {.definitions = {Integer("message", "Period", 0, 1000, 0), String("message", "Function", ""),
                      Enumeration("message", "Kind", {"Get", "Status"}, "Get")},
      .nodes = {{"Amp"}},
      .messages = {{kMarked | 0x22400C,
                    "Volume_Status",
                    1,
                    {{"Volume", 7, 8, kBig, 0, {{0, "Off"}, {255, "Loudest"}}}},
                    "Amp",
                    {{"Kind", "Status"}, {"Function", "Volume"}, {"Period", 12.5}}}}},
     R"(Volume_Status  22.400.C  0x22400C extended, 1 byte, from Amp
  Kind = Status
  Function = Volume
  Period = 12.5

         7 6 5 4 3 2 1 0
0        A A A A A A A A

A  Volume  start bit 7, 8 bits, big-endian
     0     Off
     255   Loudest
)"},
    {"signals in their order, with everything that can be said of them",
     {.messages = {{1,
                    "Case",
                    2,
                    {{"Case", 0, 1, kLittle | kSelector},
                     {"Far", 15, 8, kBig | kSigned | kSelected, 0},
                     {"Near", 8, 1, kLittle | kSelected, 0}}}}},
     R"(Case  00.000.1  0x1, 2 bytes

multiplexor 0
         7 6 5 4 3 2 1 0
0        . . . . . . . A
1        B B B B B B B #

A  Case  start bit 0, 1 bit, little-endian, multiplexor

B  Far  start bit 15, 8 bits, big-endian, signed, for multiplexor 0

C  Near  start bit 8, 1 bit, little-endian, for multiplexor 0
)"},
    {"control characters in every text",
     {.definitions = {String("message", "Fun\tction", "")},
      .nodes = {{"A\x1Bmp"}},
      .messages = {{1,
                    "Vol\nume",
                    1,
                    {{"Le\rvel",
                      0,
                      1,
                      kLittle,
                      0,
                      {{0,
                        "O\x07"
                        "ff"}}}},
                    "A\x1Bmp",
                    {{"Fun\tction", "a\nb"}}}}},
     R"(Vol.ume  00.000.1  0x1, 1 byte, from A.mp
  Fun.ction = a.b

         7 6 5 4 3 2 1 0
0        . . . . . . . A

A  Le.vel  start bit 0, 1 bit, little-endian
     0     O.ff
)"},
    {"only the first of several messages",
     {.messages = {{1, "One", 0}, {2, "Two", 1, {{"Level", 7, 8, kBig}}}}},
     R"(One  00.000.1  0x1, 0 bytes

         7 6 5 4 3 2 1 0
)"},
};

TEST(MessageText, TellsEverythingOfAMessage) {
    for (const auto& [what, sample, text] : kDrawnMessages) {
        const auto database = Build(sample);
        EXPECT_EQ(MessageText(database->Messages().front(), Style(false)), text) << what;
    }
}

TEST(MessageText, ValueOfMoreDigitsStandsApartFromItsText) {
    const auto database = BuildMessage(4, {{"Code", 7, 32, kBig, 0, {{99999, "Five"}, {4294967295, "Ten"}}}});
    const std::string text = MessageText(database->Messages().front(), Style(false));
    EXPECT_THAT(text, HasSubstr("\n     99999 Five\n"));
    EXPECT_THAT(text, HasSubstr("\n     4294967295 Ten\n"));
}

/// The 703rd signal is called AAA.
TEST(MessageText, LettersStandApartFromTheName) {
    std::vector<SignalRow> signals(703, {"Flag", 0, 1});
    signals.back().name = "Last";
    const auto database = BuildMessage(1, signals);
    const std::string text = MessageText(database->Messages().front(), Style(false));
    EXPECT_EQ(text.substr(text.rfind("\nAAA")), "\nAAA Last  start bit 0, 1 bit, little-endian\n");
}

TEST(MessageText, MarksNamesAndLetters) {
    const auto database = BuildMessage(1, {{"Level", 7, 8, kBig, 0, {{0, "Off"}}}});
    EXPECT_EQ(MessageText(database->Messages().front(), Style(true)),
              "\x1B[1mMsg\x1B[0m  00.001.0  0x10, 1 byte\n"
              "\n"
              "\x1B[2m         7 6 5 4 3 2 1 0\x1B[0m\n"
              "\x1B[2m0       \x1B[0m A A A A A A A A\n"
              "\n"
              "\x1B[33mA  \x1B[0m\x1B[1mLevel\x1B[0m  start bit 7, 8 bits, big-endian\n"
              "     0     Off\n");
}

TEST(MessageText, HasNoAddressForAnIdentifierThatIsMadeOfNone) {
    const auto database = Build({.messages = {{0x1000000, "Wide"}}});
    EXPECT_THAT(MessageText(database->Messages().front(), Style(false)),
                HasSubstr("Wide  0x1000000, 0 bytes\n"));
}

struct ScaledCase {
    sigscale scaling;
    const char* line;
};

const ScaledCase kScaled[] = {
    {{0.1, -12.5, 12.5, 0.5, "dB"}, "factor 0.1, range -12.5 to 12.5, step 0.5, unit dB"},
    {{}, "factor 1"},
    {{100000, 0, 4294967295.0}, "factor 100000, range 0 to 4294967295"},
    {{1, -1}, "factor 1, minimum -1"},
    {{1, {}, 9, 3}, "factor 1, maximum 9, step 3"},
    {{1e-5,
      {},
      {},
      {},
      "\xC2\xB0"
      "C\x1B[0m"},
     "factor 1e-05, unit \xC2\xB0"
     "C.[0m"},
};

TEST(MessageText, HasTheScalingOfASignalInFrontOfItsValues) {
    for (const auto& [scaling, line] : kScaled) {
        EXPECT_THAT(
            MessageText(
                BuildMessage(1, {{"Level", 7, 8, kBig, 0, {{3, "Loud"}}, scaling}})->Messages().front(),
                Style(false)),
            HasSubstr("A  Level  start bit 7, 8 bits, big-endian\n     " + std::string(line) +
                      "\n     3     Loud\n"));
    }
}

}  // namespace
}  // namespace vorn::test
