/// Messages drawn as bits: bytes downwards, bits 7 to 0 from left to right.

#include "drawing/drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample.h"

namespace vorn::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::string Drawn(std::uint16_t length, std::vector<SignalRow> signals, const Style& style = Style(false)) {
    const auto database = BuildMessage(length, std::move(signals));
    const kestrel::Message& message = database->Messages().front();
    return Drawings(message, LetterSignals(message), style);
}

/// One-bit signals from bit 0 upwards.
std::vector<SignalRow> Flags(std::size_t count) {
    std::vector<SignalRow> signals;
    for (std::size_t i = 0; i < count; ++i) {
        signals.push_back(
            {.name = "Flag" + std::to_string(i), .startBit = static_cast<std::uint16_t>(i), .length = 1});
    }
    return signals;
}

/// Signals that share bit 7, each for a value of the multiplexor from 0 on.
std::vector<SignalRow> Cases(std::uint32_t count) {
    std::vector<SignalRow> signals;
    for (std::uint32_t value = 0; value < count; ++value) {
        signals.push_back({"Case" + std::to_string(value), 7, 1, kBig | kSelected, value});
    }
    return signals;
}

struct DrawingCase {
    const char* what;
    std::uint16_t length;
    std::vector<SignalRow> signals;
    const char* drawing;
};

const DrawingCase kPlain[] = {
    {"no signals", 1, {}, R"(
         7 6 5 4 3 2 1 0
0        . . . . . . . .
)"},
    {"no bytes", 0, {}, R"(
         7 6 5 4 3 2 1 0
)"},
    {"big-endian",
     3,
     {{"Level", 7, 8, kBig}, {"Mode", 13, 3, kBig}, {"Speed", 9, 6, kBig}},
     R"(
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1        . . B B B . C C
2        C C C C . . . .
)"},
    {"little-endian",
     2,
     {{"Low", 0, 3}, {"Wide", 6, 6}, {"Top", 15, 1}},
     R"(
         7 6 5 4 3 2 1 0
0        B B . . . A A A
1        C . . . B B B B
)"},
    {"a bit of two signals, and of three",
     1,
     {{"A", 7, 4, kBig}, {"B", 4, 4, kBig}, {"C", 4, 1}},
     R"(
         7 6 5 4 3 2 1 0
0        A A A # B B B .
)"},
    {"bytes beyond the message",
     1,
     {{"Level", 7, 8, kBig}, {"Far", 16, 4}},
     R"(
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1        . . . . . . . .   beyond the message
2        . . . . B B B B   beyond the message
)"},
    {"rows that repeat",
     12,
     {{"Name", 15, 64, kBig}, {"Last", 80, 1}},
     R"(
         7 6 5 4 3 2 1 0
0        . . . . . . . .
1-8      A A A A A A A A
9        . . . . . . . .
10       . . . . . . . B
11       . . . . . . . .
)"},
    {"rows that repeat beyond the message",
     1,
     {{"Level", 7, 8, kBig}, {"Name", 15, 24, kBig}},
     R"(
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1-3      B B B B B B B B   beyond the message
)"},
    {"a signal without bits",
     1,
     {{"Nothing", 7, 0, kBig}, {"Level", 3, 4, kBig}},
     R"(
         7 6 5 4 3 2 1 0
0        . . . . B B B B
)"},
    {"two letters make all columns wide", 4, Flags(27),
     R"(
          7  6  5  4  3  2  1  0
0         H  G  F  E  D  C  B  A
1         P  O  N  M  L  K  J  I
2         X  W  V  U  T  S  R  Q
3         .  .  .  .  . AA  Z  Y
)"},
};

TEST(Drawing, OfPlainMessages) {
    for (const DrawingCase& row : kPlain) {
        EXPECT_EQ(Drawn(row.length, row.signals), row.drawing) << row.what;
    }
}

const DrawingCase kMultiplexed[] = {
    {"a drawing for each value, plain signals in all of them",
     2,
     {{"Case", 7, 8, kBig | kSelector},
      {"One", 15, 8, kBig | kSelected, 1},
      {"Two", 11, 4, kBig | kSelected, 2}},
     R"(
multiplexor 1
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1        B B B B B B B B

multiplexor 2
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1        . . . . C C C C
)"},
    {"values in ascending order, several signals for one, without a multiplexor",
     1,
     {{"High", 7, 2, kBig | kSelected, 300},
      {"A", 7, 2, kBig | kSelected, 0},
      {"B", 1, 2, kBig | kSelected, 300}},
     R"(
multiplexor 0
         7 6 5 4 3 2 1 0
0        B B . . . . . .

multiplexor 300
         7 6 5 4 3 2 1 0
0        A A . . . . C C
)"},
    {"bits that two signals share for one value, and with a plain one",
     1,
     {{"Case", 7, 2, kBig | kSelector}, {"A", 6, 3, kBig | kSelected, 5}, {"B", 4, 1, kBig | kSelected, 5}},
     R"(
multiplexor 5
         7 6 5 4 3 2 1 0
0        A # B # . . . .
)"},
    {"every drawing has all bytes",
     1,
     {{"A", 7, 8, kBig | kSelected, 1}, {"B", 15, 8, kBig | kSelected, 2}},
     R"(
multiplexor 1
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1        . . . . . . . .   beyond the message

multiplexor 2
         7 6 5 4 3 2 1 0
0        . . . . . . . .
1        B B B B B B B B   beyond the message
)"},
};

