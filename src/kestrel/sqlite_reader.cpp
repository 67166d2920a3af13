#include "kestrel/sqlite_reader.h"

#include <cerrno>
#include <cstring>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <unistd.h>

#include "kestrel/database_builder.h"
#include "kestrel/model_text.h"
#include "kestrel/reader.h"
#include "kestrel/sqlite.h"
#include "kestrel/sqlite_tables.h"

namespace kestrel {

namespace {

/// Goes through the rows of one table.
class Rows {
  public:
    /// `columns` are the names of the columns, in the order in which they are asked for; `order` those to
    /// sort by.
    Rows(const SqliteConnection& connection, const char* table, std::vector<const char*> columns,
         const char* order)
        : table_(table), columns_(std::move(columns)), statement_(connection, Query(order)) {}

    bool Next() {
        ++row_;
        return statement_.Next();
    }

    std::string Text(int column) const {
        auto text = statement_.Text(column);
        if (!text) Fail(column, "text");
        return *std::move(text);
    }
    double Number(int column) const {
        const auto number = statement_.Real(column);
        if (!number) Fail(column, "number");
        return *number;
    }
    std::int64_t Id(int column) const {
        const auto id = statement_.Integer(column);
        if (!id) Fail(column, "id");
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
        if (!flag || (*flag != 0 && *flag != 1)) Fail(column, "0 or 1");
        return flag == 1;
    }
    bool IsNull(int column) const { return statement_.IsNull(column); }
    AttributeText Value(int column) const {
        if (auto text = statement_.Text(column)) return *std::move(text);
        return Number(column);
    }

    /// The object that an id of the row refers to.
    template <class Objects>
    auto& Find(Objects& objects, int column) const {
        const auto found = objects.find(Id(column));
        if (found == objects.end()) Fail(column, "id of another table's row");
        return *found->second;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        throw ReadError("table " + std::string(table_) + ", row " + std::to_string(row_) + ": " + what);
    }

