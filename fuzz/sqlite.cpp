/// A SQLite file: what can be read stays the same when it is written.

#include "databases.h"
#include "kestrel/reader.h"
#include "sqlite_mutator.h"
#include "support.h"

using namespace tarvex::fuzz;

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    return MutateTables(data, size, maxSize, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = ScratchFile("input.sqlite");
    WriteFile(path, TextOf(data, size));
    std::unique_ptr<kestrel::Database> database;
    try {
        database = kestrel::ReadDatabase(path);
    } catch (const kestrel::ReadError& error) {
        Require(*error.what() != '\0', "an error says what is wrong");
        return 0;
    }
    Draw draw(TextOf(data, size));
    RequireSameWhenReadAgain(*database, draw.Below(8) == 0);
    RequireKcd(*database);
    RequireCommands(*database);
    return 0;
}
