#include "kestrel/sqlite_reader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sqlite3.h>
#include <string>
#include <string_view>

#include "kestrel/database_builder.h"
#include "kestrel/errors.h"
#include "kestrel/excerpt.h"
#include "kestrel/input_file.h"
#include "kestrel/model_text.h"
#include "kestrel/sqlite.h"
#include "kestrel/sqlite_rows.h"
#include "kestrel/sqlite_tables.h"

namespace kestrel {

namespace {

/// Stops a connection that computes much more than a file of its size needs.
class WorkLimit {
  public:
    explicit WorkLimit(std::int64_t fileSize) : left_(kLeastWork + kWorkPerByte * fileSize) {}

    /// The limit has to outlive the connection.
    void Bind(const SqliteConnection& connection) {
        sqlite3_progress_handler(connection.Get(), kStepsBetween, &Count, this);
    }

    /// Why a statement failed.
    std::string Reason(const SqliteError& error) const {
        return left_ < 0 ? "reading this takes more work than a file of its size needs"
                         : Excerpt(error.what());
    }

  private:
    static constexpr int kStepsBetween = 1000;  // of the library's machine; some microseconds
    static constexpr std::int64_t kLeastWork = 1'000'000;
    /// The format takes about one step for each byte.
    static constexpr std::int64_t kWorkPerByte = 32;

    static int Count(void* limit) {
        auto& left = static_cast<WorkLimit*>(limit)->left_;
        left -= kStepsBetween;
        return left < 0 ? 1 : 0;
    }

    std::int64_t left_;
};

/// Nothing in a file is longer than the file.
void Restrict(const SqliteConnection& connection, std::int64_t fileSize) {
    constexpr std::int64_t kLeastLength = 1 << 16;
    constexpr std::int64_t kMostLength = 1 << 24;
    constexpr int kMaxSql = 1 << 14;  // the tables of the format take 400 bytes each
    sqlite3_limit(connection.Get(), SQLITE_LIMIT_LENGTH,
                  static_cast<int>(std::clamp(fileSize, kLeastLength, kMostLength)));
    sqlite3_limit(connection.Get(), SQLITE_LIMIT_SQL_LENGTH, kMaxSql);
}

/// A keyword in SQL, or a quoted name or comment with that word.
bool HasWord(std::string_view sql, std::string_view upperCaseWord) {
    // What SQLite takes for a part of a word.
    const auto isPart = [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '_' || c == '$' || c > 127;
    };
    const auto isSame = [](unsigned char a, unsigned char b) { return std::toupper(a) == b; };
    for (auto begin = std::find_if(sql.begin(), sql.end(), isPart); begin != sql.end();) {
        const auto end = std::find_if_not(begin, sql.end(), isPart);
        if (std::equal(begin, end, upperCaseWord.begin(), upperCaseWord.end(), isSame)) {
            return true;
        }
        begin = std::find_if(end, sql.end(), isPart);
    }
    return false;
}

class SqliteReader {
  public:
    SqliteReader(SqliteConnection& connection, const WorkLimit& limit, std::int64_t fileSize)
        : connection_(connection), limit_(limit), textLimit_(fileSize) {}

    std::unique_ptr<Database> Read() {
        CheckMarks();
        CheckSchema();
        CheckPages();
        for (const char* table : kSqliteTableNames) {
            CheckTable(table);
        }
        std::size_t names = 0;
        ReadTable("database", {"name"}, "rowid", [&](const Rows& row) {
            builder_.SetName(row.Text(0));
            ++names;
        });
        if (names != 1) {
            throw ReadError("table database: there has to be one row");
        }
        ReadDefinitions();
        ReadNodes();
        ReadMessages();
        ReadSignals();
        if (HasTable(kSqliteScalingTableName)) {
            CheckTable(kSqliteScalingTableName);
            ReadScalings();
        }
        ReadAttributes();
        return builder_.Take();
    }

