#include "disasm/traffic_stats.h"

#include "disasm/csv_text.h"
#include "disasm/json_text.h"
#include "import/text/wording.h"

namespace tarvex {
namespace {

constexpr const char* kTextHeader = "address      messages    faulty  first         last          name\n";
constexpr const char* kCsvHeader = "address,function_block,function,operation,messages,faulty,first,last\n";
constexpr std::size_t kAddressWidth = 12;
constexpr std::size_t kCountWidth = 9;
constexpr std::size_t kTimeWidth = 14;

/// The text, and blanks up to a width.
void AppendLeft(std::string& out, std::string_view text, std::size_t width) {
    out.append(text).append(text.size() < width ? width - text.size() : 1, ' ');
}

void AppendRight(std::string& out, std::uint64_t number, std::size_t width) {
    const std::string text = std::to_string(number);
    out.append(text.size() < width ? width - text.size() : 0, ' ').append(text);
}

template <class Node>
std::string_view NameOf(const Node* node) {
    return node == nullptr ? std::string_view() : std::string_view(node->GetName());
}

}  // namespace

void TrafficStats::Add(const CapturedMessage& message, const DecodedMessage& decoded) {
    const Address address = {message.fBlockID, message.instID, message.fktID, message.opType};
    auto found = rows_.find(address);
    if (found == rows_.end() && rows_.size() < kMaxAddresses) {
        found = rows_
                    .emplace(address, Row{.block = decoded.block,
                                          .function = decoded.function,
                                          .operation = decoded.operation})
                    .first;
    }
    Row& row = found == rows_.end() ? others_ : found->second;
    ++row.messages;
    row.faulty += decoded.faults.empty() ? 0 : 1;
    if (!message.time.empty()) {
        if (row.first.empty()) {
            row.first = message.time;
        }
        row.last = message.time;
    }
}

void TrafficStats::Append(StatsFormat format, std::string& out) const {
    out += format == StatsFormat::Text ? kTextHeader : format == StatsFormat::Csv ? kCsvHeader : "";
    for (const auto& [address, row] : rows_) {
        AppendRow(
            format,
            AddressText(
                {.fBlockID = address[0], .instID = address[1], .fktID = address[2], .opType = address[3]}),
            row, out);
    }
    if (others_.messages > 0) {
        AppendRow(format, "others", others_, out);
    }
}

void TrafficStats::AppendRow(StatsFormat format, const std::string& address, const Row& row,
                             std::string& out) {
    const std::string_view names[] = {NameOf(row.block), NameOf(row.function), NameOf(row.operation)};
    switch (format) {
        case StatsFormat::Text: {
            AppendLeft(out, address, kAddressWidth);
            AppendRight(out, row.messages, kCountWidth);
            AppendRight(out += ' ', row.faulty, kCountWidth);
            out += "  ";
            AppendLeft(out, row.first.empty() ? "-" : row.first, kTimeWidth);
            AppendLeft(out, row.last.empty() ? "-" : row.last, kTimeWidth);
            const char* point = "";
            for (const std::string_view name : names) {
                out.append(name.empty() ? "" : point).append(name);
                point = ".";
            }
            out.resize(out.find_last_not_of(' ') + 1);
            break;
        }
        case StatsFormat::Json: {
            AppendJsonText(out += "{\"message\":", address);
            constexpr const char* kKeys[] = {",\"function_block\":", ",\"function\":", ",\"operation\":"};
            for (std::size_t i = 0; i < std::size(names); ++i) {
                out += kKeys[i];
                if (names[i].empty()) {
                    out += "null";
                } else {
                    AppendJsonText(out, names[i]);
                }
            }
            out.append(",\"messages\":").append(std::to_string(row.messages));
            out.append(",\"faulty\":").append(std::to_string(row.faulty));
            for (const auto& [key, time] :
                 {std::pair(",\"first\":", &row.first), {",\"last\":", &row.last}}) {
                if (!time->empty()) {
                    AppendJsonText(out += key, *time);
                }
            }
            out += '}';
            break;
        }
        case StatsFormat::Csv:
            AppendCsvText(out, address);
            for (const std::string_view name : names) {
                AppendCsvText(out += ',', name);
            }
            out.append(",")
                .append(std::to_string(row.messages))
                .append(",")
                .append(std::to_string(row.faulty));
            AppendCsvText(out += ',', row.first);
            AppendCsvText(out += ',', row.last);
            break;
    }
    out += '\n';
}

}  // namespace tarvex
