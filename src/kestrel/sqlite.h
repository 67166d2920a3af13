/// A thin cover of the SQLite library: owners of its objects, and its failures as exceptions.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace kestrel {

/// What SQLite says of a failure.
class SqliteError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A file that is unchanging is read without locks and without a look at the files of transactions beside it.
enum class SqliteMode { Read, ReadUnchanging, Write };

/// An open database file.
class SqliteConnection {
  public:
    /// Opens an existing file. Every call below may throw `SqliteError`.
    SqliteConnection(const std::string& path, SqliteMode mode);

    /// Runs statements without results.
    void Execute(const std::string& sql);
    sqlite3* Get() const { return connection_.get(); }

  private:
    struct Closer {
        void operator()(sqlite3* connection) const;
    };
    std::unique_ptr<sqlite3, Closer> connection_;
};

/// A prepared statement. Parameters and columns count from 0. Texts are copied.
class SqliteStatement {
  public:
    SqliteStatement(const SqliteConnection& connection, std::string_view sql);

    void Bind(int parameter, std::int64_t value);
    void Bind(int parameter, double value);
    void Bind(int parameter, std::string_view text);
    void BindNull(int parameter);
    /// Runs the statement to its end and makes it ready for the next parameters.
    void Run();

    /// Goes to the next row of the result; false at its end.
    bool Next();
    bool IsNull(int column) const;
    /// The value of a column, or nothing when it has another type. A whole number counts as a real one too.
    std::optional<std::int64_t> Integer(int column) const;
    std::optional<double> Real(int column) const;
    std::optional<std::string> Text(int column) const;

  private:
    void Check(int result) const;

    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    sqlite3* connection_;
    std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

}  // namespace kestrel