  private:
    /// Calls `add` for every row, and gives the table's name to whatever fails.
    template <class Add>
    void ReadTable(const char* table, std::vector<const char*> columns, const char* order, Add add) {
        try {
            Rows rows(connection_, table, std::move(columns), order, textLimit_);
            while (rows.Next()) {
                try {
                    add(rows);
                } catch (const BadRecord& error) {
                    rows.Fail(error.what());
                }
            }
        } catch (const SqliteError& error) {
            throw ReadError("table " + std::string(table) + ": " + limit_.Reason(error));
        }
    }

    void CheckMarks() {
        if (Pragma("application_id") != kSqliteApplicationId) {
            throw ReadError("the file holds no bus database");
        }
        if (const std::int64_t version = Pragma("user_version"); version != kSqliteUserVersion) {
            throw ReadError("version " + std::to_string(version) + " of the tables is not known");
        }
    }

    /// No table may compute anything when it is read or checked: that could go on without end.
    void CheckSchema() {
        connection_.Execute("PRAGMA trusted_schema = OFF; BEGIN");
        SqliteStatement objects(connection_, "SELECT name, sql FROM sqlite_master WHERE sql IS NOT NULL");
        while (objects.Next()) {
            const std::string sql = objects.Text(1).value_or("");
            if (IsIndexViewOrTrigger(sql)) {
                continue;
            }
            const std::string table = "table " + Excerpt(objects.Text(0).value_or(""));
            if (!sql.starts_with("CREATE TABLE ")) {
                throw ReadError(table + " is no stored table");
            }
            if (HasWord(sql, "CHECK")) {
                throw ReadError(table + " has a CHECK constraint");
            }
        }
        SqliteStatement computed(connection_,
                                 "SELECT t.name FROM sqlite_master AS t, pragma_table_xinfo(t.name) AS c "
                                 "WHERE t.type = 'table' AND c.hidden <> 0");
        if (computed.Next()) {
            throw ReadError("table " + Excerpt(computed.Text(0).value_or("")) + " has a generated column");
        }
    }

    /// Those are never run.
    static bool IsIndexViewOrTrigger(std::string_view sql) {
        return sql.starts_with("CREATE INDEX ") || sql.starts_with("CREATE UNIQUE INDEX ") ||
               sql.starts_with("CREATE VIEW ") || sql.starts_with("CREATE TRIGGER ");
    }

    void CheckPages() {
        SqliteStatement check(connection_, "PRAGMA quick_check(1)");
        if (!check.Next() || check.Text(0) != "ok") {
            throw ReadError("the file is damaged: " + Excerpt(check.Text(0).value_or("no check possible")));
        }
    }

    void CheckTable(const char* table) {
        SqliteStatement statement(connection_, "SELECT type FROM sqlite_master WHERE name = ?");
        statement.Bind(0, std::string_view(table));
        if (!statement.Next()) {
            throw ReadError(std::string("table ") + table + " is missing");
        }
        if (statement.Text(0) == "view") {
            throw ReadError(std::string("table ") + table + " is no stored table");
        }
    }

