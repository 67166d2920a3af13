#include "kestrel/writer.h"

#include "kestrel/atomic_file.h"
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
        case Format::Vorn:
            break;
    }
    return WriteVorn;
}

KestrelError WriteDatabase(const Database& database, const char* path) {
    AtomicFile file;
    if (!file.Open(path)) return kKestrelCannotOpen;
    WriterOf(FormatOf(path))(database, file);
    return file.Commit() ? kKestrelOk : kKestrelWriteFailed;
}

}  // namespace kestrel
