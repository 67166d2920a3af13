#pragma once

#include <memory>
#include <string>

#include "kestrel/database.h"

namespace tarvex::fuzz {

/// The bytes of the database as a Vorn file.
std::string VornOf(const kestrel::Database& database);

/// Requires that the database is the same after it was written and read again, as a Vorn file and, if asked
/// for, as a SQLite file.
void RequireSameWhenReadAgain(const kestrel::Database& database, bool withSqlite);

/// Requires that the database makes a KCD file of well-formed XML.
void RequireKcd(const kestrel::Database& database);

/// A database in two, each message in one of them: a third, and the others.
struct Division {
    std::unique_ptr<kestrel::Database> part;
    std::unique_ptr<kestrel::Database> rest;
};
Division DivisionOf(const kestrel::Database& database);

/// Requires that the commands of the program `vorn` tell all of a database, and no difference to itself.
void RequireCommands(const kestrel::Database& database);

}  // namespace tarvex::fuzz
