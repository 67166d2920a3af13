#include "drawing/drawing.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include "drawing/layout.h"

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

/// What stands at a bit: no signal, several, or one, by its place among the signals.
enum Cell : std::int32_t { kFree = -2, kShared = -1 };

/// The bits of a message for one value of the multiplexor.
std::vector<std::int32_t> Cells(const kestrel::Message& message, const std::vector<DrawnSignal>& signals,
                                bool isMultiplexed, std::uint32_t value) {
    std::size_t bytes = message.length;
    for (const DrawnSignal& drawn : signals) {
        bytes = std::max(bytes, EndByte(*drawn.signal));
    }
    // How much the number of signals, and the sum of their places, changes from each bit to the next. Where
    // there is one signal, the sum is its place. Time does not grow with the length of signals.
    struct Step {
        std::int64_t count = 0;
        std::int64_t sum = 0;
    };
    std::vector<Step> steps(bytes * kBitsPerByte + 1);
    for (std::size_t place = 0; place < signals.size(); ++place) {
        const kestrel::Signal& signal = *signals[place].signal;
        if (isMultiplexed && IsMultiplexed(signal) && signal.multiplexer_value != value) {
            continue;
        }
        for (const BitRange& range : RangesOf(signal)) {
            ++steps[range.begin].count;
            steps[range.begin].sum += static_cast<std::int64_t>(place);
            --steps[range.end].count;
            steps[range.end].sum -= static_cast<std::int64_t>(place);
        }
    }
    std::vector<std::int32_t> cells(bytes * kBitsPerByte, kFree);
    Step here;
    for (BitPosition bit = 0; bit < cells.size(); ++bit) {
        here.count += steps[bit].count;
        here.sum += steps[bit].sum;
        if (here.count > 0) {
            cells[bit] = here.count == 1 ? static_cast<std::int32_t>(here.sum) : kShared;
        }
    }
    return cells;
}

std::string_view TextOf(std::int32_t cell, const std::vector<DrawnSignal>& signals) {
    if (cell == kFree) {
        return ".";
    }
    return cell == kShared ? "#" : std::string_view(signals[static_cast<std::size_t>(cell)].letters);
}

/// The bits of one byte.
std::span<const std::int32_t> Row(const std::vector<std::int32_t>& cells, std::size_t byte) {
    return std::span(cells).subspan(byte * kBitsPerByte, kBitsPerByte);
}

/// The first column of a row, for some bytes.
std::string Label(std::string text, std::size_t width, const Style& style) {
    text.append(width - std::min(width, text.size()), ' ');
    return style(Colour::Faint, text);
}

std::string EndRow(const OpenEnd& end, std::size_t width) {
    std::string row;
    for (std::size_t bit = 0; bit < kBitsPerByte; ++bit) {
        row.append(width, ' ').append(1, end.letter);
    }
    return row.append(end.remark.empty() ? "" : "   ").append(end.remark).append("\n");
}

std::string Drawing(const std::vector<std::int32_t>& cells, const std::vector<DrawnSignal>& signals,
                    std::size_t length, const Style& style, const std::optional<OpenEnd>& end) {
    std::size_t width = 1;
    for (const std::int32_t cell : cells) {
        width = std::max(width, TextOf(cell, signals).size());
    }
    const std::size_t bytes = cells.size() / kBitsPerByte;
    const std::size_t labelWidth = std::max<std::size_t>(8, 2 * std::to_string(bytes).size() + 2);
    std::string text = std::string(labelWidth, ' ');
    for (std::size_t bit = kBitsPerByte; bit-- > 0;) {
        text += std::string(width, ' ') + std::to_string(bit);
    }
    text = style(Colour::Faint, text) + "\n";
    for (std::size_t byte = 0; byte < bytes;) {
        std::size_t last = byte;
        while (last + 1 < bytes && last + 1 != length &&
               std::ranges::equal(Row(cells, last + 1), Row(cells, byte))) {
            ++last;
        }
        std::string label = std::to_string(byte);
        if (last > byte) {
            label += "-" + std::to_string(last);
        }
        text += Label(std::move(label), labelWidth, style);
        for (const std::int32_t cell : Row(cells, byte)) {
            const std::string_view letters = TextOf(cell, signals);
            text.append(width - letters.size() + 1, ' ').append(letters);
        }
        text += byte >= length ? "   beyond the message\n" : "\n";
        byte = last + 1;
    }
    return end ? text + Label(std::to_string(bytes) + "-", labelWidth, style) + EndRow(*end, width) : text;
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
                     const Style& style, const std::optional<OpenEnd>& end) {
    std::set<std::uint32_t> values;
    for (const DrawnSignal& drawn : signals) {
        if (IsMultiplexed(*drawn.signal)) {
            values.insert(drawn.signal->multiplexer_value);
        }
    }
    if (values.empty()) {
        return "\n" + Drawing(Cells(message, signals, false, 0), signals, message.length, style, end);
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
                Drawing(Cells(message, signals, true, value), signals, message.length, style,
                        value == 0 ? end : std::nullopt);
    }
    return text;
}

}  // namespace vorn
