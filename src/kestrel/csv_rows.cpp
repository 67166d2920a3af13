#include "kestrel/csv_rows.h"

#include <optional>

#include "kestrel/json_text.h"
#include "kestrel/model_text.h"

namespace kestrel {
namespace {

constexpr std::string_view kNoSignal = ",,,,,,,,,,,\r\n";

/// Appends a text as one cell: in quotes where it has something that ends a cell or a line.
void AppendCell(std::string& csv, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        csv += text;
        return;
    }
    csv += '"';
    for (const char c : text) {
        csv += c;
        if (c == '"') {
            csv += '"';
        }
    }
    csv += '"';
}

/// "M" for the multiplexor, "m3" for a signal that is there for its value 3; "m3M" for one that is both.
std::string MultiplexingText(const Signal& signal) {
    std::string text;
    if ((signal.flags & kSignalMultiplexed) != 0) {
        text = "m" + std::to_string(signal.multiplexer_value);
    }
    return (signal.flags & kSignalMultiplexor) != 0 ? text + "M" : text;
}

/// "0=Off; 1=On"
std::string ValuesText(const Signal& signal) {
    std::string text;
    for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
        text.append(text.empty() ? "" : "; ").append(std::to_string(entry->value)).append("=");
        text.append(NameText(entry->text));
    }
    return text;
}

void AppendNumberCell(std::string& csv, const std::optional<double>& number) {
    if (number) {
        AppendShortNumber(csv, *number);
    }
    csv += ",";
}

/// Five cells, each with a comma behind it.
void AppendScaling(std::string& csv, const sigscale* scaling) {
    if (scaling == nullptr) {
        csv += ",,,,,";
        return;
    }
    AppendNumberCell(csv, scaling->factor);
    AppendNumberCell(csv, scaling->minimum);
    AppendNumberCell(csv, scaling->maximum);
    AppendNumberCell(csv, scaling->step);
    AppendCell(csv, scaling->unit);
    csv += ",";
}

void AppendSignal(std::string& csv, const Signal& signal) {
    AppendCell(csv, NameText(signal.name));
    csv.append(",")
        .append(std::to_string(signal.start_bit))
        .append(",")
        .append(std::to_string(signal.length));
    csv.append(",").append(ByteOrderName(signal));
    csv.append((signal.flags & kSignalSigned) != 0 ? ",1," : ",0,")
        .append(MultiplexingText(signal))
        .append(",");
    AppendScaling(csv, signal.scaling);
    AppendCell(csv, ValuesText(signal));
    csv += "\r\n";
}

}  // namespace

std::string CsvRows::MessageCells(const Message& message) {
    std::string cells = AddressText(message.identifier) + ",";
    const auto add = [&](std::string_view text) {
        AppendCell(cells, text);
        cells += ",";
    };
    add(columns_.Of(message, MostColumn::FBlock));
    add(columns_.Of(message, MostColumn::Function));
    add(columns_.Of(message, MostColumn::OpType));
    add(NameText(message.name));
    add(HexadecimalText(message.identifier & ~kExtendedIdentifier));
    add(std::to_string(message.length));
    add(columns_.Of(message, MostColumn::Layout));
    add(message.node == nullptr ? std::string() : NameText(message.node->name));
    return cells;
}

void CsvRows::Append(const Message& message, std::string& csv) {
    const std::string cells = MessageCells(message);
    for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
        csv += cells;
        AppendSignal(csv, *signal);
    }
    if (message.firstSignal == nullptr) {
        csv += cells;
        csv += kNoSignal;
    }
}

}  // namespace kestrel
