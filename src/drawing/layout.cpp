#include "drawing/layout.h"

#include <algorithm>

namespace vorn {
namespace {

/// A bit as it is numbered in signals, where every byte counts from its lowest bit.
BitPosition FromSignalNumber(std::size_t bit) {
    return bit / kBitsPerByte * kBitsPerByte + (kBitsPerByte - 1) - bit % kBitsPerByte;
}

bool IsBigEndian(const sigblk& signal) {
    return (signal.flags & kSignalBigEndian) != 0;
}

}  // namespace

std::vector<BitRange> RangesOf(const sigblk& signal) {
    if (signal.length == 0) {
        return {};
    }
    if (IsBigEndian(signal)) {
        const BitPosition first = FromSignalNumber(signal.start_bit);
        return {{first, first + signal.length}};
    }
    const std::size_t low = signal.start_bit;
    const std::size_t high = low + signal.length - 1U;
    const std::size_t firstByte = low / kBitsPerByte * kBitsPerByte;
    const std::size_t lastByte = high / kBitsPerByte * kBitsPerByte;
    if (firstByte == lastByte) {
        return {{FromSignalNumber(high), FromSignalNumber(low) + 1}};
    }
    std::vector<BitRange> ranges{{firstByte, FromSignalNumber(low) + 1}};
    if (firstByte + kBitsPerByte < lastByte) {
        ranges.push_back({firstByte + kBitsPerByte, lastByte});
    }
    ranges.push_back({FromSignalNumber(high), lastByte + kBitsPerByte});
    return ranges;
}

std::size_t EndByte(const sigblk& signal) {
    const std::size_t first = IsBigEndian(signal) ? FromSignalNumber(signal.start_bit) : signal.start_bit;
    return (first + signal.length + kBitsPerByte - 1) / kBitsPerByte;
}

bool CanMeet(const sigblk& a, const sigblk& b) {
    const bool areMultiplexed = (a.flags & b.flags & kSignalMultiplexed) != 0;
    return !areMultiplexed || a.multiplexer_value == b.multiplexer_value;
}

}  // namespace vorn
