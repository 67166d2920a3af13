#include "capture/table_line.h"

#include <algorithm>
#include <array>

#include "capture/data_bytes.h"
#include "capture/hexadecimal.h"
#include "capture/loose_fields.h"
#include "import/text/names.h"

namespace tarvex {
namespace {

constexpr std::string_view kTableMarks = "\t;,";

struct NamedColumn {
    std::string_view name;
    Column column;
};
constexpr NamedColumn kNamedColumns[] = {
    {"time", Column::Time},
    {"times", Column::Time},
    {"timems", Column::Time},
    {"timestamp", Column::Time},
    {"datetime", Column::Time},
    {"direction", Column::Direction},
    {"dir", Column::Direction},
    {"message", Column::Message},
    {"address", Column::Message},
    {"fblock", Column::FBlock},
    {"fblockid", Column::FBlock},
    {"functionblock", Column::FBlock},
    {"inst", Column::Inst},
    {"instid", Column::Inst},
    {"instance", Column::Inst},
    {"instanceid", Column::Inst},
    {"fkt", Column::Function},
    {"fktid", Column::Function},
    {"function", Column::Function},
    {"functionid", Column::Function},
    {"optype", Column::OpType},
    {"optypeid", Column::OpType},
    {"operation", Column::OpType},
    {"op", Column::OpType},
    {"length", Column::Length},
    {"len", Column::Length},
    {"tellen", Column::Length},
    {"dlc", Column::Length},
    {"data", Column::Data},
    {"databytes", Column::Data},
    {"payload", Column::Data},
    {"source", Column::Source},
    {"src", Column::Source},
    {"sourceaddr", Column::Source},
    {"sourceaddress", Column::Source},
    {"target", Column::Destination},
    {"destination", Column::Destination},
    {"dest", Column::Destination},
    {"dst", Column::Destination},
    {"targetaddr", Column::Destination},
    {"targetaddress", Column::Destination},
    {"destinationaddress", Column::Destination},
    {"telid", Column::Telegram},
};

/// Values may stand in quotes; two quotes in such a one stand for one.
std::vector<std::string> SplitAt(std::string_view line, char separator) {
    std::vector<std::string> values(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"') {
            values.back() += line[i++];
        } else if (line[i] == '"') {
            isQuoted = !isQuoted;
        } else if (line[i] == separator && !isQuoted) {
            values.emplace_back();
        } else {
            values.back() += line[i];
        }
    }
    return values;
}

/// The mark that stands most often in a line.
char SeparatorOf(std::string_view line) {
    return *std::ranges::max_element(kTableMarks, {},
                                     [&](char mark) { return std::ranges::count(line, mark); });
}

}  // namespace

Column ColumnOf(std::string_view name) {
    const std::string plain = PlainKey(name);
    const auto* found = std::ranges::find(kNamedColumns, plain, &NamedColumn::name);
    return found == std::end(kNamedColumns) ? Column::Other : found->column;
}

std::optional<TableColumns> TableColumns::Make(const std::vector<std::string>& names, char separator) {
    std::vector<Column> columns;
    columns.reserve(names.size());
    for (const std::string& name : names) {
        columns.push_back(ColumnOf(name));
    }
    // Bytes with a column each need no names behind the first.
    while (columns.size() > 1 && names[columns.size() - 1].empty()) {
        columns.pop_back();
    }
    const auto has = [&](Column column) { return std::ranges::find(columns, column) != columns.end(); };
    const bool hasFields = has(Column::FBlock) && has(Column::Function) && has(Column::OpType);
    if (!has(Column::Data) || (!has(Column::Message) && !hasFields)) {
        return std::nullopt;
    }
    TableColumns table(std::move(columns), separator);
    for (std::size_t i = 0; i < table.columns_.size(); ++i) {
        if (table.columns_[i] != Column::Other && table.columns_[i] != Column::Data) {
            table.needed_ = i + 1;
        }
    }
    return table;
}

std::optional<TableColumns> TableColumns::FromHeader(std::string_view line) {
    constexpr std::size_t kLongest = 4096;
    if (line.size() > kLongest) {
        return std::nullopt;
    }
    const char separator = SeparatorOf(line);
    return Make(SplitAt(TrimBlanks(line), separator), separator);
}

std::optional<TableColumns> TableColumns::FromList(std::string_view list) {
    return Make(SplitAt(list, ','), '\0');
}

std::vector<std::string> TableColumns::Split(std::string_view line) const {
    return SplitAt(line, separator_ == '\0' ? SeparatorOf(line) : separator_);
}

bool TableColumns::Holds(std::string_view line) const {
    const char separator = separator_ == '\0' ? SeparatorOf(line) : separator_;
    return line.size() >= needed_ && Split(line).size() >= std::max<std::size_t>(needed_, 2) &&
           line.find(separator) != std::string_view::npos;
}

std::string TableColumns::Read(std::string_view line, CapturedMessage& out, const AddressNames& names) const {
    LooseFields fields;
    const std::vector<std::string> values = Split(line);
    const bool isDataLast = columns_.back() == Column::Data;
    for (std::size_t i = 0; i < values.size(); ++i) {
        // What goes on behind the last column are bytes with a column each.
        const Column column = i < columns_.size() ? columns_[i] : isDataLast ? Column::Data : Column::Other;
        fields.Set(column, TrimBlanks(values[i]));
    }
    return fields.Read(out, names);
}

}  // namespace tarvex
