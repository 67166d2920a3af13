#include "vorn/describe.h"

#include <algorithm>
#include <optional>

#include "drawing/drawing.h"
#include "import/text/shown_text.h"
#include "kestrel/json_text.h"
#include "kestrel/model_text.h"
#include "kestrel/most_columns.h"

namespace vorn {
namespace {

using kestrel::Message;
using kestrel::Signal;
using tarvex::Shown;

std::string NameOf(const kestrel::Node& node) {
    return Shown(kestrel::NameText(node.name));
}

std::string NodeNameOf(const Message& message) {
    return message.node == nullptr ? std::string() : Shown(kestrel::NameText(message.node->name));
}

std::string Padded(std::string text, std::size_t width) {
    // Letters beyond ASCII take several bytes and one column.
    const auto columns = static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
    text.append(width - std::min(width, columns), ' ');
    return text;
}

/// A column of a table; at least a blank stands behind it.
std::string Column(std::string text, std::size_t width) {
    return Padded(std::move(text), width - 1) + " ";
}

std::string Count(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void AppendAttributes(const kestrel::AttrValues& attributes, std::string_view indent,
                      kestrel::ValueTexts& values, std::string& text) {
    for (const auto& entry : attributes.Values()) {
        text.append(indent).append(Shown(kestrel::NameText(entry.definition->name))).append(" = ");
        text.append(Shown(values.Of(entry))).append("\n");
    }
}

/// "factor 0.1, range -12.5 to 12.5, step 0.5, unit dB", as far as it is known.
std::string ScalingText(const sigscale& scaling) {
    std::string text;
    const auto add = [&](const char* what, const std::optional<double>& number) {
        if (number) {
            kestrel::AppendShortNumber(text.append(what), *number);
        }
    };
    add("factor ", scaling.factor);
    const bool isRange = scaling.minimum && scaling.maximum;
    add(isRange ? ", range " : ", minimum ", scaling.minimum);
    add(isRange ? " to " : ", maximum ", scaling.maximum);
    add(", step ", scaling.step);
    return scaling.unit.empty() ? text : text + ", unit " + Shown(scaling.unit);
}

std::string MessageLine(const Message& message) {
    return Padded(IdentifierText(message.identifier), 20) +
           Padded(Shown(kestrel::NameText(message.name)), 34) + Padded(Count(message.length, "byte"), 13) +
           Padded(Count(message.signalCount, "signal"), 14) + NodeNameOf(message);
}

std::string WithoutTrailingBlanks(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

}  // namespace

std::string IdentifierText(std::uint32_t identifier) {
    const std::uint32_t number = identifier & ~kExtendedIdentifier;
    return kestrel::HexadecimalText(number) + (number != identifier ? " extended" : "");
}

std::string MessageList(const std::vector<const Message*>& messages) {
    std::string lines;
    for (const Message* message : messages) {
        lines += WithoutTrailingBlanks(MessageLine(*message)) + "\n";
    }
    return lines;
}

std::string DatabaseText(const kestrel::Database& database, const Style& style) {
    std::string text = style(Colour::Heading, Shown(kestrel::Text(database.Name()))) + "\n";
    kestrel::ValueTexts values;
    AppendAttributes(database.Attributes(), "  ", values, text);
    text += "\n" + style(Colour::Heading, Count(database.Nodes().size(), "node")) + "\n";
    for (const kestrel::Node& node : database.Nodes()) {
        text += "  " + NameOf(node) + "\n";
        AppendAttributes(node.attributes, "    ", values, text);
    }
    text += "\n" + style(Colour::Heading, Count(database.Messages().size(), "message")) + "\n";
    for (const Message& message : database.Messages()) {
        text += "  " + WithoutTrailingBlanks(MessageLine(message)) + "\n";
    }
    return text;
}

std::string MessageText(const Message& message, const Style& style) {
    const std::string address = kestrel::AddressText(message.identifier);
    std::string text = style(Colour::Heading, Shown(kestrel::NameText(message.name))) + "  " + address +
                       (address.empty() ? "" : "  ") + IdentifierText(message.identifier) + ", " +
                       Count(message.length, "byte");
    if (message.node != nullptr) {
        text += ", from " + NodeNameOf(message);
    }
    text += "\n";
    kestrel::ValueTexts values;
    AppendAttributes(message.attributes, "  ", values, text);
    const std::vector<DrawnSignal> signals = LetterSignals(message);
    text += Drawings(message, signals, style);
    for (const DrawnSignal& drawn : signals) {
        const Signal& signal = *drawn.signal;
        text += "\n" + style(Colour::Changed, Column(drawn.letters, 3)) +
                style(Colour::Heading, Shown(kestrel::NameText(signal.name))) + "  start bit " +
                std::to_string(signal.start_bit) + ", " + Count(signal.length, "bit") + ", " +
                ((signal.flags & kSignalBigEndian) != 0 ? "big-endian" : "little-endian") +
                ((signal.flags & kSignalSigned) != 0 ? ", signed" : "");
        if ((signal.flags & kSignalMultiplexor) != 0) {
            text += ", multiplexor";
        }
        if ((signal.flags & kSignalMultiplexed) != 0) {
            text += ", for multiplexor " + std::to_string(signal.multiplexer_value);
        }
        text += "\n";
        if (signal.scaling != nullptr) {
            text += "     " + ScalingText(*signal.scaling) + "\n";
        }
        for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
            text += "     " + Column(std::to_string(entry->value), 6) +
                    Shown(kestrel::NameText(entry->text)) + "\n";
        }
    }
    return text;
}

}  // namespace vorn
