/// The rows of a SQLite file's tables, checked value by value.

#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kestrel/database_builder.h"
#include "kestrel/errors.h"
#include "kestrel/sqlite.h"

namespace kestrel {

/// How much text the rows may have all together. Each text stands in the file, but for one that the table's
/// definition gives to all rows that have none.
class TextLimit {
  public:
    /// The file may have its texts in UTF-16, which takes up to two thirds of the same in UTF-8.
    static constexpr std::size_t kTextPerByte = 2;

    explicit TextLimit(std::int64_t fileSize) : left_(kTextPerByte * static_cast<std::size_t>(fileSize)) {}

    /// False when so much is not left.
    bool Take(std::size_t bytes) {
        const bool isLeft = bytes <= left_;
        left_ -= isLeft ? bytes : 0;
        return isLeft;
    }

  private:
    std::size_t left_;
};

/// Goes through the rows of one table.
class Rows {
  public:
    /// `columns` are the names of the columns, in the order in which they are asked for; `order` those to
    /// sort by.
    Rows(const SqliteConnection& connection, const char* table, std::vector<const char*> columns,
         const char* order, TextLimit& limit)
        : table_(table), columns_(std::move(columns)), statement_(connection, Query(order)), limit_(limit) {}

    bool Next() {
        ++row_;
        return statement_.Next();
    }

    std::string Text(int column) const {
        auto text = statement_.Text(column);
        if (!text) {
            Fail(column, "text");
        }
        Count(*text);
        return *std::move(text);
    }
    double Number(int column) const {
        const auto number = statement_.Real(column);
        if (!number || !std::isfinite(*number)) {
            Fail(column, number ? "finite number" : "number");
        }
        return *number;
    }
    std::int64_t Id(int column) const {
        const auto id = statement_.Integer(column);
        if (!id) {
            Fail(column, "id");
        }
        return *id;
    }
    template <class T>
    T Unsigned(int column) const {
        const auto number = statement_.Integer(column);
        if (!number || *number < 0 || *number > std::int64_t{std::numeric_limits<T>::max()}) {
            Fail(column, "whole number from 0 to " + std::to_string(std::numeric_limits<T>::max()));
        }
        return static_cast<T>(*number);
    }
    bool Flag(int column) const {
        const auto flag = statement_.Integer(column);
        if (!flag || (*flag != 0 && *flag != 1)) {
            Fail(column, "0 or 1");
        }
        return flag == 1;
    }
    bool IsNull(int column) const { return statement_.IsNull(column); }
    std::optional<double> NumberOrNull(int column) const {
        return IsNull(column) ? std::nullopt : std::optional(Number(column));
    }
    AttributeText Value(int column) const {
        if (auto text = statement_.Text(column)) {
            Count(*text);
            return *std::move(text);
        }
        return Number(column);
    }

    /// The object that an id of the row refers to.
    template <class Objects>
    auto& Find(Objects& objects, int column) const {
        const auto found = objects.find(Id(column));
        if (found == objects.end()) {
            Fail(column, "id of another table's row");
        }
        return *found->second;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        throw ReadError("table " + std::string(table_) + ", row " + std::to_string(row_) + ": " + what);
    }

  private:
    void Count(std::string_view text) const {
        if (!limit_.Take(text.size())) {
            Fail("the texts of the file take more than " + std::to_string(TextLimit::kTextPerByte) +
                 " times its size");
        }
    }
    std::string Query(const char* order) const {
        std::string query = "SELECT ";
        for (const char* column : columns_) {
            if (column != columns_.front()) {
                query += ", ";
            }
            query += column;
        }
        return query + " FROM " + table_ + " ORDER BY " + order;
    }
    [[noreturn]] void Fail(int column, const std::string& wanted) const {
        Fail(std::string(columns_[static_cast<std::size_t>(column)]) + " is no " + wanted);
    }

    const char* table_;
    std::vector<const char*> columns_;
    SqliteStatement statement_;
    TextLimit& limit_;
    std::size_t row_ = 0;
};

}  // namespace kestrel
