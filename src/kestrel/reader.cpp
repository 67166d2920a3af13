#include "kestrel/reader.h"

#include "kestrel/content.h"
#include "kestrel/format.h"
#include "kestrel/sqlite_reader.h"
#include "kestrel/vorn_reader.h"

namespace kestrel {

std::unique_ptr<Database> ReadDatabase(const std::string& path) {
    const Content content = ContentOf(path);
    switch (content) {
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
    if (HasExtension(path, kVornExtension)) {
        return ReadVorn(path);  // which tells the place of the damage
    }
    throw ReadError(content == Content::OtherJson ? "this is JSON, but no Vorn"
                                                  : "this is neither Vorn nor SQLite");
}

}  // namespace kestrel
