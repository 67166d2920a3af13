#include "kestrel/sqlite_writer.h"

#include <cmath>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <unordered_map>
#include <vector>

#include "kestrel/atomic_file.h"
#include "kestrel/database.h"
#include "kestrel/model_text.h"
#include "kestrel/sqlite.h"
#include "kestrel/sqlite_tables.h"
#include "kestrel/sqlite_view.h"

namespace kestrel {

namespace {

/// Whole numbers become integers, as readers expect of an identifier or an address.
void BindNumber(SqliteStatement& statement, int parameter, double number) {
    constexpr double kIntegersEnd = 9223372036854775808.0;  // 2^63
    number = Finite(number);
    if (std::trunc(number) == number && std::fabs(number) < kIntegersEnd) {
        statement.Bind(parameter, static_cast<std::int64_t>(number));
    } else {
        statement.Bind(parameter, number);
    }
}

/// Writes one database into empty tables.
class SqliteWriter {
  public:
    SqliteWriter(const Database& database, SqliteConnection& connection)
        : database_(database),
          insertSignal_(connection, "INSERT INTO signal VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          insertValue_(connection, "INSERT INTO value_description VALUES (?, ?, ?, ?)"),
          connection_(connection) {
        for (const AttrDef& definition : database.AttrDefs()) {
            choices_.push_back(ChoiceNames(definition));
        }
        if (database.HasScalings()) {
            connection.Execute(kSqliteScalingTable);
            insertScaling_.emplace(connection, "INSERT INTO signal_scaling VALUES (?, ?, ?, ?, ?, ?)");
        }
    }

    void Write() {
        SqliteStatement insert(connection_, "INSERT INTO database VALUES (?)");
        insert.Bind(0, Text(database_.Name()));
        insert.Run();
        AddDefinitions();
        AddDatabaseAttributes();
        AddNodes();
        AddMessages();
    }

  private:
    void AddDefinitions() {
        SqliteStatement insert(connection_, "INSERT INTO attribute_definition VALUES (?, ?, ?, ?, ?, ?, ?)");
        SqliteStatement insertChoice(connection_, "INSERT INTO attribute_choice VALUES (?, ?, ?)");
        for (const AttrDef& definition : database_.AttrDefs()) {
            const std::int64_t id = IdOf(definition);
            insert.Bind(0, id);
            insert.Bind(1, ObjectName(definition.object_kind));
            insert.Bind(2, NameText(definition.name));
            insert.Bind(3, TypeName(definition.value_type));
            if (definition.value_type == AttrType::Integer) {
                insert.Bind(4, Finite(definition.minimum));
                insert.Bind(5, Finite(definition.maximum));
                BindNumber(insert, 6, definition.default_number);
            } else {
                insert.BindNull(4);
                insert.BindNull(5);
                insert.Bind(6, Text(definition.default_text));
            }
            insert.Run();
            std::int64_t position = 0;
            for (const std::string& name : choices_[definition.position]) {
                insertChoice.Bind(0, id);
                insertChoice.Bind(1, position++);
                insertChoice.Bind(2, name);
                insertChoice.Run();
            }
        }
    }

    void AddDatabaseAttributes() {
        SqliteStatement insert(connection_, "INSERT INTO database_attribute VALUES (?, ?)");
        for (const AttrValues::Value& entry : database_.Attributes().Values()) {
            insert.Bind(0, IdOf(*entry.definition));
            BindValue(insert, 1, entry);
            insert.Run();
        }
    }

    void AddNodes() {
        SqliteStatement insert(connection_, "INSERT INTO node VALUES (?, ?)");
        SqliteStatement insertAttribute(connection_, "INSERT INTO node_attribute VALUES (?, ?, ?)");
        std::int64_t id = 0;
        for (const Node& node : database_.Nodes()) {
            nodeIds_.emplace(&node, ++id);
            insert.Bind(0, id);
            insert.Bind(1, NameText(node.name));
            insert.Run();
            AddAttributes(insertAttribute, id, node.attributes);
        }
    }

    void AddMessages() {
        SqliteStatement insert(connection_, "INSERT INTO message VALUES (?, ?, ?, ?, ?, ?)");
        SqliteStatement insertAttribute(connection_, "INSERT INTO message_attribute VALUES (?, ?, ?)");
        std::int64_t id = 0;
        for (const Message& message : database_.Messages()) {
            insert.Bind(0, ++id);
            insert.Bind(1, std::int64_t{message.identifier & ~kExtendedIdentifier});
            insert.Bind(2, std::int64_t{(message.identifier & kExtendedIdentifier) != 0});
            insert.Bind(3, NameText(message.name));
            insert.Bind(4, std::int64_t{message.length});
            const auto node = nodeIds_.find(message.node);
            if (node != nodeIds_.end()) {
                insert.Bind(5, node->second);
            } else {
                insert.BindNull(5);
            }
            insert.Run();
            AddAttributes(insertAttribute, id, message.attributes);
            for (const Signal* signal = message.firstSignal; signal != nullptr; signal = signal->next) {
                AddSignal(id, *signal);
            }
        }
    }

    void AddSignal(std::int64_t messageId, const Signal& signal) {
        insertSignal_.Bind(0, ++signalId_);
        insertSignal_.Bind(1, messageId);
        insertSignal_.Bind(2, NameText(signal.name));
        insertSignal_.Bind(3, std::int64_t{signal.start_bit});
        insertSignal_.Bind(4, std::int64_t{signal.length});
        insertSignal_.Bind(5, ByteOrderName(signal));
        insertSignal_.Bind(6, std::int64_t{(signal.flags & kSignalSigned) != 0});
        insertSignal_.Bind(7, std::int64_t{(signal.flags & kSignalMultiplexor) != 0});
        if ((signal.flags & kSignalMultiplexed) != 0) {
            insertSignal_.Bind(8, std::int64_t{signal.multiplexer_value});
        } else {
            insertSignal_.BindNull(8);
        }
        insertSignal_.Run();
        std::int64_t position = 0;
        for (const valdesc* entry = signal.value_descriptions; entry != nullptr; entry = entry->next) {
            insertValue_.Bind(0, signalId_);
            insertValue_.Bind(1, position++);
            insertValue_.Bind(2, std::int64_t{entry->value});
            insertValue_.Bind(3, NameText(entry->text));
            insertValue_.Run();
        }
        if (signal.scaling != nullptr) {
            AddScaling(*signal.scaling);
        }
    }

    /// That of the signal which was added last.
    void AddScaling(const sigscale& scaling) {
        SqliteStatement& insert = *insertScaling_;
        insert.Bind(0, signalId_);
        insert.Bind(1, scaling.factor);
        BindKnownNumber(insert, 2, scaling.minimum);
        BindKnownNumber(insert, 3, scaling.maximum);
        BindKnownNumber(insert, 4, scaling.step);
        if (scaling.unit.empty()) {
            insert.BindNull(5);
        } else {
            insert.Bind(5, scaling.unit);
        }
        insert.Run();
    }

    static void BindKnownNumber(SqliteStatement& statement, int parameter,
                                const std::optional<double>& number) {
        if (number) {
            statement.Bind(parameter, *number);
        } else {
            statement.BindNull(parameter);
        }
    }

    void AddAttributes(SqliteStatement& insert, std::int64_t objectId, const AttrValues& attributes) {
        for (const AttrValues::Value& entry : attributes.Values()) {
            insert.Bind(0, objectId);
            insert.Bind(1, IdOf(*entry.definition));
            BindValue(insert, 2, entry);
            insert.Run();
        }
    }

    void BindValue(SqliteStatement& statement, int parameter, const AttrValues::Value& entry) const {
        const AttrDef& definition = *entry.definition;
        if (definition.holdsTexts || definition.value_type == AttrType::Enumeration) {
            statement.Bind(parameter, ValueText(definition, choices_[definition.position], entry.value));
        } else {
            BindNumber(statement, parameter, entry.value.number);
        }
    }

    static std::int64_t IdOf(const AttrDef& definition) {
        return static_cast<std::int64_t>(definition.position) + 1;
    }

    const Database& database_;
    /// The names of enumeration values, by the positions of the definitions.
    std::vector<std::vector<std::string>> choices_;
    std::unordered_map<const symblk*, std::int64_t> nodeIds_;
    SqliteStatement insertSignal_;
    SqliteStatement insertValue_;
    /// None when there is nothing to insert.
    std::optional<SqliteStatement> insertScaling_;
    std::int64_t signalId_ = 0;
    SqliteConnection& connection_;
};

/// Makes the statement that runs fail when it is not zero.
int IsInterrupted(void* file) {
    return static_cast<const AtomicFile*>(file)->Interrupted() ? 1 : 0;
}

}  // namespace

void WriteSqlite(const Database& database, AtomicFile& file) {
    try {
        SqliteConnection connection(file.TemporaryPath(), SqliteMode::Write);
        constexpr int kStepsBetween = 10'000;  // of the library's machine; about a millisecond
        sqlite3_progress_handler(connection.Get(), kStepsBetween, &IsInterrupted, &file);
        // What indexes are sorted with stays in memory, not in a file elsewhere.
        // The file is new and takes its place only when it is complete: a journal would protect nothing.
        connection.Execute(
            "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE;"
            "PRAGMA temp_store = MEMORY;");
        connection.Execute("PRAGMA application_id = " + std::to_string(kSqliteApplicationId) +
                           "; PRAGMA user_version = " + std::to_string(kSqliteUserVersion) + ";");
        connection.Execute("BEGIN");
        connection.Execute(kSqliteTables);
        SqliteWriter(database, connection).Write();
        connection.Execute(kSqliteIndexes);
        connection.Execute(SqliteSignalsView(database.HasScalings()));
        connection.Execute("COMMIT");
    } catch (const SqliteError&) {
        file.Fail();
    }
}

}  // namespace kestrel
