/// Databases as a table of signals, comma-separated.

#pragma once

#include <string>
#include <string_view>

#include "kestrel/database.h"
#include "kestrel/most_columns.h"

namespace kestrel {

/// The names of the columns, with the end of the line.
inline constexpr std::string_view kCsvHeader =
    "address,fblock,function,optype,message,identifier,length,layout,node,signal,start_bit,bits,byte_order,"
    "signed,multiplexing,factor,minimum,maximum,step,unit,values\r\n";

/// Makes the rows of the messages of one database.
class CsvRows {
  public:
    explicit CsvRows(const Database& database) : columns_(database) {}

    /// Appends a row for each signal of the message, or one whose columns of the signal are empty.
    void Append(const Message& message, std::string& csv);

  private:
    std::string MessageCells(const Message& message);

    MostColumns columns_;
};

}  // namespace kestrel
