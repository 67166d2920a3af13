#include "kestrel/csv_writer.h"

#include <string>

#include "kestrel/atomic_file.h"
#include "kestrel/csv_rows.h"
#include "kestrel/database.h"

namespace kestrel {

void WriteCsv(const Database& database, AtomicFile& file) {
    CsvRows rows(database);
    file.Append(kCsvHeader);
    std::string text;
    for (const Message& message : database.Messages()) {
        text.clear();
        rows.Append(message, text);
        file.Append(text);
    }
}

}  // namespace kestrel
