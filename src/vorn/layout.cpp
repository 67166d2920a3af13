#include "vorn/layout.h"

#include <algorithm>

namespace vorn {
namespace {

constexpr std::size_t kBits = 8;

/// A bit as it is numbered in signals, where every byte counts from its lowest bit.
BitPosition FromSignalNumber(std::size_t bit) {
    return bit / kBits * kBits + (kBits - 1) - bit % kBits;
}

bool IsBigEndian(const sigblk& signal) {
    return (signal.flags & kSignalBigEndian) != 0;
}

}  // namespace

std::vector<BitPosition> BitsOf(const sigblk& signal) {
    std::vector<BitPosition> bits;
    bits.reserve(signal.length);
    const BitPosition first = FromSignalNumber(signal.start_bit);
    for (std::size_t i = 0; i < signal.length; ++i) {
        bits.push_back(IsBigEndian(signal) ? first + i
                                           : FromSignalNumber(signal.start_bit + signal.length - 1U - i));
    }
    return bits;
}

std::vector<BitRange> RangesOf(const sigblk& signal) {
    if (signal.length == 0) return {};
    if (IsBigEndian(signal)) {
        const BitPosition first = FromSignalNumber(signal.start_bit);
        return {{first, first + signal.length}};
    }
    const std::size_t low = signal.start_bit;
    const std::size_t high = low + signal.length - 1U;
    const std::size_t first_byte = low / kBits * kBits;
    const std::size_t last_byte = high / kBits * kBits;
    if (first_byte == last_byte) return {{FromSignalNumber(high), FromSignalNumber(low) + 1}};
    std::vector<BitRange> ranges{{first_byte, FromSignalNumber(low) + 1}};
    if (first_byte + kBits < last_byte) ranges.push_back({first_byte + kBits, last_byte});
    ranges.push_back({FromSignalNumber(high), last_byte + kBits});
    return ranges;
}

std::size_t EndByte(const sigblk& signal) {
    const std::size_t first = IsBigEndian(signal) ? FromSignalNumber(signal.start_bit) : signal.start_bit;
    return (first + signal.length + kBits - 1) / kBits;
}

bool CanMeet(const sigblk& a, const sigblk& b) {
    const bool are_multiplexed = (a.flags & b.flags & kSignalMultiplexed) != 0;
    return !are_multiplexed || a.multiplexer_value == b.multiplexer_value;
}

}  // namespace vorn
