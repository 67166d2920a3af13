/// Lines of tables: values with commas, semicolons or tabs between them.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "capture/address_names.h"

namespace tarvex {

/// What a column of a table holds.
enum class Column : unsigned {
    Other,
    Date,
    Time,
    Direction,
    Message,
    FBlock,
    Inst,
    Function,
    OpType,
    Length,
    Data,
    Source,
    Destination,
    Telegram,
};

/// What a column of that name holds, whatever the case of its letters and the marks between them.
Column ColumnOf(std::string_view name);

/// The seconds that a column of times counts in: 0.001 for "Time (ms)", 0 where its name says no unit.
double TimeUnitOf(std::string_view name);

class LooseFields;

/// The columns of a table, and the mark between them.
class TableColumns {
  public:
    /// The columns that a header line names; nothing for a line that is no header: one that names no data, or
    /// neither the message nor its block, function and OPType.
    static std::optional<TableColumns> FromHeader(std::string_view line);
    /// Those of a list with commas; the mark is then that of the first line that reads well. Nothing as
    /// above.
    static std::optional<TableColumns> FromList(std::string_view list);

    /// The line has all columns that are needed. A line of another style hardly ever has.
    bool Holds(std::string_view line) const;
    /// The line is meant as one of the table, but has fewer values than it needs: what is wrong with it then;
    /// empty for all others.
    std::string Shortness(std::string_view line) const;
    /// The line has an address where the table has it.
    bool HasAddress(std::string_view line, const AddressNames& names) const;
    /// Reads a line of the table; `out` is cleared before. Empty on success, else what is wrong.
    std::string Read(std::string_view line, CapturedMessage& out, const AddressNames& names);

  private:
    TableColumns(std::vector<Column> columns, char separator)
        : columns_(std::move(columns)), separator_(separator) {}
    static std::optional<TableColumns> Make(std::vector<std::string> names, char separator);
    char SeparatorIn(std::string_view line) const;
    LooseFields FieldsOf(const std::vector<std::string>& values) const;

    std::vector<Column> columns_;
    char separator_;  // 0 while no line has shown it
    double timeUnit_ = 0;
    std::size_t needed_ = 0;
};

}  // namespace tarvex
