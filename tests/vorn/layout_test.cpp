/// Which bits signals take. Bits are numbered in reading order: byte 0 has 0 (its highest) to 7 (its lowest),
/// byte 1 has 8 to 15.

#include "drawing/layout.h"

#include <gtest/gtest.h>

#include "sample.h"

namespace vorn::test {
namespace {

using Bits = std::vector<BitPosition>;

sigblk SignalAt(std::uint16_t startBit, std::uint16_t length, std::uint16_t flags) {
    sigblk signal;
    signal.start_bit = startBit;
    signal.length = length;
    signal.flags = flags;
    return signal;
}

/// The bits of a signal, one by one.
Bits BitsOf(const sigblk& signal) {
    Bits bits;
    for (const BitRange& range : RangesOf(signal)) {
        for (BitPosition bit = range.begin; bit < range.end; ++bit) {
            bits.push_back(bit);
        }
    }
    return bits;
}

struct LayoutCase {
    std::uint16_t flags;
    std::uint16_t startBit;
    std::uint16_t length;
    Bits bits;
    std::size_t endByte;
};

const LayoutCase kLayouts[] = {
    // order  start length  bits                                  end
    {kBig, 7, 1, {0}, 1},
    {kBig, 0, 1, {7}, 1},
    {kBig, 15, 1, {8}, 2},
    {kBig, 7, 8, {0, 1, 2, 3, 4, 5, 6, 7}, 1},
    {kBig, 3, 4, {4, 5, 6, 7}, 1},
    {kBig, 0, 2, {7, 8}, 2},
    {kBig, 10, 3, {13, 14, 15}, 2},
    {kBig, 5, 12, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}, 2},
    {kBig, 23, 10, {16, 17, 18, 19, 20, 21, 22, 23, 24, 25}, 4},
    {kLittle, 0, 1, {7}, 1},
    {kLittle, 7, 1, {0}, 1},
    {kLittle, 8, 1, {15}, 2},
    {kLittle, 0, 8, {0, 1, 2, 3, 4, 5, 6, 7}, 1},
    {kLittle, 2, 3, {3, 4, 5}, 1},
    {kLittle, 4, 8, {0, 1, 2, 3, 12, 13, 14, 15}, 2},
    {kLittle, 15, 2, {8, 23}, 3},
    {kLittle, 0, 16, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}, 2},
    {kLittle, 16, 10, {16, 17, 18, 19, 20, 21, 22, 23, 30, 31}, 4},
    {kBig, 7, 0, {}, 0},
    {kLittle, 0, 0, {}, 0},
};

TEST(Layout, BitsAndEndOfSignals) {
    for (const LayoutCase& row : kLayouts) {
        SCOPED_TRACE(testing::Message() << (row.flags == kBig ? "big-endian " : "little-endian ")
                                        << row.startBit << ", " << row.length);
        const sigblk signal = SignalAt(row.startBit, row.length, row.flags);
        EXPECT_EQ(BitsOf(signal), row.bits);
        EXPECT_EQ(EndByte(signal), row.endByte);
    }
}

TEST(Layout, OtherFlagsMoveNoBits) {
    const std::uint16_t others = kSigned | kSelector | kSelected;
    EXPECT_EQ(BitsOf(SignalAt(0, 2, kBig | others)), (Bits{7, 8}));
    EXPECT_EQ(BitsOf(SignalAt(7, 2, kLittle | others)), (Bits{0, 15}));
}

/// Bit 65535 is the highest of byte 8191: bit 65528 in reading order. 65528 + 65535 = 16382 * 8 + 7.
TEST(Layout, LargestSignalsAreWhole) {
    const sigblk big = SignalAt(65535, 65535, kBig);
    EXPECT_EQ(EndByte(big), 16383U);
    EXPECT_EQ(BitsOf(big).size(), 65535U);
    EXPECT_EQ(BitsOf(big).front(), 65528U);
    EXPECT_EQ(BitsOf(big).back(), 131062U);
    // Bits 65535 to 131069; the last one is bit 5 of byte 16383.
    const sigblk little = SignalAt(65535, 65535, kLittle);
    EXPECT_EQ(EndByte(little), 16384U);
    EXPECT_EQ(BitsOf(little).size(), 65535U);
    EXPECT_EQ(BitsOf(little).front(), 65528U);
    EXPECT_EQ(BitsOf(little).back(), 131071U);
}

struct MeetCase {
    const char* what;
    std::uint16_t flags;
    std::uint32_t value;
    std::uint16_t otherFlags;
    std::uint32_t otherValue;
    bool canMeet;
};

constexpr MeetCase kMeets[] = {
    {"both plain", kBig, 0, kLittle, 0, true},
    {"both plain, with values that mean nothing", kBig, 1, kBig, 2, true},
    {"plain and multiplexed", kBig, 0, kSelected, 3, true},
    {"multiplexor and multiplexed", kSelector, 0, kSelected, 3, true},
    {"multiplexed for one value", kSelected, 3, kSelected | kBig, 3, true},
    {"multiplexed for zero", kSelected, 0, kSelected, 0, true},
    {"multiplexed for two values", kSelected, 3, kSelected, 4, false},
    {"multiplexed for the largest values", kSelected, 0xFFFFFFFF, kSelected, 0xFFFFFFFE, false},
};

TEST(Layout, SignalsThatCanMeet) {
    for (const MeetCase& row : kMeets) {
        SCOPED_TRACE(row.what);
        sigblk one = SignalAt(0, 1, row.flags);
        one.multiplexer_value = row.value;
        sigblk other = SignalAt(0, 1, row.otherFlags);
        other.multiplexer_value = row.otherValue;
        EXPECT_EQ(CanMeet(one, other), row.canMeet);
        EXPECT_EQ(CanMeet(other, one), row.canMeet);
    }
}

}  // namespace
}  // namespace vorn::test
