/// Looks into SQLite files, and damages them, with nothing but the SQLite library.

#pragma once

#include <cstdio>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

class SqliteFile {
  public:
    explicit SqliteFile(const std::string& path) {
        sqlite3* connection = nullptr;
        const int result = sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
        connection_.reset(connection);
        if (result != SQLITE_OK) {
            throw std::runtime_error("cannot open " + path);
        }
    }

    /// Runs statements that have no result.
    void Run(const std::string& sql) {
        if (sqlite3_exec(connection_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sql + ": " + sqlite3_errmsg(connection_.get()));
        }
    }

    /// The rows of a query, one per line: texts in quotes, real numbers with a decimal point.
    std::string Rows(const std::string& sql) {
        sqlite3_stmt* raw = nullptr;
        const int result = sqlite3_prepare_v2(connection_.get(), sql.c_str(), -1, &raw, nullptr);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, sqlite3_finalize);
        if (result != SQLITE_OK) {
            throw std::runtime_error(sql + ": " + sqlite3_errmsg(connection_.get()));
        }
        std::string rows;
        while (sqlite3_step(raw) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(raw); ++column) {
                rows += (column == 0 ? "" : " ") + Value(raw, column);
            }
            rows += '\n';
        }
        return rows;
    }

  private:
    static std::string Value(sqlite3_stmt* statement, int column) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        switch (sqlite3_column_type(statement, column)) {
            case SQLITE_NULL:
                return "NULL";
            case SQLITE_TEXT:
                return "'" + std::string(text) + "'";
            case SQLITE_BLOB:
                return "a blob";
            default:  // SQLite writes a real number with a decimal point
                return text;
        }
    }

    std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_{nullptr, sqlite3_close};
};
