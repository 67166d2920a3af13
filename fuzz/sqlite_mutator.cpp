#include "sqlite_mutator.h"

#include <cstring>
#include <iterator>
#include <memory>
#include <random>
#include <sqlite3.h>
#include <string>
#include <vector>

#include "kestrel/sqlite_tables.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace tarvex::fuzz {
namespace {

struct Closer {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
};
using Connection = std::unique_ptr<sqlite3, Closer>;

/// What may stand in a cell, as SQL.
constexpr const char* kNumbers[] = {"0",
                                    "1",
                                    "-1",
                                    "2",
                                    "31",
                                    "32",
                                    "255",
                                    "65535",
                                    "65536",
                                    "2147483647",
                                    "2147483648",
                                    "4294967295",
                                    "4294967296",
                                    "9223372036854775807",
                                    "-9223372036854775808",
                                    "0.5",
                                    "1e308",
                                    "-1e999",
                                    "NULL",
                                    "id",
                                    "rowid"};
constexpr const char* kTexts[] = {"''",
                                  "'integer'",
                                  "'string'",
                                  "'enumeration'",
                                  "'database'",
                                  "'node'",
                                  "'message'",
                                  "'big_endian'",
                                  "'little_endian'",
                                  "name",
                                  "x'00'",
                                  "x'FF'",
                                  "CAST(x'C3' AS TEXT)",
                                  "CAST(x'610062' AS TEXT)",
                                  "char(10)",
                                  "printf('%.*c', 32, 'n')",
                                  "printf('%.*c', 31, 'n') || char(228)",
                                  "printf('%.*c', 33, 'n')",
                                  "printf('%.*c', 16, char(65533))",
                                  "CAST(printf('%.*c', 32, x'FF') AS TEXT)"};

template <class Random, class List>
auto& AnyOf(Random& random, List& list) {
    return list[random() % std::size(list)];
}

/// The columns of a table; none for one that cannot be read.
std::vector<std::string> ColumnsOf(sqlite3* connection, const std::string& table) {
    std::vector<std::string> columns;
    sqlite3_stmt* statement = nullptr;
    const std::string query = "SELECT * FROM " + table;
    if (sqlite3_prepare_v2(connection, query.c_str(), -1, &statement, nullptr) == SQLITE_OK) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            columns.emplace_back(sqlite3_column_name(statement, i));
        }
    }
    sqlite3_finalize(statement);
    return columns;
}

std::string AnyStatement(sqlite3* connection, std::minstd_rand& random) {
    const std::string table =
        random() % 8 == 0 ? kestrel::kSqliteScalingTableName : AnyOf(random, kestrel::kSqliteTableNames);
    const std::vector<std::string> columns = ColumnsOf(connection, table);
    const std::string row =
        "rowid = (SELECT rowid FROM " + table + " LIMIT 1 OFFSET " + std::to_string(random() % 8) + ")";
    if (columns.empty()) {
        return "VACUUM";
    }
    switch (random() % 8) {
        case 0:
            return "DELETE FROM " + table + " WHERE " + row;
        case 1:
            return "ALTER TABLE " + table + " RENAME COLUMN " + AnyOf(random, columns) + " TO other";
        case 2: {
            std::string copied;
            for (const std::string& column : columns) {
                copied +=
                    (copied.empty() ? "" : ", ") + (column == "id"                               ? "NULL"
                                                    : column == "signal_id" && random() % 2 == 0 ? "1"
                                                                                                 : column);
            }
            return "INSERT INTO " + table + " SELECT " + copied + " FROM " + table + " WHERE " + row;
        }
        default:
            return "UPDATE " + table + " SET " + AnyOf(random, columns) + " = " +
                   (random() % 2 == 0 ? AnyOf(random, kNumbers) : AnyOf(random, kTexts)) + " WHERE " + row;
    }
}

/// Runs a statement in the file; 0 when that cannot be done.
std::size_t ChangeTables(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                         std::minstd_rand& random) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(":memory:", &opened);
    const Connection connection(opened);
    auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(size));
    if (result != SQLITE_OK || copy == nullptr) {
        return 0;
    }
    std::memcpy(copy, data, size);
    const auto length = static_cast<sqlite3_int64>(size);
    constexpr unsigned kFlags = SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE;
    if (sqlite3_deserialize(opened, "main", copy, length, length, kFlags) != SQLITE_OK) {
        return 0;
    }
    if (sqlite3_exec(opened, AnyStatement(opened, random).c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        return 0;
    }
    sqlite3_int64 changed = 0;
    const unsigned char* bytes = sqlite3_serialize(opened, "main", &changed, SQLITE_SERIALIZE_NOCOPY);
    if (bytes == nullptr || static_cast<std::size_t>(changed) > maxSize) {
        return 0;
    }
    std::memcpy(data, bytes, static_cast<std::size_t>(changed));
    return static_cast<std::size_t>(changed);
}

}  // namespace

std::size_t MutateTables(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed) {
    std::minstd_rand random(seed);
    const std::size_t changed = random() % 2 == 0 ? ChangeTables(data, size, maxSize, random) : 0;
    return changed > 0 ? changed : LLVMFuzzerMutate(data, size, maxSize);
}

}  // namespace tarvex::fuzz
