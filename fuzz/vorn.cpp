/// A Vorn file: what can be read stays the same when it is written, in every format.

#include "databases.h"
#include "kestrel/reader.h"
#include "support.h"

using namespace tarvex::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = ScratchFile("input.vorn");
    WriteFile(path, TextOf(data, size));
    std::unique_ptr<kestrel::Database> database;
    try {
        database = kestrel::ReadDatabase(path);
    } catch (const kestrel::ReadError& error) {
        Require(*error.what() != '\0', "an error says what is wrong");
        return 0;
    }
    Draw draw(TextOf(data, size));
    RequireSameWhenReadAgain(*database, draw.Below(16) == 0);
    if (draw.Below(4) == 0) {
        RequireKcd(*database);
        RequireCommands(*database);
    }
    return 0;
}
