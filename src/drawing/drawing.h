/// Messages drawn as rows of bits.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drawing/style.h"
#include "kestrel/database.h"

namespace vorn {

/// A signal and the letters that stand for it in drawings.
struct DrawnSignal {
    const kestrel::Signal* signal;
    std::string letters;
};

/// The signals of a message with letters: A, B, ..., Z, AA, AB, ...
std::vector<DrawnSignal> LetterSignals(const kestrel::Message& message);

/// What follows the last byte whose place is known: its letter, and what there is to say about it.
struct OpenEnd {
    char letter = '~';
    std::string remark;
};

/// A row for each byte of the message, from the highest bit to the lowest, with the letters of the signals in
/// it: "." for a bit that none takes, "#" for one that several take. Rows that repeat are written once. With
/// multiplexed signals there is a drawing for each value of the multiplexor. An open end follows the signals
/// that are always there, or all that the multiplexor's value 0 has.
std::string Drawings(const kestrel::Message& message, const std::vector<DrawnSignal>& signals,
                     const Style& style, const std::optional<OpenEnd>& end = std::nullopt);

}  // namespace vorn
