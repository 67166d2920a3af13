/// The tables of a database in SQLite. Ids count from 1 in the order of creation, positions from 0.

#pragma once

#include <cstdint>

namespace kestrel {

/// Marks the file: "VORN" as a number, and the version of the tables.
inline constexpr std::int64_t kSqliteApplicationId = 0x564F524E;
inline constexpr std::int64_t kSqliteUserVersion = 1;

inline constexpr const char* kSqliteTables = R"(
CREATE TABLE database             (name TEXT NOT NULL);
CREATE TABLE attribute_definition (id INTEGER PRIMARY KEY, object TEXT NOT NULL, name TEXT NOT NULL, type TEXT NOT NULL,
                                   minimum REAL, maximum REAL, default_value);
CREATE TABLE attribute_choice     (definition_id INTEGER NOT NULL REFERENCES attribute_definition, position INTEGER NOT NULL, name TEXT NOT NULL);
CREATE TABLE node                 (id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE message              (id INTEGER PRIMARY KEY, identifier INTEGER NOT NULL, extended INTEGER NOT NULL, name TEXT NOT NULL,
                                   length INTEGER NOT NULL, node_id INTEGER REFERENCES node);
CREATE TABLE signal               (id INTEGER PRIMARY KEY, message_id INTEGER NOT NULL REFERENCES message, name TEXT NOT NULL,
                                   start_bit INTEGER NOT NULL, length INTEGER NOT NULL, byte_order TEXT NOT NULL, signed INTEGER NOT NULL,
                                   multiplexor INTEGER NOT NULL, multiplexer_value INTEGER);
CREATE TABLE value_description    (signal_id INTEGER NOT NULL REFERENCES signal, position INTEGER NOT NULL, value INTEGER NOT NULL, text TEXT NOT NULL);
CREATE TABLE database_attribute   (definition_id INTEGER NOT NULL REFERENCES attribute_definition, value);
CREATE TABLE node_attribute       (node_id INTEGER NOT NULL REFERENCES node, definition_id INTEGER NOT NULL REFERENCES attribute_definition, value);
CREATE TABLE message_attribute    (message_id INTEGER NOT NULL REFERENCES message, definition_id INTEGER NOT NULL REFERENCES attribute_definition, value);
)";

inline constexpr const char* kSqliteTableNames[] = {
    "database", "attribute_definition", "attribute_choice",   "node",           "message",
    "signal",   "value_description",    "database_attribute", "node_attribute", "message_attribute",
};

/// Of signals that have a scaling; not there when none has.
inline constexpr const char* kSqliteScalingTableName = "signal_scaling";
inline constexpr const char* kSqliteScalingTable = R"(
CREATE TABLE signal_scaling       (signal_id INTEGER PRIMARY KEY REFERENCES signal, factor REAL NOT NULL, minimum REAL, maximum REAL, step REAL, unit TEXT);
)";

inline constexpr const char* kSqliteIndexes = R"(
CREATE INDEX message_identifier       ON message(identifier);
CREATE INDEX message_name             ON message(name);
CREATE INDEX signal_message_id        ON signal(message_id);
CREATE INDEX signal_name              ON signal(name);
CREATE INDEX value_description_signal_id ON value_description(signal_id);
)";

}  // namespace kestrel