    bool HasTable(const char* name) {
        SqliteStatement statement(connection_, "SELECT 1 FROM sqlite_master WHERE name = ?");
        statement.Bind(0, std::string_view(name));
        return statement.Next();
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
                          record.defaultNumber = row.Number(6);
                      } else {
                          record.defaultText = row.Text(6);
                      }
                      if (record.type == "enumeration") {
                          record.choices = std::move(choices[row.Id(0)]);
                      }
                      choices.erase(row.Id(0));
                      builder_.AddDefinition(record);
                      definitionNames_.try_emplace(row.Id(0), record.object, record.name);
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
        if (!objects.emplace(row.Id(0), &object).second) {
            row.Fail("the id stands twice");
        }
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
                      record.startBit = row.Unsigned<std::uint16_t>(3);
                      record.length = row.Unsigned<std::uint16_t>(4);
                      record.byteOrder = row.Text(5);
                      record.isSigned = row.Flag(6);
                      record.isMultiplexor = row.Flag(7);
                      if (!row.IsNull(8)) {
                          record.multiplexerValue = row.Unsigned<std::uint32_t>(8);
                      }
                      Keep(row, signals_, builder_.AddSignal(row.Find(messages_, 1), record));
                  });
        ReadTable("value_description", {"signal_id", "value", "text"}, "signal_id, position",
                  [&](const Rows& row) {
                      builder_.AddValue(row.Find(signals_, 0), row.Unsigned<std::uint32_t>(1), row.Text(2));
                  });
    }

    void ReadScalings() {
        ReadTable(kSqliteScalingTableName, {"signal_id", "factor", "minimum", "maximum", "step", "unit"},
                  "signal_id", [&](const Rows& row) {
                      sigscale scaling;
                      scaling.factor = row.Number(1);
                      scaling.minimum = row.NumberOrNull(2);
                      scaling.maximum = row.NumberOrNull(3);
                      scaling.step = row.NumberOrNull(4);
                      scaling.unit = row.IsNull(5) ? "" : row.Text(5);
                      builder_.SetScaling(row.Find(signals_, 0), scaling);
                  });
    }

    void ReadAttributes() {
        ReadTable("database_attribute", {"definition_id", "value"}, "rowid", [&](const Rows& row) {
            SetAttribute(row, 0, builder_.Built().Attributes(), AttrObject::Database);
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
        const auto name = definitionNames_.find(row.Id(column));
        if (name == definitionNames_.end()) {
            row.Fail("definition_id is no id of attribute_definition");
        }
        if (name->second.first != ObjectName(object)) {
            row.Fail("the attribute belongs to another kind of object");
        }
        builder_.SetAttribute(values, object, name->second.second, row.Value(column + 1));
    }

    SqliteConnection& connection_;
    const WorkLimit& limit_;
    TextLimit textLimit_;
    DatabaseBuilder builder_;
    /// By id: the kind of object and the name of an attribute.
    std::map<std::int64_t, std::pair<std::string, std::string>> definitionNames_;
    std::map<std::int64_t, Node*> nodes_;
    std::map<std::int64_t, Message*> messages_;
    std::map<std::int64_t, Signal*> signals_;
};

}  // namespace

namespace {

/// The file itself, not a link to it: SQLite looks for the files of a transaction beside that one.
std::string WithoutLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::canonical(path, error);
    if (!error) {
        return resolved.string();
    }
    return path.starts_with('/') ? path : "./" + path;
}

/// The size of the journal of a transaction, which SQLite reads if it is there.
std::int64_t JournalSize(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored) ? InputSize(path) : 0;
}

/// Whether the file says that changes go to a log beside it. SQLite would leave such a log and another file
/// there, and where it may not, it would not read.
bool HasWriteAheadLog(const std::string& path) {
    constexpr std::size_t kReadVersion = 19;
    constexpr char kWithLog = 2;
    std::array<char, kReadVersion + 1> head{};
    return std::fread(head.data(), 1, head.size(), OpenInput(path).get()) == head.size() &&
           head[kReadVersion] == kWithLog;
}

}  // namespace

std::unique_ptr<Database> ReadSqlite(const std::string& path) {
    const std::int64_t fileSize = InputSize(path);
    const std::string file = WithoutLinks(path);
    if (JournalSize(file + "-wal") > 0) {
        throw ReadError("another program has changes for it in " + file +
                        "-wal; they have to be brought into the file first");
    }
    const std::int64_t size = fileSize + JournalSize(file + "-journal");
    WorkLimit limit(size);
    try {
        SqliteConnection connection(file,
                                    HasWriteAheadLog(file) ? SqliteMode::ReadUnchanging : SqliteMode::Read);
        limit.Bind(connection);
        Restrict(connection, size);
        return SqliteReader(connection, limit, size).Read();
    } catch (const SqliteError& error) {
        throw ReadError(limit.Reason(error));
    }
}

}  // namespace kestrel
