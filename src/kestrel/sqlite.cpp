#include "kestrel/sqlite.h"

#include <sqlite3.h>

namespace kestrel {

namespace {

/// A path with the options that only an address can have.
std::string Uri(const std::string& path, SqliteMode mode) {
    // A host could stand between two slashes; there is none.
    std::string uri = path.starts_with('/') ? "file://" : "file:";
    for (const char c : path) {
        // What has a meaning in an address.
        if (c == '%' || c == '?' || c == '#') {
            constexpr std::string_view kDigits = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(c);
            uri.append({'%', kDigits[byte / 16], kDigits[byte % 16]});
        } else {
            uri += c;
        }
    }
    return uri + (mode == SqliteMode::ReadUnchanging ? "?immutable=1" : "");
}

}  // namespace

SqliteConnection::SqliteConnection(const std::string& path, SqliteMode mode) {
    sqlite3* connection = nullptr;
    const int flags = (mode == SqliteMode::Write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY) |
                      SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_URI;
    const int result = sqlite3_open_v2(Uri(path, mode).c_str(), &connection, flags, nullptr);
    connection_.reset(connection);
    if (result != SQLITE_OK) {
        throw SqliteError(sqlite3_errstr(result));
    }
    // No text of a database is longer; a file could make SQLite compute longer ones.
    sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, 1 << 24);
}

void SqliteConnection::Closer::operator()(sqlite3* connection) const {
    sqlite3_close(connection);
}

void SqliteConnection::Execute(const std::string& sql) {
    if (sqlite3_exec(connection_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw SqliteError(sqlite3_errmsg(connection_.get()));
    }
}

SqliteStatement::SqliteStatement(const SqliteConnection& connection, std::string_view sql)
    : connection_(connection.Get()) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(connection_, sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
    statement_.reset(statement);
}

void SqliteStatement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void SqliteStatement::Check(int result) const {
    if (result != SQLITE_OK) {
        throw SqliteError(sqlite3_errmsg(connection_));
    }
}

void SqliteStatement::Bind(int parameter, std::int64_t value) {
    Check(sqlite3_bind_int64(statement_.get(), parameter + 1, value));
}

void SqliteStatement::Bind(int parameter, double value) {
    Check(sqlite3_bind_double(statement_.get(), parameter + 1, value));
}

void SqliteStatement::Bind(int parameter, std::string_view text) {
    // A null pointer would bind NULL, not the empty text.
    const char* data = text.empty() ? "" : text.data();
    Check(sqlite3_bind_text64(statement_.get(), parameter + 1, data, text.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void SqliteStatement::BindNull(int parameter) {
    Check(sqlite3_bind_null(statement_.get(), parameter + 1));
}

void SqliteStatement::Run() {
    while (Next()) {
    }
    Check(sqlite3_reset(statement_.get()));
}

bool SqliteStatement::Next() {
    const int result = sqlite3_step(statement_.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        throw SqliteError(sqlite3_errmsg(connection_));
    }
    return result == SQLITE_ROW;
}

bool SqliteStatement::IsNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::optional<std::int64_t> SqliteStatement::Integer(int column) const {
    if (sqlite3_column_type(statement_.get(), column) != SQLITE_INTEGER) {
        return std::nullopt;
    }
    return sqlite3_column_int64(statement_.get(), column);
}

std::optional<double> SqliteStatement::Real(int column) const {
    const int type = sqlite3_column_type(statement_.get(), column);
    if (type != SQLITE_INTEGER && type != SQLITE_FLOAT) {
        return std::nullopt;
    }
    return sqlite3_column_double(statement_.get(), column);
}

std::optional<std::string> SqliteStatement::Text(int column) const {
    if (sqlite3_column_type(statement_.get(), column) != SQLITE_TEXT) {
        return std::nullopt;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    if (text == nullptr) {
        throw SqliteError("out of memory");
    }
    return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column)));
}

}  // namespace kestrel
