#include "capture/table_line.h"

#include <algorithm>
#include <iterator>

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
    {"date", Column::Date},
    {"time", Column::Time},
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

/// What stands behind the name of a column of times, as PlainKey leaves it.
struct NamedUnit {
    std::string_view name;
    double seconds;
};
constexpr NamedUnit kTimeUnits[] = {{"s", 1},       {"sec", 1},   {"seconds", 1}, {"ms", 1e-3},
                                    {"msec", 1e-3}, {"us", 1e-6}, {"ns", 1e-9}};

/// The unit that a name of times ends with, as PlainKey leaves it; 0 for any other name.
double UnitIn(std::string_view plain) {
    for (const std::string_view base : {"timestamp", "time"}) {
        const auto* unit = plain.starts_with(base)
                               ? std::ranges::find(kTimeUnits, plain.substr(base.size()), &NamedUnit::name)
                               : std::end(kTimeUnits);
        if (unit != std::end(kTimeUnits)) {
            return unit->seconds;
        }
    }
    return 0;
}

/// "Data 0", "Byte1", "b2", "D3": one byte of the data.
bool NamesByte(std::string_view name) {
    const std::string plain = PlainKey(name);
    const std::size_t digits = std::min(plain.find_first_of("0123456789"), plain.size());
    const std::string_view word = std::string_view(plain).substr(0, digits);
    return DigitsOf(std::string_view(plain).substr(digits), 10) &&
           (word == "data" || word == "databyte" || word == "byte" || word == "b" || word == "d");
}

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
    return found != std::end(kNamedColumns) ? found->column
           : UnitIn(plain) > 0              ? Column::Time
                                            : Column::Other;
}

double TimeUnitOf(std::string_view name) {
    return UnitIn(PlainKey(name));
}

std::optional<TableColumns> TableColumns::Make(std::vector<std::string> names, char separator) {
    // Bytes with a column each need no names behind the first.
    while (names.size() > 1 && TrimBlanks(names.back()).empty()) {
        names.pop_back();
    }
    std::vector<Column> columns;
    columns.reserve(names.size());
    std::ranges::transform(names, std::back_inserter(columns), ColumnOf);
    const auto has = [&](Column column) { return std::ranges::find(columns, column) != columns.end(); };
    const bool hasData = has(Column::Data);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool goesOn = i > 0 && columns[i - 1] == Column::Data;
        if (columns[i] == Column::Other && NamesByte(names[i]) && (goesOn || !hasData)) {
            columns[i] = Column::Data;
        }
    }
    const bool hasFields = has(Column::FBlock) && has(Column::Function) && has(Column::OpType);
    if (!has(Column::Data) || (!has(Column::Message) && !hasFields)) {
        return std::nullopt;
    }
    TableColumns table(std::move(columns), separator);
    for (std::size_t i = 0; i < table.columns_.size(); ++i) {
        if (table.columns_[i] != Column::Other && table.columns_[i] != Column::Data) {
            table.needed_ = i + 1;
        }
        if (table.columns_[i] == Column::Time) {
            table.timeUnit_ = TimeUnitOf(names[i]);
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
    return Make(SplitAt(line, separator), separator);
}

std::optional<TableColumns> TableColumns::FromList(std::string_view list) {
    return Make(SplitAt(list, ','), '\0');
}

/// The table's mark; where it has not shown yet, the one that cuts the line into as many values as there are
/// columns, or else the one that stands most often.
char TableColumns::SeparatorIn(std::string_view line) const {
    if (separator_ != '\0') {
        return separator_;
    }
    const auto fitting = std::ranges::find_if(
        kTableMarks, [&](char mark) { return SplitAt(line, mark).size() == columns_.size(); });
    return fitting == kTableMarks.end() ? SeparatorOf(line) : *fitting;
}

bool TableColumns::Holds(std::string_view line) const {
    const char separator = SeparatorIn(line);
    return line.size() >= needed_ && line.find(separator) != std::string_view::npos &&
           SplitAt(line, separator).size() >= std::max<std::size_t>(needed_, 2);
}

std::string TableColumns::Shortness(std::string_view line) const {
    const std::size_t count = SplitAt(line, SeparatorIn(line)).size();
    return count < 2 || count >= needed_ ? std::string()
                                         : std::to_string(count) + " values, but the table has " +
                                               std::to_string(columns_.size()) + " columns";
}

bool TableColumns::HasAddress(std::string_view line, const AddressNames& names) const {
    CapturedMessage message;
    return FieldsOf(SplitAt(line, SeparatorIn(line))).ReadAddress(message, names).empty();
}

std::string TableColumns::Read(std::string_view line, CapturedMessage& out, const AddressNames& names) {
    const char separator = SeparatorIn(line);
    std::vector<std::string> values = SplitAt(line, separator);
    while (values.size() > columns_.size() && TrimBlanks(values.back()).empty()) {
        values.pop_back();
    }
    std::string fault = FieldsOf(values).Read(out, names);
    if (fault.empty() && values.size() > columns_.size() && columns_.back() != Column::Data) {
        fault = std::to_string(values.size()) + " values, but the table has " +
                std::to_string(columns_.size()) + " columns";
    }
    separator_ = fault.empty() ? separator : separator_;
    return fault;
}

/// What goes on behind the last column are bytes with a column each, if that is one of data.
LooseFields TableColumns::FieldsOf(const std::vector<std::string>& values) const {
    LooseFields fields;
    fields.SetTimeUnit(timeUnit_);
    const Column last = columns_.back() == Column::Data ? Column::Data : Column::Other;
    for (std::size_t i = 0; i < values.size(); ++i) {
        fields.Set(i < columns_.size() ? columns_[i] : last, TrimBlanks(values[i]));
    }
    return fields;
}

}  // namespace tarvex
