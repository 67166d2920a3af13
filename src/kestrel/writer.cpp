#include "kestrel/writer.h"

#include <string>
#include <sys/stat.h>

#include "kestrel/atomic_file.h"
#include "kestrel/csv_writer.h"
#include "kestrel/kcd_writer.h"
#include "kestrel/sqlite_writer.h"
#include "kestrel/vorn_writer.h"

namespace kestrel {

WriteFunction WriterOf(Format format) {
    switch (format) {
        case Format::Sqlite:
            return WriteSqlite;
        case Format::Kcd:
            return WriteKcd;
        case Format::Csv:
            return WriteCsv;
        case Format::Vorn:
            break;
    }
    return WriteVorn;
}

namespace {

/// SQLite would play what such a file holds back into the new database.
bool HasJournal(const std::string& path) {
    for (const char* suffix : {"-journal", "-wal"}) {
        struct stat status = {};
        if (stat((path + suffix).c_str(), &status) == 0 && status.st_size > 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

KestrelError WriteDatabase(const Database& database, const char* path) {
    AtomicFile file;
    if (!file.Open(path)) {
        return kKestrelCannotOpen;
    }
    const Format format = FormatOf(path);
    if (format == Format::Sqlite && HasJournal(file.Target())) {
        return kKestrelCannotOpen;
    }
    WriterOf(format)(database, file);
    return file.Commit() ? kKestrelOk : kKestrelWriteFailed;
}

}  // namespace kestrel