  private:
    std::string Query(const char* order) const {
        std::string query = "SELECT ";
        for (const char* column : columns_) {
            if (column != columns_.front()) query += ", ";
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
    std::size_t row_ = 0;
};

class SqliteReader {
  public:
    explicit SqliteReader(SqliteConnection& connection) : connection_(connection) {}

    std::unique_ptr<Database> Read() {
        CheckMarks();
        for (const char* table : kSqliteTableNames) CheckTable(table);
        std::size_t names = 0;
        ReadTable("database", {"name"}, "rowid", [&](const Rows& row) {
            builder_.SetName(row.Text(0));
            ++names;
        });
        if (names != 1) throw ReadError("table database: there has to be one row");
        ReadDefinitions();
        ReadNodes();
        ReadMessages();
        ReadSignals();
        ReadAttributes();
        return builder_.Take();
    }

  private:
    /// Calls `add` for every row, and gives the table's name to whatever fails.
    template <class Add>
    void ReadTable(const char* table, std::vector<const char*> columns, const char* order, Add add) {
        try {
            Rows rows(connection_, table, std::move(columns), order);
            while (rows.Next()) {
                try {
                    add(rows);
                } catch (const BadRecord& error) {
                    rows.Fail(error.what());
                }
            }
        } catch (const SqliteError& error) {
            throw ReadError("table " + std::string(table) + ": " + error.what());
        }
    }

    void CheckMarks() {
        if (Pragma("application_id") != kSqliteApplicationId)
            throw ReadError("the file holds no bus database");
        if (const std::int64_t version = Pragma("user_version"); version != kSqliteUserVersion) {
            throw ReadError("version " + std::to_string(version) + " of the tables is not known");
        }
        connection_.Execute("PRAGMA trusted_schema = OFF; BEGIN");
        SqliteStatement check(connection_, "PRAGMA quick_check(1)");
        if (!check.Next() || check.Text(0) != "ok") {
            throw ReadError("the file is damaged: " + check.Text(0).value_or("no check possible"));
        }
    }

    /// A view, or a table that a program computes, could go on without end.
    void CheckTable(const char* table) {
        SqliteStatement statement(connection_, "SELECT type, sql FROM sqlite_master WHERE name = ?");
        statement.Bind(0, std::string_view(table));
        if (!statement.Next()) throw ReadError(std::string("table ") + table + " is missing");
        const bool is_stored =
            statement.Text(0) == "table" && statement.Text(1).value_or("").starts_with("CREATE TABLE");
        if (!is_stored) throw ReadError(std::string("table ") + table + " is no stored table");
    }

    std::int64_t Pragma(const std::string& name) {
        SqliteStatement statement(connection_, "PRAGMA " + name);
        return statement.Next() ? statement.Integer(0).value_or(0) : 0;
    }

    void ReadDefinitions() {
        std::map<std::int64_t, std::vector<std::string>> choices;
        ReadTable("attribute_choice", {"definition_id", "name"}, "definition_id, position",
                  [&](const Rows& row) { choices[row.Id(0)].push_back(row.Text(1)); });
        ReadTable("attribute_definition",
                  {"id", "object", "name", "type", "minimum", "maximum", "default_value"}, "id",
                  [&](const Rows& row) {
                      DefinitionRecord record;
                      record.object = row.Text(1);
                      record.name = row.Text(2);
                      record.type = row.Text(3);
                      if (record.type == "integer") {
                          record.minimum = row.Number(4);
                          record.maximum = row.Number(5);
                          record.default_number = row.Number(6);
                      } else {
                          record.default_text = row.Text(6);
                      }
                      if (record.type == "enumeration") record.choices = std::move(choices[row.Id(0)]);
                      choices.erase(row.Id(0));
                      builder_.AddDefinition(record);
                      definition_names_.try_emplace(row.Id(0), record.object, record.name);
                  });
        if (!choices.empty()) {
            throw ReadError("table attribute_choice: there is no definition " +
                            std::to_string(choices.begin()->first));
        }
    }

    void ReadNodes() {
        ReadTable("node", {"id", "name"}, "id",
                  [&](const Rows& row) { Keep(row, nodes_, builder_.AddNode(row.Text(1))); });
    }

    /// Remembers an object by the id in column 0.
    template <class Object>
    static void Keep(const Rows& row, std::map<std::int64_t, Object*>& objects, Object& object) {
        if (!objects.emplace(row.Id(0), &object).second) row.Fail("the id stands twice");
    }

    void ReadMessages() {
        ReadTable("message", {"id", "identifier", "extended", "name", "length", "node_id"}, "id",
                  [&](const Rows& row) {
                      MessageRecord record;
                      record.identifier = row.Unsigned<std::uint32_t>(1);
                      record.extended = row.Flag(2);
                      record.name = row.Text(3);
                      record.length = row.Unsigned<std::uint16_t>(4);
                      record.node = row.IsNull(5) ? nullptr : &row.Find(nodes_, 5);
                      Keep(row, messages_, builder_.AddMessage(record));
                  });
    }

    void ReadSignals() {
        ReadTable("signal",
                  {"id", "message_id", "name", "start_bit", "length", "byte_order", "signed", "multiplexor",
                   "multiplexer_value"},
                  "id", [&](const Rows& row) {
                      SignalRecord record;
                      record.name = row.Text(2);
                      record.start_bit = row.Unsigned<std::uint16_t>(3);
                      record.length = row.Unsigned<std::uint16_t>(4);
                      record.byte_order = row.Text(5);
                      record.is_signed = row.Flag(6);
                      record.is_multiplexor = row.Flag(7);
                      if (!row.IsNull(8)) record.multiplexer_value = row.Unsigned<std::uint32_t>(8);
                      Keep(row, signals_, builder_.AddSignal(row.Find(messages_, 1), record));
                  });
        ReadTable("value_description", {"signal_id", "value", "text"}, "signal_id, position",
                  [&](const Rows& row) {
                      builder_.AddValue(row.Find(signals_, 0), row.Unsigned<std::uint32_t>(1), row.Text(2));
                  });
    }

    void ReadAttributes() {
        ReadTable("database_attribute", {"definition_id", "value"}, "rowid", [&](const Rows& row) {
            SetAttribute(row, 0, builder_.database().attributes(), AttrObject::Database);
        });
        ReadTable("node_attribute", {"node_id", "definition_id", "value"}, "rowid", [&](const Rows& row) {
            SetAttribute(row, 1, row.Find(nodes_, 0).attributes, AttrObject::Node);
        });
        ReadTable("message_attribute", {"message_id", "definition_id", "value"}, "rowid",
                  [&](const Rows& row) {
                      SetAttribute(row, 1, row.Find(messages_, 0).attributes, AttrObject::Message);
                  });
    }

    /// Sets the attribute whose definition stands in a column and whose value in the next one.
    void SetAttribute(const Rows& row, int column, AttrValues& values, AttrObject object) {
        const auto name = definition_names_.find(row.Id(column));
        if (name == definition_names_.end()) row.Fail("definition_id is no id of attribute_definition");
        if (name->second.first != ObjectName(object))
            row.Fail("the attribute belongs to another kind of object");
        builder_.SetAttribute(values, object, name->second.second, row.Value(column + 1));
    }

    SqliteConnection& connection_;
    DatabaseBuilder builder_;
    /// By id: the kind of object and the name of an attribute.
    std::map<std::int64_t, std::pair<std::string, std::string>> definition_names_;
    std::map<std::int64_t, Node*> nodes_;
    std::map<std::int64_t, Message*> messages_;
    std::map<std::int64_t, Signal*> signals_;
};

}  // namespace

std::unique_ptr<Database> ReadSqlite(const std::string& path) {
    // SQLite gives the same error for a file that is missing and for one that may not be read.
    if (access(path.c_str(), R_OK) != 0) throw ReadError(std::strerror(errno));
    try {
        SqliteConnection connection(path.starts_with('/') ? path : "./" + path, SqliteMode::Read);
        return SqliteReader(connection).Read();
    } catch (const SqliteError& error) {
        throw ReadError(error.what());
    }
}

}  // namespace kestrel
