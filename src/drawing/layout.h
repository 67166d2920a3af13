/// Which bits of a message a signal takes.

#pragma once

#include <cstddef>
#include <vector>

#include "kestrel/database.h"

namespace vorn {

/// Bits of a message in reading order: the highest bit of byte 0 is 0, its lowest is 7, the highest of byte 1
/// is 8.
using BitPosition = std::size_t;

inline constexpr BitPosition kBitsPerByte = 8;

/// A run of bits, the end excluded.
struct BitRange {
    BitPosition begin;
    BitPosition end;
};

/// The bits of a signal as at most three runs, from the beginning of the message on.
std::vector<BitRange> RangesOf(const sigblk& signal);

/// The first byte behind the signal.
std::size_t EndByte(const sigblk& signal);

/// Both signals can be in the message at the same time: unless both are multiplexed, for different values.
bool CanMeet(const sigblk& a, const sigblk& b);

}  // namespace vorn
