#include "vorn/drawing.h"

#include <algorithm>
#include <set>

#include "vorn/layout.h"

namespace vorn {
namespace {

/// Nobody looks at more drawings of one message.
constexpr std::size_t kMaxDrawings = 32;

std::string Letters(std::size_t number) {
    std::string letters;
    for (++number; number > 0; number = (number - 1) / 26) {
        letters += static_cast<char>('A' + (number - 1) % 26);
    }
    std::ranges::reverse(letters);
    return letters;
}

bool IsMultiplexed(const kestrel::Signal& signal) {
    return (signal.flags & kSignalMultiplexed) != 0;
}

/// One byte of a drawing.
std::string Row(const std::vector<std::string>& bits, std::size_t byte, std::size_t width) {
    std::string row;
    for (std::size_t bit = 0; bit < kBitsPerByte; ++bit) {
        const std::string& letters = bits[byte * kBitsPerByte + bit];
        row += std::string(width - letters.size() + 1, ' ') + letters;
    }
    return row;
}

/// The bits of a message, each with the letters of its signal, for one value of the multiplexor.
std::vector<std::string> BitLetters(const kestrel::Message& message, const std::vector<DrawnSignal>& signals,
                                    bool isMultiplexed, std::uint32_t value) {
    std::size_t bytes = message.length;
    for (const DrawnSignal& drawn : signals) {
        bytes = std::max(bytes, EndByte(*drawn.signal));
    }
    std::vector<std::string> bits(bytes * kBitsPerByte, ".");
    for (const DrawnSignal& drawn : signals) {
        const kestrel::Signal& signal = *drawn.signal;
        if (isMultiplexed && IsMultiplexed(signal) && signal.multiplexer_value != value) {
            continue;
        }
        for (const BitPosition bit : BitsOf(signal)) {
            bits[bit] = bits[bit] == "." ? drawn.letters : "#";
        }
    }
    return bits;
}

std::string Drawing(const std::vector<std::string>& bits, std::size_t length, const Style& style) {
    std::size_t width = 1;
    for (const std::string& letters : bits) {
        width = std::max(width, letters.size());
    }
    const std::size_t bytes = bits.size() / kBitsPerByte;
    const std::size_t labelWidth = std::max<std::size_t>(8, 2 * std::to_string(bytes).size() + 2);
    std::string text = std::string(labelWidth, ' ');
    for (std::size_t bit = kBitsPerByte; bit-- > 0;) {
        text += std::string(width, ' ') + std::to_string(bit);
    }
    text = style(Colour::Faint, text) + "\n";
    for (std::size_t byte = 0; byte < bytes;) {
        const std::string row = Row(bits, byte, width);
        std::size_t last = byte;
        while (last + 1 < bytes && last + 1 != length && Row(bits, last + 1, width) == row) {
            ++last;
        }
        std::string label = std::to_string(byte);
        if (last > byte) {
            label += "-" + std::to_string(last);
        }
        label.append(labelWidth - label.size(), ' ');
        text += style(Colour::Faint, label) + row + (byte >= length ? "   beyond the message" : "") + "\n";
        byte = last + 1;
    }
    return text;
}

}  // namespace

std::vector<DrawnSignal> LetterSignals(const kestrel::Message& message) {
    std::vector<DrawnSignal> signals;
    for (const kestrel::Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
        signals.push_back({signal, Letters(signals.size())});
    }
    return signals;
}

std::string Drawings(const kestrel::Message& message, const std::vector<DrawnSignal>& signals,
                     const Style& style) {
    std::set<std::uint32_t> values;
    for (const DrawnSignal& drawn : signals) {
        if (IsMultiplexed(*drawn.signal)) {
            values.insert(drawn.signal->multiplexer_value);
        }
    }
    if (values.empty()) {
        return "\n" + Drawing(BitLetters(message, signals, false, 0), message.length, style);
    }
    std::string text;
    std::size_t count = 0;
    for (const std::uint32_t value : values) {
        if (count++ == kMaxDrawings) {
            const std::size_t more = values.size() - kMaxDrawings;
            text += "\n" + std::to_string(more) + " more value" + (more == 1 ? "" : "s") +
                    " of the multiplexor\n";
            break;
        }
        text += "\n" + style(Colour::Faint, "multiplexor " + std::to_string(value)) + "\n" +
                Drawing(BitLetters(message, signals, true, value), message.length, style);
    }
    return text;
}

}  // namespace vorn
