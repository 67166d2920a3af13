#include "kestrel/reader.h"

#include "kestrel/format.h"
#include "kestrel/sqlite_reader.h"
#include "kestrel/vorn_reader.h"

namespace kestrel {

std::unique_ptr<Database> ReadDatabase(const std::string& path) {
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

}  // namespace kestrel