TEST(Drawing, OfMultiplexedMessages) {
    for (const DrawingCase& row : kMultiplexed) {
        EXPECT_EQ(Drawn(row.length, row.signals), row.drawing) << row.what;
    }
}

/// Bytes 2 and 3 look like those before them but do not belong to the message.
TEST(Drawing, RowsThatRepeatAcrossTheEndOfTheMessageAreToldApart) {
    EXPECT_EQ(Drawn(2, {{"Name", 7, 32, kBig}}), R"(
         7 6 5 4 3 2 1 0
0-1      A A A A A A A A
2-3      A A A A A A A A   beyond the message
)");
}

TEST(Drawing, OfThirtyTwoValuesIsWhole) {
    const std::string drawing = Drawn(1, Cases(32));
    EXPECT_THAT(drawing, HasSubstr("\nmultiplexor 0\n"));
    EXPECT_THAT(drawing, HasSubstr("\nmultiplexor 31\n"));
    EXPECT_THAT(drawing, EndsWith("\n0        AF  .  .  .  .  .  .  .\n"));
}

TEST(Drawing, OfMoreValuesTellsHowManyAreLeftOut) {
    const std::string drawing = Drawn(1, Cases(34));
    EXPECT_THAT(drawing, HasSubstr("\nmultiplexor 31\n"));
    EXPECT_THAT(drawing, Not(HasSubstr("\nmultiplexor 32\n")));
    EXPECT_THAT(drawing, EndsWith("AF  .  .  .  .  .  .  .\n\n2 more values of the multiplexor\n"));
}

TEST(Drawing, MarksEverythingButTheBitsAsFaint) {
    EXPECT_EQ(Drawn(1, {{"A", 3, 4, kBig | kSelected, 1}}, Style(true)),
              "\n\x1B[2mmultiplexor 1\x1B[0m\n"
              "\x1B[2m         7 6 5 4 3 2 1 0\x1B[0m\n"
              "\x1B[2m0       \x1B[0m . . . . A A A A\n");
}

struct EndCase {
    const char* what;
    std::uint16_t length;
    std::vector<SignalRow> signals;
    OpenEnd end;
    const char* drawn;
};

TEST(Drawing, DrawsOpenEnds) {
    const EndCase cases[] = {
        {"behind a signal", 1, {{"Level", 7, 8, kBig}}, {'~', "a text"}, R"(
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1-       ~ ~ ~ ~ ~ ~ ~ ~   a text
)"},
        {"with nothing before and nothing to say", 0, {}, {'?', ""}, R"(
         7 6 5 4 3 2 1 0
0-       ? ? ? ? ? ? ? ?
)"},
        {"behind all fields that a multiplexor chooses from",
         2,
         {{"One", 7, 8, kBig | kSelected, 0},
          {"Two", 15, 8, kBig | kSelected, 0},
          {"Two1", 7, 8, kBig | kSelected, 2}},
         {'~', "more"},
         R"(
multiplexor 0
         7 6 5 4 3 2 1 0
0        A A A A A A A A
1        B B B B B B B B
2-       ~ ~ ~ ~ ~ ~ ~ ~   more

multiplexor 2
         7 6 5 4 3 2 1 0
0        C C C C C C C C
1        . . . . . . . .
)"},
    };
    for (const EndCase& one : cases) {
        const auto database = BuildMessage(one.length, one.signals);
        const kestrel::Message& message = database->Messages().front();
        EXPECT_EQ(Drawings(message, LetterSignals(message), Style(false), one.end), one.drawn) << one.what;
    }
}

struct LetterCase {
    std::size_t number;
    const char* letters;
};

constexpr LetterCase kLetters[] = {
    {0, "A"}, {25, "Z"}, {26, "AA"}, {27, "AB"}, {51, "AZ"}, {52, "BA"}, {701, "ZZ"}, {702, "AAA"},
};

TEST(Drawing, SignalsGetLettersInTheirOrder) {
    const auto database = BuildMessage(1, Flags(703));
    const auto signals = LetterSignals(database->Messages().front());
    ASSERT_EQ(signals.size(), 703U);
    for (const auto& [number, letters] : kLetters) {
        EXPECT_EQ(signals[number].letters, letters);
        EXPECT_EQ(kestrel::NameIn(signals[number].signal->name), "Flag" + std::to_string(number));
    }
}

}  // namespace
}  // namespace vorn::test
