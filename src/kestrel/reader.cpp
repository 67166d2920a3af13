#include "kestrel/reader.h"

#include "kestrel/content.h"
#include "kestrel/format.h"
#include "kestrel/sqlite_reader.h"
#include "kestrel/vorn_reader.h"

namespace kestrel {

namespace {

/// By the extension of the path.
std::unique_ptr<Database> ReadAs(const std::string& path) {
    switch (FormatOf(path)) {
        case Format::Vorn:
            return ReadVorn(path);
        case Format::Sqlite:
            return ReadSqlite(path);
        case Format::Kcd:
            throw ReadError("KCD files can be written, not read");
        case Format::Csv:
            break;
    }
    throw ReadError("CSV files can be written, not read");
}

}  // namespace

std::unique_ptr<Database> ReadDatabase(const std::string& path) {
    switch (ContentOf(path)) {
        case Content::Empty:
            throw ReadError("the file is empty; vorn reads Vorn and SQLite");
        case Content::Vorn:
            return ReadVorn(path);
        case Content::Sqlite:
        case Content::OtherSqlite:
            return ReadSqlite(path);
        case Content::Kcd:
            throw ReadError("KCD files can be written, not read");
        case Content::Csv:
            throw ReadError("CSV files can be written, not read");
        case Content::OtherXml:
            throw ReadError("this is XML; vorn reads Vorn and SQLite");
        case Content::OtherJson:
        case Content::Other:
            break;
    }
    return ReadAs(path);
}

}  // namespace kestrel
